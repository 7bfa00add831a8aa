// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/Launchers.h"

#include "platform/Files.h"
#include "text/CaseFold.h"
#include "text/Paths.h"
#include "text/Split.h"
#include "text/StoredText.h"

Text launcherKey(TextView command) {
  constexpr TextView kExecutableEnd = u".exe";
  Text key = toLower(trimLine(command));
  if (key.ends_with(kExecutableEnd)) key.resize(key.size() - kExecutableEnd.size());
  return key;
}

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
    launchers[launcherKey(text.substr(0, equals))] = trimLine(text.substr(equals + 1));
  }
  std::erase_if(launchers, [](const auto& entry) { return entry.second.empty(); });
  return launchers;
}

std::optional<Text> userLauncher(const Text& programFolder, TextView key,
                                 const LauncherTrace& trace) {
  const Text path = launchersPath(programFolder);
  if (!somethingAt(path)) return std::nullopt;
  std::string bytes;
  if (const Failure failure = readFile(path, bytes)) {
    trace(about(failure, path).description);
    return std::nullopt;
  }
  const std::map<Text, Text> launchers = parseLaunchers(bytes);
  const auto found = launchers.find(Text(key));
  return found == launchers.end() ? std::nullopt : std::optional(found->second);
}

Text withArgument(const Text& commandLine, const Text& path) {
  return commandLine + u" " + fileWord(path);
}

CommandKind LauncherShell::commandKind(TextView command) const {
  const CommandKind kind = shell_.commandKind(command);
  if (kind != CommandKind::Box) return kind;
  return userLauncher(programFolder_, launcherKey(command), trace_) ? CommandKind::Words : kind;
}

Failure LauncherShell::startCommandLine(const Text& commandLine) {
  const std::size_t blank = commandLine.find(u' ');
  const TextView command = TextView(commandLine).substr(0, blank);
  const auto own = userLauncher(programFolder_, launcherKey(command), trace_);
  if (!own) return shell_.startCommandLine(commandLine);
  const Text rest = blank == Text::npos ? Text() : commandLine.substr(blank + 1);
  if (rest.empty()) return shell_.startCommandLine(*own);
  const bool path = shell_.commandKind(command) == CommandKind::OnePath;
  return shell_.startCommandLine(path ? withArgument(*own, rest) : *own + u" " + rest);
}

Failure LauncherShell::openInWord(const Text& document) {
  const auto own = userLauncher(programFolder_, launchers::kWordProcessor, trace_);
  return own ? shell_.startCommandLine(withArgument(*own, document)) : shell_.openInWord(document);
}
