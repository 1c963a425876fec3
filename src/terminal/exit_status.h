// How the program ends, for scripts.
#pragma once

namespace terminal {

inline constexpr int kDone = 0;            // done and verified
inline constexpr int kChipSaysNo = 1;      // not acknowledged, a CRC or a byte differs
inline constexpr int kBadCommandLine = 2;  // also what this chip cannot do
inline constexpr int kBadFile = 3;         // cannot be read or written, or is not as it should be
inline constexpr int kNoPort = 4;          // cannot be reached, is held, or failed
inline constexpr int kProgramFailed = 5;   // the program itself, for instance without memory
inline constexpr int kSignalled = 128;     // and the signal's number

}  // namespace terminal
