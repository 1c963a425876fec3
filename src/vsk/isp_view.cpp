// What the operations say and ask.
#include "vsk/isp_view.h"

#include "text/hex_text.h"

namespace {

/// Asks until `read` makes a number of an answer of `length` characters.
template <typename Read>
std::optional<std::int32_t> AskHex(IspView& view, std::string_view prompt, std::string_view title,
                                   std::string_view answer, std::size_t length,
                                   std::string_view complaint, Read read) {
  while (true) {
    const std::string text = view.AskText(prompt, title, answer);
    if (text.empty()) return std::nullopt;
    const std::optional<std::int32_t> value =
        Length(text) == length ? read(UpperCase(text)) : std::nullopt;
    if (value) return value;
    view.ShowMessage(complaint);
  }
}

}  // namespace

void ShowStatus(IspView& view, StatusLabel label, StatusColour colour, std::string_view text) {
  view.SetStatusColour(label, colour);
  view.SetStatusText(label, text);
}

RunResult ShowResult(IspView& view, StatusLabel label, bool holds, std::string_view good,
                     std::string_view bad) {
  const StatusColour colour = holds ? StatusColour::Black : StatusColour::Red;
  ShowStatus(view, label, colour, holds ? good : bad);
  if (holds) return {.text = std::string(good)};
  return {.text = std::string(bad), .failure = std::string(bad)};
}

void ClearStatus(IspView& view) {
  view.SetStatusText(StatusLabel::IspMode, "");
  view.SetStatusText(StatusLabel::Operation, "");
}

std::optional<std::int32_t> AskPageNumber(IspView& view) {
  return AskHex(view, "please input you want read page number:(00-FF)", "input number", "00", 2,
                "please input two word HEX number:(00-FF)", Module1::HexByteValue);
}

std::optional<std::int32_t> AskAddress(IspView& view, std::string_view prompt,
                                       std::string_view answer) {
  return AskHex(view, prompt, "erase", answer, 4, "please input four word HEX number:(0000-FFFF)",
                Module1::HexWordValue);
}
