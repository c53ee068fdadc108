#include "data/data_supplier.h"

#include <algorithm>

#include "base/number_text.h"
#include "base/text_encoding.h"

namespace tarnwick {
namespace {

template <class Matches>
std::int32_t Find(const std::vector<std::string>& names, Matches matches) {
  const auto found = std::find_if(names.begin(), names.end(), matches);
  return found == names.end() ? -1 : static_cast<std::int32_t>(found - names.begin());
}

std::int32_t NumberedColumn(std::string_view name, std::size_t columns) {
  if (!name.starts_with('#')) return -1;
  const std::optional<std::int32_t> position = ParseInteger(name.substr(1));
  const bool exists = position && *position >= 0 && static_cast<std::size_t>(*position) < columns;
  return exists ? *position : -1;
}

}  // namespace

std::int32_t TDataSupplier::ColumnIndex(std::string_view name) {
  const std::vector<std::string>& names = ColumnNames();
  std::int32_t column = Find(names, [&](const std::string& n) { return n == name; });
  if (column >= 0) return column;
  if (name == kRowNumberName) return kRowNumberColumn;
  const std::string lower = LowerAscii(name);
  column = Find(names, [&](const std::string& n) { return LowerAscii(n) == lower; });
  return column >= 0 ? column : NumberedColumn(name, names.size());
}

std::string TDataSupplier::TextAt(std::int32_t column) {
  const std::optional<double> value = ReadValue(column, ColumnFormat::Automatic);
  return value ? ShortestText(*value) : std::string();
}

void TDataSupplier::MoveUnder(Progress*) {}

bool TDataSupplier::Expect(const RowPlan&, Progress& progress) {
  return !progress.Cancelled();
}

std::int64_t TDataSupplier::RowsBelow(std::int32_t, ColumnFormat, double, Progress&) {
  return 0;
}

bool TDataSupplier::CountRows(Progress& progress) {
  return !progress.Cancelled();
}

}  // namespace tarnwick
