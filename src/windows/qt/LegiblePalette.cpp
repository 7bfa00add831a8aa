// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/qt/LegiblePalette.h"

#include <QApplication>

#include "windows/qt/QtColour.h"

namespace {

struct Pair {
  QPalette::ColorRole changes;
  QPalette::ColorRole stays;
  double contrast = kTextContrast;
};

// A style lights up what is selected where the mouse lies over it.
constexpr double kSelectionContrast = 5.4;

// Of a selection the background changes: its text is black or white already, and the colour keeps
// its hue.
constexpr Pair kPairs[] = {
    {QPalette::WindowText, QPalette::Window},
    {QPalette::Text, QPalette::Base},
    {QPalette::Text, QPalette::AlternateBase},
    {QPalette::ButtonText, QPalette::Button},
    {QPalette::PlaceholderText, QPalette::Base},
    {QPalette::ToolTipText, QPalette::ToolTipBase},
    {QPalette::Link, QPalette::Window},
    {QPalette::LinkVisited, QPalette::Window},
    {QPalette::Highlight, QPalette::HighlightedText, kSelectionContrast},
};

// A colour that lets some of what is behind it through, as it looks there.
QColor laidOver(const QColor& colour, const QColor& behind) {
  const auto mixed = [share = colour.alphaF()](int above, int below) {
    return qRound(share * static_cast<float>(above) + (1 - share) * static_cast<float>(below));
  };
  return {mixed(colour.red(), behind.red()), mixed(colour.green(), behind.green()),
          mixed(colour.blue(), behind.blue())};
}

}  // namespace

QPalette legibleChanges(const QPalette& desktop) {
  QPalette changes;
  QPalette seen = desktop;
  for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
    for (const auto& [role, other, needed] : kPairs) {
      const QColor behind = seen.color(group, other);
      const Colour now = fromQt(laidOver(seen.color(group, role), behind));
      const Colour wanted = standingOut(now, fromQt(behind), needed);
      if (wanted == now) continue;
      const QColor colour = toQt(wanted);
      seen.setColor(group, role, colour);
      changes.setColor(group, role, colour);
    }
  }
  return changes;
}

void makePaletteLegible() {
  const QPalette changes = legibleChanges(QApplication::palette());
  // A palette without anything set would take back what was changed before.
  if (changes.resolveMask() != QPalette().resolveMask()) QApplication::setPalette(changes);
}
