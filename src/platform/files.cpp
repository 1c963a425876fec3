#include "platform/files.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <system_error>

namespace fs = std::filesystem;

FileContent ReadFile(const fs::path& path, std::size_t limit) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) {
    return {.bytes = {}, .problem = "the file does not exist", .missing = true};
  }
  if (fs::is_directory(status)) return {.bytes = {}, .problem = "it is a folder, not a file"};
  if (!fs::is_regular_file(status)) {
    const std::string reason =
        error ? error.default_error_condition().message() : "it is not a regular file";
    return {.bytes = {}, .problem = "the file cannot be read: " + reason};
  }

  errno = 0;
  std::ifstream file(path, std::ios::binary);
  std::string bytes(std::min<std::uintmax_t>(fs::file_size(path, error), limit), '\0');
  if (file.is_open()) file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!file.is_open() || file.bad()) {
    const std::string reason = std::generic_category().message(errno == 0 ? EIO : errno);
    return {.bytes = {}, .problem = "the file cannot be read: " + reason};
  }
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return {.bytes = std::move(bytes), .problem = {}};
}

bool EnsureFile(const fs::path& path) {
  std::error_code error;
  if (!fs::exists(path, error)) {
    fs::create_directories(path.parent_path(), error);
    std::ofstream(path, std::ios::binary | std::ios::app);
  }
  return fs::is_regular_file(path, error);
}

bool WriteAtStart(const fs::path& path, std::span<const std::uint8_t> bytes) {
  if (!EnsureFile(path)) return false;
  std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
  for (const std::uint8_t byte : bytes) file.put(static_cast<char>(byte));
  file.close();
  return file.good();
}

std::string PathText(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

fs::path PathOf(const std::string& text) { return std::u8string(text.begin(), text.end()); }
