// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Flush.h"

#include <algorithm>
#include <chrono>
#include <future>
#include <set>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "platform/linux/Retried.h"

namespace {

constexpr auto kBetweenCalls = std::chrono::milliseconds(20);

// Nothing that the rest of the program uses is touched by `flush`.
int onWorker(const std::function<int()>& flush, const std::function<void()>& waiting) {
  std::future<int> result;
  try {
    result = std::async(std::launch::async, flush);
  } catch (const std::system_error&) {
    return flush();  // no thread to be had
  }
  do {
    waiting();
  } while (result.wait_for(kBetweenCalls) != std::future_status::ready);
  return result.get();
}

template <class Call>
int firstFailure(const std::vector<int>& files, Call call) {
  int error = 0;
  for (const int file : files) {
    if (retried([&] { return call(file); }) != 0 && error == 0) error = errno;
  }
  return error;
}

// One file for each file system.
std::vector<int> oneForEach(const std::vector<int>& files) {
  std::set<dev_t> seen;
  std::vector<int> chosen;
  for (const int file : files) {
    struct stat status {};
    if (::fstat(file, &status) != 0 || seen.insert(status.st_dev).second) chosen.push_back(file);
  }
  return chosen;
}

}  // namespace

int flushFiles(const std::vector<int>& files, const std::function<void()>& waiting) {
  return onWorker([&] { return firstFailure(files, ::fsync); }, waiting);
}

int flushFileSystems(const std::vector<int>& files, const std::function<void()>& waiting) {
  const std::vector<int> chosen = oneForEach(files);
  return onWorker([&] { return firstFailure(chosen, ::syncfs); }, waiting);
}
