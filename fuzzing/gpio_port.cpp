// "Initial/GpioPort.csv".
#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "fuzz.h"
#include "platform/files.h"
#include "platform/linux/gpio_port_file.h"
#include "simple_parsers.h"

namespace {

using Fields = std::vector<std::string>;

/// Of a row that cannot be read: the address to which it belongs, and how it is told.
struct Told {
  std::optional<std::uint32_t> base;
  std::string begin;
};

struct Ports {
  std::vector<std::uint32_t> addresses;
  std::vector<GpioRow> rows;
  std::vector<Told> faults;
};

std::vector<std::string> RowsOf(const std::string& text) {
  std::vector<std::string> rows(1);
  for (const char c : text) {
    if (c == '\n') {
      rows.emplace_back();
    } else {
      rows.back() += c;
    }
  }
  return rows;
}

std::string LowerCase(std::string text) {
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return text;
}

/// Position among the three registers; 3 for any other word.
std::uint32_t RegisterNamed(const std::string& word) {
  if (word == "data") return 0;
  if (word == "status") return 1;
  return word == "control" ? 2 : 3;
}

/// The first field, counted from 1, for which the row cannot be read; 0 when it can be.
std::size_t WrongField(const Fields& fields, bool behindAddress) {
  const std::string first = LowerCase(fields[0]);
  const auto field = [&](std::size_t number) {
    return fields.size() < number ? "" : fields[number - 1];
  };
  if (first == "address") {
    const auto address = simple::WholeHex(field(2));
    if (!address || *address >= 0x10000) return 2;
    return fields.size() > 2 ? 3 : 0;
  }
  if (RegisterNamed(first) == 3 || !behindAddress) return 1;
  const std::string bit = field(2);
  if (bit.size() != 1 || bit.find_first_not_of("01234567") == 0) return 2;
  for (const std::size_t needed : {3U, 4U}) {
    if (field(needed).empty()) return needed;
  }
  return fields.size() > 4 ? 5 : 0;
}

Ports Parse(const std::string& text, const std::string& file) {
  Ports ports;
  std::optional<std::uint32_t> base;  // nothing behind an address that cannot be read, too
  bool behindAddress = false;
  int number = 0;
  for (const std::string& row : RowsOf(text)) {
    ++number;
    Fields fields = simple::Fields(row);
    while (!fields.empty() && fields.back().empty()) fields.pop_back();
    if (fields.empty()) continue;
    const std::size_t wrong = WrongField(fields, behindAddress);
    const std::string first = LowerCase(fields[0]);
    if (first == "address") {
      behindAddress = true;
      base = std::nullopt;
      if (wrong != 2) base = static_cast<std::uint32_t>(*simple::WholeHex(fields[1]));
      if (base && std::count(ports.addresses.begin(), ports.addresses.end(), *base) == 0) {
        ports.addresses.push_back(*base);
      }
    } else if (behindAddress && !base && wrong != 1) {
      continue;  // belongs to no port
    } else if (wrong == 0) {
      const int bit = 1 << (fields[1][0] - '0');
      ports.rows.push_back({number, base.value(), static_cast<PortRegister>(RegisterNamed(first)),
                            static_cast<std::uint8_t>(bit), fields[2], fields[3]});
    }
    if (wrong == 0) continue;
    ports.faults.push_back({base, "Row " + std::to_string(number) + " of " + file +
                                      " cannot be read: field " + std::to_string(wrong) + " is "});
  }
  return ports;
}

bool SameRow(const GpioRow& one, const GpioRow& other) {
  return std::tie(one.number, one.base, one.which, one.bit, one.chip, one.line) ==
         std::tie(other.number, other.base, other.which, other.bit, other.chip, other.line);
}

bool SameFault(const GpioPortFile::Fault& found, const Told& told) {
  return found.base == told.base && found.problem.starts_with(told.begin);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile file("GpioPort.csv");
  const std::string text = TextOf(data, size);
  file.Write(text);
  const GpioPortFile found = ReadGpioPorts(file.Folder());

  const Ports expected = Parse(text, PathText(file.Path()));
  Require(found.addresses == expected.addresses, "the addresses as the plain reading has them");
  Require(std::ranges::equal(found.rows, expected.rows, SameRow),
          "every line as the plain reading has it");
  Require(std::ranges::equal(found.faults, expected.faults, SameFault),
          "a row that cannot be read is told, with its number, the field and its port");
  return 0;
}
