// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cerrno>

// The result of a system call that gives -1 for failure, made again when a signal came between.
template <class Call>
auto retried(Call call) {
  auto result = call();
  while (result == -1 && errno == EINTR) result = call();
  return result;
}
