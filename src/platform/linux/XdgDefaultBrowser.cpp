// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/XdgDefaultBrowser.h"

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/Process.h"
#include "text/Utf.h"

namespace {

constexpr std::chrono::milliseconds kQueryLimit{4000};

constexpr const char* kFirefoxEntries[] = {
    "firefox.desktop",
    "firefox-esr.desktop",
    "org.mozilla.firefox.desktop",
    "firefox_firefox.desktop",
};

// The tool's first line, "" when it failed. BROWSER would hide what the desktop has set.
std::string ask(std::vector<std::string> arguments) {
  const Captured answer = runAndCapture(
      {.arguments = std::move(arguments), .folder = {}, .withoutVariables = {"BROWSER"}},
      kQueryLimit);
  return answer.succeeded() ? answer.output.substr(0, answer.output.find('\n')) : std::string();
}

std::string defaultBrowser() { return ask({"xdg-settings", "get", "default-web-browser"}); }

std::string httpHandler() { return ask({"xdg-mime", "query", "default", "x-scheme-handler/http"}); }

// "" when no Firefox is installed.
std::string installedFirefox() {
  for (const char* id : kFirefoxEntries) {
    if (!findDesktopEntry(id, desktopDataFolders()).empty()) return id;
  }
  return {};
}

}  // namespace

std::uint32_t XdgDefaultBrowser::RegRead(TextView key, Text& value) {
  std::string found;
  if (key == kHttpOpenCommand) found = defaultBrowser();
  if (key == kHttpUserChoice) found = httpHandler();
  if (key == kFirefoxApplication) found = installedFirefox();
  if (found.empty()) return kRegistryFileNotFound;
  value = fromUtf8(found);
  return 0;
}

void XdgDefaultBrowser::RegWrite(TextView key, TextView /*value*/) {
  const std::string firefox = installedFirefox();
  if (key != kHttpOpenCommand || firefox.empty()) return;
  ask({"xdg-settings", "set", "default-web-browser", firefox});
  if (defaultBrowser() == firefox) return;
  ask({"xdg-mime", "default", firefox, "x-scheme-handler/http", "x-scheme-handler/https"});
}
