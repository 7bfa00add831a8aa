// SPDX-License-Identifier: GPL-3.0-or-later
// How the synchronisation window takes many files: empty ones in one folder of user_datas, 100 a
// sub-folder, and a backup that has none of them, so that each is a row. How long the comparison
// takes, how long the window was deaf at most meanwhile, and how long it takes from the last row
// known to a painted table, for a notch of the wheel and for the way to the last row.
//
// usage: tests/ui/on-virtual-screen build/release/bench_synchro_window [FILES...]
#include <QAbstractButton>
#include <QApplication>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <vector>

#include "PaintWatch.h"
#include "platform/qt/QtText.h"
#include "support/Doubles.h"
#include "support/Scratch.h"
#include "sync/frmSynchro.h"

namespace {

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point begin) {
  return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

class Viewer {
 public:
  explicit Viewer(int files) {
    constexpr int kPerFolder = 100;
    scratch_.write("nav/res_css/js/shortQrCode.js", "");
    scratch_.makeFolders("stick");
    for (int i = 0; i < files; ++i) {
      const std::string folder = "nav/user_datas/d" + std::to_string(i / kPerFolder);
      if (i % kPerFolder == 0) scratch_.makeFolders(folder);
      std::ofstream(scratch_.path(folder + "/file " + std::to_string(i) + ".txt")).close();
    }
    settings_.shortcutPath = scratch_.text("nav/res_css/js/shortQrCode.js");
    settings_.backupPath = scratch_.text("stick") + u"/";
    window_ = std::make_unique<frmSynchro>(SynchroSurroundings{.settings = settings_,
                                                               .programFolder = folder_,
                                                               .locale = locale_,
                                                               .shell = shell_,
                                                               .questions = questions_,
                                                               .pumpEvents = [this] { pump(); },
                                                               .trace = [](const Text&) {},
                                                               .readShortcutsAgain = [] {},
                                                               .restartWatching = [] {}});
    window_->Form_Load();
    window_->show();
    if (!QTest::qWaitForWindowActive(window_.get())) std::puts("the window has no focus");
    grid_ = window_->findChild<QTableView*>(QStringLiteral("Grid"));
    grid_->viewport()->installEventFilter(&watch_);
  }

  void measure(int files) {
    auto* compare = window_->findChild<QAbstractButton*>(QStringLiteral("cmdCompare"));
    lastPump_ = Clock::now();
    const auto begin = Clock::now();
    compare->click();
    pump();
    const double compared = millisecondsSince(begin);
    const double shown = untilPainted([] {});
    QScrollBar& rows = *grid_->verticalScrollBar();
    std::vector<double> notches;
    for (int i = 0; i < 200; ++i) {
      notches.push_back(untilPainted([this] { notch(); }));
    }
    std::sort(notches.begin(), notches.end());
    const double end = untilPainted([&rows] { rows.setValue(rows.maximum()); });
    std::printf("%10d %10d %12.0f %12.0f %12.1f %12.2f %12.2f %12.2f\n", files,
                grid_->model()->rowCount(), compared, longest_, shown, notches[notches.size() / 2],
                notches[notches.size() * 99 / 100], end);
    std::fflush(stdout);
  }

 private:
  void pump() {
    longest_ = std::max(longest_, millisecondsSince(lastPump_));
    QApplication::processEvents();
    lastPump_ = Clock::now();
  }

  double untilPainted(const std::function<void()>& change) {
    watch_.painted = false;
    const auto begin = Clock::now();
    change();
    grid_->viewport()->update();
    while (!watch_.painted && millisecondsSince(begin) < 5000) QApplication::processEvents();
    return millisecondsSince(begin);
  }

  void notch() {
    QWheelEvent event(QPointF(5, 5), grid_->viewport()->mapToGlobal(QPointF(5, 5)), {}, {0, -120},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(grid_->viewport(), &event);
  }

  Scratch scratch_;
  const Text folder_ = scratch_.text();
  const LocaleData locale_ = frenchLocale();
  Settings settings_;
  Journal journal_;
  RecordingShell shell_{journal_};
  ScriptedQuestions questions_{journal_};
  PaintWatch watch_;
  std::unique_ptr<frmSynchro> window_;
  QTableView* grid_ = nullptr;
  Clock::time_point lastPump_;
  double longest_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  std::vector<int> sizes;
  for (int i = 1; i < argc; ++i) sizes.push_back(std::atoi(argv[i]));
  if (sizes.empty()) sizes = {10'000, 100'000, 1'000'000};
  std::printf("%10s %10s %12s %12s %12s %12s %12s %12s\n", "files", "rows", "compare ms", "deaf ms",
              "shown ms", "notch ms", "99 %", "to the end");
  for (const int files : sizes) Viewer(files).measure(files);
}
