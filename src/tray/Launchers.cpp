// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/Launchers.h"

#include "platform/Files.h"
#include "text/CaseFold.h"
#include "text/Paths.h"
#include "text/Split.h"
#include "text/StoredText.h"

namespace {

// The key of a command or of an entry, as both are written: "cmd.exe" is "cmd".
Text keyOf(TextView command) {
  constexpr TextView kExecutableEnd = u".exe";
  Text key = toLower(trimLine(command));
  if (key.ends_with(kExecutableEnd)) key.resize(key.size() - kExecutableEnd.size());
  return key;
}

}  // namespace

Text launchersPath(const Text& programFolder) {
  return programFolder + nativePath(u"\\lanceurs.cfg");
}

std::map<Text, Text> parseLaunchers(std::string_view bytes) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  std::map<Text, Text> launchers;
  for (const std::string_view bytesOfLine : splitLines(bytes)) {
    const Text line = fromStoredText(bytesOfLine);
    const TextView text = trimLine(line);
    const std::size_t equals = text.find(u'=');
    if (text.starts_with(u'#') || text.starts_with(u';') || equals == TextView::npos) continue;
    launchers[keyOf(text.substr(0, equals))] = trimLine(text.substr(equals + 1));
  }
  std::erase_if(launchers, [](const auto& entry) { return entry.second.empty(); });
  return launchers;
}

std::optional<Text> userLauncher(const Text& programFolder, TextView key) {
  std::string bytes;
  if (readFile(launchersPath(programFolder), bytes)) return std::nullopt;
  const std::map<Text, Text> launchers = parseLaunchers(bytes);
  const auto found = launchers.find(Text(key));
  return found == launchers.end() ? std::nullopt : std::optional(found->second);
}

Text withArgument(const Text& commandLine, const Text& path) {
  return commandLine + u" " + parameterWord(path);
}

Failure LauncherShell::startCommandLine(const Text& commandLine) {
  const std::size_t blank = commandLine.find(u' ');
  const auto own = userLauncher(programFolder_, keyOf(TextView(commandLine).substr(0, blank)));
  if (!own) return shell_.startCommandLine(commandLine);
  const Text rest = blank == Text::npos ? Text() : commandLine.substr(blank + 1);
  return shell_.startCommandLine(rest.empty() ? *own : withArgument(*own, rest));
}

Failure LauncherShell::openInWord(const Text& document) {
  const auto own = userLauncher(programFolder_, launchers::kWordProcessor);
  return own ? shell_.startCommandLine(withArgument(*own, document)) : shell_.openInWord(document);
}
