// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Programs.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Files.h"
#include "platform/linux/FileDescriptor.h"
#include "text/Split.h"
#include "text/Utf.h"

namespace {

bool mayBeExecuted(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         ::faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0;
}

}  // namespace

bool isProgram(const std::string& path) {
  SharedFile file;
  std::array<char, 4> start{};
  std::size_t count = 0;
  if (!mayBeExecuted(path)) return false;
  // A program that may be executed but not read can be nothing but a binary.
  if (::faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) != 0) return true;
  if (file.open(fromUtf8Lossless(path)) || file.readAt(0, start, count)) return false;
  const std::string_view begin(start.data(), count);
  return begin == "\x7F"
                  "ELF" ||
         begin.starts_with("#!");
}

std::string programInPath(const std::string& name) {
  constexpr std::string_view kPathWhenUnset = "/bin:/usr/bin";  // what starting a program takes too
  const char* set = std::getenv("PATH");
  const std::string_view path = set ? std::string_view(set) : kPathWhenUnset;
  if (name.empty() || name.find('/') != std::string::npos) return {};
  for (const std::string_view folder : split(path, std::string_view(":"))) {
    std::string file = std::string(folder.empty() ? "." : folder) + "/" + name;
    if (isProgram(file)) return file;
  }
  return {};
}
