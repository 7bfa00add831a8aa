// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "platform/Shell.h"

// The shell of Windows. What it cannot open it does not show a box about: that is traced.
class WindowsShell : public Shell {
 public:
  using Trace = std::function<void(const Text&)>;

  explicit WindowsShell(Trace trace);

  Failure ShellExecute(const ShellRequest& request) override;
  Failure startCommandLine(const Text& commandLine) override;
  Failure openInWord(const Text& document) override;

 private:
  Failure traced(const Failure& failure);

  Trace trace_;
};
