#include "data/columns/import_source.h"

#include "data/columns/absent_column.h"

namespace tarnwick {

std::int32_t ImportSource::Column(std::string_view name) const {
  const std::int32_t column = supplier->ColumnIndex(name);
  if (column < 0) throw AbsentColumn(name, *supplier);
  return column;
}

std::string ImportSource::NameOf(std::int32_t column) const {
  if (column == kRowNumberColumn) return std::string(kRowNumberName);
  if (column == kJoinedTimeColumn) return std::string(kJoinedTimeName);
  return supplier->ColumnNames()[static_cast<std::size_t>(column)];
}

std::string ImportSource::ReferenceTo(std::int32_t column) const {
  const std::string name = NameOf(column);
  return supplier->ColumnIndex(name) == column ? name : "#" + std::to_string(column);
}

const ColumnGuess& ImportSource::GuessOf(std::int32_t column) const {
  const auto at = static_cast<std::size_t>(column);
  if (column == kJoinedTimeColumn) return time;
  return at < columns.size() ? columns[at] : row_numbers_;
}

std::vector<std::int32_t> ImportSource::NumberColumns() const {
  std::vector<std::int32_t> numbers;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].has_numbers) numbers.push_back(static_cast<std::int32_t>(i));
  }
  return numbers;
}

}  // namespace tarnwick
