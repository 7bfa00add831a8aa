// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/CopyNames.h"

#include <fstream>
#include <iterator>
#include <unistd.h>

#include "platform/FileCopy.h"
#include "text/Split.h"

namespace {

constexpr std::string_view kBegin = ".tavrollo-copie-";
constexpr std::string_view kEnd = ".tmp";

// When the process was started, in ticks since the machine was: with its number, that names it for
// as long as the machine runs. "" when there is no such process.
std::string startOf(const std::string& process) {
  std::ifstream file("/proc/" + process + "/stat", std::ios::binary);
  const std::string status{std::istreambuf_iterator<char>(file), {}};
  const std::size_t name = status.rfind(')');  // a name may hold anything
  if (name == std::string::npos) return {};
  constexpr std::size_t kStart = 20;  // the 22nd field, counted from behind the name
  const std::vector<std::string_view> fields =
      split(std::string_view(status).substr(name + 1), " ");
  return fields.size() > kStart ? std::string(fields[kStart]) : std::string();
}

std::string ownNumber() { return std::to_string(::getpid()); }

}  // namespace

std::string hiddenCopyPrefix() {
  const std::string process = ownNumber();
  return std::string(kBegin) + process + "-" + startOf(process) + "-";
}

std::string hiddenCopyName(const std::string& prefix, std::uint64_t number) {
  return prefix + std::to_string(number) + std::string(kEnd);
}

bool isCopyLeftover(NativeView name) {
  if (!name.starts_with(kBegin) || !name.ends_with(kEnd)) return false;
  const std::vector<std::string_view> parts = split(name.substr(kBegin.size()), "-");
  if (parts.size() != 3) return false;
  const std::string process(parts[0]);
  return process == ownNumber() || startOf(process) != parts[1];
}
