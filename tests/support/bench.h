// The whole tool on a simulated board, for whole operations over the wire.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "tool/tool.h"
#include "simulator/bus_log.h"
#include "simulator/simulated_board.h"
#include "support/fake_ticks.h"
#include "support/transcript.h"

/// The shipped simulated cable with chosen polarities.
inline IspBoard Wiring(bool sdaOut = false, bool sdaIn = true, bool sclOut = false) {
  IspBoard wiring = simulator::CableWiring();
  wiring.SdaOut.polarity = sdaOut;
  wiring.SdaIn.polarity = sdaIn;
  wiring.SclOut.polarity = sclOut;
  return wiring;
}

/// A tool whose entry parameters match the chip that is plugged in.
struct Bench {
  explicit Bench(const IspBoard& wiring = Wiring(), const simulator::VskIdentity& identity = {},
                 simulator::ConnectedChip chip = simulator::ConnectedChip::Vsk830)
      : board(wiring, IicPort::kDefaultPortBase, identity), tool(board.cable, ticks, {}) {
    board.Connect(chip);
    board.wire.ListenTo(&log);
    tool.boards.BoardTable[0] = wiring;
    tool.port.InitPortShadows();
    auto& params = tool.frames.IspParams;
    params[0] = identity.address;
    params[1] = static_cast<std::int16_t>(identity.codes.size());
    std::copy(identity.codes.begin(), identity.codes.end(), params.begin() + 2);
    view.quitAction = [this] { tool.vskWriter.QuitIspMode(view); };
  }

  /// Makes `image` the loaded VSK830 image.
  void Load(const std::vector<std::uint8_t>& image) {
    auto& b = tool.vskImages;
    std::copy(image.begin(), image.end(), b.CodeBuffer.begin());
    b.CodeMax = static_cast<std::int32_t>(image.size()) - 1;
    b.CheckCode();
    b.CodeLoaded = true;
  }

  /// Makes `bank0` and `bank1` the loaded VSK630 image, and the VSK630 the chip.
  void Load(const std::vector<std::uint8_t>& bank0, const std::vector<std::uint8_t>& bank1) {
    auto& b = tool.vskImages;
    std::copy(bank0.begin(), bank0.end(), b.CodeBank0.begin());
    std::copy(bank1.begin(), bank1.end(), b.CodeBank1.begin());
    b.CodeBank0Max = static_cast<std::int32_t>(bank0.size()) - 1;
    b.CodeBank1Max = static_cast<std::int32_t>(bank1.size()) - 1;
    b.CrcBanks();
    b.CodeLoaded = true;
    tool.isp.ChipSelect = VskChip::Vsk630;
  }

  void EnterIspMode() {
    view.quitSelected = false;
    tool.vskWriter.GoToIspMode(view);
  }

  std::vector<std::string> TakeFrames() {
    std::vector<std::string> lines = log.Lines();
    log.Clear();
    return lines;
  }

  FakeTicks ticks{4};
  simulator::SimulatedBoard board;
  simulator::FrameLog log;
  Tool tool;
  Transcript view;
};

inline std::unique_ptr<Bench> NewBench() { return std::make_unique<Bench>(); }
