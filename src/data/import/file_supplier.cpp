#include "data/import/file_supplier.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include "base/text_encoding.h"
#include "data/fields/text_fields.h"
#include "data/fields/text_lines.h"
#include "data/import/loader.h"

namespace tarnwick {
namespace {

constexpr std::string_view kUnformatted = "@unformatted";
constexpr std::size_t kMostHeaderBytes = 1 << 20;
constexpr std::size_t kValueBytes = 4;

/// The bytes of the first two lines, as far as a header may reach.
std::string_view HeaderPart(std::string_view bytes) {
  return bytes.substr(0, std::min(bytes.size(), kMostHeaderBytes));
}

float LittleEndianFloat(const char* bytes) {
  std::uint32_t bits = 0;
  for (int i = 3; i >= 0; --i) bits = bits << 8 | static_cast<unsigned char>(bytes[i]);
  return std::bit_cast<float>(bits);
}

std::vector<std::string> NamesOf(std::string_view line) {
  std::vector<std::string> names;
  if (TrimBlankBytes(line).empty()) return names;
  for (bool more = true; more;) {
    const std::size_t comma = line.find(',');
    const std::string_view name = TrimBlankBytes(line.substr(0, comma));
    names.push_back(Utf8FromText(name));
    more = comma != line.npos;
    if (more) line.remove_prefix(comma + 1);
  }
  return names;
}

}  // namespace

bool IsUnformatted(std::string_view bytes) {
  LineWalker walker(HeaderPart(bytes), '\n');
  walker.Next();
  const std::string_view second = walker.AtEnd() ? std::string_view() : walker.Next();
  return LowerAscii(second.substr(0, kUnformatted.size())) == kUnformatted;
}

TFileSupplier::TFileSupplier(MappedFile file, std::string name)
    : file_(std::move(file)), name_(std::move(name)) {
  const std::string_view bytes = file_.Bytes();
  LineWalker walker(HeaderPart(bytes), '\n');
  names_ = NamesOf(walker.Next());
  has_names_line_ = !names_.empty();
  if (names_.empty()) names_ = {"(col 1)", "(col 2)"};
  for (std::size_t i = 0; i < names_.size(); ++i) {
    if (names_[i].empty()) names_[i] = "(col " + std::to_string(i + 1) + ")";
  }
  // Only the header's lines are text; a record may hold any byte.
  walker.Next();
  records_ = bytes.substr(static_cast<std::size_t>(walker.Position() - bytes.data()));
  rows_ = static_cast<std::int64_t>(records_.size() / (kValueBytes * names_.size()));
}

std::int32_t TFileSupplier::CurrentRow() const {
  return static_cast<std::int32_t>(
      std::min<std::int64_t>(row_ + 1, std::numeric_limits<std::int32_t>::max()));
}

bool TFileSupplier::NextRow() {
  if (!AtEnd()) ++row_;
  return AtEnd();
}

void TFileSupplier::SkipRows(std::int32_t rows) {
  if (rows > 0) row_ = std::min(row_ + rows, rows_);
}

std::optional<double> TFileSupplier::ReadValue(std::int32_t column, ColumnFormat) {
  if (AtEnd() || column < 0) return std::nullopt;
  if (column == kRowNumberColumn) return static_cast<double>(row_ + 1);
  const auto at = static_cast<std::size_t>(column);
  if (at >= names_.size()) return std::nullopt;
  const auto record = static_cast<std::size_t>(row_) * names_.size();
  const double value = LittleEndianFloat(records_.data() + (record + at) * kValueBytes);
  return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

bool TFileSupplier::HasValue(std::int32_t column) {
  return !AtEnd() && column >= 0 &&
         (column == kRowNumberColumn || static_cast<std::size_t>(column) < names_.size());
}

bool TFileSupplier::EndsIncomplete() const {
  return records_.size() % (kValueBytes * names_.size()) != 0;
}

std::int32_t TFileSupplier::RowCount() {
  return static_cast<std::int32_t>(
      std::min<std::int64_t>(rows_, std::numeric_limits<std::int32_t>::max() - 1));
}

std::string TFileSupplier::Place() const {
  return "record " + std::to_string(row_ + 1);
}

std::int32_t TFileSupplier::SamplingFrequency() const {
  return static_cast<std::int32_t>(rows_ / kPointLimit + 1);
}

}  // namespace tarnwick
