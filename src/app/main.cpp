// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <algorithm>
#include <cstdlib>
#include <iostream>

#include "app/Companion.h"
#include "app/Options.h"
#include "app/TestWindow.h"
#include "app/Toolkit.h"
#include "app/frmMain.h"
#include "platform/Console.h"
#include "platform/Desktop.h"
#include "platform/ProgramFolder.h"
#include "platform/System.h"
#include "platform/Version.h"
#include "platform/qt/EventNotifier.h"
#include "platform/qt/FrenchToolkit.h"
#include "platform/qt/MessageBoxQuestions.h"
#include "platform/qt/ScreenReaderRoles.h"
#include "setup/FolderUpdate.h"
#include "text/Paths.h"
#include "text/Split.h"
#include "text/Utf.h"
#include "tray/Launchers.h"
#include "windows/qt/Assets.h"
#include "windows/qt/LegiblePalette.h"

namespace {

constexpr int kWrongUsage = 2;

// Without a screen the toolkit would end the process with a crash report.
bool canShowWindows(const std::vector<std::string>& arguments) {
  if (hasScreen() || !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) return true;
  return std::find(arguments.begin(), arguments.end(), "-platform") != arguments.end();
}

// The program folder, filled when it is new; what stands in the way is told in a box.
Failure findProgramFolder(const Options& options, Companion& companion) {
  const Text executableFolder = folderOf(executablePath());
  companion.programFolder =
      chooseProgramFolder(options.programFolder, executableFolder, homeFolder());
  return fillProgramFolder(companion.programFolder, templateFolder(executableFolder));
}

// A folder that cannot be brought up to date is no reason not to start.
void updateFromTemplate(Companion& companion) {
  const FolderUpdate update =
      updateProgramFolder(companion.programFolder, templateFolder(folderOf(executablePath())));
  for (const Text& line : updateLines(update)) companion.trace.log(line);
}

// A folder of the user's choice is to be the same when the session starts the program.
std::vector<Text> autostartArguments(const Text& programFolder) {
  const Text usual = chooseProgramFolder({}, folderOf(executablePath()), homeFolder());
  if (programFolder == usual) return {};
  return {u"--program-folder", programFolder};
}

Box programFolderBox(const Text& folder, const Failure& failure) {
  return {
      .title = u"Tavrollo : dossier du programme",
      .text = u"Impossible de préparer le dossier\r\n" + folder + u"\r\n\r\n" + failure.description,
      .icon = BoxIcon::Critical};
}

void traceToStandardError(TraceBuffer& trace) {
  trace.observe(
      [](const Text& message) { std::cerr << toUtf8(withPlainLineBreaks(message)) << std::endl; });
}

int run(QApplication& application, const Options& options, const TerminationRequests& termination) {
  Companion companion;
  companion.locale = systemLocale();
  if (options.trace) traceToStandardError(companion.trace);

  frmMain* running = nullptr;
  const EventNotifier terminated(termination.eventsFd(), [&running] {
    if (running) running->endProgram();
    std::_Exit(EXIT_SUCCESS);  // a box of the very start is open, and nothing is there to be saved
  });

  MessageBoxQuestions questions;
  if (const Failure failure = findProgramFolder(options, companion)) {
    questions.ask(programFolderBox(companion.programFolder, failure));
    return EXIT_FAILURE;
  }
  if (options.testWindow) return runTestWindow(companion, questions);
  InstanceGuard guard;
  const bool first = guard.acquire(companion.programFolder);
  if (first) updateFromTemplate(companion);

  const auto trace = [&companion](const Text& line) { companion.trace.log(line); };
  const std::unique_ptr<Shell> shell = makeShell(trace);
  const std::unique_ptr<DefaultBrowser> browser = makeDefaultBrowser();
  LauncherShell launchers(companion.programFolder, *shell, trace);
  frmMain main(companion, launchers, questions, *browser);
  running = &main;
  const std::unique_ptr<Autostart> autostart =
      makeAutostart(executablePath(), autostartArguments(companion.programFolder));
  if (autostart) main.offerAutostart(*autostart);

  // A session that closes has the toolkit end its loop.
  QObject::connect(&application, &QCoreApplication::aboutToQuit, &main, &frmMain::endProgram);
  const EventNotifier ended(shell->eventsFd(), [&shell] { shell->reap(); });

  if (!main.Form_Load(first)) return EXIT_SUCCESS;
  return application.exec();
}

}  // namespace

int main(int argc, char** argv) {
  joinConsole();
  if (const std::optional<std::string> text = textAskedFor({argv + 1, argv + argc})) {
    std::cout << *text;
    return EXIT_SUCCESS;
  }
  if (!canShowWindows({argv + 1, argv + argc})) {
    std::cerr << "Tavrollo a besoin d'un écran : ni DISPLAY ni WAYLAND_DISPLAY n'en donne un.\n";
    return EXIT_FAILURE;
  }
  const TerminationRequests termination;
  chooseWindowPlatform();
  QApplication application(argc, argv);  // takes the toolkit's own options out of the arguments
  QApplication::setApplicationName(QStringLiteral("Tavrollo"));
  QApplication::setApplicationVersion(QString::fromLatin1(kVersionText));
  QApplication::setDesktopFileName(QStringLiteral("tavrollo"));
  QApplication::setWindowIcon(programIcon());
  QApplication::setQuitOnLastWindowClosed(false);
  speakFrench();
  tellScreenReaderRoles();
  makePaletteLegible();

  const std::optional<Options> options = parseOptions(ownArguments(argc, argv));
  if (!options) {
    std::cerr << usageText();
    return kWrongUsage;
  }
  return run(application, *options, termination);
}
