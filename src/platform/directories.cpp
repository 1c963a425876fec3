#include "platform/directories.h"

std::string CutAtNul(std::string_view text) { return std::string(text.substr(0, text.find('\0'))); }
