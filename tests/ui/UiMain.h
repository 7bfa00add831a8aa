// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <functional>
#include <stdexcept>
#include <string>

// The main function of a window test: one QApplication around all its cases. Included once, by the
// test program's only source.

// Lets events run until `holds`. False when it still does not after `milliseconds`.
inline bool waitUntil(const std::function<bool()>& holds, int milliseconds = 5000) {
  return QTest::qWaitFor(holds, milliseconds);
}

// The control called `name` in `window`. It must be there.
template <typename Control>
Control& control(const QWidget& window, const char* name) {
  auto* found = window.findChild<Control*>(QString::fromLatin1(name));
  if (!found) throw std::runtime_error(std::string("no control called ") + name);
  return *found;
}

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
