// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Failure.h"
#include "text/Text.h"

// Names as the file system has them. A name that is no text must still be copied, so what comes
// from walking folders is not turned into text before it is shown.
using NativeName = std::filesystem::path::string_type;
using NativeView = std::basic_string_view<NativeName::value_type>;

inline constexpr NativeName::value_type kNativeSeparator =
    std::filesystem::path::preferred_separator;

// A native name as text, for showing; toPath (text/Paths.h) takes it back without loss.
Text nativeText(NativeView name);

// What is compared of a file.
struct FileState {
  std::int64_t modified = 0;  // seconds since 1970; what is below a second is cut off
  std::uint64_t size = 0;     // bytes

  bool operator==(const FileState&) const = default;
};

enum class EntryKind {
  File,        // a regular file, or a link to one
  Folder,      // a real one
  FolderLink,  // a link to a folder: it is not followed
  Special,     // a pipe, a socket, a device, or a link to one
  Unreadable,  // it stands there, or stood there a moment ago, but the system does not say what it
               // is
};

struct FolderEntry {
  NativeName name;
  EntryKind kind = EntryKind::File;
  FileState state{};  // of a File
  Failure failure{};  // of an Unreadable
};

// A folder and everything below it, reached by paths relative to it, of any length. Nothing below
// it is reached through a link to a folder. It stays the same folder when another one takes its
// name.
class FolderTree {
 public:
  FolderTree();
  ~FolderTree();
  FolderTree(FolderTree&& other) noexcept;
  FolderTree& operator=(FolderTree&& other) noexcept;

  // A root that does not exist is 76; `missing` (when given) tells that nothing stands there at
  // all.
  Failure open(const Text& root, bool* missing = nullptr);

  // A number that folders on one file system share; 0 while the tree is not open.
  std::uint64_t fileSystem() const;

  using Wants = std::function<bool(NativeView name)>;
  using Visit = std::function<bool(FolderEntry&& entry)>;

  // Calls `visit` with every entry of the folder at `relative` ("" the root itself) in the order of
  // the file system, until it answers false. What is no folder and not wanted is left out, and not
  // looked at where that can be helped. After a failure an unknown part is missing.
  Failure read(NativeView relative, const Wants& wants, const Visit& visit) const;

  // Makes what is missing of the folder at `relative`.
  Failure makeFolder(NativeView relative) const;

  // Takes the file away. Its folder is reached as above.
  Failure remove(NativeView relative) const;

  struct Root;
  Root& root() const { return *root_; }

 private:
  std::unique_ptr<Root> root_;
};
