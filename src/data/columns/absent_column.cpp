#include "data/columns/absent_column.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "data/data_supplier.h"
#include "data/names/text_names.h"

namespace tarnwick {
namespace {

constexpr std::size_t kNamesInMessage = 12;

std::string FirstNames(const std::vector<std::string>& names) {
  std::string known;
  for (std::size_t i = 0; i < std::min(names.size(), kNamesInMessage); ++i) {
    known += (i > 0 ? ", " : "") + names[i];
  }
  if (names.size() > kNamesInMessage) known += ", ...";
  if (std::cmp_equal(names.size(), kMostColumns)) {
    known += "; of more columns than " + std::to_string(kMostColumns) + " the others are not seen";
  }
  return known;
}

}  // namespace

FileError AbsentColumn(std::string_view name, TDataSupplier& supplier) {
  return {"There is no column \"" + std::string(name) + "\"", supplier.Describe(),
          "columns: " + FirstNames(supplier.ColumnNames())};
}

}  // namespace tarnwick
