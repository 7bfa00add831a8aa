// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/XdgAutostart.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>

#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "platform/linux/DesktopEntry.h"
#include "text/Paths.h"
#include "text/Split.h"
#include "text/Utf.h"

namespace {

namespace fs = std::filesystem;

constexpr TextView kEntry = u"/autostart/tavrollo.desktop";
constexpr std::string_view kGroup = "[Desktop Entry]";
constexpr std::string_view kNewEntry =
    "[Desktop Entry]\n"
    "Type=Application\n"
    "Name=Tavrollo\n"
    "Comment=Lets the pages of a local web application open documents and start programs\n"
    "Comment[fr]=Permet aux pages d'une application web locale d'ouvrir des documents et de lancer "
    "des programmes\n"
    "Icon=tavrollo\n"
    "Terminal=false\n";

std::optional<DesktopEntry> readEntry(const Text& path, std::string& bytes) {
  if (readFile(path, bytes)) return std::nullopt;
  return parseDesktopEntry(bytes, toUtf8Lossless(path));
}

bool mayBeThere(const std::string& program) {
  return !program.starts_with('/') || FileExists(fromUtf8Lossless(program));
}

bool startsSomething(const DesktopEntry& entry) {
  const std::optional<std::vector<std::string>> command = desktopEntryCommand(entry, {});
  if (!command || !entry.autostartEnabled) return false;
  return mayBeThere(entry.tryExec) && mayBeThere(command->front());
}

bool isEntryOn(const Text& path) {
  std::string bytes;
  const std::optional<DesktopEntry> entry = readEntry(path, bytes);
  return entry && startsSomething(*entry);
}

std::string quotedWord(const std::string& word) {
  constexpr std::string_view kReserved = " \t\n\"'\\><~|&;$*?#()`=";
  std::string text;
  for (const char c : word) {
    if (c == '"' || c == '`' || c == '$' || c == '\\') text += '\\';
    text += c;
    if (c == '%') text += '%';
  }
  const bool plain = !word.empty() && word.find_first_of(kReserved) == std::string::npos;
  return plain ? text : '"' + text + '"';
}

// A text as a value of a launcher.
std::string escaped(const std::string& text) {
  std::string value;
  for (const char c : text) {
    switch (c) {
      case '\\': value += "\\\\"; break;
      case '\n': value += "\\n"; break;
      case '\t': value += "\\t"; break;
      case '\r': value += "\\r"; break;
      default: value += c;
    }
  }
  return value;
}

Failure removeEntry(const Text& path) {
  std::error_code error;
  fs::remove(toPath(path), error);
  return error ? about(failureFromErrno(error.value()), path) : Failure{};
}

Failure writeEntry(const Text& path, const std::string& bytes) {
  std::error_code error;
  fs::create_directories(toPath(path).parent_path(), error);
  if (error) return about(failureFromErrno(error.value()), path);
  const Failure failure = replaceFile(path, bytes);
  return failure ? about(failure, path) : failure;
}

}  // namespace

XdgAutostart::Places xdgConfigFolders() {
  XdgAutostart::Places places;
  places.own = environmentVariable("XDG_CONFIG_HOME").value_or(homeFolder() + u"/.config");
  const Text shared = environmentVariable("XDG_CONFIG_DIRS").value_or(u"/etc/xdg");
  for (const TextView folder : split(shared, u":")) {
    if (!folder.empty()) places.shared.emplace_back(folder);
  }
  return places;
}

std::string execValue(const std::vector<std::string>& command) {
  std::string line;
  for (const std::string& word : command) line += (line.empty() ? "" : " ") + quotedWord(word);
  return escaped(line);
}

std::string withDesktopKey(std::string_view entry, std::string_view key, std::string_view value) {
  const std::string set = std::string(key).append("=").append(value) + '\n';
  std::string text;
  bool inGroup = false;
  bool done = false;
  for (const std::string_view line : splitLines(entry)) {
    if (line.starts_with('[')) inGroup = trimLine(line) == kGroup;
    const std::size_t equals = line.find('=');
    const bool isKey = inGroup && equals != std::string_view::npos && !line.starts_with('#') &&
                       trimLine(line.substr(0, equals)) == key;
    if (isKey) continue;
    text.append(line) += '\n';
    // Right behind the group's head: where it ends need not be found.
    if (inGroup && !done && line.starts_with('[')) {
      text += set;
      done = true;
    }
  }
  return text;
}

Text XdgAutostart::ownEntry() const { return places_.own + Text(kEntry); }

Text XdgAutostart::sharedEntry() const {
  for (const Text& folder : places_.shared) {
    if (FileExists(folder + Text(kEntry))) return folder + Text(kEntry);
  }
  return {};
}

bool XdgAutostart::isOn() {
  // The user's own launcher stands for all others of its name, also when it can start nothing.
  if (somethingAt(ownEntry())) return isEntryOn(ownEntry());
  return isEntryOn(sharedEntry());
}

Failure XdgAutostart::set(bool on) {
  const Text path = ownEntry();
  std::string bytes;
  const bool isThere = readEntry(path, bytes).has_value();
  if (!isThere) bytes = kNewEntry;
  if (!on && sharedEntry().empty()) return removeEntry(path);
  bytes = withDesktopKey(bytes, "Hidden", on ? "false" : "true");
  bytes = withDesktopKey(bytes, "X-GNOME-Autostart-enabled", on ? "true" : "false");
  if (on || !isThere) {
    bytes = withDesktopKey(bytes, "Exec", execValue(command_));
    // A desktop passes over a launcher whose program was removed.
    bytes = withDesktopKey(bytes, "TryExec", escaped(command_.front()));
  }
  return writeEntry(path, bytes);
}

std::unique_ptr<Autostart> makeAutostart(const Text& executable,
                                         const std::vector<Text>& arguments) {
  std::vector<std::string> command = {toUtf8Lossless(executable)};
  for (const Text& argument : arguments) command.push_back(toUtf8Lossless(argument));
  return std::make_unique<XdgAutostart>(xdgConfigFolders(), std::move(command));
}
