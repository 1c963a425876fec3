#include "platform/files.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <limits>

#include "platform/problem.h"

namespace fs = std::filesystem;

namespace {

Status StatusOf(const std::error_code& error) {
  return error ? Status::Failed(ErrorText(error)) : Status();
}

Status Write(const fs::path& path, const std::string& content, std::ios::openmode how) {
  errno = 0;
  std::fstream file(path, std::ios::binary | std::ios::out | how);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  file.close();
  return file.good() ? Status() : Status::Failed(ErrorText(errno));
}

Status EnsureFolderOf(const fs::path& file) {
  std::error_code error;
  if (file.has_parent_path()) fs::create_directories(file.parent_path(), error);
  return StatusOf(error);
}

Status Unreadable(const std::string& reason) {
  return Status::Failed("the file cannot be read: " + reason);
}

/// The file itself; of one that does not exist, the name as it is given.
fs::path BehindLinks(const fs::path& path) {
  std::error_code error;
  const fs::path file = fs::canonical(path, error);
  return error ? path : file;
}

/// A name beside the file that none of the operator's files has.
fs::path PartOf(const fs::path& file) {
  std::error_code error;
  fs::path part = file;
  part += ".part";
  for (int next = 2; fs::is_regular_file(part, error); ++next) {
    part = file;
    part += ".part" + std::to_string(next);
  }
  return part;
}

}  // namespace

Result<std::string> ReadFile(const fs::path& path, std::size_t limit) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) return Status::Missing("the file does not exist");
  if (fs::is_directory(status)) return Status::Failed("it is a folder, not a file");
  if (error) return Unreadable(ErrorText(error));
  if (!fs::is_regular_file(status)) return Unreadable("it is not a regular file");

  const std::uintmax_t size = fs::file_size(path, error);
  if (error) return Unreadable(ErrorText(error));
  std::string bytes(std::min<std::uintmax_t>(size, limit), '\0');
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (file.is_open()) file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!file.is_open() || file.bad()) return Unreadable(ErrorText(errno));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

void EnsureFile(const fs::path& path) {
  std::error_code error;
  if (fs::exists(path, error) || !EnsureFolderOf(path).Ok()) return;
  std::ofstream(path, std::ios::binary | std::ios::app);
}

/// Under another name first, which then takes the file's place at once.
Status ReplaceFile(const fs::path& path, const std::string& content) {
  std::error_code error;
  const fs::path file = BehindLinks(path);
  const fs::path part = PartOf(file);
  Status status = EnsureFolderOf(file);
  if (status.Ok()) status = Write(part, content, std::ios::trunc);
  if (status.Ok()) {
    const fs::file_status old = fs::status(file, error);
    if (fs::exists(old)) fs::permissions(part, old.permissions(), error);
    fs::rename(part, file, error);
    status = StatusOf(error);
  }
  if (fs::is_regular_file(part, error)) fs::remove(part, error);
  return status;
}

Status CanReplace(const fs::path& path) {
  std::error_code error;
  const fs::path file = BehindLinks(path);
  if (fs::is_directory(file, error)) return Status::Failed("it is a folder, not a file");
  if (!fs::is_directory(fs::absolute(file, error).parent_path(), error)) {
    return Status::Failed("its folder does not exist");
  }
  const fs::path part = PartOf(file);
  Status status = Write(part, "", std::ios::trunc);
  if (status.Ok()) fs::remove(part, error);
  return status;
}

Status WriteAtStart(const fs::path& file, std::span<const std::uint8_t> bytes) {
  Result<std::string> old = ReadFile(file, std::numeric_limits<std::size_t>::max());
  if (!old.Ok() && !old.IsMissing()) return old;

  std::string content(bytes.begin(), bytes.end());
  if (old->size() > content.size()) content += old->substr(content.size());
  Status status = ReplaceFile(file, content);
  // A folder that takes no new file may hold one that can be written to. Where it need not grow,
  // nothing of it can be lost.
  const bool grows = content.size() > old->size();
  if (status.Ok() || grows || !Write(file, content, std::ios::in).Ok()) return status;
  return {};
}

Status AppendToFile(const fs::path& path, const std::string& text, const std::string& heading) {
  std::error_code error;
  const std::uintmax_t size = fs::exists(path, error) ? fs::file_size(path, error) : 0;
  if (error) return StatusOf(error);
  Status status = EnsureFolderOf(path);
  if (status.Ok()) status = Write(path, size == 0 ? heading + text : text, std::ios::app);
  if (!status.Ok()) fs::resize_file(path, size, error);  // no half line
  return status;
}

std::string WhyBad(std::ofstream& file) {
  if (file.is_open()) {
    errno = 0;
    file.clear();
    file.flush();
  }
  return ErrorText(errno);
}

std::string Unsaved(const fs::path& path, const std::string& reason) {
  return "It could not be saved in " + PathText(path) + " (" + reason +
         ") and holds for this run only.";
}

std::string PathText(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

fs::path PathOf(const std::string& text) { return std::u8string(text.begin(), text.end()); }
