// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/UiMain.h"
#include "windows/qt/LegiblePalette.h"
#include "windows/qt/QtColour.h"

namespace {

double seen(const QPalette& palette, QPalette::ColorRole above, QPalette::ColorRole behind) {
  return contrast(fromQt(palette.color(QPalette::Active, above)),
                  fromQt(palette.color(QPalette::Active, behind)));
}

// A palette that can be read, to spoil a role of.
QPalette readable() {
  QPalette palette;
  for (int role = 0; role < QPalette::NColorRoles; ++role) {
    palette.setColor(static_cast<QPalette::ColorRole>(role), Qt::white);
  }
  using enum QPalette::ColorRole;
  for (const QPalette::ColorRole role :
       {WindowText, Text, ButtonText, PlaceholderText, ToolTipText, Link, LinkVisited, Highlight}) {
    palette.setColor(role, Qt::black);
  }
  return palette;
}

}  // namespace

TEST(LegiblePalette, ColoursThatCanBeReadStay) {
  EXPECT_EQ(legibleChanges(readable()).resolveMask(), QPalette().resolveMask());
}

TEST(LegiblePalette, ASelectionGetsDarkerBehindItsWhiteText) {
  QPalette desktop = readable();
  desktop.setColor(QPalette::Highlight, QColor(48, 140, 198));
  const QPalette changes = legibleChanges(desktop);
  EXPECT_GE(seen(changes.resolve(desktop), QPalette::HighlightedText, QPalette::Highlight),
            kTextContrast);
  EXPECT_TRUE(changes.isBrushSet(QPalette::Active, QPalette::Highlight));
  EXPECT_FALSE(changes.isBrushSet(QPalette::Active, QPalette::HighlightedText));
  EXPECT_FALSE(changes.isBrushSet(QPalette::Active, QPalette::Window))
      << "the rest is the desktop's";
}

TEST(LegiblePalette, LinksAndHintsStandOutOnADarkWindow) {
  QPalette desktop = readable();
  for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Base}) {
    desktop.setColor(role, QColor(53, 53, 53));
  }
  desktop.setColor(QPalette::WindowText, Qt::white);
  desktop.setColor(QPalette::Link, Qt::blue);
  desktop.setColor(QPalette::PlaceholderText, QColor(255, 255, 255, 60));
  const QPalette legible = legibleChanges(desktop).resolve(desktop);
  EXPECT_GE(seen(legible, QPalette::Link, QPalette::Window), kTextContrast);
  EXPECT_GE(seen(legible, QPalette::PlaceholderText, QPalette::Base), kTextContrast);
  EXPECT_EQ(legible.color(QPalette::WindowText), QColor(Qt::white));
}

TEST(LegiblePalette, TheApplicationTakesTheChanges) {
  makePaletteLegible();
  EXPECT_GE(seen(QApplication::palette(), QPalette::HighlightedText, QPalette::Highlight),
            kTextContrast);
  const qreal once = QApplication::palette().color(QPalette::Highlight).lightnessF();
  makePaletteLegible();
  EXPECT_EQ(QApplication::palette().color(QPalette::Highlight).lightnessF(), once);
}
