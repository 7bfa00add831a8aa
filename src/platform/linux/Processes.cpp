// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Processes.h"

#include <csignal>
#include <filesystem>
#include <string>

#include "platform/linux/Process.h"
#include "platform/linux/Programs.h"
#include "text/Utf.h"

Text executableName(int processId) {
  constexpr std::string_view kReplaced = " (deleted)";
  std::error_code error;
  const std::string path =
      std::filesystem::read_symlink("/proc/" + std::to_string(processId) + "/exe", error).native();
  const std::string name = std::filesystem::path(path).filename().native();
  const std::size_t end = name.size() - (name.ends_with(kReplaced) ? kReplaced.size() : 0);
  return fromUtf8Lossless(name.substr(0, end));
}

bool askToEnd(int processId) { return ::kill(processId, SIGTERM) == 0; }

void forceToEnd(int processId) { ::kill(processId, SIGKILL); }

bool isStartable(const Text& path) { return isProgram(toUtf8Lossless(path)); }

Failure startDetached(const std::vector<Text>& arguments) {
  ProcessStart start;
  for (const Text& argument : arguments) start.arguments.push_back(toUtf8Lossless(argument));
  pid_t processId = 0;
  return startProcess(start, processId);
}
