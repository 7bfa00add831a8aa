// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Desktop.h"

#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include "platform/linux/CommandWords.h"
#include "platform/linux/LinuxShell.h"
#include "platform/linux/XdgDefaultBrowser.h"

Text parameterWord(const Text& word) { return quoteWord(word); }

Text fileWord(const Text& fileName) { return quoteWord(guardDash(fileName)); }

std::unique_ptr<Shell> makeShell(std::function<void(const Text&)> trace) {
  return std::make_unique<LinuxShell>(std::move(trace));
}

std::unique_ptr<DefaultBrowser> makeDefaultBrowser() {
  return std::make_unique<XdgDefaultBrowser>();
}

TerminationRequests::TerminationRequests() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&signals, signal);
  fd_ = ::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
  if (fd_ != -1) ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

TerminationRequests::~TerminationRequests() {
  if (fd_ != -1) ::close(static_cast<int>(fd_));
}
