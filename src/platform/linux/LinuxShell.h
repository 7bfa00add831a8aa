// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/Shell.h"
#include "platform/linux/Equivalents.h"
#include "platform/linux/Process.h"

// The shell over a freedesktop.org desktop: programs are started, everything else that stands
// anywhere is handed to xdg-open. How a window is shown is the desktop's affair: ShellRequest::show
// has no effect.
class LinuxShell : public Shell {
 public:
  using Trace = std::function<void(const Text&)>;

  explicit LinuxShell(Trace trace);

  // A program is a file that the kernel can execute, or a name without "/" that stands in PATH.
  Failure ShellExecute(const ShellRequest& request) override;

  CommandKind commandKind(TextView command) const override;

  // The commands of Equivalents.h stand for what is installed. Any other program gets the rest of
  // the line split.
  Failure startCommandLine(const Text& commandLine) override;

  Failure openInWord(const Text& document) override;

  int eventsFd() const override { return children_.eventsFd(); }
  void reap() override;

 private:
  Failure open(const std::string& document, const std::string& folder);
  Failure openPath(const std::string& path, const std::string& folder);
  Failure startEquivalent(const EquivalentRow& row, const Text& path);
  Failure startWords(const std::vector<Text>& words);
  Failure start(const ProcessStart& start, const Text& document = {});
  Failure traced(const Failure& failure);

  Trace trace_;
  ChildProcesses children_;
};
