// SPDX-License-Identifier: GPL-3.0-or-later
#include "setup/SelfCheck.h"

#include <algorithm>
#include <system_error>

#include "barcode/BarcodeOptions.h"
#include "bridge/CookieStoreReader.h"
#include "config/ConfigFile.h"
#include "config/CookieStoreDetails.h"
#include "config/CookieStorePlaces.h"
#include "config/FirefoxProfiles.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "setup/TemplateFiles.h"
#include "text/Paths.h"
#include "text/Utf.h"
#include "tray/Launchers.h"

namespace {

using Facts = SelfCheckFacts;

Text below(const Text& folder, TextView path) {
  return folder + nativePath(Text(u"/").append(path));
}

void gatherPages(Facts& facts, const Text& templateFolder) {
  facts.templateFound = !templateFolder.empty();
  facts.folderFilled = somethingAt(below(facts.programFolder, u"nav"));
  if (!facts.templateFound) return;
  std::error_code error;
  for (const std::string& path : templateFiles(templateFolder, error)) {
    // What is among the user's own files is his to delete.
    if (!path.starts_with("nav/") || path.starts_with("nav/user_datas/")) continue;
    const Text name = fromUtf8Lossless(path);
    if (!FileExists(below(facts.programFolder, name))) facts.missingPages.push_back(name);
  }
}

void gatherConfig(Facts& facts, const LocaleData& locale) {
  std::string bytes;
  if (!somethingAt(configPath(facts.programFolder))) return;
  facts.config = Facts::ConfigState::Unreadable;
  prepareForReading(facts.settings, facts.programFolder);
  if (readFile(configPath(facts.programFolder), bytes)) return;
  if (readConfig(bytes, locale, facts.settings, nullptr)) facts.config = Facts::ConfigState::Read;
}

void gatherStore(Facts& facts, const LocaleData& locale) {
  const UserFolders folders = userFolders();
  if (const auto live = liveProfile(firefoxRoots(folders.home, folders.xdgConfigHome))) {
    facts.liveStore = below(live->folder, kFirefoxStore);
  }
  const Text& path = facts.settings.cookiesPath;
  facts.storeThere = FileExists(path);
  if (!facts.storeThere) return;
  facts.storeDetails = cookieStoreDetails(path, locale);
  const AllowedHosts hosts = readAllowedHosts(allowedHostsPath(facts.programFolder));
  const std::optional<StoreReading> reading = readStore(path, 0, hosts, std::nullopt, {});
  if (!reading) {
    facts.store = Facts::StoreState::Changing;
    return;
  }
  facts.refusedHosts = reading->scan.refusedHosts;
  facts.storeFailure = reading->scan.failure.description;
  const bool failed = reading->scan.outcome == ScanResult::Outcome::Failed;
  facts.store = failed ? Facts::StoreState::Failed : Facts::StoreState::Read;
}

void gatherLastCommand(Facts& facts) {
  std::string script;
  const Text root = webApplicationRoot(facts.settings.shortcutPath);
  if (root.empty() || readFile(root + nativePath(u"res_css/js/etat.js"), script)) return;
  facts.lastCommand = lastCommandIn(script);
}

std::optional<FoundProgram> launcherFor(const Text& programFolder, TextView key, TextView command) {
  const auto untraced = [](const Text&) {};  // the program traces it when it starts something
  if (const std::optional<Text> own = userLauncher(programFolder, key, untraced)) {
    return FoundProgram{.program = *own, .missing = {}};
  }
  return programFor(command);
}

// Two types may share a font.
std::vector<Text> barcodeFonts() {
  std::vector<Text> families;
  for (const BarcodeOption& option : barcodeOptions()) {
    const bool isNew = std::find(families.begin(), families.end(), option.font) == families.end();
    if (isNew) families.emplace_back(option.font);
  }
  return families;
}

// The value of a key of the script, as it was written: without escapes where the text had none.
std::optional<Text> valueIn(std::string_view script, std::string_view key) {
  const std::string begin = "\"" + std::string(key) + "\":\"";
  const std::size_t at = script.find(begin);
  if (at == std::string_view::npos) return std::nullopt;
  const std::string_view rest = script.substr(at + begin.size());
  const std::size_t end = rest.find('"');
  if (end == std::string_view::npos) return std::nullopt;
  return fromUtf8(rest.substr(0, end));
}

}  // namespace

SelfCheckFacts gatherFacts(const Text& programFolder, const Text& templateFolder,
                           const LocaleData& locale, DefaultBrowser& browser) {
  SelfCheckFacts facts;
  facts.programFolder = programFolder;
  if (const auto running = runningInstance()) facts.runningFolder = running->programFolder;
  gatherPages(facts, templateFolder);
  gatherConfig(facts, locale);
  gatherStore(facts, locale);
  gatherLastCommand(facts);
  facts.defaultBrowser = readRegister(browser, kHttpOpenCommand);
  if (facts.defaultBrowser.empty()) facts.defaultBrowser = readRegister(browser, kHttpUserChoice);
  facts.tray = trayStands();
  facts.editor = launcherFor(programFolder, u"notepad", u"notepad");
  facts.wordProcessor = launcherFor(programFolder, launchers::kWordProcessor, u"word.basic");
  facts.missingFonts = missingFonts(barcodeFonts());
  return facts;
}

std::optional<SelfCheckFacts::LastCommand> lastCommandIn(std::string_view stateScript) {
  const std::optional<Text> time = valueIn(stateScript, "heure");
  const std::optional<Text> field = valueIn(stateScript, "dernier");
  if (!time || !field || time->empty()) return std::nullopt;
  return SelfCheckFacts::LastCommand{*time, *field};
}
