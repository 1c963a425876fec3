// Whole-file access without exceptions. Never opens anything but a regular file, so that a folder,
// a pipe or a device cannot block the program.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <span>
#include <string>

#include "platform/status.h"

// Reasons are phrases.

/// At most `limit` bytes from the start of the file.
Result<std::string> ReadFile(const std::filesystem::path& path, std::size_t limit);

/// Creates the file empty, and its folder, when it is missing and can be created.
void EnsureFile(const std::filesystem::path& path);

/// Writes `bytes` from position 0, creating the file and its folder when missing; bytes behind them
/// stay as they were. The file is never left half written: it holds what it held, or all that it
/// should.
Status WriteAtStart(const std::filesystem::path& path, std::span<const std::uint8_t> bytes);

/// Gives the file this content and no other, creating it and its folder when missing; never half of
/// it.
Status ReplaceFile(const std::filesystem::path& path, const std::string& content);
/// Whether `ReplaceFile` could: tried without touching the file.
Status CanReplace(const std::filesystem::path& path);

/// The system's words on why a stream could not be opened just now, or written at some time. It
/// keeps no errno, but what it could not write: that is tried again.
std::string WhyBad(std::ofstream& file);

/// What the operator is told of a setting that was not written to its file for this reason.
std::string Unsaved(const std::filesystem::path& path, const std::string& reason);

/// Appends `text`, creating the file with `heading` in front, and its folder, when missing. A
/// failure leaves it as it was.
Status AppendToFile(const std::filesystem::path& path, const std::string& text,
                    const std::string& heading);

/// The path as UTF-8 text, for messages.
std::string PathText(const std::filesystem::path& path);
/// The path that a UTF-8 text names.
std::filesystem::path PathOf(const std::string& text);
