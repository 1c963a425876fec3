// Phrases of the messages about ports that speak of the windows: written so for programs that have
// them. A program without says the same in its own way.
#pragma once

namespace port_advice {

inline constexpr const char* kThenEnter = "Then enter the address again in the Setting window.";
inline constexpr const char* kEnterOne = "Enter one of these addresses in the Setting window.";
inline constexpr const char* kEnterThat = "Enter that address in the Setting window.";
// Not "the bus reads as empty": on a board with a direct SDA input 0xFF is an acknowledge.
inline constexpr const char* kUntilThen =
    "\n\nThe program goes on without a port: what it writes goes nowhere, and nothing it reads "
    "comes from a chip.";
inline constexpr const char* kUntilEntered =
    "\n\nThe program goes on without a port until the address is entered again in the Setting "
    "window.";
inline constexpr const char* kWithoutPort =
    " Until then the program goes on without a port. A chip must go to ISP mode again.";
/// Where a driver library reaches the ports.
inline constexpr const char* kThenPress =
    ", and then press \"Enter\" in the Setting window. Until then the program goes on without a "
    "port.";

}  // namespace port_advice
