// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sched.h>
#include <string>
#include <sys/mount.h>

// From now on what this process mounts is seen by nobody else, and is gone with it. Only the
// administrator can.
inline bool mountPrivately() {
  return ::unshare(CLONE_NEWNS) == 0 &&
         ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

// A file system in memory, laid over a folder for the time of a test. Only the administrator can.
class Mounted {
 public:
  Mounted(std::string folder, const char* options) : folder_(std::move(folder)) {
    mounted_ =
        mountPrivately() && ::mount("tavrollo-test", folder_.c_str(), "tmpfs", 0, options) == 0;
  }
  ~Mounted() {
    if (mounted_) ::umount2(folder_.c_str(), MNT_DETACH);
  }
  Mounted(const Mounted&) = delete;
  Mounted& operator=(const Mounted&) = delete;

  explicit operator bool() const { return mounted_; }

 private:
  std::string folder_;
  bool mounted_ = false;
};
