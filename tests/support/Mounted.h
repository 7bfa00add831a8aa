// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <fstream>
#include <linux/capability.h>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/syscall.h>
#include <unistd.h>

// File systems that a test mounts. Nobody else sees them, and they are gone with the process.

// The right to mount, as long as one of these lives. An ordinary user gets it in a user namespace
// of the process's own, where the system grants one; the rights that come with it would hide what
// an ordinary user may not do, so they rest in between.
class MountRights {
 public:
  MountRights() {
    if (isOrdinaryUser() && !arePermitted()) enterUserNamespace();
    if (isOrdinaryUser()) take(true);
  }
  ~MountRights() {
    if (isOrdinaryUser()) take(false);
  }
  MountRights(const MountRights&) = delete;
  MountRights& operator=(const MountRights&) = delete;

 private:
  struct Rights {
    __user_cap_header_struct header{.version = _LINUX_CAPABILITY_VERSION_3, .pid = 0};
    __user_cap_data_struct data[_LINUX_CAPABILITY_U32S_3] = {};

    Rights() { ::syscall(SYS_capget, &header, data); }
  };

  static bool isOrdinaryUser() { return ::geteuid() != 0; }

  static bool arePermitted() { return (Rights().data[0].permitted & (1U << CAP_SYS_ADMIN)) != 0; }

  static void take(bool them) {
    Rights rights;
    for (__user_cap_data_struct& data : rights.data) data.effective = them ? data.permitted : 0;
    ::syscall(SYS_capset, &rights.header, rights.data);
  }

  // Inside, everybody has the number that they had outside.
  static void enterUserNamespace() {
    const std::string user = std::to_string(::geteuid());
    const std::string group = std::to_string(::getegid());
    if (::unshare(CLONE_NEWUSER) != 0) return;
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << user + " " + user + " 1";
    std::ofstream("/proc/self/gid_map") << group + " " + group + " 1";
  }
};

// Why a test is passed over.
inline constexpr const char* kMayNotMount = "this user may not mount here";

// From now on what this process mounts is seen by nobody else. False where it may not mount.
inline bool mountPrivately() {
  const MountRights rights;
  return ::unshare(CLONE_NEWNS) == 0 &&
         ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

// A file system in memory, laid over a folder for the time of a test.
class Mounted {
 public:
  Mounted(std::string folder, const char* options) : folder_(std::move(folder)) {
    if (!mountPrivately()) return;
    const MountRights rights;
    mounted_ = ::mount("tavrollo-test", folder_.c_str(), "tmpfs", 0, options) == 0;
  }
  ~Mounted() {
    if (!mounted_) return;
    const MountRights rights;
    ::umount2(folder_.c_str(), MNT_DETACH);
  }
  Mounted(const Mounted&) = delete;
  Mounted& operator=(const Mounted&) = delete;

  explicit operator bool() const { return mounted_; }

  // True when nothing can be written on it from now on.
  bool makeReadOnly() const {
    const MountRights rights;
    return ::mount("none", folder_.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0;
  }

 private:
  std::string folder_;
  bool mounted_ = false;
};
