#include "platform/linux/gpio_port_file.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <sstream>

#include "platform/files.h"
#include "platform/linux/gpio_messages.h"
#include "text/csv_fields.h"
#include "text/hex_text.h"

namespace {

constexpr std::size_t kLargestFile = 1 << 16;  // bytes; a port of three lines has under 100
constexpr std::array<std::string_view, 3> kRegisterNames{"DATA", "STATUS", "CONTROL"};

/// Those at the end that are empty do not count: a table program fills short rows up with them.
std::vector<std::string> FieldsOf(std::string_view row) {
  std::vector<std::string> fields;
  for (CsvFields rest(row); !rest.AtEnd();) fields.push_back(*rest.Next());
  while (!fields.empty() && fields.back().empty()) fields.pop_back();
  return fields;
}

class Reader {
 public:
  explicit Reader(GpioPortFile& file) : file_(file) {}

  void Row(std::string_view text) {
    ++row_.number;
    fields_ = FieldsOf(text);
    if (fields_.empty()) return;
    const std::string first = UpperCase(fields_[0]);
    if (first == "ADDRESS") return Address();
    const auto which = std::find(kRegisterNames.begin(), kRegisterNames.end(), first);
    if (which == kRegisterNames.end()) return Refuse(1, "must be address, data, status or control");
    if (part_ == Part::Start) return Refuse(1, "must be address, before the first line");
    row_.which = static_cast<PortRegister>(std::distance(kRegisterNames.begin(), which));
    if (part_ == Part::Port) Line();
  }

 private:
  /// Behind an address that cannot be read the rows belong to no port.
  enum class Part { Start, Port, Nowhere };

  const std::string& Field(std::size_t number) const {
    static const std::string none;
    return number <= fields_.size() ? fields_[number - 1] : none;
  }

  void Address() {
    const auto base = WholeHex(Field(2));
    part_ = Part::Nowhere;
    if (!base || *base > kLastIoPort) {
      return Refuse(2, "must be a hexadecimal address from 0 to FFFF");
    }
    part_ = Part::Port;
    row_.base = *base;
    if (!file_.Describes(*base)) file_.addresses.push_back(*base);
    if (fields_.size() > 2) Refuse(3, "must be left out");
  }

  void Line() {
    const std::string& bit = Field(2);
    if (bit.size() != 1 || bit[0] < '0' || bit[0] > '7') {
      return Refuse(2, "must be the number of a bit from 0 to 7");
    }
    if (Field(3).empty()) return Refuse(3, "must be the name, the label or the path of a chip");
    if (Field(4).empty()) return Refuse(4, "must be the number or the name of a line");
    if (fields_.size() > 4) return Refuse(5, "must be left out");
    row_.bit = static_cast<std::uint8_t>(1 << (bit[0] - '0'));
    row_.chip = Field(3);
    row_.line = Field(4);
    file_.rows.push_back(row_);
  }

  void Refuse(std::size_t field, const std::string& must) {
    const auto base = part_ == Part::Port ? std::optional(row_.base) : std::nullopt;
    file_.faults.push_back(
        {base, gpio_messages::UnreadableRow(file_.path, row_.number, field, Field(field), must)});
  }

  GpioPortFile& file_;
  Part part_ = Part::Start;
  GpioRow row_;
  std::vector<std::string> fields_;  // of the present row
};

}  // namespace

bool GpioPortFile::Describes(std::uint32_t base) const {
  return std::find(addresses.begin(), addresses.end(), base) != addresses.end();
}

std::vector<GpioRow> GpioPortFile::RowsOf(std::uint32_t base) const {
  std::vector<GpioRow> found;
  std::copy_if(rows.begin(), rows.end(), std::back_inserter(found),
               [base](const GpioRow& row) { return row.base == base; });
  return found;
}

std::string GpioPortFile::ProblemOf(std::optional<std::uint32_t> base) const {
  const auto fault = std::find_if(faults.begin(), faults.end(),
                                  [base](const Fault& each) { return each.base == base; });
  return fault == faults.end() ? std::string() : fault->problem;
}

GpioPortFile ReadGpioPorts(const std::filesystem::path& folder) {
  GpioPortFile file{.path = folder / "GpioPort.csv", .addresses = {}, .rows = {}, .faults = {}};
  const auto content = ReadFile(file.path, kLargestFile);
  if (!content.Ok() && !content.IsMissing()) {
    file.faults.push_back({{}, gpio_messages::UnreadableFile(file.path, content.Reason())});
  }
  Reader reader(file);
  std::istringstream rows(*content);
  for (std::string row; std::getline(rows, row);) reader.Row(row);
  return file;
}
