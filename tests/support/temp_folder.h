// A folder of its own for one test, removed with everything in it. Its names are UTF-8, as the
// program's are.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "platform/files.h"

class TempFolder {
 public:
  TempFolder() {
    const std::filesystem::path parent = std::filesystem::temp_directory_path();
    std::random_device random;
    do {
      path_ = parent / ("isp-writer-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path_));  // false when the name is taken
  }
  ~TempFolder() { std::filesystem::remove_all(path_); }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  std::filesystem::path operator/(const std::string& name) const { return path_ / PathOf(name); }

  /// Writes a file, with its folders; returns its full name.
  std::string Write(const std::string& name, const std::string& bytes) const {
    const std::filesystem::path file = *this / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
    return PathText(file);
  }
  std::string Read(const std::string& name) const {
    std::ifstream file(*this / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  /// What stands directly in the folder, in the spelling it was created with, in no order.
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
      names.push_back(PathText(entry.path().filename()));
    }
    return names;
  }

 private:
  std::filesystem::path path_;
};
