#include "data/text/turned_rows.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "data/fields/field_kind.h"
#include "data/fields/text_lines.h"
#include "data/names/number_names.h"
#include "data/names/numbered_names.h"

namespace tarnwick {
namespace {

using Fields = std::vector<std::string_view>;

Fields HeadersOf(LineWalker& walker, const TDSInfo& info) {
  Fields headers;
  for (std::int32_t i = 0; i < info.FileHasHeaders && !walker.AtEnd(); ++i) {
    headers.push_back(walker.Next());
  }
  return headers;
}

/// The rows of a table, from its first line on.
class RowWalker {
 public:
  RowWalker(LineWalker& lines, const TDSInfo& info, const TextLayout& layout)
      : lines_(lines),
        left_(info.TableLines == 0 ? std::numeric_limits<std::int32_t>::max() : info.TableLines),
        layout_(layout) {}

  /// Adds rows until there are `most` or no more.
  void Take(std::size_t most, std::vector<Fields>& rows) {
    while (rows.size() < most && left_ > 0 && !lines_.AtEnd()) {
      --left_;
      const std::string_view line = lines_.Next();
      if (!IsDataLine(line, layout_)) continue;
      FieldCursor cursor(line, layout_);
      Fields& row = rows.emplace_back();
      while (const std::optional<std::string_view> field = cursor.Next()) row.push_back(*field);
    }
  }

 private:
  LineWalker& lines_;
  std::int32_t left_;
  const TextLayout& layout_;
};

std::size_t LongestOf(const std::vector<Fields>& rows) {
  std::size_t longest = 0;
  for (const Fields& row : rows) longest = std::max(longest, row.size());
  return longest;
}

void AddLine(std::string_view line, char line_end, std::string& text) {
  text.append(line).push_back(line_end);
}

/// What the curves of rows go over, and what names them.
struct CurvesOver {
  std::string stem = {};
  std::vector<std::string> numbers = {};  ///< as they are written
  std::size_t first = 0;  ///< their place on the line; what stands before it are labels
  bool of_many = false;   ///< it is certain of any number of rows
};

/// The same of names that are years, days or other numbers.
std::optional<CurvesOver> CurvesAcross(const std::vector<std::string>& names, std::size_t fields) {
  const std::optional<NamesAcross> across = FindNamesAcross(names);
  if (!across || across->behind > fields) return std::nullopt;
  CurvesOver over{.first = across->first, .of_many = true};
  over.numbers.assign(names.begin() + static_cast<std::ptrdiff_t>(across->first),
                      names.begin() + static_cast<std::ptrdiff_t>(across->behind));
  const bool days = KindOfField(over.numbers.front()) == FieldKind::Date;
  over.stem = days ? "Date" : across->are_times ? "Year" : names[across->first - 1];
  return over;
}

/// The names of the rows' fields, if the line that is said to hold them is a header and their numbers tell what the curves go
/// over.
std::optional<CurvesOver> NamesOver(const Fields& headers, const TDSInfo& info,
                                    const TextLayout& layout, std::size_t fields) {
  if (info.NamesLine < 1 || std::ssize(headers) < info.NamesLine) return std::nullopt;
  std::vector<std::string> names;
  FieldCursor cursor(headers[static_cast<std::size_t>(info.NamesLine) - 1], layout);
  std::string buffer;
  while (const std::optional<std::string_view> field = cursor.Next()) {
    names.emplace_back(FieldText(*field, layout, buffer));
  }
  if (std::optional<CurvesOver> across = CurvesAcross(names, fields)) return across;
  if (names.size() != fields) return std::nullopt;
  std::optional<NumberedNames> numbered = FindNumberedNames(names);
  if (!numbered) return std::nullopt;
  return CurvesOver{.stem = std::move(numbered->stem),
                    .numbers = std::move(numbered->numbers),
                    .first = numbered->labelled ? 1U : 0U};
}

/// True where each row has a text at this place, no number, and none has another's.
bool TellApart(const std::vector<Fields>& rows, std::size_t place, const TextLayout& layout) {
  std::set<std::string> seen;
  std::string buffer;
  return std::ranges::all_of(rows, [&](const Fields& row) {
    if (place >= row.size()) return false;
    const std::string_view text = FieldText(row[place], layout, buffer);
    return KindOfField(text) == FieldKind::Text && seen.emplace(text).second;
  });
}

/// The text at the first place that tells the rows apart, else all that stands before the numbers.
std::string LabelOf(const Fields& row, std::size_t places, std::optional<std::size_t> telling,
                    char between, const TextLayout& layout) {
  if (telling) return std::string(TrimBlankBytes(row[*telling]));
  std::string label, buffer;
  for (std::size_t place = 0; place < std::min(places, row.size()); ++place) {
    const std::string_view text = FieldText(row[place], layout, buffer);
    if (!text.empty() && KindOfField(text) == FieldKind::Text) {
      label += (label.empty() ? "" : " ") + std::string(text);
    }
  }
  std::ranges::replace(label, between, between == ' ' ? '_' : ' ');
  return label;
}

/// What names the columns: the numbers' stem and the labels of the rows, or their numbers.
std::string NamesOfTurned(const CurvesOver& over, const std::vector<Fields>& rows, char between,
                          const TextLayout& layout) {
  std::string names = over.stem.empty() ? "x" : over.stem;
  std::optional<std::size_t> telling;
  for (std::size_t place = 0; place < over.first && !telling; ++place) {
    if (TellApart(rows, place, layout)) telling = place;
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::string label =
        over.first > 0 ? LabelOf(rows[i], over.first, telling, between, layout) : std::string();
    names += between;
    names += label.empty() ? "row" + std::to_string(i + 1) : label;
  }
  return names;
}

/// As a row ahead of the others, whose texts are `over`'s own.
void AddNumbers(const CurvesOver& over, std::vector<Fields>& rows) {
  Fields numbers(over.first);
  numbers.insert(numbers.end(), over.numbers.begin(), over.numbers.end());
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

bool TurnsOverNames(std::string_view text, const TDSInfo& info, char line_end) {
  const TextLayout layout(info, line_end);
  LineWalker walker(text, line_end);
  const Fields headers = HeadersOf(walker, info);
  std::vector<Fields> rows;
  RowWalker(walker, info, layout).Take(kMostTurnedRows, rows);
  const std::optional<CurvesOver> over = NamesOver(headers, info, layout, LongestOf(rows));
  return over && over->of_many;
}

std::string TurnedText(std::string_view text, const TDSInfo& info, char line_end) {
  const TextLayout layout(info, line_end);
  LineWalker walker(text, line_end);
  Fields headers = HeadersOf(walker, info);
  RowWalker table(walker, info, layout);
  std::vector<Fields> rows;
  table.Take(kMostTurnedRows, rows);
  std::size_t longest = LongestOf(rows);
  const std::optional<CurvesOver> over = NamesOver(headers, info, layout, longest);
  if (!(over && over->of_many)) table.Take(std::numeric_limits<std::size_t>::max(), rows);
  const bool few = rows.size() <= kFewLongRows && longest >= kFieldsPerLongRow * rows.size();
  std::string turned;
  if (!few && !(over && over->of_many)) {
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
  rows.resize(std::min(rows.size(), over ? kMostTurnedRows : kFewLongRows));
  const std::string names = over ? NamesOfTurned(*over, rows, between, layout) : std::string();
  if (over) {
    headers[static_cast<std::size_t>(info.NamesLine) - 1] = names;
    longest = over->first + over->numbers.size();
    AddNumbers(*over, rows);
  }
  for (const std::string_view header : headers) AddLine(header, line_end, turned);
  for (std::size_t place = over ? over->first : 0; place < longest; ++place) {
    for (std::size_t row = 0; row < rows.size(); ++row) {
      if (row > 0) turned.push_back(between);
      if (place < rows[row].size()) turned += rows[row][place];
    }
    turned += line_end;
  }
  return turned;
}

}  // namespace tarnwick
