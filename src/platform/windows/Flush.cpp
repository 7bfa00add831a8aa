// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/Flush.h"

#include <chrono>
#include <future>
#include <system_error>

namespace {

constexpr auto kBetweenCalls = std::chrono::milliseconds(20);

// Nothing that the rest of the program uses is touched by this.
DWORD flushAll(const std::vector<HANDLE>& files) {
  DWORD error = 0;
  for (HANDLE const file : files) {
    if (!::FlushFileBuffers(file) && error == 0) error = ::GetLastError();
  }
  return error;
}

}  // namespace

DWORD flushFiles(const std::vector<HANDLE>& files, const std::function<void()>& waiting) {
  std::future<DWORD> result;
  try {
    result = std::async(std::launch::async, [&files] { return flushAll(files); });
  } catch (const std::system_error&) {
    return flushAll(files);  // no thread to be had
  }
  while (result.wait_for(kBetweenCalls) != std::future_status::ready) waiting();
  return result.get();
}
