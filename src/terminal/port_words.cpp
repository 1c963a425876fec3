#include "terminal/port_words.h"

#include <array>
#include <string_view>
#include <utility>

#include "platform/port_advice.h"

namespace terminal {

std::string InTerminalWords(std::string message) {
  using Words = std::pair<std::string_view, std::string_view>;
  constexpr std::array<Words, 7> kWords{{
      {port_advice::kThenEnter, "Then start isp-write again."},
      {port_advice::kEnterOne, "Name one of these addresses with --port."},
      {port_advice::kEnterThat, "Name that address with --port."},
      {port_advice::kUntilThen, ""},
      {port_advice::kUntilEntered, ""},
      {port_advice::kWithoutPort, ""},
      {port_advice::kThenPress, ", and start isp-write again."},
  }};
  for (const auto& [ofWindows, own] : kWords) {
    const std::size_t at = message.find(ofWindows);
    if (at != std::string::npos) message.replace(at, ofWindows.size(), own);
  }
  return message;
}

}  // namespace terminal
