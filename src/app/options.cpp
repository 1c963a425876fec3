#include "app/options.h"

#include <cstdio>
#include <string_view>

bool AnswerOption(int argc, char** argv, const char* program, const char* purpose,
                  const char* moreOptions) {
  const std::string_view option = argc > 1 ? argv[1] : "";
  if (option == "--version") {
    std::printf("%s %s: %s\n", program, ISP_WRITER_VERSION, purpose);
    return true;
  }
  if (option == "--help") {
    std::printf("%s: %s; its only options are --version and --help%s\n", program, purpose,
                moreOptions);
    return true;
  }
  return false;
}
