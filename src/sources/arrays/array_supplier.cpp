#include "sources/arrays/array_supplier.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "base/day_number.h"
#include "base/error.h"
#include "base/number_text.h"
#include "data/fields/field_value.h"
#include "data/packed/unpack.h"
#include "data/text/stored_format.h"

namespace tarnwick {
namespace {

constexpr std::int64_t kBlockRows = 1 << 16;
constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max() - 1;

double Formatted(double value, ColumnFormat format) {
  if (TakesNumbers(format) || !std::isfinite(value)) return value;
  return ValueOfField(ShortestText(value), format).value_or(kNotNumberValue);
}

}  // namespace

TArraySupplier::TArraySupplier(ArrayTable table, std::string name, ArrayReader read)
    : table_(std::move(table)), name_(std::move(name)), read_(std::move(read)) {
  for (const ArrayColumn& column : table_.columns) names_.push_back(column.name);
}

std::int32_t TArraySupplier::CurrentRow() const {
  return static_cast<std::int32_t>(std::min(row_, kMost) + 1);
}

std::int32_t TArraySupplier::RowCount() {
  return static_cast<std::int32_t>(std::min(table_.rows, kMost));
}

bool TArraySupplier::NextRow() {
  if (!AtEnd()) ++row_;
  return AtEnd();
}

void TArraySupplier::SkipRows(std::int32_t rows) {
  if (rows > 0) row_ = std::min(row_ + rows, table_.rows);
}

bool TArraySupplier::IsColumn(std::int32_t column) const {
  return column >= 0 && static_cast<std::size_t>(column) < names_.size();
}

std::int32_t TArraySupplier::ColumnIndex(std::string_view name) {
  const std::int32_t column = TDataSupplier::ColumnIndex(name);
  if (column >= 0 || name.empty()) return column;
  const std::string path(name.starts_with('/') ? name.substr(1) : name);
  for (std::size_t i = 0; i < table_.columns.size(); ++i) {
    const std::string& full = table_.columns[i].full_path;
    if (full == path || full.ends_with('/' + path)) return static_cast<std::int32_t>(i);
  }
  return column;
}

bool TArraySupplier::Expect(const RowPlan& plan, Progress& progress) {
  std::vector<std::size_t> columns;
  for (const ColumnRequest& request : plan.columns) {
    if (IsColumn(request.column)) columns.push_back(static_cast<std::size_t>(request.column));
  }
  try {
    Require(columns, progress);
  } catch (const UnpackingCancelled&) {
    return false;
  }
  return true;
}

void TArraySupplier::Require(std::span<const std::size_t> columns, Progress& progress) const {
  std::vector<std::size_t> wanted;
  std::vector<ArrayColumn> asked;
  for (const std::size_t column : columns) {
    if (values_.contains(column) || std::ranges::find(wanted, column) != wanted.end()) continue;
    wanted.push_back(column);
    asked.push_back(table_.columns[column]);
  }
  if (wanted.empty()) return;
  std::vector<Values> read = read_(asked, progress);
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    if (std::cmp_not_equal(read[i].size(), table_.rows)) {
      throw FileError("The file changed while it was read", name_, "");
    }
    const StoredMeaning& meaning = asked[i].meaning;
    for (double& value : read[i]) value = meaning.ValueOf(value);
    values_.emplace(wanted[i], std::move(read[i]));
  }
}

const TArraySupplier::Values& TArraySupplier::ValuesOf(std::int32_t column) const {
  const auto at = static_cast<std::size_t>(column);
  NoProgress unseen;
  Require(std::span(&at, 1), unseen);
  return values_.at(at);
}

std::optional<double> TArraySupplier::ReadValue(std::int32_t column, ColumnFormat format) {
  if (AtEnd()) return std::nullopt;
  if (column == kRowNumberColumn) return static_cast<double>(row_ + 1);
  if (!IsColumn(column)) return std::nullopt;
  const double value = Formatted(ValuesOf(column)[static_cast<std::size_t>(row_)], format);
  return std::isnan(value) ? std::nullopt : std::optional(value);
}

bool TArraySupplier::HasValue(std::int32_t column) {
  if (AtEnd()) return false;
  if (column == kRowNumberColumn) return true;
  return IsColumn(column) && !IsMissingValue(ValuesOf(column)[static_cast<std::size_t>(row_)]);
}

std::string TArraySupplier::TextAt(std::int32_t column) {
  const bool date =
      IsColumn(column) && table_.columns[static_cast<std::size_t>(column)].meaning.is_date;
  const std::optional<double> value =
      date ? ReadValue(column, ColumnFormat::Automatic) : std::nullopt;
  return value ? MomentText(*value) : TDataSupplier::TextAt(column);
}

std::string TArraySupplier::Place() const {
  return "row " + std::to_string(row_ + 1);
}

void TArraySupplier::ReadBlocks(std::span<const ColumnRequest> requests, int,
                                const BlockConsumer& consume) const {
  std::vector<std::size_t> columns;
  for (const ColumnRequest& request : requests) {
    columns.push_back(static_cast<std::size_t>(request.column));
  }
  NoProgress unseen;
  Require(columns, unseen);
  RowBlock block;
  block.storage.resize(requests.size());
  block.complete.resize(requests.size());
  for (std::int64_t first = 0; first < table_.rows; first += kBlockRows) {
    block.first_row = first + 1;
    block.first_line = first;
    block.rows = std::min(kBlockRows, table_.rows - first);
    block.lines = block.rows;
    for (std::size_t i = 0; i < requests.size(); ++i) {
      const Values& values = values_.at(columns[i]);
      const auto begin = values.begin() + first;
      Values& taken = block.storage[i];
      taken.resize(static_cast<std::size_t>(block.rows));
      const ColumnFormat format = requests[i].format;
      std::transform(begin, begin + block.rows, taken.begin(),
                     [format](double value) { return Formatted(value, format); });
      block.complete[i] =
          std::ranges::none_of(taken, [](double value) { return std::isnan(value); }) ? 1 : 0;
    }
    if (!consume(block)) return;
  }
}

std::int64_t TArraySupplier::PositionOf(const RowBlock& block) const {
  return block.first_row - 1;
}

std::int64_t TArraySupplier::LineOf(const RowBlock& block, std::int64_t row) const {
  return block.first_row + row;
}

}  // namespace tarnwick
