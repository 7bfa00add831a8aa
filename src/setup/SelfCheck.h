// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "config/Settings.h"
#include "platform/DefaultBrowser.h"
#include "platform/Installed.h"
#include "platform/Questions.h"
#include "text/LocaleData.h"
#include "text/Text.h"

// What is well with an installation and what is not: facts are gathered, then told.

struct SelfCheckFacts {
  struct LastCommand {
    Text time;  // as the pages are told: dd/mm/yyyy hh:mm:ss
    Text field;
  };
  enum class ConfigState { Missing, Unreadable, Read };
  enum class StoreState { Read, Changing, Failed };

  Text programFolder;
  std::optional<Text> runningFolder;  // of the running program; nothing when none runs

  bool templateFound = false;
  bool folderFilled = false;       // it holds a web application
  std::vector<Text> missingPages;  // of the template's web application, with slashes

  ConfigState config = ConfigState::Missing;
  Settings settings;
  bool storeThere = false;
  Text storeDetails;              // its size, and when the browser last wrote to it
  std::optional<Text> liveStore;  // of the profile that Firefox used last
  StoreState store = StoreState::Failed;
  Text storeFailure;
  std::vector<std::string> refusedHosts;
  std::optional<LastCommand> lastCommand;

  Text defaultBrowser;  // "" when there is none
  std::optional<bool> tray;
  std::optional<FoundProgram> editor;
  std::optional<FoundProgram> wordProcessor;
  std::optional<std::vector<Text>> missingFonts;
};

// Asks the system. `templateFolder` may be "".
SelfCheckFacts gatherFacts(const Text& programFolder, const Text& templateFolder,
                           const LocaleData& locale, DefaultBrowser& browser);

enum class Verdict { Well, Mend, Unknown };

// One line of the diagnosis, in French.
struct Finding {
  Verdict verdict = Verdict::Well;
  Text subject;
  Text detail;
  Text mend;  // the sentence that says how; "" unless the verdict is Mend

  bool operator==(const Finding&) const = default;
};

std::vector<Finding> findings(const SelfCheckFacts& facts);

// The same as a box: what is to be mended in full, and what is well by name.
Box selfCheckBox(const std::vector<Finding>& found);

// The last command out of the script that tells the pages of it; nothing when it is none.
std::optional<SelfCheckFacts::LastCommand> lastCommandIn(std::string_view stateScript);
