#include "data/text/turned_rows.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "data/text/text_lines.h"

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
  std::string turned;
  for (std::int32_t i = 0; i < info.FileHasHeaders && !walker.AtEnd(); ++i) {
    AddLine(walker.Next(), line_end, turned);
  }
  const std::vector<Fields> rows = RowsOf(walker, info, layout);
  const std::size_t longest = LongestOf(rows);
  if (rows.size() > kFewLongRows || longest < kFieldsPerLongRow * rows.size()) {
    for (const Fields& row : rows) {
      for (const std::string_view field : row) {
        if (!TrimBlankBytes(field).empty()) AddLine(field, line_end, turned);
      }
    }
    return turned;
  }
  const std::size_t separator = info.TextSeparators.find_first_not_of('\n');
  const char between = separator == std::string::npos ? ' ' : info.TextSeparators[separator];
  for (std::size_t place = 0; place < longest; ++place) {
    for (std::size_t row = 0; row < rows.size(); ++row) {
      if (row > 0) turned.push_back(between);
      if (place < rows[row].size()) turned += rows[row][place];
    }
    turned += line_end;
  }
  return turned;
}

}  // namespace tarnwick
