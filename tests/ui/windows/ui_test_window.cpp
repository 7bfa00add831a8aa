// SPDX-License-Identifier: GPL-3.0-or-later
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

#include "platform/qt/QtText.h"
#include "support/Doubles.h"
#include "support/Scratch.h"
#include "ui/UiMain.h"
#include "windows/frmTest.h"

namespace {

class frmTestTest : public testing::Test {
 protected:
  frmTestTest() {
    folder.write("t.js", "var FreeId=9\r\nvar tabObj = new Object();\r\n"
                         "tabObj[\"000000003\"]=\"Caf\xC3\xA9_|_C:\\docs\\plan.pdf\";\r\n"
                         "tabObj[\"000000004\"]=\"Site_|_webwww.example.org\";\r\n"
                         "function ShortQrCode(myKey){\r\n");
  }

  void open() {
    window.show();
    window.Form_Load();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  }
  QString cell(int row, int column) { return grid.item(row, column)->text(); }
  QString text(const char* name) { return control<QLineEdit>(window, name).text(); }
  void clickCell(int row, int column) {
    const QRect place = grid.visualItemRect(grid.item(row, column));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, place.topLeft() + QPoint(4, 4));
  }

  Scratch folder;
  Text path = folder.text("t.js");
  Journal journal;
  ScriptedQuestions questions{journal};
  LocaleData locale = frenchLocale();
  ShortcutTable shortcuts;
  frmTest window{{path, locale, questions, shortcuts}};
  QTableWidget& grid = control<QTableWidget>(window, "Grid");
};

}  // namespace

TEST_F(frmTestTest, TheGridListsTheFile) {
  open();
  ASSERT_EQ(grid.columnCount(), 3);
  const char16_t* const headers[] = {u"Index", u"Nom Court", u"QrCode associé"};
  const int widths[] = {67, 267, 3333};  // 1000, 4000 and 50000 twips
  for (int column = 0; column < 3; ++column) {
    EXPECT_EQ(grid.horizontalHeaderItem(column)->text(), toQt(headers[column]));
    EXPECT_EQ(grid.columnWidth(column), widths[column]);
  }
  EXPECT_GE(grid.columnWidth(0), grid.fontMetrics().horizontalAdvance(QStringLiteral("000000003")))
      << "a key is not cut off";
  ASSERT_EQ(grid.rowCount(), 2);
  EXPECT_EQ(cell(0, 0), QStringLiteral("000000003"));
  EXPECT_EQ(cell(0, 1), QStringLiteral("CafÃ©"));
  EXPECT_EQ(cell(0, 2), QStringLiteral("C:\\docs\\plan.pdf"));
  EXPECT_EQ(cell(1, 2), QStringLiteral("webwww.example.org"));
  EXPECT_TRUE(questions.boxes.empty());
}

TEST_F(frmTestTest, LoadingStoresTheFreeIdOfTheFile) {
  open();
  EXPECT_EQ(shortcuts.freeId(), 9);
  EXPECT_FALSE(shortcuts.wasLoaded()) << "the number alone is no table that may be written";
  shortcuts.load(12, {});
  window.Form_Load();
  EXPECT_EQ(shortcuts.freeId(), 9) << "what was read is stored, also when it is less";
  EXPECT_EQ(grid.rowCount(), 2) << "loading again starts anew";
}

TEST_F(frmTestTest, WhatStopsTheReadingIsTold) {
  questions.answers = {Answer::Ok, Answer::Ok};
  path = folder.text("missing.js");
  open();
  EXPECT_EQ(questions.boxes.back(), errorBox(u"Form_Load", u"Fichier introuvable : " + path));
  EXPECT_EQ(grid.columnCount(), 3);
  EXPECT_EQ(grid.rowCount(), 0);

  folder.write("missing.js", "var FreeId=2\nx\ntabObj[\"000000003\"]=\"n_|_a\";\n");
  window.Form_Load();
  EXPECT_EQ(questions.boxes.back(), errorBox(u"Form_Load", u"L'entrée dépasse la fin du fichier"));
  EXPECT_EQ(grid.rowCount(), 1);
}

TEST_F(frmTestTest, EncodingThenDecodingGivesTheTextBack) {
  open();
  auto& encode = control<QPushButton>(window, "cmdEncodeUtf8");
  auto& decode = control<QPushButton>(window, "cmdDecodeUtf8");
  EXPECT_EQ(encode.text(), QStringLiteral("EncodeUtf8"));
  EXPECT_EQ(decode.text(), QStringLiteral("DecodeUtf8"));

  const QString accents = QStringLiteral("é à ç œ € naïf");
  control<QLineEdit>(window, "Text1").setText(accents);
  QTest::mouseClick(&encode, Qt::LeftButton);
  EXPECT_TRUE(text("Text2").startsWith(QStringLiteral("Ã© Ã"))) << text("Text2").toStdString();
  EXPECT_EQ(text("Text3"), QString());

  control<QLineEdit>(window, "Text1").setText(text("Text2"));
  QTest::mouseClick(&decode, Qt::LeftButton);
  EXPECT_EQ(text("Text3"), accents);
  EXPECT_EQ(text("Text4"), QString());
}

TEST_F(frmTestTest, AClickOnACellShowsItsText) {
  open();
  clickCell(1, 1);
  EXPECT_EQ(text("Text4"), QStringLiteral("Site"));
  clickCell(0, 2);
  EXPECT_EQ(text("Text4"), QStringLiteral("C:\\docs\\plan.pdf"));
  EXPECT_EQ(text("Text2") + text("Text3"), QString());
}

TEST_F(frmTestTest, IsReachedByTheKeyboard) {
  open();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  control<QLineEdit>(window, "Text1").setFocus();
  const char* const order[] = {"cmdEncodeUtf8", "Text2", "cmdDecodeUtf8", "Text3", "Grid", "Text4"};
  for (const char* name : order) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget()->objectName(), QLatin1String(name));
  }
  grid.setFocus();
  grid.setCurrentCell(0, 0);
  QTest::keyClick(&grid, Qt::Key_Down);
  QTest::keyClick(&grid, Qt::Key_Return);
  EXPECT_EQ(text("Text4"), QStringLiteral("000000004"));
  QTest::keyClick(&window, Qt::Key_Escape);
  EXPECT_FALSE(window.isVisible());
}

TEST_F(frmTestTest, TheResultsCannotBeTypedOver) {
  for (const char* name : {"Text2", "Text3", "Text4"}) {
    EXPECT_TRUE(control<QLineEdit>(window, name).isReadOnly());
  }
  EXPECT_FALSE(control<QLineEdit>(window, "Text1").isReadOnly());
  EXPECT_EQ(grid.editTriggers(), QAbstractItemView::NoEditTriggers);
}
