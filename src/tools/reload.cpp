// SPDX-License-Identifier: GPL-3.0-or-later
// Ends the running instance and starts the program again. Its one parameter is a text, the
// program's name and its path with a tab between them; whoever splits it at the tab may do so.
#include <chrono>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "platform/Console.h"
#include "platform/Processes.h"
#include "platform/System.h"
#include "text/Paths.h"
#include "text/Utf.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kPatience{5};
constexpr std::chrono::milliseconds kTurn{20};

enum ExitStatus { kStarted = 0, kFailed = 1, kWrongUsage = 2 };

struct Order {
  Text name;  // the running program's, without ".exe"
  Text path;  // of the program to start
};

Text withoutExe(Text name) {
  constexpr TextView kExtension = u".exe";
  if (name.ends_with(kExtension)) name.resize(name.size() - kExtension.size());
  return name;
}

std::optional<Order> parseOrder(const std::vector<std::string>& arguments) {
  if (arguments.empty()) return std::nullopt;
  const std::string& first = arguments[0];
  const std::size_t tab = first.find('\t');
  std::string path = tab == std::string::npos ? std::string() : first.substr(tab + 1);
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    if (!path.empty()) path += ' ';
    path += arguments[i];
  }
  const Text name = withoutExe(fromUtf8Lossless(first.substr(0, tab)));
  if (name.empty() || path.empty()) return std::nullopt;
  return Order{.name = name,
               .path = fromPath(std::filesystem::absolute(toPath(fromUtf8Lossless(path))))};
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
  if (askToEnd(processId) && waitUntilFree(processId)) return true;
  forceToEnd(processId);
  return waitUntilFree(processId);
}

int failed(const Text& sentence) {
  std::cerr << toUtf8Lossless(sentence) << '\n';
  return kFailed;
}

int start(const Text& path, const std::optional<RunningInstance>& ended) {
  std::vector<Text> arguments = {path};
  if (ended && !ended->programFolder.empty()) {
    arguments.insert(arguments.end(), {u"--program-folder", ended->programFolder});
  }
  if (const Failure failure = startDetached(arguments)) {
    return failed(u"Le programme n'a pas pu être lancé : " + failure.description + u".");
  }
  return kStarted;
}

}  // namespace

int main(int count, char** arguments) {
  const ConsoleStreams streams;
  const std::optional<Order> order = parseOrder(commandArguments(count, arguments));
  if (!order) {
    std::cerr << "Utilisation : reload \"nom<TAB>chemin du programme\"\n";
    return kWrongUsage;
  }
  // Before anything is ended: better the old instance than none.
  if (!isStartable(order->path)) {
    return failed(u"Le programme à relancer est introuvable : " + order->path + u".");
  }

  const std::optional<RunningInstance> instance = knownInstance();
  if (instance) {
    const Text name = withoutExe(executableName(instance->processId));
    if (name.empty() || name != order->name) {
      return failed(u"L'instance en cours n'est pas " + order->name + u" : rien n'a été arrêté.");
    }
    if (!end(instance->processId)) return failed(u"L'instance en cours n'a pas pu être arrêtée.");
  }
  return start(order->path, instance);
}
