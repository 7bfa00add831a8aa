// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Installed.h"

#include "platform/System.h"
#include "platform/linux/Process.h"
#include "platform/linux/Programs.h"
#include "platform/linux/X11Tray.h"
#include "text/CaseFold.h"
#include "text/Split.h"
#include "text/Utf.h"

namespace {

constexpr std::chrono::milliseconds kLimit{3000};

Captured ask(std::vector<std::string> arguments) {
  return runAndCapture({.arguments = std::move(arguments), .folder = {}, .withoutVariables = {}},
                       kLimit);
}

// Whoever of the bus's own tools is installed asks for the tray of the newer kind.
std::optional<bool> statusNotifierStands() {
  const std::vector<std::string> questions[] = {
      {"busctl", "--user", "--timeout=2", "get-property", "org.kde.StatusNotifierWatcher",
       "/StatusNotifierWatcher", "org.kde.StatusNotifierWatcher", "IsStatusNotifierHostRegistered"},
      {"gdbus", "call", "--session", "--timeout", "2", "--dest", "org.kde.StatusNotifierWatcher",
       "--object-path", "/StatusNotifierWatcher", "--method", "org.freedesktop.DBus.Properties.Get",
       "org.kde.StatusNotifierWatcher", "IsStatusNotifierHostRegistered"},
      {"dbus-send", "--session", "--print-reply", "--reply-timeout=2000",
       "--dest=org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
       "org.freedesktop.DBus.Properties.Get", "string:org.kde.StatusNotifierWatcher",
       "string:IsStatusNotifierHostRegistered"},
  };
  for (const std::vector<std::string>& question : questions) {
    if (programInPath(question.front()).empty()) continue;
    const Captured answer = ask(question);
    return answer.succeeded() && answer.output.find("true") != std::string::npos;
  }
  return std::nullopt;
}

// fc-list names all names of a family: "Code 3 de 9,Code 3 de 9 Regular".
bool namesFamily(const std::vector<Text>& lines, const Text& family) {
  for (const Text& line : lines) {
    for (const TextView name : split(line, u",")) {
      if (toLower(trim(name)) == toLower(family)) return true;
    }
  }
  return false;
}

}  // namespace

std::optional<bool> trayStands() {
  if (!hasScreen()) return std::nullopt;
  const std::optional<bool> newer = statusNotifierStands();
  if (newer == true) return true;
  const std::optional<bool> older = x11TrayStands();
  if (older == true) return true;
  // One of the two can be told to be missing only where the other one can.
  return newer && older ? std::optional(false) : std::nullopt;
}

Text fontsAdvice() { return u"copiez ses polices dans ~/.local/share/fonts et lancez fc-cache"; }

std::optional<std::vector<Text>> missingFonts(const std::vector<Text>& families) {
  const Captured answer = ask({"fc-list", ":", "family"});
  if (!answer.succeeded()) return std::nullopt;
  std::vector<Text> lines;
  for (const std::string_view line : splitLines(answer.output)) lines.push_back(fromUtf8(line));
  std::vector<Text> missing;
  for (const Text& family : families) {
    if (!namesFamily(lines, family)) missing.push_back(family);
  }
  return missing;
}
