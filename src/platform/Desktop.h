// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/Autostart.h"
#include "platform/DefaultBrowser.h"
#include "platform/Shell.h"

// What this system offers behind the interfaces.

// `trace` is given one line for each thing that could not be opened or started.
std::unique_ptr<Shell> makeShell(std::function<void(const Text&)> trace);
std::unique_ptr<DefaultBrowser> makeDefaultBrowser();

// Of the program `executable`, started with `arguments`.
std::unique_ptr<Autostart> makeAutostart(const Text& executable,
                                         const std::vector<Text>& arguments);

// The system's wish that this process end (a session that closes, a kill): from the construction on
// it no longer ends the process by itself. To be made before any thread is started.
class TerminationRequests {
 public:
  TerminationRequests();
  ~TerminationRequests();
  TerminationRequests(const TerminationRequests&) = delete;
  TerminationRequests& operator=(const TerminationRequests&) = delete;

  // A descriptor that is readable once the process is to end, on Windows an event that is set then;
  // -1 where it could not be had.
  std::intptr_t eventsFd() const { return fd_; }

 private:
  std::intptr_t fd_ = -1;
};
