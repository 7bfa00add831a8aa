// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/System.h"

#include <array>
#include <charconv>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <langinfo.h>
#include <locale.h>
#include <memory>
#include <pwd.h>
#include <string>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <type_traits>
#include <unistd.h>

#include "platform/Files.h"
#include "platform/linux/KernelRelease.h"
#include "platform/linux/OsRelease.h"
#include "platform/linux/RuntimeFolder.h"
#include "text/Paths.h"
#include "text/Utf.h"

namespace {

std::string environmentBytes(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

std::string withoutTrailingSlash(std::string path) {
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

std::string homeFromUserRecord() {
  std::array<char, 16384> buffer{};
  passwd record{};
  passwd* found = nullptr;
  if (::getpwuid_r(::getuid(), &record, buffer.data(), buffer.size(), &found) != 0) return "/";
  return found && found->pw_dir && *found->pw_dir ? found->pw_dir : "/";
}

bool takesOurFiles(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return false;
  return ::faccessat(AT_FDCWD, path.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

// A changed user keeps the variable: the folder that it names may still be another's.
bool isOurs(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && status.st_uid == ::geteuid();
}

using Locale = std::unique_ptr<std::remove_pointer_t<locale_t>, decltype(&::freelocale)>;

// The locale that the environment names for one category; null when it names none that says
// anything about the user (C, POSIX), or one that is not installed.
Locale categoryLocale(const char* category, int mask) {
  std::string name = environmentBytes("LC_ALL");
  if (name.empty()) name = environmentBytes(category);
  if (name.empty()) name = environmentBytes("LANG");
  const std::string language = name.substr(0, name.find_first_of(".@"));
  const bool saysNothing = language.empty() || language == "C" || language == "POSIX";
  return {saysNothing ? locale_t() : ::newlocale(mask, name.c_str(), locale_t()), &::freelocale};
}

// What a separator of the locale is written with; nothing when it is not one character.
std::optional<char16_t> separatorOf(const Locale& locale, nl_item item) {
  const Text separator = fromUtf8(::nl_langinfo_l(item, locale.get()));
  if (separator.size() != 1 || separator.front() == u'\uFFFD') return std::nullopt;
  return separator.front();
}

}  // namespace

std::optional<Text> environmentVariable(const char* name) {
  const std::string value = environmentBytes(name);
  if (value.empty()) return std::nullopt;
  return fromUtf8Lossless(value);
}

Text currentFolder() {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::current_path(error);
  return error ? Text() : fromPath(folder);
}

Text executablePath() {
  constexpr std::string_view kGone = " (deleted)";
  std::error_code error;
  std::string path = std::filesystem::read_symlink("/proc/self/exe", error).native();
  // An update has put another file in its place, or a file that is really called that stands there.
  if (path.ends_with(kGone) && !std::filesystem::exists(path, error)) {
    path.resize(path.size() - kGone.size());
  }
  return fromUtf8Lossless(path);
}

Text homeFolder() {
  const std::string home = environmentBytes("HOME");
  return fromUtf8Lossless(withoutTrailingSlash(home.empty() ? homeFromUserRecord() : home));
}

bool hasScreen() {
  return environmentVariable("DISPLAY").has_value() ||
         environmentVariable("WAYLAND_DISPLAY").has_value();
}

bool isWritableFolder(const Text& path) { return takesOurFiles(toPath(path).native()); }

SystemVersion versionOfRelease(std::string_view release) {
  SystemVersion version{.platform = 4};
  const char* const end = release.data() + release.size();
  const char* const next = std::from_chars(release.data(), end, version.major).ptr;
  if (next != end && *next == '.') std::from_chars(next + 1, end, version.minor);
  return version;
}

SystemVersion systemVersion() {
  utsname names{};
  return ::uname(&names) == 0 ? versionOfRelease(names.release) : versionOfRelease({});
}

std::optional<SystemDescription> describeSystem() {
  SystemDescription description;
  for (const TextView place : {u"/etc/os-release", u"/usr/lib/os-release"}) {
    std::string bytes;
    if (readFile(Text(place), bytes)) continue;
    description = descriptionOfRelease(bytes);
    break;
  }
  utsname names{};
  if (::uname(&names) == 0) {
    description.kernel = fromUtf8(std::string(names.sysname) + " " + names.release);
    if (description.name.empty()) description.name = fromUtf8(names.sysname);
  }
  return description;
}

LocaleData systemLocale() {
  LocaleData data = frenchLocale();
  if (const Locale numeric = categoryLocale("LC_NUMERIC", LC_NUMERIC_MASK)) {
    data.decimalSeparator = separatorOf(numeric, RADIXCHAR).value_or(data.decimalSeparator);
    data.groupSeparator = separatorOf(numeric, THOUSEP).value_or(u'\0');
  }
  if (const Locale time = categoryLocale("LC_TIME", LC_TIME_MASK)) {
    const std::string format = ::nl_langinfo_l(D_FMT, time.get());
    if (!format.empty()) data.dateFormat = format;
  }
  return data;
}

bool makePrivateFolder(const std::string& path) {
  constexpr mode_t kOursAlone = 0700;
  if (::mkdir(path.c_str(), kOursAlone) == 0) return true;
  const int folder = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (folder < 0) return false;
  struct stat status {};
  const bool ours = ::fstat(folder, &status) == 0 && status.st_uid == ::geteuid() &&
                    ::fchmod(folder, kOursAlone) == 0;
  ::close(folder);
  return ours;
}

Text runtimeFolder() {
  const std::string given = withoutTrailingSlash(environmentBytes("XDG_RUNTIME_DIR"));
  const bool usable = given.starts_with('/') && takesOurFiles(given) && isOurs(given);
  if (usable) return fromUtf8Lossless(given);
  const std::string shared = "/tmp/tavrollo-" + std::to_string(::geteuid());
  if (makePrivateFolder(shared)) return fromUtf8Lossless(shared);
  const Text home = homeFolder();
  const std::string own = toUtf8Lossless(home) + "/.tavrollo";
  return makePrivateFolder(own) ? fromUtf8Lossless(own) : home;
}
