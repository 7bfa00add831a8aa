// SPDX-License-Identifier: GPL-3.0-or-later
// How long after a keystroke the barcode window shows the new symbol: from the key's arrival from
// the window system until the repainted preview has gone back to it. Ends with 1 where a text of
// usual length takes more than a frame of 60 a second.
//
// usage: tests/ui/on-virtual-screen build/release/bench_barcode_window
#include <QApplication>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "PaintWatch.h"
#include "barcode/frmCodeBarrePrev.h"
#include "barcode/qt/SymbolView.h"
#include "support/Doubles.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kFrame = 16;       // milliseconds
constexpr int kUsualLength = 1000;  // and less

class Typist {
 public:
  Typist() {
    window_.Form_Load();
    window_.show();
    if (!QTest::qWaitForWindowActive(&window_)) std::puts("the window has no focus");
    view_.viewport()->installEventFilter(&watch_);
  }

  // The milliseconds of `times` keystrokes behind a text of `length` characters in type `option`.
  std::vector<double> type(int option, int length, int times) {
    window_.findChild<QRadioButton*>(QStringLiteral("OptType_%1").arg(option))->click();
    source_.setText(QString(length, QLatin1Char('1')));
    source_.setFocus();
    QApplication::processEvents();
    std::vector<double> milliseconds;
    for (int i = 0; i < times; ++i) {
      const bool takesBack = i % 2 == 1;
      watch_.painted = false;
      const QString before = source_.text();
      const auto begin = Clock::now();
      QTest::keyClick(window_.windowHandle(), takesBack ? Qt::Key_Backspace : Qt::Key_2);
      while (!watch_.painted && Clock::now() - begin < std::chrono::seconds(5)) {
        QApplication::processEvents();
      }
      const auto took = Clock::now() - begin;
      if (source_.text() == before || !watch_.painted) return {};
      milliseconds.push_back(std::chrono::duration<double, std::milli>(took).count());
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    return milliseconds;
  }

 private:
  const Text folder_;
  const LocaleData locale_ = frenchLocale();
  Journal journal_;
  RecordingShell shell_{journal_};
  ScriptedQuestions questions_{journal_};
  frmCodeBarrePrev window_{{folder_, locale_, shell_, questions_, [] { return Text(); }},
                           [](QPrinter&, bool) { return false; }};
  QLineEdit& source_ = *window_.findChild<QLineEdit*>(QStringLiteral("txtSource"));
  SymbolView& view_ = *window_.findChild<SymbolView*>(QStringLiteral("rtbCBar"));
  PaintWatch watch_;
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  Typist typist;
  const struct {
    const char* name;
    int option;
    int length;
  } rows[] = {{"Code 39", 0, 20},       {"Code 39 Lab", 1, 20}, {"EAN-13", 2, 11},
              {"EAN-8", 3, 6},          {"2 of 5", 4, 20},      {"Code 128", 5, 20},
              {"Code 39 Lab", 1, 1000}, {"Code 128", 5, 1000},  {"Code 39 Lab", 1, 32000},
              {"Code 128", 5, 32000}};
  std::printf("%-14s %10s %10s %10s %10s\n", "a keystroke", "characters", "median ms", "99 %",
              "longest");
  bool fast = true;
  for (const auto& row : rows) {
    constexpr int kTimes = 200;
    const std::vector<double> took = typist.type(row.option, row.length, kTimes);
    if (took.empty()) {
      std::printf("%s: nothing was painted\n", row.name);
      return 1;
    }
    std::printf("%-14s %10d %10.2f %10.2f %10.2f\n", row.name, row.length, took[took.size() / 2],
                took[took.size() * 99 / 100], took.back());
    if (row.length <= kUsualLength) fast &= took[took.size() * 99 / 100] < kFrame;
  }
  return fast ? 0 : 1;
}
