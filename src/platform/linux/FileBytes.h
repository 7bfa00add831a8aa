// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>

// Which of the fast ways of copying are still worth trying between two places.
struct CopyWays {
  bool clone = true;     // share the blocks
  bool inKernel = true;  // without a way through this process
};

enum class BytesCopied { All, Stopped, SourceEnded, Failed };

// Copies the first `size` bytes of the file `from` into the empty file `to`, calling `goOn` with
// how many are there between two portions. Failed: errno tells why.
BytesCopied copyFileBytes(int from, int to, std::uint64_t size, CopyWays& ways,
                          const std::function<bool(std::uint64_t)>& goOn);
