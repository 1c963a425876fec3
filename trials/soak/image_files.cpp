#include "soak/image_files.h"

#include <cstdint>
#include <vector>

#include "image/crc16.h"
#include "rtd2120/crc8.h"
#include "soak/random_faults.h"
#include "text/hex_text.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes RandomBytes(Random& random) {
  // Mostly a few pages, now and then many, rarely a full bank; often full of FF, as erased flash.
  const std::size_t kind = Pick(random, 0, 400);
  Bytes bytes(kind == 0 ? 65536 : Pick(random, kind < 3 ? 0 : 1, kind < 10 ? 9000 : 700));
  const bool sparse = Pick(random, 0, 3) == 0;
  for (std::uint8_t& byte : bytes) {
    byte = sparse && Pick(random, 0, 15) != 0 ? 0xFF : static_cast<std::uint8_t>(random());
  }
  return bytes;
}

/// Makes the last bytes such that the CRC, which stands at `crc` before `bytes`, ends at 0.
void EndWithCrcZero(Bytes& bytes, bool crc8, std::uint16_t crc) {
  const std::size_t tail = crc8 ? 1 : 2;
  if (bytes.size() < tail) return;
  bytes.erase(bytes.end() - static_cast<std::ptrdiff_t>(tail), bytes.end());
  if (crc8) return bytes.push_back(tongxun2120::Crc8(bytes));
  crc = tongxun::CrcBytes(crc, bytes);
  bytes.push_back(static_cast<std::uint8_t>(crc >> 8));
  bytes.push_back(static_cast<std::uint8_t>(crc & 0xFF));
}

/// `sound`: with the right checksums.
std::string HexFile(const Bytes& bytes, bool sound) {
  std::string text;
  for (std::size_t at = 0; at < bytes.size(); at += 16) {
    const std::size_t count = std::min<std::size_t>(16, bytes.size() - at);
    text += ":" + fileop::HexByte(static_cast<int>(count)) +
            fileop::HexByte(static_cast<int>(at / 256)) +
            fileop::HexByte(static_cast<int>(at % 256)) + "00";
    std::size_t sum = count + at / 256 + at;
    for (std::size_t i = 0; i < count; ++i) {
      text += fileop::HexByte(bytes[at + i]);
      sum += bytes[at + i];
    }
    text += (sound ? fileop::HexByte(static_cast<int>((0 - sum) % 256)) : "00") + "\r\n";
  }
  return text + ":00000001FF\r\n";
}

std::string FileOf(const Bytes& bytes, bool hex, bool sound) {
  return hex ? HexFile(bytes, sound) : std::string(bytes.begin(), bytes.end());
}

}  // namespace

std::string RandomFile(std::mt19937& random, const TempFolder& folder, bool pair, bool crc8) {
  const bool hex = Pick(random, 0, 1) == 0;
  const std::string name = pair ? (hex ? "image.H0" : "image.B0") : hex ? "image.hex" : "image.bin";
  switch (Pick(random, 0, 19)) {
    case 0:
      return (folder / "none.hex").string();
    case 1:
      return folder.Write(pair ? "bad.H00" : "bad.hex", ":0300100001020300\n:00000001FF\n");
    default:
      break;
  }
  Bytes first = RandomBytes(random);
  Bytes second = pair ? RandomBytes(random) : Bytes{};
  if (Pick(random, 0, 5) == 0) {
    const std::uint16_t before = tongxun::CrcBytes(tongxun::kCrcStart, first);
    pair ? EndWithCrcZero(second, crc8, before) : EndWithCrcZero(first, crc8, tongxun::kCrcStart);
  }
  const bool sound = Pick(random, 0, 9) != 0;
  if (!pair) return folder.Write(name, FileOf(first, hex, sound));
  folder.Write(name + "1", FileOf(second, hex, sound));
  return folder.Write(name + "0", FileOf(first, hex, sound));
}
