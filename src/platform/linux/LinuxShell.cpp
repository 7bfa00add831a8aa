// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/LinuxShell.h"

#include <cerrno>
#include <optional>
#include <sys/stat.h>
#include <utility>

#include "platform/Files.h"
#include "platform/Installed.h"
#include "platform/System.h"
#include "platform/linux/CommandWords.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/Programs.h"
#include "text/Numbers.h"
#include "text/Paths.h"
#include "text/Utf.h"

namespace {

constexpr std::chrono::milliseconds kQueryLimit{3000};

bool isAsciiLetter(char unit) {
  return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z');
}

// True for what begins with a scheme: http://…, file:///…, mailto:…. One letter is a drive.
bool isAddress(const std::string& text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string::npos || colon < 2 || !isAsciiLetter(text.front())) return false;
  for (const char unit : text.substr(0, colon)) {
    const bool digit = unit >= '0' && unit <= '9';
    if (!isAsciiLetter(unit) && !digit && unit != '+' && unit != '-' && unit != '.') return false;
  }
  return true;
}

// Where a file stands that was named from `directory` ("" is the current folder).
std::string placeOf(const std::string& file, const Text& directory) {
  if (file.starts_with('/')) return file;
  const Text folder = directory.empty() ? currentFolder() : directory;
  return toUtf8Lossless(folder) + (folder.ends_with(u'/') ? "" : "/") + file;
}

// Why nothing can be opened at `path`; success where something stands.
Failure absence(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) == 0) return {};
  return about(failureFromErrno(errno), fromUtf8Lossless(path));
}

// A name without "/" is a program of PATH, also where a document of that name stands.
std::string programOf(const std::string& file, const std::string& place) {
  std::string inPath = programInPath(file);
  if (!inPath.empty()) return inPath;
  return isProgram(place) ? place : std::string();
}

// What xdg-open's exit statuses mean.
Text openFailureText(int exitStatus) {
  switch (exitStatus) {
    case 1: return u"commande mal formée";
    case 2: return u"fichier introuvable";
    case 3: return u"un outil nécessaire est introuvable";
    case 4: return u"l'action a échoué";
    default: return {};
  }
}

Text openFailureTrace(const ChildProcesses::Ended& ended) {
  Text text = u"xdg-open : code " + numberText(std::int64_t{ended.exitStatus});
  const Text meaning = openFailureText(ended.exitStatus);
  if (!meaning.empty()) text += u" (" + meaning + u")";
  return text + u" - " + ended.label;
}

// The desktop's launcher for documents of this kind, as far as one is registered.
std::optional<DesktopEntry> handlerOf(std::string_view mimeType) {
  const Captured answer =
      runAndCapture({.arguments = {"xdg-mime", "query", "default", std::string(mimeType)},
                     .folder = {},
                     .withoutVariables = {}},
                    kQueryLimit);
  if (!answer.succeeded()) return std::nullopt;
  const std::string id = answer.output.substr(0, answer.output.find_first_of("; \r\n"));
  const std::string path = findDesktopEntry(id, desktopDataFolders());
  std::string bytes;
  if (path.empty() || readFile(fromUtf8Lossless(path), bytes)) return std::nullopt;
  return parseDesktopEntry(bytes, path);
}

bool isInstalled(const std::string& program) {
  return program.find('/') == std::string::npos ? !programInPath(program).empty()
                                                : isProgram(program);
}

// The arguments that start the handler on `files`; nothing when the entry cannot be used here.
std::optional<std::vector<std::string>> handlerCommand(const DesktopEntry& entry,
                                                       const std::vector<std::string>& files) {
  if (!entry.tryExec.empty() && !isInstalled(entry.tryExec)) return std::nullopt;
  auto command = desktopEntryCommand(entry, files);
  if (!command || !isInstalled(command->front())) return std::nullopt;
  if (!entry.terminal) return command;
  std::vector<std::string> inTerminal = terminalCommand();
  if (inTerminal.empty()) return std::nullopt;
  inTerminal.insert(inTerminal.end(), command->begin(), command->end());
  return inTerminal;
}

// The arguments that start what stands for the row's command on `files`; nothing without one.
std::optional<std::vector<std::string>> equivalentCommand(const EquivalentRow& row,
                                                          const std::vector<std::string>& files) {
  const auto handler = [&]() -> std::optional<std::vector<std::string>> {
    const std::optional<DesktopEntry> entry = handlerOf(row.mimeType);
    return entry ? handlerCommand(*entry, files) : std::nullopt;
  };
  if (row.handler == Handler::First) {
    if (auto command = handler()) return command;
  }
  if (const Equivalent* installed = installedEquivalent(row)) {
    std::vector<std::string> command = {std::string(installed->program)};
    command.insert(command.end(), files.begin(), files.end());
    return command;
  }
  return row.handler == Handler::Last ? handler() : std::nullopt;
}

Failure nothingInstalled(std::span<const Equivalent> programs) {
  return about(failureFromErrno(ENOENT), missingText(programs));
}

}  // namespace

std::optional<FoundProgram> programFor(TextView command) {
  const EquivalentRow* row = equivalentRow(command);
  if (!row) return std::nullopt;
  const auto found = equivalentCommand(*row, {});
  if (!found) return FoundProgram{.program = {}, .missing = missingText(row->programs)};
  return FoundProgram{.program = fromUtf8Lossless(found->front()), .missing = {}};
}

LinuxShell::LinuxShell(Trace trace) : trace_(std::move(trace)) {}

Failure LinuxShell::ShellExecute(const ShellRequest& request) {
  const std::string file = toUtf8Lossless(request.file);
  const std::string folder = toUtf8Lossless(request.directory);
  if (file.empty()) return traced(failureFromErrno(ENOENT));

  const std::string place = placeOf(file, request.directory);
  const std::string program = programOf(file, place);
  if (program.empty()) {
    const bool address = isAddress(file) && !somethingAt(fromUtf8Lossless(place));
    return address ? open(file, folder) : openPath(place, folder);
  }
  std::vector<std::string> arguments = {program};
  for (const Text& word : splitCommandWords(request.parameters)) {
    arguments.push_back(toUtf8Lossless(word));
  }
  return start({.arguments = arguments, .folder = folder, .withoutVariables = {}});
}

CommandKind LinuxShell::commandKind(TextView command) const {
  const EquivalentRow* row = equivalentRow(command);
  return row ? row->kind : CommandKind::Words;
}

Failure LinuxShell::startCommandLine(const Text& commandLine) {
  const std::size_t blank = commandLine.find(u' ');
  const Text first = commandLine.substr(0, blank);
  const Text rest = blank == Text::npos ? Text() : commandLine.substr(blank + 1);
  const EquivalentRow* row = equivalentRow(first);
  const bool stands =
      row && row->kind != CommandKind::Box && (rest.empty() || row->kind == CommandKind::OnePath);
  return stands ? startEquivalent(*row, rest) : startWords(splitCommandWords(commandLine));
}

Failure LinuxShell::openInWord(const Text& document) {
  const EquivalentRow& row = *equivalentRow(kWordBasic);
  const std::string path = toUtf8Lossless(document);
  const auto command = equivalentCommand(row, {path});
  if (!command) return traced(nothingInstalled(row.programs));
  if (Failure missing = absence(path)) return traced(missing);
  return start({.arguments = *command, .folder = {}, .withoutVariables = {}});
}

void LinuxShell::reap() {
  children_.reap([this](const ChildProcesses::Ended& ended) {
    const bool document = !ended.label.empty();
    if (document && ended.exitStatus != 0) trace_(openFailureTrace(ended));
  });
}

Failure LinuxShell::open(const std::string& document, const std::string& folder) {
  const std::string opener(kDocumentOpener.program);
  if (programInPath(opener).empty()) return traced(nothingInstalled({&kDocumentOpener, 1}));
  return start({.arguments = {opener, document}, .folder = folder, .withoutVariables = {}},
               fromUtf8Lossless(document));
}

Failure LinuxShell::openPath(const std::string& path, const std::string& folder) {
  if (Failure missing = absence(path)) return traced(missing);
  return open(path, folder);
}

Failure LinuxShell::startEquivalent(const EquivalentRow& row, const Text& path) {
  if (row.handler == Handler::Alone) {
    const Text place = path.empty() ? homeFolder() : path;
    return openPath(placeOf(toUtf8Lossless(place), {}), {});
  }
  std::vector<std::string> files;
  if (!path.empty()) files.push_back(toUtf8Lossless(guardDash(path)));
  if (const auto command = equivalentCommand(row, files)) {
    return start({.arguments = *command, .folder = {}, .withoutVariables = {}});
  }
  // A text without an editor may still have a viewer.
  if (row.handler == Handler::First && !path.empty()) {
    return openPath(placeOf(toUtf8Lossless(path), {}), {});
  }
  return traced(nothingInstalled(row.programs));
}

Failure LinuxShell::startWords(const std::vector<Text>& words) {
  std::vector<std::string> arguments;
  arguments.reserve(words.size());
  for (const Text& word : words) arguments.push_back(toUtf8Lossless(word));
  return start({.arguments = arguments, .folder = {}, .withoutVariables = {}});
}

Failure LinuxShell::start(const ProcessStart& start, const Text& document) {
  reap();
  return traced(children_.start(start, document));
}

Failure LinuxShell::traced(const Failure& failure) {
  if (failure) trace_(failure.description);
  return failure;
}
