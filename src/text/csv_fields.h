// Reads a text as a plain sequence of comma-separated fields; line ends only end a field.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class CsvFields {
 public:
  explicit CsvFields(std::string_view text) : rest_(text) {}

  bool AtEnd() const { return rest_.empty(); }

  /// The next field, trimmed of blanks. A field in double quotes may hold commas and line ends.
  /// Nothing when the text is used up.
  std::optional<std::string> Next();

 private:
  std::size_t FieldLength() const;

  std::string_view rest_;
};

/// The decimal number at the start of the field (0 when there is none), rounded to the nearest
/// integer, halves to even. Nothing when it does not fit 16 bits, or is beyond what a double holds.
std::optional<std::int16_t> LeadingDecimal(std::string_view field);

/// The hexadecimal digits at the start of the field as a mask; 0 when there are none or when the
/// value lies outside 1..255.
std::int16_t LeadingMask(std::string_view field);
