// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/qt/DifferenceGridView.h"

#include <QHeaderView>
#include <QPainter>
#include <algorithm>

#include "platform/qt/QtText.h"
#include "sync/DifferenceGrid.h"
#include "windows/Twips.h"

namespace {

constexpr int kCellMargins = 6;  // what a cell keeps free at both sides of its text
constexpr std::int64_t kLongDate = 1'797'465'600;  // digits of full width, whatever the locale
constexpr std::uint64_t kLongSize = 1023 * 1024 + 1000;

int widthOf(const QFont& font, const Text& text) {
  return QFontMetrics(font).horizontalAdvance(toQt(text)) + kCellMargins;
}

int drawnWidth(int column) {
  return pixelsFromTwips(kGridColumns[static_cast<std::size_t>(column)].width);
}

// The desktop's font, or one that is a little smaller or narrower: the widths were drawn for a
// small font, and dates are to be read whole in them.
QFont fittedFont(QFont font, const Text& date, const Text& size) {
  constexpr double kSmallest = 0.85;
  constexpr int kNarrowest = 80;
  constexpr int kDate = kSourceColumn + 1;
  constexpr int kSize = kSourceColumn + 2;
  const auto fits = [&] {
    return widthOf(font, date) <= drawnWidth(kDate) && widthOf(font, size) <= drawnWidth(kSize);
  };
  const double usual = QFontInfo(font).pixelSize();
  for (int pixels = static_cast<int>(usual); pixels >= usual * kSmallest; --pixels) {
    font.setPixelSize(pixels);
    if (fits()) return font;
  }
  for (int stretch = 99; stretch >= kNarrowest && !fits(); --stretch) font.setStretch(stretch);
  return font;
}

}  // namespace

void CentredPicture::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
  const auto picture = index.data(Qt::DecorationRole).value<QIcon>();
  QStyleOptionViewItem background = option;
  initStyleOption(&background, index);
  background.features &= ~QStyleOptionViewItem::HasDecoration;
  // The colour of what is selected would swallow the picture.
  background.state &= ~QStyle::State_Selected;
  const bool isOther = background.features.testFlag(QStyleOptionViewItem::Alternate);
  painter->fillRect(option.rect,
                    option.palette.brush(isOther ? QPalette::AlternateBase : QPalette::Base));
  const QWidget* widget = option.widget;
  widget->style()->drawControl(QStyle::CE_ItemViewItem, &background, painter, widget);
  const QSize size = option.decorationSize.boundedTo(option.rect.size());
  picture.paint(painter, QStyle::alignedRect(option.direction, Qt::AlignCenter, size, option.rect));
}

void setUpDifferenceGrid(QTableView& grid, const LocaleData& locale) {
  const Text date = dateTimeText(kLongDate, locale);
  const Text size = synchro::TailleDuFichier(kLongSize, locale);
  grid.setFont(fittedFont(grid.font(), date, size));
  for (int column = 0; column < static_cast<int>(kGridColumns.size()); ++column) {
    const TextView header = kGridColumns[static_cast<std::size_t>(column)].header;
    int width = drawnWidth(column);
    if (header == u"Date") width = std::max(width, widthOf(grid.font(), date));
    if (header == u"Poids") width = std::max(width, widthOf(grid.font(), size));
    grid.setColumnWidth(column, width);
  }
  grid.setColumnHidden(0, true);
  grid.setItemDelegateForColumn(kPictureColumn, new CentredPicture(&grid));
  // Rows of one height need not be measured, however many there are.
  grid.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  grid.verticalHeader()->setDefaultSectionSize(std::max(grid.fontMetrics().height() + 6, 20));
}
