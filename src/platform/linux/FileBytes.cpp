// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/FileBytes.h"

#include <algorithm>
#include <array>
#include <linux/fs.h>
#include <memory>
#include <sys/ioctl.h>
#include <unistd.h>

#include "platform/linux/Retried.h"

namespace {

constexpr std::uint64_t kPortion = 4 * 1024 * 1024;
constexpr std::size_t kBuffer = 256 * 1024;
using Buffer = std::array<char, kBuffer>;

bool isRealFailure(int error) {
  return error == ENOSPC || error == EDQUOT || error == EIO || error == EFBIG;
}

// The bytes of one portion, or -1; 0 at the source's end, and where the kernel does not do it.
ssize_t copyInKernel(int from, int to, std::uint64_t wanted, CopyWays& ways) {
  if (!ways.inKernel) return 0;
  const ssize_t copied = retried([&] {
    return ::copy_file_range(from, nullptr, to, nullptr,
                             static_cast<std::size_t>(std::min(wanted, kPortion)), 0);
  });
  if (copied >= 0 || isRealFailure(errno)) return copied;
  ways.inKernel = false;
  return 0;
}

ssize_t copyThroughBuffer(int from, int to, std::uint64_t wanted, std::unique_ptr<Buffer>& buffer) {
  if (!buffer) buffer = std::make_unique<Buffer>();
  const auto most = static_cast<std::size_t>(std::min<std::uint64_t>(wanted, kBuffer));
  const ssize_t got = retried([&] { return ::read(from, buffer->data(), most); });
  for (ssize_t done = 0; done < got;) {
    const ssize_t written = retried(
        [&] { return ::write(to, buffer->data() + done, static_cast<std::size_t>(got - done)); });
    if (written < 0) return written;
    done += written;
  }
  return got;
}

}  // namespace

BytesCopied copyFileBytes(int from, int to, std::uint64_t size, CopyWays& ways,
                          const std::function<bool(std::uint64_t)>& goOn) {
  if (!goOn(0)) return BytesCopied::Stopped;
  if (size == 0) return BytesCopied::All;
  if (ways.clone) {
    if (::ioctl(to, FICLONE, from) == 0) {
      return goOn(size) ? BytesCopied::All : BytesCopied::Stopped;
    }
    if (isRealFailure(errno)) return BytesCopied::Failed;
    ways.clone = false;
  }
  std::unique_ptr<Buffer> buffer;
  for (std::uint64_t done = 0; done < size;) {
    ssize_t copied = copyInKernel(from, to, size - done, ways);
    // Some file systems answer 0 where reading would give bytes.
    if (copied == 0) copied = copyThroughBuffer(from, to, size - done, buffer);
    if (copied < 0) return BytesCopied::Failed;
    if (copied == 0) return BytesCopied::SourceEnded;
    done += static_cast<std::uint64_t>(copied);
    if (!goOn(done)) return BytesCopied::Stopped;
  }
  return BytesCopied::All;
}
