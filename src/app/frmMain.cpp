// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QTime>
#include <cstdlib>
#include <ctime>

#include "app/Background.h"
#include "app/MenuCommands.h"
#include "app/StartUpBoxes.h"
#include "app/WebPage.h"
#include "barcode/qt/SymbolPrint.h"
#include "bridge/PageKey.h"
#include "bridge/StateScript.h"
#include "config/Addresses.h"
#include "config/CookieStorePlaces.h"
#include "config/FirefoxProfiles.h"
#include "config/ShortcutStore.h"
#include "platform/Files.h"
#include "platform/Guarded.h"
#include "platform/ProgramFolder.h"
#include "platform/System.h"
#include "platform/Version.h"
#include "platform/qt/QtText.h"
#include "setup/SelfCheck.h"
#include "sync/SyncTexts.h"
#include "text/Paths.h"
#include "text/Utf.h"
#include "tray/DesktopNotice.h"
#include "tray/MenuTree.h"
#include "tray/TrayManager.h"
#include "tray/TrayMessages.h"

namespace {

constexpr int kFirstSearchMilliseconds = 3000;
constexpr ProgramVersion kVersion{kVersionMajor, kVersionMinor, kVersionRevision};

std::time_t programModified() {
  constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;
  const std::optional<FileStamp> stamp = fileStamp(executablePath());
  return stamp ? static_cast<std::time_t>(stamp->modified / kNanosecondsPerSecond) : 0;
}

double secondsSinceMidnight() {
  constexpr double kMillisecondsPerSecond = 1000.0;
  return QTime::currentTime().msecsSinceStartOfDay() / kMillisecondsPerSecond;
}

void present(QWidget& window) {
  window.show();
  window.raise();
  window.activateWindow();
}

// For the pages, whatever the desktop's locale: dd/mm/yyyy hh:mm:ss.
Text pageTime() { return dateText(std::time(nullptr), {u',', "%d/%m/%Y %H:%M:%S"}); }

}  // namespace

frmMain::frmMain(Companion& companion, Shell& shell, Questions& questions, DefaultBrowser& browser)
    : companion_(companion),
      shell_(shell),
      questions_(questions),
      browser_(browser),
      MenuIcon_(availableCommands(), [this](TextView name) { menuChosen(name); }),
      trayHost_(
          trayManagerStands, [this] { inBackground(companion_.trace, [this] { trayAppeared(); }); },
          [this] { inBackground(companion_.trace, [this] { noTray(); }); }),
      infos_(desktopNoticeFor(QGuiApplication::platformName())),
      splash_([this] { return splashContents(); }, secondsSinceMidnight),
      reader_(companion.trace, [this] { pumpEvents(); }),
      actions_(actionSurroundings()),
      menuActions_(menuSurroundings()),
      watcher_(companion.settings, reader_, actions_, companion.trace, *this),
      startUp_({companion, reader_, watcher_, shell, questions, browser, *this}),
      TimerFirstSearch_(this),
      TimerCookies_(this) {
  setObjectName(QStringLiteral("frmMain"));
  TimerFirstSearch_.setObjectName(QStringLiteral("TimerFirstSearch"));
  TimerCookies_.setObjectName(QStringLiteral("TimerCookies"));
  TimerFirstSearch_.setInterval(kFirstSearchMilliseconds);
  TimerFirstSearch_.setSingleShot(true);
  TimerCookies_.setTimerType(Qt::PreciseTimer);  // a coarse one may be 5 % late
  connect(&TimerFirstSearch_, &QTimer::timeout, this, &frmMain::TimerFirstSearch_Timer);
  connect(&TimerCookies_, &QTimer::timeout, this, &frmMain::TimerCookies_Timer);
}

frmMain::~frmMain() = default;

bool frmMain::Form_Load(bool firstInstance) {
  isRunningInstance_ = firstInstance;
  // A start that broke off leaves the program in the tray, with its menu.
  bool goesOn = firstInstance;
  guarded(questions_, u"Form_Load",
          [&] { goesOn = startUp_.Form_Load(firstInstance, executablePath()); });
  return goesOn;
}

void frmMain::endProgram() {
  if (trayIcon_) trayIcon_->remove();
  if (isRunningInstance_) saveOffsetCookie();  // the file is the running instance's
  QCoreApplication::sendPostedEvents();
  // Windows and message boxes may be open, each in an event loop of its own: none is unwound.
  std::_Exit(EXIT_SUCCESS);
}

// --- The menu -----------------------------------------------------------------------------------

void frmMain::menuChosen(TextView name) {
  const Text procedure = Text(name) + u"_Click";
  for (const MenuCommand& command : menuCommands()) {
    if (command.entry != name) continue;
    guarded(questions_, procedure, [&] { (this->*command.run)(); });
    return;
  }
  for (const MenuAction& action : menuActions()) {
    if (action.entry != name) continue;
    guarded(questions_, procedure, [&] { (menuActions_.*action.run)(); });
    return;
  }
}

void frmMain::MenuQuit_Click() {
  if (questions_.ask(quitBox()) != Answer::No) endProgram();
}

void frmMain::MenuAbout_Click() { splash_.start(); }

SplashContents frmMain::splashContents() const {
  return {kVersion, programModified(), companion_.locale, companion_.settings.scaleX,
          companion_.settings.scaleY};
}

void frmMain::MenuParam_Click() {
  TimerFirstSearch_.stop();
  TimerCookies_.stop();
  present(options());
}

void frmMain::menuCodeBarre_Click() {
  if (!codeBarre_) {
    const auto fontPage = [this] {
      return webPageRequest(companion_.settings, addresses::kFontPage).file;
    };
    codeBarre_ = std::make_unique<frmCodeBarrePrev>(
        BarcodeSurroundings{companion_.programFolder, companion_.locale, shell_, questions_,
                            fontPage},
        choosePrinter);
    codeBarre_->Form_Load();
  }
  present(*codeBarre_);
}

void frmMain::menuDebug_Click() {
  if (!debug_) {
    const auto handler = [this](TextView procedure, auto body) {
      return [this, procedure, body] { guarded(questions_, procedure, body); };
    };
    debug_ = std::make_unique<frmDebug>(
        companion_.trace,
        DebugCommands{handler(u"cmdInfos_Click", [this] { menuActions_.showCookieInformation(); }),
                      handler(u"cmdTest_Click", [this] { showTestWindow(); })});
  }
  present(*debug_);
}

// Opened anew it reads the table anew.
void frmMain::showTestWindow() {
  if (!test_ || !test_->isVisible()) {
    test_ = std::make_unique<frmTest>(TestSurroundings{
        companion_.settings.shortcutPath, companion_.locale, questions_, companion_.shortcuts});
    test_->show();
    test_->Form_Load();
  }
  present(*test_);
}

MenuActions::Surroundings frmMain::menuSurroundings() {
  return {.companion = companion_,
          .shell = shell_,
          .questions = questions_,
          .executablePath = executablePath(),
          .revision = kVersionRevision,
          .now = [] { return std::time(nullptr); },
          .describeSystem = describeSystem};
}

// --- The start ----------------------------------------------------------------------------------

void frmMain::addTrayIcon() { trayHost_.start(); }

void frmMain::trayAppeared() {
  trayIcon_ = std::make_unique<TrayIcon>(MenuIcon_, tipText(kVersion), this);
  trayIcon_->ApplicIcone(0);
  menuWindow_.reset();
}

void frmMain::noTray() {
  menuWindow_ = std::make_unique<MenuWindow>(MenuIcon_);
  menuWindow_->show();
  questions_.ask(noTrayBox());
}

void frmMain::setUpNotice() { infos_.setUp(); }

void frmMain::attachMenuBitmaps() { MenuIcon_.attachBitmaps(); }

// What the store holds by then is known before anything of it may be carried out.
void frmMain::enableTimerFirstSearch() {
  TimerCookies_.stop();
  if (mayWatch()) TimerFirstSearch_.start();
}

void frmMain::lockMenus(bool lock) {
  lockMenu(lock, [this](TextView name, bool enabled) { MenuIcon_.setEnabled(name, enabled); });
}

void frmMain::showSettings() {
  if (options_) options_->showSettings();
}

void frmMain::searchCookieStore() {
  recursiveSearch().search(appDataFolder(userFolders()), Text(kFirefoxStore));
}

// --- The settings -------------------------------------------------------------------------------

frmOptions& frmMain::options() {
  if (!options_) {
    options_ = std::make_unique<frmOptions>(optionsSurroundings());
    if (!options_->Form_Load()) endProgram();
  }
  return *options_;
}

OptionsSurroundings frmMain::optionsSurroundings() {
  return {
      .settings = companion_.settings,
      .shortcuts = companion_.shortcuts,
      .programFolder = companion_.programFolder,
      .locale = companion_.locale,
      .shell = shell_,
      .questions = questions_,
      .setInterval = [this](std::int32_t milliseconds) { TimerCookies_.setInterval(milliseconds); },
      .restartWatching = [this] { enableTimerFirstSearch(); },
      .pumpEvents = [this] { pumpEvents(); },
      .InitVar =
          [this] {
            if (!startUp_.InitVar()) endProgram();
          },
      .MenuAbout_Click = [this] { MenuAbout_Click(); },
      .endProgram = [this] { endProgram(); },
      .checkInstallation = [this] { checkInstallation(); },
      .autostart = autostart_};
}

void frmMain::checkInstallation() {
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);  // the desktop's tools take their time
  const SelfCheckFacts facts =
      gatherFacts(companion_.programFolder, templateFolder(folderOf(executablePath())),
                  companion_.locale, browser_);
  QGuiApplication::restoreOverrideCursor();
  questions_.ask(selfCheckBox(findings(facts)));
}

frmRecursiveSearch& frmMain::recursiveSearch() {
  if (!search_) search_ = std::make_unique<frmRecursiveSearch>(searchSurroundings());
  return *search_;
}

SearchSurroundings frmMain::searchSurroundings() {
  return {.settings = companion_.settings,
          .locale = companion_.locale,
          .questions = questions_,
          .pumpEvents = [this] { pumpEvents(); },
          .showSettings = [this] { showSettings(); },
          .storeChosen =
              [this](const Text& path) {
                options().setCookiesPath(path);
                if (!options().cmdClose_Click()) MenuParam_Click();
                shell_.ShellExecute(
                    webPageRequest(companion_.settings, u"res_css\\htm\\init_cookie.html"));
              },
          .storeNotFound = [this] { options().setCookiesPath({}); },
          .MenuAbout_Click = [this] { MenuAbout_Click(); }};
}

// --- The synchronisation ------------------------------------------------------------------------

void frmMain::MenuSynchro_Click() {
  if (!isSynchronising() && questions_.ask(insertDriveBox()) != Answer::Ok) return;
  TimerFirstSearch_.stop();
  TimerCookies_.stop();
  if (!isSynchronising()) {  // the menu stays usable while the box is open
    synchro_ = std::make_unique<frmSynchro>(synchroSurroundings());
    synchro_->Form_Load();
  }
  present(*synchro_);
}

SynchroSurroundings frmMain::synchroSurroundings() {
  return {.settings = companion_.settings,
          .programFolder = companion_.programFolder,
          .locale = companion_.locale,
          .shell = shell_,
          .questions = questions_,
          .pumpEvents = [this] { pumpEvents(); },
          .trace = [this](const Text& line) { companion_.trace.log(line); },
          .readShortcutsAgain =
              [this] {
                const ShortcutLoad load =
                    loadShortcuts(companion_.settings, companion_.shortcuts,
                                  companion_.programFolder, companion_.locale, questions_);
                if (load == ShortcutLoad::Ended) endProgram();
              },
          .restartWatching = [this] { enableTimerFirstSearch(); }};
}

// --- The watcher --------------------------------------------------------------------------------

void frmMain::TimerFirstSearch_Timer() {
  inBackground(companion_.trace, [this] { watcher_.primeLastCommand(); });
  enableTimerCookies(true);
}

void frmMain::TimerCookies_Timer() {
  inBackground(companion_.trace, [this] { watcher_.tick(); });
}

void frmMain::pumpEvents() { QCoreApplication::processEvents(); }

// Nothing is carried out while what is watched, or the user's files, may change under the watcher.
// A window may have been opened in the midst of a tick, whose end comes here.
bool frmMain::mayWatch() const {
  return !isSynchronising() && (!options_ || !options_->isVisible());
}

void frmMain::enableTimerCookies(bool on) {
  if (on && mayWatch()) {
    TimerCookies_.start(companion_.settings.pollInterval);
  } else {
    TimerCookies_.stop();
  }
}

void frmMain::saveOffsetCookie() {
  const Failure failure = ::saveOffsetCookie(companion_.programFolder, reader_.cookieOffset());
  if (failure) companion_.trace.log(u"offsetCookie.dat : " + failure.description);
}

void frmMain::showNotice(const Text& message) { infos_.showNotice(message); }

void frmMain::valueHandled(const Text& lastField) {
  if (trayIcon_) trayIcon_->showCommandHandled();
  const Settings& settings = companion_.settings;
  const BridgeState state{++valuesHandled_, lastField, settings.pollInterval,
                          fromUtf8(kVersionText), pageTime()};
  const Failure failure = writeStateScript(webApplicationRoot(settings.shortcutPath), state);
  if (failure) companion_.trace.log(u"etat.js : " + failure.description);
}

// --- The actions --------------------------------------------------------------------------------

CommandActions::Surroundings frmMain::actionSurroundings() {
  return {.shell = shell_,
          .shortcuts = companion_.shortcuts,
          .recShortQrCode =
              [this] { RecShortQrCode(companion_.settings, companion_.shortcuts, questions_); },
          .writePageKey = [this](const Text& key) { writeKey(key); },
          .lockMenus = [this](bool lock) { lockMenus(lock); },
          .currentFolder = currentFolder};
}

void frmMain::writeKey(const Text& key) {
  const std::optional<Box> box =
      writePageKey(webApplicationRoot(companion_.settings.shortcutPath), key);
  if (box) questions_.ask(*box);
}
