#include "text/csv_fields.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "text/hex_text.h"

namespace {

constexpr std::string_view kBlanks = " \t";

}  // namespace

std::size_t CsvFields::FieldLength() const {
  std::size_t from = rest_.find_first_not_of(kBlanks);
  if (from != std::string_view::npos && rest_[from] == '"') from = rest_.find('"', from + 1);
  if (from == std::string_view::npos) return rest_.size();
  return std::min(rest_.find_first_of(",\r\n", from), rest_.size());
}

std::optional<std::string> CsvFields::Next() {
  if (AtEnd()) return std::nullopt;
  const std::size_t length = FieldLength();
  std::string_view field = Trim(rest_.substr(0, length), kBlanks);
  const bool crLf = rest_.substr(length).starts_with("\r\n");
  rest_.remove_prefix(std::min(length + (crLf ? 2 : 1), rest_.size()));

  if (field.starts_with('"')) {
    field.remove_prefix(1);
    field = Trim(field.substr(0, field.find('"')), kBlanks);
  }
  return std::string(field);
}

std::optional<std::int16_t> LeadingDecimal(std::string_view field) {
  constexpr std::string_view kBegins = "0123456789.";
  if (field.starts_with('+')) {
    field.remove_prefix(1);
    if (field.find_first_of(kBegins) > 0) return 0;
  }
  if (field.find_first_of(kBegins) > 1) return 0;  // also keeps "inf" and "nan" out
  double value = 0;
  const auto read = std::from_chars(field.data(), field.data() + field.size(), value);
  if (read.ec == std::errc::result_out_of_range) return std::nullopt;
  value = std::nearbyint(value);
  using Limits = std::numeric_limits<std::int16_t>;
  if (value < Limits::min() || value > Limits::max()) return std::nullopt;
  return static_cast<std::int16_t>(value);
}

std::int16_t LeadingMask(std::string_view field) {
  unsigned value = 0;
  const auto read = std::from_chars(field.data(), field.data() + field.size(), value, 16);
  const bool fits = read.ec == std::errc() && value <= 255;
  return fits ? static_cast<std::int16_t>(value) : std::int16_t{0};
}
