// SPDX-License-Identifier: GPL-3.0-or-later
// How the table of differences and the paths above it look.
#include <QAbstractTableModel>
#include <QCoreApplication>
#include <QHelpEvent>
#include <QTableView>
#include <QToolTip>
#include <algorithm>
#include <set>

#include "sync/qt/DifferenceGridView.h"
#include "sync/qt/PathLabel.h"
#include "ui/UiMain.h"

namespace {

// Has so many rows with nothing in them, and notes whose texts are asked for.
struct EmptyRows : QAbstractTableModel {
  explicit EmptyRows(int count) : rows(count) {}
  int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : rows; }
  int columnCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : 8; }
  QVariant data(const QModelIndex& index, int role) const override {
    if (role == Qt::DisplayRole) asked.insert(index.row());
    return {};
  }
  int rows;
  mutable std::set<int> asked;
};

constexpr int kDrawnDate = 109;

int dateWidth(const QFont& font) {
  return QFontMetrics(font).horizontalAdvance(QStringLiteral("17/12/2026 00:00:00")) + 6;
}

QFont fontOf(int pixels) {
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(pixels);
  return font;
}

}  // namespace

TEST(DifferenceGrid, AFontThatIsALittleTooLargeForADateIsMadeSmallerAndOneThatFitsStays) {
  int fits = 8;
  while (dateWidth(fontOf(fits + 1)) <= kDrawnDate) ++fits;
  for (const int pixels : {fits, fits + 1}) {
    QTableView grid;
    grid.setFont(fontOf(pixels));
    EmptyRows model(1);
    grid.setModel(&model);
    setUpDifferenceGrid(grid, frenchLocale());
    EXPECT_EQ(QFontInfo(grid.font()).pixelSize(), fits) << pixels;
    EXPECT_EQ(grid.columnWidth(2), kDrawnDate);
    EXPECT_EQ(grid.rowHeight(0), std::max(20, grid.fontMetrics().height() + 6));
  }
}

TEST(DifferenceGrid, ALongDateMakesTheFontNarrowerWhereASizeWouldFit) {
  LocaleData longer = frenchLocale();
  longer.dateFormat = "le %d/%m/%Y";
  const auto widthWith = [](const LocaleData& locale) {
    QTableView grid;
    grid.setFont(fontOf(10));
    EmptyRows model(1);
    grid.setModel(&model);
    setUpDifferenceGrid(grid, locale);
    return grid.fontMetrics().horizontalAdvance(QStringLiteral("0123456789"));
  };
  EXPECT_LT(widthWith(longer), widthWith(frenchLocale()));
}

TEST(DifferenceGrid, ALargeFontStaysReadableAndItsColumnsBecomeWider) {
  QTableView grid;
  grid.setFont(fontOf(30));
  EmptyRows model(1);
  grid.setModel(&model);
  setUpDifferenceGrid(grid, frenchLocale());
  EXPECT_EQ(QFontInfo(grid.font()).pixelSize(), 26);
  EXPECT_EQ(grid.font().stretch(), 80);
  const QFontMetrics metrics(grid.font());
  for (const int date : {2, 6}) {
    EXPECT_GE(grid.columnWidth(date),
              metrics.horizontalAdvance(QStringLiteral("28/12/2026 23:59:58")) + 6);
  }
  for (const int size : {3, 7}) {
    EXPECT_GE(grid.columnWidth(size),
              metrics.horizontalAdvance(QStringLiteral("1\u00A0023,98 Ko")));
  }
  EXPECT_GT(grid.rowHeight(0), metrics.height());
}

TEST(DifferenceGrid, AMillionRowsAreShownByMakingTheTextsOfThoseInView) {
  EmptyRows model(1'000'000);
  QTableView grid;
  grid.setModel(&model);
  setUpDifferenceGrid(grid, frenchLocale());
  grid.resize(1000, 340);
  grid.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&grid));
  grid.scrollToBottom();
  ASSERT_TRUE(waitUntil([&] { return model.asked.count(999'999) == 1; }));
  EXPECT_LT(model.asked.size(), 200u);
}

TEST(PathLabelTest, AWidePathKeepsItsTextAndItsWidth) {
  PathLabel label;
  label.resize(100, 20);
  label.setText(QString(400, QLatin1Char('x')));
  EXPECT_EQ(label.minimumSizeHint().width(), 0);
  EXPECT_EQ(label.text().size(), 400);
  const QImage image = label.grab().toImage();
  EXPECT_EQ(image.size(), QSize(100, 20));
}

TEST(PathLabelTest, APathThatIsTooLongLosesItsMiddleAndHasAToolTip) {
  PathLabel label;
  label.resize(150, 20);
  const auto toolTip = [&label] {
    QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), label.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&label, &event);
    return QToolTip::text();
  };
  label.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&label));
  const QString path = QStringLiteral("/un/chemin/plus/long/que/ce/qui/est/visible/ici/fin.txt");
  label.setText(QStringLiteral("/court"));
  EXPECT_EQ(toolTip(), QString()) << "nothing is left out";
  label.setText(path);
  EXPECT_EQ(toolTip(), path);
  const QImage drawn = label.grab().toImage();
  label.setText(label.fontMetrics().elidedText(path, Qt::ElideMiddle, 150));
  EXPECT_TRUE(label.text().endsWith(QStringLiteral("fin.txt")));
  EXPECT_EQ(label.grab().toImage(), drawn);
}

TEST(PathLabelTest, AShortPathStandsAtTheLeftAndIsGreyWhenDisabled) {
  PathLabel label;
  label.resize(300, 20);
  label.setText(QStringLiteral("/ici"));
  const QImage drawn = label.grab().toImage();
  const QColor background = drawn.pixelColor(299, 0);
  int right = -1;
  for (int x = 0; x < drawn.width(); ++x) {
    for (int y = 0; y < drawn.height(); ++y) {
      if (drawn.pixelColor(x, y) != background) right = x;
    }
  }
  EXPECT_GT(right, 0);
  EXPECT_LT(right, 100);
  label.setEnabled(false);
  EXPECT_NE(label.grab().toImage(), drawn);
}
