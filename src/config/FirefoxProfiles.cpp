// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/FirefoxProfiles.h"

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <utility>

#include "platform/Files.h"
#include "text/CaseFold.h"
#include "text/Paths.h"
#include "text/Split.h"
#include "text/Utf.h"

namespace {

namespace fs = std::filesystem;

// A section of the file with the keys that matter here.
struct Section {
  std::string name = {};
  std::string path = {};
  std::string defaultValue = {};
  bool isRelative = true;
};

void takeKey(Section& section, std::string_view line) {
  const std::size_t equal = line.find('=');
  if (equal == std::string_view::npos) return;
  const std::string key = toLowerAscii(trimLine(line.substr(0, equal)));
  const std::string_view value = trimLine(line.substr(equal + 1));
  if (key == "path") section.path = value;
  if (key == "default") section.defaultValue = value;
  if (key == "isrelative") section.isRelative = value != "0";
}

std::vector<Section> readSections(std::string_view bytes) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  std::vector<Section> sections;
  for (const std::string_view whole : splitLines(bytes)) {
    const std::string_view line = trimLine(whole);
    if (line.starts_with('[')) {
      const std::string_view name = line.substr(1, line.find(']') - 1);
      sections.push_back({.name = toLowerAscii(trimLine(name))});
    } else if (!sections.empty() && !line.starts_with(';') && !line.starts_with('#')) {
      takeKey(sections.back(), line);
    }
  }
  return sections;
}

bool isProfile(const Section& section) {
  return section.name.starts_with("profile") && !section.path.empty();
}

bool isInstallation(const Section& section) {
  return section.name.starts_with("install") && !section.defaultValue.empty();
}

// The folders found so far, each once.
class Folders {
 public:
  explicit Folders(const Text& root) : root_(toPath(root)) {}

  void add(const std::string& name, bool isRelative) {
    if (name.find('\0') != std::string::npos) return;  // no file system has it
    const fs::path path = toPath(fromUtf8Lossless(name));
    if (!isRelative && !path.is_absolute()) return;
    const Text folder = fromPath((root_ / path).make_preferred());
    if (met_.insert(folder).second) folders_.push_back(folder);
  }

  std::vector<Text> take() { return std::move(folders_); }

 private:
  fs::path root_;
  std::vector<Text> folders_;
  std::set<Text> met_;
};

std::optional<std::int64_t> lastWritten(const Text& folder) {
  const Text store = folder + nativeSeparator() + Text(kFirefoxStore);
  if (!FileExists(store)) return std::nullopt;
  std::optional<FileStamp> stamp = fileStamp(store + u"-wal");
  if (!stamp) stamp = fileStamp(store);
  if (!stamp) return std::nullopt;
  return stamp->modified;
}

bool isFolder(const Text& path) {
  std::error_code error;
  return fs::is_directory(toPath(path), error);
}

std::vector<Text> namedProfiles(const Text& root) {
  std::string bytes;
  if (readFile(root + nativeSeparator() + u"profiles.ini", bytes)) return {};
  return profileFolders(bytes, root);
}

}  // namespace

std::vector<Text> firefoxRoots(const Text& home, const Text& xdgConfigHome) {
  const Text begin = home == u"/" ? Text() : home;
  const Text package = begin + u"/.var/app/org.mozilla.firefox";
  const Text config = xdgConfigHome.starts_with(u'/') ? xdgConfigHome : begin + u"/.config";
  return {(config == u"/" ? Text() : config) + u"/mozilla/firefox", begin + u"/.mozilla/firefox",
          begin + u"/snap/firefox/common/.mozilla/firefox", package + u"/.mozilla/firefox",
          package + u"/config/mozilla/firefox"};
}

std::vector<Text> profileFolders(std::string_view iniBytes, const Text& root) {
  const std::vector<Section> sections = readSections(iniBytes);
  Folders folders(root);
  for (const Section& section : sections) {
    if (isInstallation(section)) folders.add(section.defaultValue, true);
  }
  for (const Section& section : sections) {
    if (isProfile(section) && section.defaultValue == "1") {
      folders.add(section.path, section.isRelative);
    }
  }
  for (const Section& section : sections) {
    if (isProfile(section)) folders.add(section.path, section.isRelative);
  }
  return folders.take();
}

std::optional<LiveProfile> liveProfile(const std::vector<Text>& roots) {
  std::optional<LiveProfile> firstFolder;
  std::optional<LiveProfile> newest;
  std::int64_t newestTime = 0;
  for (const Text& root : roots) {
    for (const Text& folder : namedProfiles(root)) {
      if (!firstFolder && isFolder(folder)) firstFolder = LiveProfile{root, folder};
      const std::optional<std::int64_t> written = lastWritten(folder);
      if (!written || (newest && *written <= newestTime)) continue;
      newest = LiveProfile{root, folder};
      newestTime = *written;
    }
  }
  return newest ? newest : firstFolder;
}
