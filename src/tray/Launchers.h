// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string_view>

#include "platform/Shell.h"

// The commands that start other programs, and lanceurs.cfg in the program folder, in which the user
// replaces them: one "key=command line" a line, "#" or ";" begin a comment.

// What a command is called in lanceurs.cfg: the first word of its command line, in lower case and
// without ".exe". `command` may be a key already.
Text launcherKey(TextView command);

// Keys of what is started by no command line of its own.
namespace launchers {

inline constexpr TextView kSpreadsheet = u"excel";   // given the template
inline constexpr TextView kWordProcessor = u"word";  // given the template

}  // namespace launchers

Text launchersPath(const Text& programFolder);

// The user's command lines by key (in lower case). Of two lines with one key the last holds; an
// empty command line is none.
std::map<Text, Text> parseLaunchers(std::string_view bytes);

using LauncherTrace = std::function<void(const Text&)>;

// What the user put in place of `key`; nothing without an entry or a file. A file that stands there
// and cannot be read is traced.
std::optional<Text> userLauncher(const Text& programFolder, TextView key,
                                 const LauncherTrace& trace);

// `commandLine` with one document or folder behind it, as one word.
Text withArgument(const Text& commandLine, const Text& path);

// A shell in which the user's entries stand in front of `shell`'s own command lines. The file is
// read at each start, so that a change needs no restart.
class LauncherShell : public Shell {
 public:
  LauncherShell(const Text& programFolder, Shell& shell, LauncherTrace trace)
      : programFolder_(programFolder), shell_(shell), trace_(std::move(trace)) {}

  Failure ShellExecute(const ShellRequest& request) override {
    return shell_.ShellExecute(request);
  }
  CommandKind commandKind(TextView command) const override;

  // What stands behind the command is given to the user's one: a path as one word, words as they
  // are.
  Failure startCommandLine(const Text& commandLine) override;
  Failure openInWord(const Text& document) override;
  int eventsFd() const override { return shell_.eventsFd(); }
  void reap() override { shell_.reap(); }

 private:
  const Text& programFolder_;
  Shell& shell_;
  LauncherTrace trace_;
};
