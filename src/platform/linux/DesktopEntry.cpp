// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/DesktopEntry.h"

#include "platform/Files.h"
#include "platform/System.h"
#include "platform/linux/CommandWords.h"
#include "text/Split.h"
#include "text/Utf.h"

namespace {

// The escapes that every value of type string may hold.
std::string unescaped(std::string_view value) {
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] != '\\' || i + 1 == value.size()) {
      text += value[i];
      continue;
    }
    switch (value[++i]) {
      case 's': text += ' '; break;
      case 'n': text += '\n'; break;
      case 't': text += '\t'; break;
      case 'r': text += '\r'; break;
      case '\\': text += '\\'; break;
      default: text.append({'\\', value[i]});
    }
  }
  return text;
}

void setKey(DesktopEntry& entry, std::string_view key, std::string_view value) {
  if (key == "Type") entry.type = unescaped(value);
  if (key == "Name") entry.name = unescaped(value);
  if (key == "Icon") entry.icon = unescaped(value);
  if (key == "Exec") entry.exec = unescaped(value);
  if (key == "TryExec") entry.tryExec = unescaped(value);
  if (key == "Terminal") entry.terminal = value == "true";
  if (key == "Hidden") entry.hidden = value == "true";
  if (key == "X-GNOME-Autostart-enabled") entry.autostartEnabled = value != "false";
  if (key == "NoDisplay") entry.noDisplay = value == "true";
}

// Turns the words of a command line into arguments, field code by field code.
class Expansion {
 public:
  Expansion(const DesktopEntry& entry, const std::vector<std::string>& files)
      : entry_(entry), files_(files) {}

  // False when the word holds a code that does not exist.
  bool add(const std::string& word) {
    if (word == "%F" || word == "%U") {
      tookFiles_ = true;
      arguments_.insert(arguments_.end(), files_.begin(), files_.end());
      return true;
    }
    if (word == "%i") {
      if (!entry_.icon.empty()) arguments_.insert(arguments_.end(), {"--icon", entry_.icon});
      return true;
    }
    std::string argument;
    for (std::size_t i = 0; i < word.size(); ++i) {
      if (word[i] != '%') {
        argument += word[i];
      } else if (++i == word.size() || !addCode(word[i], argument)) {
        return false;
      }
    }
    // A word that was a code alone and came to nothing is no argument.
    const bool vanished = argument.empty() && !word.empty();
    if (!vanished) arguments_.push_back(argument);
    return true;
  }

  std::vector<std::string> arguments() const {
    std::vector<std::string> all = arguments_;
    if (!tookFiles_) all.insert(all.end(), files_.begin(), files_.end());
    return all;
  }

 private:
  bool addCode(char code, std::string& argument) {
    constexpr std::string_view kDeprecated = "dDnNvm";
    switch (code) {
      case '%': argument += '%'; return true;
      case 'c': argument += entry_.name; return true;
      case 'k': argument += entry_.path; return true;
      case 'i': return true;
      case 'f':
      case 'F':
      case 'u':
      case 'U':
        tookFiles_ = true;
        if (!files_.empty()) argument += files_.front();
        return true;
      default: return kDeprecated.find(code) != std::string_view::npos;
    }
  }

  const DesktopEntry& entry_;
  const std::vector<std::string>& files_;
  std::vector<std::string> arguments_;
  bool tookFiles_ = false;
};

// Looks for `rest` in `folder`, also with one of its first dashes as a sub-folder's end.
std::string findBelow(const std::string& folder, const std::string& rest) {
  std::string file = folder + "/" + rest;
  if (FileExists(fromUtf8Lossless(file))) return file;
  for (std::size_t dash = rest.find('-'); dash != std::string::npos;
       dash = rest.find('-', dash + 1)) {
    const std::string below = folder + "/" + rest.substr(0, dash);
    if (dash == 0 || !somethingAt(fromUtf8Lossless(below))) continue;
    std::string found = findBelow(below, rest.substr(dash + 1));
    if (!found.empty()) return found;
  }
  return {};
}

}  // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string_view bytes, const std::string& path) {
  DesktopEntry entry;
  entry.path = path;
  bool inGroup = false;
  bool found = false;
  for (const std::string_view line : splitLines(bytes)) {
    if (line.starts_with('#')) continue;
    if (line.starts_with('[')) {
      inGroup = trimLine(line) == "[Desktop Entry]";
      found = found || inGroup;
      continue;
    }
    const std::size_t equals = line.find('=');
    if (!inGroup || equals == std::string_view::npos) continue;
    setKey(entry, trimLine(line.substr(0, equals)), trimLine(line.substr(equals + 1)));
  }
  if (!found) return std::nullopt;
  return entry;
}

std::optional<std::vector<std::string>> desktopEntryCommand(const DesktopEntry& entry,
                                                            const std::vector<std::string>& files) {
  if (entry.type != "Application" || entry.hidden) return std::nullopt;
  const std::vector<Text> words = splitCommandWords(fromUtf8Lossless(entry.exec));
  if (words.empty() || words.front().empty()) return std::nullopt;
  Expansion expansion(entry, files);
  for (const Text& word : words) {
    if (!expansion.add(toUtf8Lossless(word))) return std::nullopt;
  }
  return expansion.arguments();
}

std::vector<std::string> desktopDataFolders() {
  const Text own = environmentVariable("XDG_DATA_HOME").value_or(homeFolder() + u"/.local/share");
  const Text shared = environmentVariable("XDG_DATA_DIRS").value_or(u"/usr/local/share:/usr/share");
  std::vector<std::string> folders = {toUtf8Lossless(own)};
  for (const Text& folder : split(shared, u":")) {
    if (!folder.empty()) folders.push_back(toUtf8Lossless(folder));
  }
  return folders;
}

std::string findDesktopEntry(const std::string& id, const std::vector<std::string>& dataFolders) {
  if (id.empty() || id.find('/') != std::string::npos) return {};
  for (const std::string& folder : dataFolders) {
    std::string found = findBelow(folder + "/applications", id);
    if (!found.empty()) return found;
  }
  return {};
}
