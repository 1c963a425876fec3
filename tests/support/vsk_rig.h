// The VSK side of the tool on a simulated board, for whole operations over the wire.
#pragma once

#include <memory>

#include "bus/i2c_master.h"
#include "support/board_rig.h"
#include "support/transcript.h"
#include "vsk/isp_frames.h"
#include "vsk/isp_operations.h"
#include "vsk/vsk_images.h"
#include "vsk/vsk_writer.h"

/// Its entry parameters match the chip that is plugged in.
struct VskRig : BoardRig {
  explicit VskRig(simulator::ConnectedChip chip = simulator::ConnectedChip::Vsk830,
                  const IspBoard& wiring = Wiring(), const simulator::VskIdentity& identity = {})
      : BoardRig(wiring, identity, chip) {
    auto& params = frames.IspParams;
    params[0] = identity.address;
    params[1] = static_cast<std::int16_t>(identity.codes.size());
    std::copy(identity.codes.begin(), identity.codes.end(), params.begin() + 2);
    view.quitAction = [this] { writer.QuitIspMode(view); };
  }

  /// Makes `image` the loaded VSK830 image.
  void Load(const std::vector<std::uint8_t>& image) {
    std::copy(image.begin(), image.end(), images.CodeBuffer.begin());
    images.CodeMax = static_cast<std::int32_t>(image.size()) - 1;
    images.CheckCode();
    images.CodeLoaded = true;
  }

  /// Makes `bank0` and `bank1` the loaded VSK630 image, and the VSK630 the chip.
  void Load(const std::vector<std::uint8_t>& bank0, const std::vector<std::uint8_t>& bank1) {
    std::copy(bank0.begin(), bank0.end(), images.CodeBank0.begin());
    std::copy(bank1.begin(), bank1.end(), images.CodeBank1.begin());
    images.CodeBank0Max = static_cast<std::int32_t>(bank0.size()) - 1;
    images.CodeBank1Max = static_cast<std::int32_t>(bank1.size()) - 1;
    images.CrcBanks();
    images.CodeLoaded = true;
    isp.ChipSelect = VskChip::Vsk630;
  }

  void EnterIspMode() {
    view.quitSelected = false;
    writer.GoToIspMode(view);
  }
  /// The same, with frames and transcript cleared.
  void InIspMode() {
    EnterIspMode();
    TakeFrames();
    view.Take();
  }

  tongxun::I2cMaster master{port, timing};
  tongxun::VskImages images;
  tongxun::IspFrames frames{master, timing};
  IspOperations isp{frames, timing, images};
  VskWriter writer{port, isp, images};
  Transcript view;
};
