// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "text/Paths.h"
#include "text/Text.h"

// A folder of a test's own, gone with the test.
class TestFolder {
 public:
  TestFolder() : path_(std::filesystem::temp_directory_path() / uniqueName()) {
    std::filesystem::create_directories(path_);
  }
  ~TestFolder() {
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(path_, ignored);
  }
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  Text text() const { return fromPath(path_); }

  // The path of `name` (slashes between folders) in it, as the program carries it.
  Text operator/(TextView name) const { return text() + nativePath(Text(u"/").append(name)); }

  void makeFolders(TextView name) const {
    std::filesystem::create_directories(toPath(*this / name));
  }

  // How many entries stand directly in it.
  std::size_t entries() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_),
                                                  std::filesystem::directory_iterator()));
  }

 private:
  static std::string uniqueName() {
    return "tavrollo-test-" + std::to_string(std::random_device{}()) + std::to_string(std::rand());
  }

  std::filesystem::path path_;
};

inline void writeBytes(const Text& path, const std::string& bytes) {
  std::ofstream(toPath(path), std::ios::binary) << bytes;
}

inline std::string bytesOf(const Text& path) {
  std::ifstream file(toPath(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
