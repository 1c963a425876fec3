#include "platform/files.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <limits>

#include "platform/problem.h"

namespace fs = std::filesystem;

namespace {

/// Why it could not be written; nothing when it was.
std::string Write(const fs::path& path, const std::string& content, std::ios::openmode how) {
  errno = 0;
  std::fstream file(path, std::ios::binary | std::ios::out | how);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  file.close();
  return file.good() ? std::string() : ErrorText(errno);
}

/// Why the file's folder could not be created; nothing when it is there.
std::string EnsureFolderOf(const fs::path& file) {
  std::error_code error;
  if (file.has_parent_path()) fs::create_directories(file.parent_path(), error);
  return ErrorText(error);
}

/// Writes the content under another name first, which then takes the file's place at once.
std::string Replace(const fs::path& file, const std::string& content) {
  fs::path part = file;
  part += ".part";
  std::error_code error;
  std::string problem = EnsureFolderOf(file);
  if (problem.empty()) problem = Write(part, content, std::ios::trunc);
  if (problem.empty()) {
    const fs::file_status old = fs::status(file, error);
    if (fs::exists(old)) fs::permissions(part, old.permissions(), error);
    fs::rename(part, file, error);
    if (!error) return {};
    problem = ErrorText(error);
  }
  if (fs::is_regular_file(part, error)) fs::remove(part, error);
  return problem;
}

}  // namespace

FileContent ReadFile(const fs::path& path, std::size_t limit) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) {
    return {.bytes = {}, .problem = "the file does not exist", .missing = true};
  }
  if (fs::is_directory(status)) return {.bytes = {}, .problem = "it is a folder, not a file"};
  if (!fs::is_regular_file(status)) {
    const std::string reason = error ? ErrorText(error) : "it is not a regular file";
    return {.bytes = {}, .problem = "the file cannot be read: " + reason};
  }

  errno = 0;
  std::ifstream file(path, std::ios::binary);
  std::string bytes(std::min<std::uintmax_t>(fs::file_size(path, error), limit), '\0');
  if (file.is_open()) file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!file.is_open() || file.bad()) {
    return {.bytes = {}, .problem = "the file cannot be read: " + ErrorText(errno)};
  }
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return {.bytes = std::move(bytes), .problem = {}};
}

void EnsureFile(const fs::path& path) {
  std::error_code error;
  if (fs::exists(path, error)) return;
  EnsureFolderOf(path);
  std::ofstream(path, std::ios::binary | std::ios::app);
}

std::string WriteAtStart(const fs::path& path, std::span<const std::uint8_t> bytes) {
  std::error_code error;
  const fs::path linked = fs::canonical(path, error);
  const fs::path& file = error ? path : linked;
  const FileContent old = ReadFile(file, std::numeric_limits<std::size_t>::max());
  if (!old.Ok() && !old.missing) return old.problem;

  std::string content(bytes.begin(), bytes.end());
  if (old.bytes.size() > content.size()) content += old.bytes.substr(content.size());
  std::string problem = Replace(file, content);
  // A folder that takes no new file may hold one that can be written to. Where it need not grow,
  // nothing of it can be lost.
  const bool grows = content.size() > old.bytes.size();
  if (problem.empty() || grows || !Write(file, content, std::ios::in).empty()) return problem;
  return {};
}

std::string AppendToFile(const fs::path& path, const std::string& text,
                         const std::string& heading) {
  std::error_code error;
  const std::uintmax_t size = fs::exists(path, error) ? fs::file_size(path, error) : 0;
  if (error) return ErrorText(error);
  std::string problem = EnsureFolderOf(path);
  if (problem.empty()) problem = Write(path, size == 0 ? heading + text : text, std::ios::app);
  if (!problem.empty()) fs::resize_file(path, size, error);  // no half line
  return problem;
}

std::string Unsaved(const fs::path& path, const std::string& problem) {
  return "It could not be saved in " + PathText(path) + " (" + problem +
         ") and holds for this run only.";
}

std::string PathText(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

fs::path PathOf(const std::string& text) { return std::u8string(text.begin(), text.end()); }
