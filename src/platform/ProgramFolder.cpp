// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProgramFolder.h"

#include <filesystem>
#include <system_error>

#include "platform/System.h"
#include "text/Paths.h"

namespace {

namespace fs = std::filesystem;

constexpr TextView kPages = u"nav";

bool isThere(const fs::path& path) {
  std::error_code error;
  return fs::symlink_status(path, error).type() != fs::file_type::not_found;
}

bool isFolder(const fs::path& path) {
  std::error_code error;
  return fs::is_directory(path, error);
}

bool isPortable(const Text& folder) {
  const bool holdsOurs =
      isThere(toPath(folder) / toPath(kPages)) || isThere(toPath(folder) / toPath(u"config.cfg"));
  return holdsOurs && isWritableFolder(folder);
}

Text joined(const Text& folder, TextView name) {
  const bool separated = folder.ends_with(u'/') || folder.ends_with(u'\\');
  return folder + (separated ? Text() : Text(1, nativeSeparator())) + Text(name);
}

Text withoutTrailingSeparator(Text path) {
  while (path.size() > 1 && (path.ends_with(u'/') || path.ends_with(nativeSeparator()))) {
    path.pop_back();
  }
  return path;
}

void copyTree(const fs::path& from, const fs::path& to, std::error_code& error);

void copyEntries(const fs::path& from, const fs::path& to, std::error_code& error) {
  fs::directory_iterator entry(from, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    copyTree(entry->path(), to / entry->path().filename(), error);
    if (error) return;
  }
}

// Links stay links. The user may write to every copy, also where the template is read-only.
void copyTree(const fs::path& from, const fs::path& to, std::error_code& error) {
  const fs::file_type type = fs::symlink_status(from, error).type();
  if (error) return;
  if (type == fs::file_type::symlink) {
    fs::copy_symlink(from, to, error);
  } else if (type == fs::file_type::directory) {
    fs::create_directory(to, error);
    if (!error) copyEntries(from, to, error);
  } else {
    fs::copy_file(from, to, error);
    if (!error) fs::permissions(to, fs::perms::owner_write, fs::perm_options::add, error);
  }
}

// Copies under a hidden name first, so that what stands under the right one is whole.
void place(const fs::path& from, const fs::path& to, std::error_code& error) {
  if (isThere(to)) return;
  fs::path part = to.parent_path() / ".";
  part += to.filename();
  part += ".tavrollo-part";
  std::error_code ignored;
  fs::remove_all(part, ignored);  // of an interrupted filling
  copyTree(from, part, error);
  if (!error) fs::rename(part, to, error);
  if (error) fs::remove_all(part, ignored);
}

Failure failureOf(const std::error_code& error, const Text& path) {
  return error ? about(failureFromErrno(error.default_error_condition().value()), path) : Failure{};
}

// Documents are opened from another folder than the one the program was started in: only a path
// from the root means the same in both.
Text fromTheRoot(const Text& folder) {
  std::error_code error;
  const fs::path absolute = fs::absolute(toPath(folder), error);
  return error ? folder : fromPath(absolute.lexically_normal());
}

}  // namespace

Text chooseProgramFolder(const std::optional<Text>& asked, const Text& executableFolder,
                         const Text& home) {
  if (asked && !asked->empty()) return withoutTrailingSeparator(fromTheRoot(*asked));
  if (isPortable(executableFolder)) return withoutTrailingSeparator(executableFolder);
  return joined(home, u"Tavrollo");
}

Text templateFolder(const Text& executableFolder) {
  const fs::path executables = toPath(withoutTrailingSeparator(executableFolder));
  const fs::path above = executables.parent_path();
  const fs::path candidates[] = {above / "share" / "tavrollo", executables / "template",
                                 above.parent_path() / "share" / "tavrollo"};
  for (const fs::path& folder : candidates) {
    if (isFolder(folder)) return fromPath(folder);
  }
  return {};
}

Failure fillProgramFolder(const Text& folder, const Text& templateFolder) {
  const fs::path to = toPath(folder);
  const fs::path from = toPath(templateFolder);
  if (isThere(to / toPath(kPages))) return {};
  if (templateFolder.empty() || !isFolder(from / toPath(kPages))) {
    return failureOf(std::make_error_code(std::errc::not_a_directory),
                     joined(templateFolder, kPages));
  }

  std::error_code error;
  fs::create_directories(to, error);
  fs::directory_iterator entry;
  if (!error) entry = fs::directory_iterator(from, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    const fs::path name = entry->path().filename();
    if (name == toPath(kPages)) continue;
    place(entry->path(), to / name, error);
    if (error) break;
  }
  // Last: its presence tells that the filling is done.
  if (!error) place(from / toPath(kPages), to / toPath(kPages), error);
  return failureOf(error, folder);
}
