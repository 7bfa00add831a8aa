// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "text/Paths.h"
#include "text/Utf.h"

inline void writeBytes(const Text& path, std::string_view bytes) {
  std::ofstream(toPath(path), std::ios::binary) << bytes;
}

// "" where there is no such file.
inline std::string bytesOf(const Text& path) {
  std::ifstream file(toPath(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// A folder of a test's own, removed with everything in it. Names in it have slashes between
// folders.
class Scratch {
 public:
  Scratch() : root_(std::filesystem::temp_directory_path() / uniqueName()) {
    std::filesystem::create_directory(root_);
    std::filesystem::permissions(root_, std::filesystem::perms::owner_all);
  }
  ~Scratch() {
    std::error_code ignored;
    std::filesystem::permissions(root_, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(root_, ignored);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  // The folder, or what is called `name` in it: for the file system, and as the program carries it.
  std::string path(std::string_view name = {}) const { return toUtf8Lossless(text(name)); }
  Text text(std::string_view name = {}) const { return fromPath(place(name)); }

  // Writes a file, and the folders above it where there are none.
  std::string write(std::string_view name, std::string_view bytes, int mode = 0644) const {
    std::filesystem::create_directories(place(name).parent_path());
    writeBytes(text(name), bytes);
    std::filesystem::permissions(place(name), static_cast<std::filesystem::perms>(mode));
    return path(name);
  }

  // A shell script that can be started.
  std::string script(std::string_view name, std::string_view body) const {
    return write(name, "#!/bin/sh\n" + std::string(body), 0755);
  }

  std::string read(std::string_view name) const { return bytesOf(text(name)); }

  void makeFolders(std::string_view name) const {
    std::filesystem::create_directories(place(name));
  }

  // What stands directly in the folder, or in the one called `name` in it.
  std::vector<std::string> namesIn(std::string_view name = {}) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(place(name))) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }
  std::size_t entries() const { return namesIn().size(); }

 private:
  static std::string uniqueName() {
    std::random_device random;
    return "tavrollo-test-" + std::to_string(random()) + "-" + std::to_string(random());
  }

  std::filesystem::path place(std::string_view name) const {
    return name.empty() ? root_ : (root_ / toPath(fromUtf8Lossless(name))).make_preferred();
  }

  std::filesystem::path root_;
};
