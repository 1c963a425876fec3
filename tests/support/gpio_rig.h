// The real port code on a kernel's GPIO chips, with the file that is delivered or another one.
#pragma once

#include <string>

#include "simulator/simulated_board.h"
#include "support/fake_port_system.h"
#include "support/temp_folder.h"

struct GpioRig : TempFolder, PortRig {
  static constexpr std::uint32_t kBase = 0x6710;
  static constexpr std::size_t kSda = 17, kScl = 27;

  explicit GpioRig(const std::string& file = Delivered()) : PortRig(TempFolder::Path()) {
    Write("GpioPort.csv", file);
    FakeGpioChip chip{.node = "/dev/gpiochip0", .name = "gpiochip0", .label = "header"};
    for (int i = 0; i < 28; ++i) chip.lines.push_back({.name = "GPIO" + std::to_string(i)});
    kernel.gpio.chips.push_back(chip);
  }

  static std::string Delivered() {
    std::ifstream file(std::filesystem::path(SOURCE_FOLDER) / "Initial/GpioPort.csv");
    return {std::istreambuf_iterator<char>(file), {}};
  }

  /// Hangs the delivered file's two lines on a board's cable, whose wiring is plain.
  void Wire(simulator::SimulatedBoard& board) {
    board.cable.UsePort({.base = kBase});
    kernel.gpio.moved = [this, &board] {
      FakeGpioLine& sda = kernel.gpio.Line(kSda);
      const bool drivenLow = sda.output && !sda.high;
      board.cable.DlPortWritePortUchar(kBase, drivenLow ? 0x00 : 0x01);
      board.cable.DlPortWritePortUchar(kBase + 2, kernel.gpio.Line(kScl).high ? 0x04 : 0x00);
      sda.pulledLow = board.wire.PullsSdaLow();
    };
  }
};

/// The board whose wiring the delivered file's lines have: all bits direct.
inline IspBoard PlainWires() {
  IspBoards boards;
  boards.LoadPortConfig(std::filesystem::path(SOURCE_FOLDER) / "Initial/InitPort.csv", [] {});
  return boards.BoardTable[0];
}
