// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// How many dots of a screen, a page or a picture a module takes, the width of the narrowest bar.
// They are whole dots: then bars of one width are equally wide, wherever they stand.

// The fonts have 24 modules to their size.
inline constexpr int kModulesPerEm = 24;

// White on both sides of a symbol, in modules: what the most demanding symbology asks for.
inline constexpr int kQuietZone = 10;

// A module's width at a font size of `points`, in dots of which `dotsPerInch` make an inch.
double moduleWidth(double points, double dotsPerInch);

// The whole dots nearest to `width`, at least one.
int wholeModule(double width);

// As wholeModule, but no more than lets `modules` of them into `available` dots; 0 when they would
// have to be narrower than `narrowest`.
int moduleThatFits(double width, int modules, int available, int narrowest = 1);

// The largest module, at most `module`, of which `columns` by `rows` squares cover no more than
// `area` dots; 0 when none does.
int moduleThatCovers(int module, int columns, int rows, double area);
