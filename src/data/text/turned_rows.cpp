#include "data/text/turned_rows.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "data/fields/text_lines.h"
#include "data/names/numbered_names.h"

namespace tarnwick {
namespace {

using Fields = std::vector<std::string_view>;

std::vector<Fields> RowsOf(LineWalker& walker, const TDSInfo& info, const TextLayout& layout) {
  std::vector<Fields> rows;
  for (std::int32_t i = 0; (info.TableLines == 0 || i < info.TableLines) && !walker.AtEnd(); ++i) {
    const std::string_view line = walker.Next();
    if (!IsDataLine(line, layout)) continue;
    FieldCursor cursor(line, layout);
    Fields& row = rows.emplace_back();
    while (const std::optional<std::string_view> field = cursor.Next()) row.push_back(*field);
  }
  return rows;
}

std::size_t LongestOf(const std::vector<Fields>& rows) {
  std::size_t longest = 0;
  for (const Fields& row : rows) longest = std::max(longest, row.size());
  return longest;
}

void AddLine(std::string_view line, char line_end, std::string& text) {
  text.append(line).push_back(line_end);
}

/// The names of the rows' fields, if the line that is said to hold them is a header and their numbers tell what the curves go
/// over.
std::optional<NumberedNames> NamesOver(const Fields& headers, const TDSInfo& info,
                                       const TextLayout& layout, std::size_t fields) {
  if (info.NamesLine < 1 || std::ssize(headers) < info.NamesLine) return std::nullopt;
  std::vector<std::string> names;
  FieldCursor cursor(headers[static_cast<std::size_t>(info.NamesLine) - 1], layout);
  std::string buffer;
  while (const std::optional<std::string_view> field = cursor.Next()) {
    names.emplace_back(FieldText(*field, layout, buffer));
  }
  return names.size() == fields ? FindNumberedNames(names) : std::nullopt;
}

/// What names the columns: the numbers' stem and the labels of the rows, or their numbers.
std::string NamesOfTurned(const NumberedNames& numbered, const std::vector<Fields>& rows,
                          char between) {
  std::string names = numbered.stem.empty() ? "x" : numbered.stem;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    names += between;
    if (numbered.labelled) {
      names += TrimBlankBytes(rows[i].front());
    } else {
      names += "row" + std::to_string(i + 1);
    }
  }
  return names;
}

/// As a row ahead of the others, whose texts are `numbered`'s own.
void AddNumbers(const NumberedNames& numbered, std::vector<Fields>& rows) {
  Fields numbers(numbered.labelled ? 1 : 0);
  numbers.insert(numbers.end(), numbered.numbers.begin(), numbered.numbers.end());
  rows.insert(rows.begin(), std::move(numbers));
}

}  // namespace

bool TurnsRows(const TDSInfo& info) {
  return info.TextSeparators.find('\n') != std::string::npos;
}

TDSInfo TurnedInfo(TDSInfo info) {
  info.ColumnCuts.clear();
  info.DivideTextByWidth = false;
  info.TableLines = 0;
  return info;
}

std::string TurnedText(std::string_view text, const TDSInfo& info, char line_end) {
  const TextLayout layout(info, line_end);
  LineWalker walker(text, line_end);
  Fields headers;
  for (std::int32_t i = 0; i < info.FileHasHeaders && !walker.AtEnd(); ++i) {
    headers.push_back(walker.Next());
  }
  std::vector<Fields> rows = RowsOf(walker, info, layout);
  const std::size_t longest = LongestOf(rows);
  std::string turned;
  if (rows.size() > kFewLongRows || longest < kFieldsPerLongRow * rows.size()) {
    for (const std::string_view header : headers) AddLine(header, line_end, turned);
    for (const Fields& row : rows) {
      for (const std::string_view field : row) {
        if (!TrimBlankBytes(field).empty()) AddLine(field, line_end, turned);
      }
    }
    return turned;
  }
  const std::size_t separator = info.TextSeparators.find_first_not_of('\n');
  const char between = separator == std::string::npos ? ' ' : info.TextSeparators[separator];
  const std::optional<NumberedNames> numbered = NamesOver(headers, info, layout, longest);
  const std::string names = numbered ? NamesOfTurned(*numbered, rows, between) : std::string();
  if (numbered) {
    headers[static_cast<std::size_t>(info.NamesLine) - 1] = names;
    AddNumbers(*numbered, rows);
  }
  for (const std::string_view header : headers) AddLine(header, line_end, turned);
  const std::size_t first = numbered && numbered->labelled ? 1 : 0;
  for (std::size_t place = first; place < longest; ++place) {
    for (std::size_t row = 0; row < rows.size(); ++row) {
      if (row > 0) turned.push_back(between);
      if (place < rows[row].size()) turned += rows[row][place];
    }
    turned += line_end;
  }
  return turned;
}

}  // namespace tarnwick
