// What is wrong with a text that cannot be read as Intel HEX, in words that point at the real
// fault: fields are found by counting characters, so a line end of the wrong length shows only
// later.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace loadfile {

struct HexFault {
  enum class Kind {
    Digit,    // a character that is no digit 0-9 or A-F
    Address,  // the record reaches beyond the last cell
    LineEnd,  // a line break of one character
    Cut,      // the text ends inside the record
  };

  Kind kind;
  std::size_t record;  // where the record begins that was being read
  std::size_t at;      // the character that could not be taken
};

/// The number, from 1, of the line on which a character stands. Lines end with CR LF, CR or LF.
std::size_t LineNumber(std::string_view text, std::size_t at);

/// Place, what stood there and what was expected.
std::string Explain(const HexFault& fault, std::string_view text, std::int32_t lastCell);

}  // namespace loadfile
