// The two options that both programs know. They are answered before any window system is needed.
#pragma once

/// When the first argument is `--version` or `--help`: answers it with one line on the standard
/// output and is true. `purpose`: what the program is, as a phrase. `moreOptions`: those that it
/// has besides the two.
bool AnswerOption(int argc, char** argv, const char* program, const char* purpose,
                  const char* moreOptions = "");
