#include "data/guess/point_columns.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "base/ascii.h"

namespace tarnwick {
namespace {

using Lines = std::span<const std::string_view>;

constexpr std::size_t kFewestRows = 10;
constexpr std::size_t kFewestColumns = 3;
constexpr double kNearlyAll = 0.95;
constexpr std::size_t kRowsPerColumn = 10;  // that have a value in it, of so many one does

/// A number with decimals: characters [begin, end) of its line.
struct Decimal {
  std::size_t begin = 0;
  std::size_t point = 0;
  std::size_t end = 0;
};

/// All numbers with decimals on a line, signs among them.
std::vector<Decimal> DecimalsOf(std::string_view line) {
  std::vector<Decimal> found;
  for (std::size_t i = 1; i + 1 < line.size(); ++i) {
    if (line[i] != '.' || !IsDigit(line[i + 1])) continue;
    std::size_t begin = i;
    while (begin > 0 && IsDigit(line[begin - 1])) --begin;
    if (begin > 0 && (line[begin - 1] == '-' || line[begin - 1] == '+')) --begin;
    std::size_t end = i + 1;
    while (end < line.size() && IsDigit(line[end])) ++end;
    found.push_back({begin, i, end});
  }
  return found;
}

/// A column as its rows show it.
struct Column {
  std::size_t begin = 0;  ///< the least
  std::size_t end = 0;    ///< one for all
  std::size_t rows = 0;
  bool one_end = true;
};

using Columns = std::map<std::size_t, Column>;  // by the places of their points

Columns ColumnsOf(const std::vector<std::vector<Decimal>>& rows) {
  Columns columns;
  for (const std::vector<Decimal>& row : rows) {
    for (const Decimal& number : row) {
      const auto [at, is_new] =
          columns.try_emplace(number.point, Column{number.begin, number.end, 0, true});
      Column& column = at->second;
      column.begin = std::min(column.begin, number.begin);
      column.one_end = column.one_end && column.end == number.end;
      ++column.rows;
    }
  }
  std::erase_if(columns, [&](const auto& column) {
    return !column.second.one_end || kRowsPerColumn * column.second.rows < rows.size();
  });
  return columns;
}

bool StandsIn(const std::vector<Decimal>& row, const Columns& columns) {
  return std::ranges::all_of(row,
                             [&](const Decimal& number) { return columns.contains(number.point); });
}

/// Several whole numbers stand there, as those of a date, which may touch: nobody could part them.
bool HoldsWholeNumbers(const std::vector<std::string_view>& rows, std::size_t end) {
  return std::ranges::all_of(rows,
                             [end](std::string_view row) {
                               return std::ranges::all_of(row.substr(0, end), [](char c) {
                                 return IsDigit(c) || IsBlankByte(c);
                               });
                             }) &&
         std::ranges::any_of(rows, [end](std::string_view row) {
           return TrimBlankBytes(row.substr(0, end)).find(' ') != std::string_view::npos;
         });
}

/// Each column from where the one before ends; what stands between two is a column of its own, and what stands before the first
/// is none where it holds several whole numbers.
std::vector<std::int32_t> CutsOf(const Columns& columns,
                                 const std::vector<std::string_view>& rows) {
  std::vector<std::int32_t> cuts;
  std::size_t end = 0;
  for (const auto& [point, column] : columns) {
    const auto between = [from = end, to = column.begin](std::string_view row) {
      const std::size_t begin = std::min(from, row.size());
      return !TrimBlankBytes(row.substr(begin, to - begin)).empty();
    };
    const bool filled = column.begin > end && std::ranges::any_of(rows, between);
    const bool left_out = filled && end == 0 && HoldsWholeNumbers(rows, column.begin);
    if (filled && !left_out) cuts.push_back(static_cast<std::int32_t>(end));
    cuts.push_back(static_cast<std::int32_t>(filled ? column.begin : end));
    end = column.end;
  }
  const bool more = std::ranges::any_of(rows, [end](std::string_view row) {
    return row.size() > end && !TrimBlankBytes(row.substr(end)).empty();
  });
  if (more) cuts.push_back(static_cast<std::int32_t>(end));
  return cuts;
}

bool Overlap(const Columns& columns) {
  return std::ranges::adjacent_find(columns, [](const auto& left, const auto& right) {
           return right.second.begin < left.second.end;
         }) != columns.end();
}

/// Blanks alone would part all rows alike.
bool PartAlike(const std::vector<std::string_view>& rows, const TextLayout& layout) {
  constexpr std::int32_t kMost = 1000;
  const std::int32_t fields = CountFields(rows.front(), layout, kMost);
  return std::ranges::all_of(
      rows, [&](std::string_view row) { return CountFields(row, layout, kMost) == fields; });
}

}  // namespace

std::optional<CutTable> FindPointColumns(Lines lines, const TextLayout& layout) {
  std::vector<std::vector<Decimal>> numbers;
  std::vector<std::string_view> rows;
  std::size_t first = 0, behind = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!IsDataLine(lines[i], layout)) continue;
    std::vector<Decimal> row = DecimalsOf(lines[i]);
    const bool plain = lines[i].find('\t') == std::string_view::npos;
    if (row.empty() || !plain) {
      if (!rows.empty()) break;
      continue;
    }
    if (rows.empty()) first = i;
    behind = i + 1;
    rows.push_back(lines[i]);
    numbers.push_back(std::move(row));
  }
  const auto all = static_cast<std::size_t>(std::ranges::count_if(
      lines, [&layout](std::string_view line) { return IsDataLine(line, layout); }));
  if (rows.size() < kFewestRows || 4 * rows.size() < 3 * all || PartAlike(rows, layout)) {
    return std::nullopt;
  }
  const Columns columns = ColumnsOf(numbers);
  const auto fitting = std::ranges::count_if(
      numbers, [&](const std::vector<Decimal>& row) { return StandsIn(row, columns); });
  if (columns.size() < kFewestColumns || Overlap(columns) ||
      static_cast<double>(fitting) < kNearlyAll * static_cast<double>(rows.size())) {
    return std::nullopt;
  }
  std::vector<std::int32_t> cuts = CutsOf(columns, rows);
  FoundTable table;
  table.first = first;
  table.behind = behind;
  table.fields = static_cast<std::int32_t>(cuts.size());
  table.rows = rows.size();
  table.weight = static_cast<double>(rows.size());
  return CutTable{table, std::move(cuts)};
}

}  // namespace tarnwick
