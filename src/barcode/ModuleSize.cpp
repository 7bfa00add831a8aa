// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/ModuleSize.h"

#include <algorithm>
#include <cmath>

double moduleWidth(double points, double dotsPerInch) {
  constexpr double kPointsPerInch = 72;
  return points / kPointsPerInch * dotsPerInch / kModulesPerEm;
}

int wholeModule(double width) { return std::max(1, static_cast<int>(std::lround(width))); }

int moduleThatFits(double width, int modules, int available, int narrowest) {
  const int module = modules > 0 ? std::min(wholeModule(width), available / modules) : 0;
  return module < narrowest ? 0 : module;
}

int moduleThatCovers(int module, int columns, int rows, double area) {
  if (columns <= 0 || rows <= 0) return 0;
  const double largest = std::sqrt(area / columns / rows);
  return largest < module ? static_cast<int>(largest) : module;
}
