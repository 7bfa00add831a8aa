// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "text/LocaleData.h"
#include "text/Text.h"

// What the operating system tells about itself and about this process.

// An environment variable; nothing when it is unset or empty.
std::optional<Text> environmentVariable(const char* name);

// "" when the current folder is gone.
Text currentFolder();

// The running program's file, links resolved; where it stood, when it has been replaced since.
Text executablePath();

// The user's home folder, without a trailing separator (unless it is the root itself).
Text homeFolder();

// True when the desktop has told this process of a screen.
bool hasScreen();

// True when files can be created in the folder.
bool isWritableFolder(const Text& path);

// Which system runs, by the three numbers that Windows tells itself apart with. Platform 1 and 2
// are its two families; 4 is another kernel, with the first two numbers of its release.
struct SystemVersion {
  std::uint32_t platform = 0;
  std::uint32_t major = 0;
  std::uint32_t minor = 0;

  bool operator==(const SystemVersion&) const = default;
};
SystemVersion systemVersion();

// The system in its own words, for a person.
struct SystemDescription {
  Text name;     // "Debian GNU/Linux"
  Text version;  // "12 (bookworm)"; "" where the system has none
  Text kernel;   // "Linux 6.1.0-18-amd64"

  bool operator==(const SystemDescription&) const = default;
};

// Nothing on a system that brings a program which shows this ("winver").
std::optional<SystemDescription> describeSystem();

// The desktop's locale; the C locale counts as French.
LocaleData systemLocale();

// The user's runtime folder, without a trailing separator; created with mode 0700 where the system
// has none.
Text runtimeFolder();

// One running instance per user. The lock dies with its owner, however that ends.
class InstanceGuard {
 public:
  InstanceGuard();
  ~InstanceGuard();
  InstanceGuard(InstanceGuard&& other) noexcept;
  InstanceGuard& operator=(InstanceGuard&& other) noexcept;

  // True when this process now is the running instance; `programFolder` is left for whoever has to
  // relaunch it. False when another one is.
  bool acquire(const Text& programFolder);

 private:
  struct Lock;
  std::unique_ptr<Lock> lock_;
};

// Who holds the instance lock; nothing when nobody does. Asking never disturbs an instance that is
// just starting.
struct RunningInstance {
  int processId = 0;  // 0 when the holder cannot be told (it is just starting)
  Text programFolder;
};
std::optional<RunningInstance> runningInstance();
