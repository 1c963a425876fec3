// A folder of its own for one test, removed with everything in it.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

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
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

  /// Writes a file, with its folders; returns its full name.
  std::string Write(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories((path_ / name).parent_path());
    std::ofstream(path_ / name, std::ios::binary) << bytes;
    return (path_ / name).string();
  }
  std::string Read(const std::string& name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  /// What stands directly in the folder, in the spelling it was created with, in no order.
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

 private:
  std::filesystem::path path_;
};
