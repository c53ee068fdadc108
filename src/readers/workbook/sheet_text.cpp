#include "readers/workbook/sheet_text.h"

#include <algorithm>

#include "base/error.h"
#include "base/number_text.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostBytes = std::size_t{1} << 30;
constexpr std::string_view kOpeningQuote = "\u201C";

Error TooLarge() {
  return Error("The sheet holds more than can be read at once; name a range of it");
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
  right_ = std::max(right_, field);
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
  std::string text;
  text.reserve(lines_.size());
  const auto cut = static_cast<std::size_t>(std::max<std::int64_t>(left_ - 1, 0));
  const auto fields = static_cast<std::size_t>(right_);
  std::string_view rest = lines_;
  for (bool more = true; more;) {
    const std::size_t end = rest.find('\n');
    const std::string_view line = rest.substr(0, end);
    more = end != rest.npos;
    if (more) rest.remove_prefix(end + 1);
    if (!line.empty()) {
      text += line.substr(std::min(cut, line.size()));
      const auto tabs = static_cast<std::size_t>(std::ranges::count(line, '\t'));
      text.append(fields - 1 - std::min(fields - 1, tabs), '\t');
    }
    if (text.size() > kMostBytes) throw TooLarge();
    text += '\n';
  }
  return text;
}

}  // namespace tarnwick
