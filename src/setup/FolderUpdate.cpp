// SPDX-License-Identifier: GPL-3.0-or-later
#include "setup/FolderUpdate.h"

#include <filesystem>
#include <optional>
#include <system_error>

#include "platform/Files.h"
#include "setup/InstalledFiles.h"
#include "setup/Sha256.h"
#include "setup/TemplateFiles.h"
#include "text/Numbers.h"
#include "text/Paths.h"
#include "text/Utf.h"

namespace {

namespace fs = std::filesystem;

constexpr TextView kNote = u"fichiers_installes.txt";
constexpr TextView kPages = u"nav";
constexpr std::string_view kKeyScript = "nav/res_css/js/rwCookies.js";

struct Parts {
  std::string_view own;     // the user's, in front
  std::string_view shared;  // what the template may replace
};

Parts partsOf(const std::string& path, std::string_view bytes) {
  if (path != kKeyScript) return {{}, bytes};
  const std::size_t end = bytes.find('\n');
  const std::size_t own = end == std::string_view::npos ? bytes.size() : end + 1;
  return {bytes.substr(0, own), bytes.substr(own)};
}

std::string digestOf(const std::string& path, std::string_view bytes) {
  return sha256(partsOf(path, bytes).shared);
}

class Updater {
 public:
  Updater(fs::path folder, fs::path from) : folder_(std::move(folder)), from_(std::move(from)) {}

  FolderUpdate run() {
    readNote();
    std::error_code error;
    const std::vector<std::string> files = templateFiles(fromPath(from_), error);
    if (error) {
      fail({}, failureFromErrno(error.default_error_condition().value()));
      return update_;
    }
    for (const std::string& path : files) look(path);
    writeNote();
    return update_;
  }

 private:
  Text noteFile() const { return fromPath(folder_ / toPath(kNote)); }

  void readNote() {
    std::string text;
    if (!readFile(noteFile(), text)) noted_ = parseInstalledFiles(text);
    old_ = noted_;
  }

  void writeNote() {
    if (noted_ == old_) return;
    const Failure failure = replaceFile(noteFile(), installedFilesText(noted_));
    if (failure) fail(Text(kNote), failure);
  }

  void fail(const Text& path, const Failure& failure) {
    update_.notDone.push_back({path, failure});
  }

  void look(const std::string& path) {
    const Text name = fromUtf8Lossless(path);
    std::string offered;
    if (const Failure failure = readFile(fromPath(from_ / toPath(name)), offered)) {
      fail(name, failure);
      return;
    }
    const auto note = noted_.find(path);
    const bool isKnown = note != noted_.end();
    if (isKnown && note->second == digestOf(path, offered)) return;

    const fs::path target = folder_ / toPath(name);
    std::error_code error;
    const fs::file_type type = fs::symlink_status(target, error).type();
    if (type == fs::file_type::not_found) {
      if (!isKnown) arrive(path, name, offered);
    } else if (type == fs::file_type::regular) {
      compare(path, name, offered, isKnown ? note->second : std::string());
    } else {
      update_.kept.push_back(name);
    }
  }

  void arrive(const std::string& path, const Text& name, const std::string& offered) {
    const fs::path target = folder_ / toPath(name);
    std::error_code error;
    fs::create_directories(target.parent_path(), error);
    Failure failure = failureFromErrno(error.default_error_condition().value());
    if (!failure) failure = replaceFile(fromPath(target), offered);
    if (failure) {
      fail(name, failure);
      return;
    }
    noted_[path] = digestOf(path, offered);
    update_.arrived.push_back(name);
  }

  void compare(const std::string& path, const Text& name, const std::string& offered,
               const std::string& installed) {
    const Text target = fromPath(folder_ / toPath(name));
    std::string present;
    if (const Failure failure = readFile(target, present)) {
      fail(name, failure);
      return;
    }
    const std::string digest = digestOf(path, present);
    if (digest == digestOf(path, offered)) {
      noted_[path] = digest;
    } else if (digest == installed) {
      replace(path, name, partsOf(path, present), partsOf(path, offered));
    } else {
      update_.kept.push_back(name);
    }
  }

  void replace(const std::string& path, const Text& name, const Parts& present,
               const Parts& offered) {
    const std::string bytes = std::string(present.own).append(offered.shared);
    if (const Failure failure = replaceFile(fromPath(folder_ / toPath(name)), bytes)) {
      fail(name, failure);
      return;
    }
    noted_[path] = sha256(offered.shared);
    update_.replaced.push_back(name);
  }

  fs::path folder_;
  fs::path from_;
  InstalledFiles noted_;
  InstalledFiles old_;
  FolderUpdate update_;
};

Text counted(std::size_t count, TextView one, TextView many) {
  return numberText(static_cast<std::int64_t>(count)) + u" " + Text(count == 1 ? one : many);
}

}  // namespace

FolderUpdate updateProgramFolder(const Text& folder, const Text& templateFolder) {
  const fs::path to = toPath(folder);
  const fs::path from = toPath(templateFolder);
  std::error_code error;
  const bool isFilled = fs::is_directory(to / toPath(kPages), error);
  if (templateFolder.empty() || !isFilled || fs::equivalent(to, from, error)) return {};
  return Updater(to, from).run();
}

std::vector<Text> updateLines(const FolderUpdate& update) {
  std::vector<Text> lines;
  const auto tell = [&lines](const std::vector<Text>& paths, TextView one, TextView many) {
    if (paths.empty()) return;
    Text line = u"Dossier du programme : " + counted(paths.size(), one, many);
    for (std::size_t i = 0; i < paths.size(); ++i) line += (i == 0 ? u" : " : u", ") + paths[i];
    lines.push_back(line);
  };
  tell(update.arrived, u"nouveau fichier", u"nouveaux fichiers");
  tell(update.replaced, u"fichier mis à jour", u"fichiers mis à jour");
  tell(update.kept, u"fichier que vous avez changé est gardé",
       u"fichiers que vous avez changés sont gardés");
  for (const FolderUpdate::NotDone& each : update.notDone) {
    lines.push_back(u"Dossier du programme : " + each.path + u" n'a pas pu être mis à jour : " +
                    each.failure.description);
  }
  return lines;
}
