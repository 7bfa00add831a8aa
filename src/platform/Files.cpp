// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Files.h"

#include <utility>

#include "text/Split.h"

namespace {

constexpr std::size_t kPortion = 256 * 1024;

}  // namespace

bool FileExists(const Text& path) {
  SharedFile file;
  return !file.open(Text(trim(path)));
}

Failure readFile(const Text& path, std::string& bytes) {
  SharedFile file;
  if (Failure failure = file.open(path)) return failure;
  FileStamp stamp;
  if (Failure failure = file.stamp(stamp)) return failure;

  std::string read;
  std::size_t count = 0;
  // One byte more than there should be: what the file has grown by is read too.
  std::size_t next = static_cast<std::size_t>(stamp.size) + 1;
  bool more = true;
  while (more) {
    const std::size_t before = read.size();
    read.resize(before + next);
    if (Failure failure = file.readAt(before, std::span(read).subspan(before), count)) {
      return failure;
    }
    read.resize(before + count);
    more = count == next;
    next = kPortion;
  }
  bytes = std::move(read);
  return {};
}
