// SPDX-License-Identifier: GPL-3.0-or-later
// What a keystroke in the barcode window costs, the repainted preview included.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLineEdit>
#include <QRadioButton>

#include "barcode/frmCodeBarrePrev.h"
#include "barcode/qt/SymbolView.h"
#include "support/Doubles.h"

namespace {

void typeACharacter(benchmark::State& state) {
  const Text folder;
  const LocaleData locale = frenchLocale();
  Journal journal;
  RecordingShell shell(journal);
  ScriptedQuestions questions(journal);
  frmCodeBarrePrev window({folder, locale, shell, questions, [] { return Text(); }},
                          [](QPrinter&, bool) { return false; });
  window.Form_Load();
  window.show();
  window.findChild<QRadioButton*>(QStringLiteral("OptType_5"))->click();
  auto* source = window.findChild<QLineEdit*>(QStringLiteral("txtSource"));
  auto* view = window.findChild<SymbolView*>(QStringLiteral("rtbCBar"));
  const QString text(static_cast<int>(state.range(0)), QLatin1Char('a'));
  bool longer = false;
  for (auto _ : state) {
    longer = !longer;
    source->setText(longer ? text + QLatin1Char('b') : text);
    view->viewport()->repaint();
  }
}
BENCHMARK(typeACharacter)
    ->ArgName("characters")
    ->Arg(20)
    ->Arg(1000)
    ->Arg(32000)
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
