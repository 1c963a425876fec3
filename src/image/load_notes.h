// What a file holds that its maker hardly meant so, and that a load takes as it is: for the
// operator, who decides.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "image/hex_record.h"

namespace loadfile {

/// Lines of one kind.
struct NotedLines {
  std::size_t count = 0;
  std::size_t first = 0;     // number of the first one, from 1
  std::int32_t address = 0;  // where its bytes are stored

  bool operator==(const NotedLines&) const = default;
};

struct LoadNotes {
  NotedLines wrongChecksums = {};
  NotedLines addressRecords = {};  // types 02 and 04
  NotedLines otherRecords = {};    // types 03, 05 and others that hold no data
  NotedLines overwrites = {};      // data where data of an earlier line stands
  std::size_t taken = 0;  // bytes of a binary file that is longer; 0 when all of it was taken
  std::size_t wrongStartCodes = 0;  // lines that do not begin with ":", which are not explained
  std::size_t dataBytes = 0;

  bool operator==(const LoadNotes&) const = default;
};

/// Looks at one record of a HEX text after the other; each was found readable before.
class HexNoteTaker {
 public:
  /// `lastCell`: the highest address that a record may reach.
  HexNoteTaker(std::string_view text, std::int32_t lastCell) : text_(text) {
    filled_.reserve(static_cast<std::size_t>(lastCell) + 1);
  }

  void LookAt(const HexRecord& record);
  const LoadNotes& Notes() const { return notes_; }

 private:
  void Note(const HexRecord& record, NotedLines& lines) const;
  bool Overwrites(const HexRecord& record);

  std::string_view text_;
  std::string filled_;  // by address, as far as any: not NUL where data of type 00 stands
  LoadNotes notes_;
};

/// One line for each kind that was noted, with its cure; empty for none.
std::string Explain(const LoadNotes& notes);

}  // namespace loadfile
