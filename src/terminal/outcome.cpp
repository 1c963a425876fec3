#include "terminal/outcome.h"

#include <nlohmann/json.hpp>

#include "text/hex_text.h"

namespace terminal {
namespace {

using Json = nlohmann::ordered_json;

std::string Verdict(const Outcome& outcome) {
  if (outcome.Good()) return "ok";
  if (outcome.status > kSignalled) return "interrupted";
  return outcome.begun ? "FAILED" : "refused";
}

std::string Bytes(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}

std::string DifferenceText(const Difference& difference) {
  return Bytes(difference.count) + (difference.count == 1 ? " differs" : " differ") +
         ", the first at " + PaddedHex(difference.address, 4) + ": chip " +
         fileop::HexByte(difference.chip) + ", file " + fileop::HexByte(difference.file);
}

Json DifferenceJson(const Difference& difference) {
  return {{"count", difference.count},
          {"address", PaddedHex(difference.address, 4)},
          {"chip", fileop::HexByte(difference.chip)},
          {"file", fileop::HexByte(difference.file)}};
}

}  // namespace

std::string ResultText(const Outcome& outcome) {
  std::string text = outcome.chip + " " + outcome.command + ": " + Verdict(outcome);
  const auto add = [&text](const std::string& fact) {
    if (!fact.empty()) text += ", " + fact;
  };
  add(outcome.failure + (outcome.place.empty() ? "" : " at " + outcome.place));
  if (outcome.difference) add(DifferenceText(*outcome.difference));
  if (outcome.size) add(Bytes(*outcome.size));
  if (!outcome.crc.empty()) add("CRC " + outcome.crc);
  if (!outcome.chipCrc.empty() && outcome.chipCrc != outcome.crc)
    add("chip CRC " + outcome.chipCrc);
  if (outcome.compared && !outcome.difference) add(Bytes(*outcome.compared) + " read back, equal");
  add(outcome.note);
  return text;
}

std::string ResultJson(const Outcome& outcome) {
  Json object{{"command", outcome.command}};
  const auto add = [&object](const char* key, const std::string& text) {
    if (!text.empty()) object[key] = text;
  };
  add("chip", outcome.chip);
  if (!outcome.files.empty()) object["files"] = outcome.files;
  if (outcome.size) object["size"] = *outcome.size;
  add("crc", outcome.crc);
  add("chipCrc", outcome.chipCrc);
  object["result"] = Verdict(outcome);
  add("shown", outcome.shown);
  if (outcome.compared) object["compared"] = *outcome.compared;
  if (outcome.difference) object["difference"] = DifferenceJson(*outcome.difference);
  add("failure", outcome.failure);
  add("place", outcome.place);
  add("note", outcome.note);
  object["seconds"] = static_cast<double>(outcome.duration.count()) / 1000;
  add("port", outcome.port);
  add("board", outcome.board);
  object["simulated"] = outcome.simulated;
  object["exitStatus"] = outcome.status;
  return object.dump(2, ' ', false, Json::error_handler_t::replace);
}

}  // namespace terminal
