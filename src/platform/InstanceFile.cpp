// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/InstanceFile.h"

#include <charconv>

#include "text/Utf.h"

std::string instanceFileText(const RunningInstance& instance) {
  return std::to_string(instance.processId) + "\n" + toUtf8Lossless(instance.programFolder) + "\n";
}

RunningInstance parseInstanceFile(std::string_view bytes) {
  RunningInstance instance;
  const std::size_t end = bytes.find('\n');
  if (end == std::string_view::npos || !bytes.ends_with('\n')) return instance;
  std::from_chars(bytes.data(), bytes.data() + end, instance.processId);
  bytes.remove_suffix(1);
  if (end < bytes.size()) instance.programFolder = fromUtf8Lossless(bytes.substr(end + 1));
  return instance;
}
