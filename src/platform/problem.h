// How a part of the program tells the operator, from anywhere, that something cannot work.
#pragma once

#include <functional>
#include <string>

/// One message, in whole sentences. May be called in the middle of a line operation, so it must not
/// wait for the operator.
using Problem = std::function<void(const std::string& message)>;
