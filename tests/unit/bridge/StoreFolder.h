// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "text/Paths.h"

// A folder of a test's own for stores and scripts, gone with the test.
class StoreFolder {
 public:
  StoreFolder() : path_(base() / uniqueName()) { std::filesystem::create_directories(path_); }
  ~StoreFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  StoreFolder(const StoreFolder&) = delete;
  StoreFolder& operator=(const StoreFolder&) = delete;

  Text text() const { return fromPath(path_); }
  Text operator/(TextView name) const { return fromPath(path_ / toPath(name)); }

  // Writes a file; the result is its path.
  Text write(TextView name, std::string_view bytes) const {
    const Text path = *this / name;
    std::ofstream file(toPath(path), std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path;
  }

 private:
  // In memory where there is such a place: many small files are written over and over.
  static std::filesystem::path base() {
    const std::filesystem::path memory = "/dev/shm";
    return std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
  }

  static std::string uniqueName() {
    std::random_device random;
    return "tavrollo-bridge-" + std::to_string(random()) + "-" + std::to_string(random());
  }

  std::filesystem::path path_;
};

inline std::string bytesIn(const Text& path) {
  std::ifstream file(toPath(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline void removeFile(const Text& path) { std::filesystem::remove(toPath(path)); }

// Makes the file an old one, so that nobody waits for it to settle; a `later` one tells versions
// apart also where times are kept in whole seconds.
inline void age(const Text& path, std::chrono::seconds later = {}) {
  using namespace std::chrono_literals;
  std::filesystem::last_write_time(toPath(path),
                                   std::filesystem::file_time_type::clock::now() - 1h + later);
}
