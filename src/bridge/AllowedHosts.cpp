// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/AllowedHosts.h"

#include "platform/Files.h"
#include "text/CaseFold.h"
#include "text/Paths.h"
#include "text/Split.h"

namespace {

bool isLocal(std::string_view host) {
  return host.empty() || host == "localhost" || host == "127.0.0.1" || host == "[::1]";
}

}  // namespace

AllowedHosts::AllowedHosts(std::string_view listFile) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (listFile.starts_with(kByteOrderMark)) listFile.remove_prefix(kByteOrderMark.size());
  for (const std::string_view line : splitLines(listFile)) {
    const std::string_view host = trimLine(line);
    if (!host.empty() && !host.starts_with('#')) listed_.insert(toLowerAscii(host));
  }
}

bool AllowedHosts::allows(std::string_view host) const {
  // A browser writes hosts of other letters in their ASCII form.
  const std::string lower = toLowerAscii(host);
  return isLocal(lower) || listed_.contains(lower);
}

Text allowedHostsPath(const Text& programFolder) {
  return programFolder + nativePath(u"\\hotes_autorises.txt");
}

AllowedHosts readAllowedHosts(const Text& path) {
  std::string bytes;
  if (readFile(path, bytes)) return {};
  return AllowedHosts(bytes);
}
