// How a part of the program tells the operator, from anywhere, that something cannot work.
#pragma once

#include <cerrno>
#include <functional>
#include <string>
#include <system_error>

/// One message, in whole sentences. May be called in the middle of a line operation, so it must not
/// wait for the operator.
using Problem = std::function<void(const std::string& message)>;

/// The system's words for an errno; those for an input or output error when it is 0.
inline std::string ErrorText(int error) {
  return std::generic_category().message(error == 0 ? EIO : error);
}
/// The same for an error of the file system.
inline std::string ErrorText(const std::error_code& error) {
  return error.default_error_condition().message();
}
