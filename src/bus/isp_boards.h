// The ISP boards that the tool knows, how each wires the bus to the parallel port, and which one is
// in use. Loaders report nothing: an error ends the load and keeps what was read so far.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

/// Where one bus line sits in its port register. Its polarity is that of the board file: a set bit
/// of a line with `polarity` drives an output high, but means that SDA in is low.
struct LineSpec {
  std::int32_t address = 0;  // register address as the board file gives it; stored only
  bool polarity = false;     // true: "+" in the board file, or anything but "-"
  std::int16_t mask = 0;     // the line's bit, 1..255; 0 for a line that the board file left open

  /// The level that an output has at this value of its register; the opposite of an input's.
  bool Level(std::uint8_t value) const { return ((value & mask) != 0) == polarity; }
};

/// One row of the board table.
struct IspBoard {
  std::string name;
  LineSpec SdaOut;  // in the data register
  LineSpec SdaIn;   // in the status register
  LineSpec SclOut;  // in the control register
  LineSpec SclIn;   // stored only: SCL is never read back

  /// Every line that the bus uses has its place.
  bool Complete() const { return SdaOut.mask != 0 && SdaIn.mask != 0 && SclOut.mask != 0; }
};

class IspBoards {
 public:
  static constexpr int kBoards = 21;

  /// Gives the user interface one turn of its message loop.
  using Turn = std::function<void()>;

  std::array<IspBoard, kBoards> BoardTable;
  std::int16_t BoardCount = 0;    // rows announced by the last block of the board table
  std::int16_t CurrentBoard = 0;  // row in use, 0..20

  /// Rows up to the last one with a name.
  std::size_t NamedRows() const;
  const IspBoard& InUse() const { return BoardTable[static_cast<std::size_t>(CurrentBoard)]; }

  /// Fills the board table from "Initial/InitPort.csv". A mask outside 1..255 is stored as 0.
  void LoadPortConfig(const std::filesystem::path& path, const Turn& turn);
  /// Sets `CurrentBoard` from "Initial/CurrIspBoard.csv"; the last field wins, and a value outside
  /// 0..20 is ignored.
  void LoadCurrentBoard(const std::filesystem::path& path, const Turn& turn);

  /// What is to be mended when the board in use has no complete row, for the operator.
  std::string MissingWiring() const;

 private:
  std::filesystem::path tableFile_;         // read last
  std::filesystem::path currentBoardFile_;  // read last
};
