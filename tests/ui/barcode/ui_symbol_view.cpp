// SPDX-License-Identifier: GPL-3.0-or-later
// The preview under the mouse: what a click selects, and its menu.
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMimeData>
#include <QTimer>

#include "barcode/BarcodeRtf.h"
#include "barcode/ModuleSize.h"
#include "barcode/qt/SymbolView.h"
#include "platform/qt/QtText.h"
#include "ui/UiMain.h"

namespace {

class SymbolViewMouse : public testing::Test {
 protected:
  SymbolViewMouse() {
    view.setFontFamily(u"Code 3 de 9");
    view.setText(u"*ABCD*");
    view.resize(600, 160);
    view.show();
  }

  // A little to the right of where the character at `position` begins.
  QPoint place(std::size_t position) {
    const SymbolPainter symbol(view.barFont(), view.text());
    const int module = wholeModule(moduleWidth(view.fontSize(), view.logicalDpiX()));
    const int left = (view.viewport()->width() - symbol.size().width() * module) / 2;
    return {left + symbol.left(position) * module + 1, 20};
  }

  void click(Qt::MouseButton button, std::size_t position, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(view.viewport(), button, keys, place(position));
  }

  // Opens the menu and chooses its entry `chosen`. The captions, those that cannot be chosen in
  // brackets.
  QStringList menu(const QString& chosen) {
    QStringList captions;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
      auto* opened = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      if (!opened) return;
      look.stop();
      QAction* found = nullptr;
      for (QAction* action : opened->actions()) {
        captions << (action->isEnabled() ? action->text() : u'(' + action->text() + u')');
        if (action->text() == chosen) found = action;
      }
      if (found) found->trigger();
      opened->close();
    });
    look.start(10);
    QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, view.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(view.viewport(), &event);
    return captions;
  }

  SymbolView view;
};

const QString kCopy = QStringLiteral("Copier");
const QString kAll = QString::fromUtf8("Tout sélectionner");

}  // namespace

TEST_F(SymbolViewMouse, AClickWithTheShiftKeyExtendsTheSelection) {
  click(Qt::LeftButton, 1);
  EXPECT_EQ(view.selectedText(), u"");
  click(Qt::LeftButton, 3, Qt::ShiftModifier);
  EXPECT_EQ(view.selectedText(), u"AB");
  click(Qt::LeftButton, 5, Qt::ShiftModifier);
  EXPECT_EQ(view.selectedText(), u"ABCD");
  click(Qt::LeftButton, 2);
  EXPECT_EQ(view.selectedText(), u"");
}

TEST_F(SymbolViewMouse, TheNearerEndOfACharacterIsTaken) {
  const int width = (place(3) - place(2)).x();
  const auto clickInside = [&](int across) {
    click(Qt::LeftButton, 1);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::ShiftModifier,
                      place(3) + QPoint(across, 0));
    return view.selectedText();
  };
  EXPECT_EQ(clickInside(width / 2 - 3), u"AB");
  EXPECT_EQ(clickInside(width / 2 + 1), u"ABC");
}

TEST_F(SymbolViewMouse, OtherButtonsLeaveTheSelectionAsItIs) {
  view.selectAll();
  click(Qt::RightButton, 2);
  click(Qt::MiddleButton, 3);
  EXPECT_EQ(view.selectedText(), u"*ABCD*");
}

TEST_F(SymbolViewMouse, TheMenuSelectsEverythingAndCopiesWhatIsSelected) {
  EXPECT_EQ(menu(kAll), QStringList({u'(' + kCopy + u')', kAll}));
  EXPECT_EQ(view.selectedText(), u"*ABCD*");
  QApplication::clipboard()->clear();
  EXPECT_EQ(menu(kCopy), QStringList({kCopy, kAll}));
  const QMimeData& copied = *QApplication::clipboard()->mimeData();
  EXPECT_EQ(fromQt(copied.text()), u"*ABCD*");
  const std::string document = copiedRtf(u"*ABCD*", u"Code 3 de 9", 36);
  for (const char* type : {"text/rtf", "application/rtf",
                           "application/x-qt-windows-mime;value=\"Rich Text Format\""}) {
    EXPECT_EQ(copied.data(QString::fromLatin1(type)).toStdString(), document) << type;
  }
}

TEST_F(SymbolViewMouse, WithoutASymbolTheMenuHasNothingToDo) {
  view.setText({});
  EXPECT_EQ(menu({}), QStringList({u'(' + kCopy + u')', u'(' + kAll + u')'}));
}

TEST_F(SymbolViewMouse, NothingSelectedIsNotCopied) {
  QApplication::clipboard()->setText(QStringLiteral("before"));
  view.copy();
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("before"));
}
