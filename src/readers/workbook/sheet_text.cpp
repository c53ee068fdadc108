#include "readers/workbook/sheet_text.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "base/error.h"
#include "base/number_text.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostBytes = std::size_t{1} << 30;
constexpr std::string_view kOpeningQuote = "\u201C";

Error TooLarge() {
  return Error("The sheet holds more than can be read at once; name a range of it");
}

/// Without the tabs before the first column.
std::vector<std::string_view> LinesOf(std::string_view text, std::size_t cut) {
  std::vector<std::string_view> lines;
  for (bool more = true; more;) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    lines.push_back(line.substr(std::min(cut, line.size())));
    more = end != text.npos;
    if (more) text.remove_prefix(end + 1);
  }
  return lines;
}

std::size_t FieldCount(std::string_view line) {
  return static_cast<std::size_t>(std::ranges::count(line, '\t')) + 1;
}

/// Whether one of the first fields begins as numbers and dates do.
bool HoldsNumber(std::string_view line, std::size_t fields) {
  for (; fields > 0 && !line.empty(); --fields) {
    const char first = line[line.front() == '-' && line.size() > 1 ? 1 : 0];
    if (first >= '0' && first <= '9') return true;
    line.remove_prefix(std::min(line.find('\t'), line.size() - 1) + 1);
  }
  return false;
}

/// How many fields each line shall have: as many as the longest one of its table. Behind an empty line
/// one without a number in the columns so far, which names its own, begins another table.
std::vector<std::size_t> PaddedFields(const std::vector<std::string_view>& lines) {
  std::vector<std::size_t> fields(lines.size());
  std::size_t begin = 0;
  std::size_t most = 0;
  const auto pad = [&](std::size_t end) {
    std::fill(fields.begin() + static_cast<std::ptrdiff_t>(begin),
              fields.begin() + static_cast<std::ptrdiff_t>(end), most);
    begin = end;
    most = 0;
  };
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const bool behind_empty = i > 0 && lines[i - 1].empty();
    if (behind_empty && !lines[i].empty() && !HoldsNumber(lines[i], most)) pad(i);
    most = std::max(most, FieldCount(lines[i]));
  }
  pad(lines.size());
  return fields;
}

}  // namespace

bool SheetText::Reach(std::int64_t row, std::int64_t column) {
  if (row < 1 || row > kMostRows || column < 1 || column > kMostSheetColumns) {
    throw Error("The workbook is damaged: a sheet claims a cell in row " + std::to_string(row) +
                ", column " + std::to_string(column));
  }
  if (row < source_row_ || (row == source_row_ && column <= source_column_)) {
    throw Error("The workbook is damaged: the cells of row " + std::to_string(row) +
                " are not in order");
  }
  source_row_ = row;
  source_column_ = column;
  if (row < range_.first_row || row > range_.last_row || column < range_.first_column ||
      column > range_.last_column) {
    return false;
  }
  const std::int64_t field = column - range_.first_column + 1;
  if (row > row_) {
    lines_.append(static_cast<std::size_t>(row - row_), '\n');
    row_ = row;
    column_ = 0;
  }
  lines_.append(static_cast<std::size_t>(field - std::max<std::int64_t>(column_, 1)), '\t');
  column_ = field;
  left_ = std::min(left_, field);
  return true;
}

void SheetText::Append(std::string_view text) {
  if (lines_.size() + text.size() > kMostBytes) throw TooLarge();
  lines_ += text;
}

void SheetText::AddNumber(std::int64_t row, std::int64_t column, std::string_view text) {
  if (!Reach(row, column)) return;
  ++numbers_;
  Append(text);
}

void SheetText::AddText(std::int64_t row, std::int64_t column, std::string_view text) {
  if (TrimBlanks(text).empty() || !Reach(row, column)) return;
  if (ParseNumber(text)) ++numbers_;
  // A quote at the beginning would join lines, as in text files.
  if (text.starts_with('"')) {
    Append(kOpeningQuote);
    text.remove_prefix(1);
  }
  const std::size_t begin = lines_.size();
  Append(text);
  std::replace_if(
      lines_.begin() + static_cast<std::ptrdiff_t>(begin), lines_.end(),
      [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
}

void SheetText::AddError(std::int64_t row, std::int64_t column) {
  if (Reach(row, column)) ++errors_;
}

std::string SheetText::Lines() const {
  const auto cut = static_cast<std::size_t>(std::max<std::int64_t>(left_ - 1, 0));
  const std::vector<std::string_view> lines = LinesOf(lines_, cut);
  const std::vector<std::size_t> fields = PaddedFields(lines);
  std::string text;
  text.reserve(lines_.size());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    text += lines[i];
    if (!lines[i].empty()) text.append(fields[i] - FieldCount(lines[i]), '\t');
    if (text.size() > kMostBytes) throw TooLarge();
    text += '\n';
  }
  return text;
}

}  // namespace tarnwick
