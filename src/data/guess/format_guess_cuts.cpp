#include "data/guess/format_guess_cuts.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "data/fields/byte_description.h"
#include "data/fields/field_kind.h"
#include "data/guess/aligned_table.h"

namespace tarnwick {
namespace {

std::string_view Part(std::string_view line, std::int32_t begin, std::int32_t end) {
  const auto from = std::min(static_cast<std::size_t>(begin), line.size());
  return TrimBlankBytes(line.substr(from, static_cast<std::size_t>(end - begin)));
}

bool IsAsDescribed(std::string_view row, const std::vector<DescribedColumn>& columns) {
  std::size_t values = 0;
  std::size_t texts = 0;
  for (const DescribedColumn& column : columns) {
    if (!column.is_number) continue;
    const FieldKind kind = KindOfField(Part(row, column.begin, column.end));
    values += IsValue(kind) ? 1 : 0;
    texts += kind == FieldKind::Text ? 1 : 0;
  }
  return values > texts;
}

/// What stands between two described columns is a column of its own, else it would spoil the numbers before it.
std::vector<std::int32_t> CutsOf(const std::vector<DescribedColumn>& columns,
                                 std::span<const std::string_view> rows) {
  std::vector<std::int32_t> cuts;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    cuts.push_back(columns[i].begin);
    const std::int32_t next =
        i + 1 < columns.size() ? columns[i + 1].begin : std::numeric_limits<std::int32_t>::max();
    const bool filled = std::ranges::any_of(
        rows, [&](std::string_view row) { return !Part(row, columns[i].end, next).empty(); });
    if (filled && next > columns[i].end) cuts.push_back(columns[i].end);
  }
  return cuts;
}

FoundTable TableOf(std::size_t first, std::size_t behind, std::size_t columns, std::size_t rows) {
  return {.first = first,
          .behind = behind,
          .fields = static_cast<std::int32_t>(columns),
          .rows = rows,
          .odd_rows = 0,
          .weight = static_cast<double>(rows)};
}

/// Where the bars of "|name  |unit |" stand; none where the line does not begin and end with one.
std::vector<std::int32_t> BarsOf(std::string_view line) {
  const std::string_view text = TrimBlankBytes(line);
  std::vector<std::int32_t> bars;
  if (text.size() < 2 || text.front() != '|' || text.back() != '|') return bars;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '|') bars.push_back(static_cast<std::int32_t>(i));
  }
  return bars;
}

bool IsBlankAt(std::string_view row, std::span<const std::int32_t> places) {
  return std::ranges::all_of(places, [row](std::int32_t place) {
    const auto at = static_cast<std::size_t>(place);
    return at >= row.size() || IsBlankByte(row[at]);
  });
}

}  // namespace

std::optional<CutTable> FindBarredTable(std::span<const std::string_view> lines,
                                        const TextLayout& layout) {
  constexpr std::size_t kFewestBars = 3, kFewestLines = 2;
  std::vector<std::int32_t> bars;
  std::size_t headed = 0;
  std::size_t first = 0;
  for (; first < lines.size(); ++first) {
    std::vector<std::int32_t> found = BarsOf(lines[first]);
    if (found.empty() && headed >= kFewestLines) break;
    headed = found.size() >= kFewestBars && found == bars ? headed + 1 : found.empty() ? 0 : 1;
    bars = std::move(found);
  }
  std::size_t rows = 0, fitting = 0;
  std::size_t behind = first;
  for (std::size_t i = first; i < lines.size(); ++i) {
    if (!IsDataLine(lines[i], layout)) continue;
    ++rows;
    fitting += IsBlankAt(lines[i], bars) ? 1 : 0;
    behind = i + 1;
  }
  if (rows == 0 || fitting < rows) return std::nullopt;
  bars.pop_back();
  const FoundTable table = TableOf(first, behind, bars.size(), rows);
  return CutTable{table, std::move(bars)};
}

std::optional<CutTable> FindDescribedTable(std::span<const std::string_view> lines,
                                           const TextLayout& layout) {
  const std::optional<ByteDescription> description = FindByteDescription(lines);
  if (!description) return std::nullopt;
  std::vector<std::string_view> rows;
  std::size_t first = description->behind;
  std::size_t behind = first;
  for (std::size_t i = first; i < lines.size(); ++i) {
    if (!IsDataLine(lines[i], layout)) continue;
    if (rows.empty()) first = i;
    rows.push_back(lines[i]);
    behind = i + 1;
  }
  const auto fitting = std::ranges::count_if(
      rows, [&](std::string_view row) { return IsAsDescribed(row, description->columns); });
  if (rows.empty() || 2 * static_cast<std::size_t>(fitting) < rows.size()) return std::nullopt;
  std::vector<std::int32_t> cuts = CutsOf(description->columns, rows);
  const FoundTable table = TableOf(first, behind, cuts.size(), rows.size());
  return CutTable{table, std::move(cuts)};
}

std::optional<CutTable> FindGappedTable(std::span<const std::string_view> lines,
                                        std::string_view text, const TextLayout& by_blanks,
                                        std::span<const FoundTable> tables) {
  const FoundTable* const seed = HeaviestTable(tables);
  if (seed == nullptr || seed->fields < 2) return std::nullopt;
  std::optional<AlignedTable> found = FindAlignedTable(lines, by_blanks, *seed);
  if (!found || CutsWords(text, by_blanks, found->cuts)) return std::nullopt;
  const std::span<const std::string_view> within =
      lines.subspan(found->first, found->behind - found->first);
  const auto rows = std::ranges::count_if(
      within, [&](std::string_view line) { return IsDataLine(line, by_blanks); });
  const FoundTable table =
      TableOf(found->first, found->behind, found->cuts.size(), static_cast<std::size_t>(rows));
  return CutTable{table, std::move(found->cuts)};
}

}  // namespace tarnwick
