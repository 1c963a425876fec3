// What the fuzz targets share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "support/temp_folder.h"

/// Ends the program when `holds` is false: the input that led here is a finding.
inline void Require(bool holds, const char* rule) {
  if (holds) return;
  std::cerr << "broken rule: " << rule << std::endl;
  std::abort();
}

inline std::string TextOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// The file that holds the input, written anew for each.
class InputFile {
 public:
  explicit InputFile(const char* name) : path_(folder_ / name) {}

  const std::filesystem::path& Path() const { return path_; }
  const std::filesystem::path& Folder() const { return folder_.Path(); }
  void Write(const std::string& bytes) const { std::ofstream(path_, std::ios::binary) << bytes; }
  std::string Read() const { return folder_.Read(path_.filename().string()); }

 private:
  TempFolder folder_;
  std::filesystem::path path_;
};
