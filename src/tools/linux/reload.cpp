// SPDX-License-Identifier: GPL-3.0-or-later
// Ends the running instance and starts the program again. Its one parameter is a text, the
// program's name and its path with a tab between them; whoever splits it at the tab may do so.
#include <chrono>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <thread>

#include "platform/System.h"
#include "platform/linux/Process.h"
#include "platform/linux/Programs.h"
#include "text/Utf.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kPatience{5};
constexpr std::chrono::milliseconds kTurn{20};

enum ExitStatus { kStarted = 0, kFailed = 1, kWrongUsage = 2 };

struct Order {
  std::string name;  // the running program's, without ".exe"
  std::string path;  // of the program to start
};

std::string withoutExe(std::string name) {
  constexpr std::string_view kExtension = ".exe";
  if (name.ends_with(kExtension)) name.resize(name.size() - kExtension.size());
  return name;
}

std::optional<Order> parseOrder(int count, char** arguments) {
  if (count < 2) return std::nullopt;
  const std::string first = arguments[1];
  const std::size_t tab = first.find('\t');
  Order order{.name = withoutExe(first.substr(0, tab)), .path = {}};
  if (tab != std::string::npos) order.path = first.substr(tab + 1);
  for (int i = 2; i < count; ++i) {
    if (!order.path.empty()) order.path += ' ';
    order.path += arguments[i];
  }
  if (order.name.empty() || order.path.empty()) return std::nullopt;
  order.path = std::filesystem::absolute(order.path).native();
  return order;
}

// "" when the process is gone.
std::string executableName(int processId) {
  std::error_code error;
  const std::string path =
      std::filesystem::read_symlink("/proc/" + std::to_string(processId) + "/exe", error).native();
  constexpr std::string_view kReplaced = " (deleted)";
  const std::string name = std::filesystem::path(path).filename().native();
  return name.ends_with(kReplaced) ? name.substr(0, name.size() - kReplaced.size()) : name;
}

// The holder of the lock, given time to say who it is. Nothing when nobody holds it.
std::optional<RunningInstance> knownInstance() {
  const Clock::time_point deadline = Clock::now() + kPatience;
  std::optional<RunningInstance> instance = runningInstance();
  while (instance && instance->processId == 0 && Clock::now() < deadline) {
    std::this_thread::sleep_for(kTurn);
    instance = runningInstance();
  }
  return instance;
}

// True when `processId` lets go of the lock in time.
bool waitUntilFree(int processId) {
  const Clock::time_point deadline = Clock::now() + kPatience;
  while (true) {
    const std::optional<RunningInstance> instance = runningInstance();
    if (!instance || (instance->processId != 0 && instance->processId != processId)) return true;
    if (Clock::now() >= deadline) return false;
    std::this_thread::sleep_for(kTurn);
  }
}

bool end(int processId) {
  ::kill(processId, SIGTERM);
  if (waitUntilFree(processId)) return true;
  ::kill(processId, SIGKILL);
  return waitUntilFree(processId);
}

int failed(const std::string& sentence) {
  std::cerr << sentence << '\n';
  return kFailed;
}

int start(const std::string& path, const std::optional<RunningInstance>& ended) {
  ProcessStart program{.arguments = {path}, .folder = {}, .withoutVariables = {}};
  if (ended && !ended->programFolder.empty()) {
    program.arguments.insert(program.arguments.end(),
                             {"--program-folder", toUtf8Lossless(ended->programFolder)});
  }
  pid_t processId = 0;
  if (const Failure failure = startProcess(program, processId)) {
    return failed("Le programme n'a pas pu être lancé : " + toUtf8(failure.description) + ".");
  }
  return kStarted;
}

}  // namespace

int main(int count, char** arguments) {
  const std::optional<Order> order = parseOrder(count, arguments);
  if (!order) {
    std::cerr << "Utilisation : reload \"nom<TAB>chemin du programme\"\n";
    return kWrongUsage;
  }
  // Before anything is ended: better the old instance than none.
  if (!isProgram(order->path)) {
    return failed("Le programme à relancer est introuvable : " + order->path + ".");
  }

  const std::optional<RunningInstance> instance = knownInstance();
  if (instance) {
    const std::string name = executableName(instance->processId);
    if (name.empty() || name != order->name) {
      return failed("L'instance en cours n'est pas " + order->name + " : rien n'a été arrêté.");
    }
    if (!end(instance->processId)) return failed("L'instance en cours n'a pas pu être arrêtée.");
  }
  return start(order->path, instance);
}
