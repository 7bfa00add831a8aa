// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "text/Paths.h"

// A folder that is removed with everything in it.
class Scratch {
 public:
  Scratch() {
    std::string name = (std::filesystem::temp_directory_path() / "tavrollo-test-XXXXXX").native();
    if (!::mkdtemp(name.data())) throw std::runtime_error("no scratch folder");
    root_ = name;
  }
  ~Scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  std::string path(std::string_view name = {}) const {
    return name.empty() ? root_.native() : (root_ / name).native();
  }
  Text text(std::string_view name = {}) const { return fromPath(path(name)); }

  std::string write(std::string_view name, std::string_view bytes, mode_t mode = 0644) const {
    const std::string file = path(name);
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
    ::chmod(file.c_str(), mode);
    return file;
  }

  // A shell script that can be started.
  std::string script(std::string_view name, std::string_view body) const {
    return write(name, "#!/bin/sh\n" + std::string(body), 0755);
  }

  std::string read(std::string_view name) const {
    std::ifstream file(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  std::vector<std::string> namesIn(std::string_view name = {}) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path(name))) {
      names.push_back(entry.path().filename().native());
    }
    return names;
  }

 private:
  std::filesystem::path root_;
};
