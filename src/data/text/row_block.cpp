#include "data/text/row_block.h"

#include <fast_float/fast_float.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

#include "base/short_decimal.h"
#include "data/fields/field_value.h"
#include "data/fields/text_lines.h"
#include "data/pseudo_columns.h"

namespace tarnwick {
namespace {

/// Where the values of a row go: at its place in each column asked for.
struct RowPlace {
  std::span<double* const> columns;
  std::size_t row = 0;

  double& operator[](std::size_t column) const { return columns[column][row]; }
};

/// A number of a plain row: what stands before it, and where it goes.
struct PlainField {
  std::int32_t passed_over = 0;  ///< fields that are not wanted
  char point = '.';
  std::size_t request = 0;
};

/// Reads rows one after the other. A row written plainly (numbers between separators, nothing else in the columns that
/// are wanted) is read in one pass without looking for its end first; every other row goes the general way.
class RowReader {
 public:
  RowReader(std::string_view lines, const TextLayout& layout,
            std::span<const ColumnRequest> requests)
      : layout_(layout), requests_(requests), at_(lines.data()), end_(lines.data() + lines.size()) {
    order_.resize(requests.size());
    std::iota(order_.begin(), order_.end(), std::size_t{0});
    std::stable_sort(order_.begin(), order_.end(), [&](std::size_t a, std::size_t b) {
      return requests[a].column < requests[b].column;
    });
    plain_allowed_ = !layout.ByPlace() && !requests.empty() && EachColumnOnce() &&
                     FormatsArePlain() && MarksAreOrdinary();
    if (plain_allowed_) PlanPlainRow();
  }

  bool AtEnd() const { return at_ == end_; }
  /// Empty lines and remarks since this was asked last.
  BlankLines TakeBlanks() { return std::exchange(blanks_, {}); }

  /// Reads the line at hand into the places of its values; false when it is no row.
  bool ReadLine(const RowPlace& row) {
    if (plain_allowed_ && ReadPlainRow(row)) return true;
    const char* const stop = FindLineEnd(at_, end_, layout_.line_end);
    const std::string_view line = LineView(at_, stop);
    at_ = stop == end_ ? end_ : stop + 1;
    if (!IsDataLine(line, layout_)) {
      if (TrimBlankBytes(line).empty()) {
        ++blanks_.lines;
      } else {
        blanks_.remark = true;
      }
      return false;
    }
    ReadAnyRow(line, row);
    return true;
  }

 private:
  bool EachColumnOnce() const {
    for (std::size_t i = 1; i < order_.size(); ++i) {
      if (requests_[order_[i]].column == requests_[order_[i - 1]].column) return false;
    }
    return true;
  }

  /// Every column holds numbers whose decimal separator separates no fields.
  bool FormatsArePlain() const {
    return std::all_of(requests_.begin(), requests_.end(), [&](const ColumnRequest& request) {
      using enum ColumnFormat;
      if (request.column == kJoinedTimeColumn) return false;
      if (request.format == DecimalComma) return layout_.Of(',') == TextLayout::kPlain;
      return request.format == Automatic || request.format == Number;
    });
  }

  /// No character of a number or line end separates or encloses fields.
  bool MarksAreOrdinary() const {
    const std::string_view own = "0123456789+-.eE\n\r";
    return std::all_of(own.begin(), own.end(),
                       [&](char c) { return layout_.Of(c) == TextLayout::kPlain; });
  }

  void PlanPlainRow() {
    std::int32_t column = 0;
    for (const std::size_t request : order_) {
      const bool comma = requests_[request].format == ColumnFormat::DecimalComma;
      plain_fields_.push_back({requests_[request].column - column, comma ? ',' : '.', request});
      column = requests_[request].column + 1;
    }
  }

  bool IsLineEnd(const char* at) const {
    return *at == layout_.line_end ||
           (*at == '\r' && (at + 1 == end_ || at[1] == layout_.line_end));
  }

  /// Reads the number at `at`, which a separator or the line's end must follow; null when anything is out of the way.
  const char* ReadPlainNumber(const char* at, char point, double& value) const {
    while (at < end_ && (*at == ' ' || *at == '\t') && !layout_.IsSeparator(*at)) ++at;
    if (const char* const stop = ReadShortDecimal(at, end_, point, value)) {
      // Twenty bytes were there, of which a short number takes no more than eighteen.
      if (layout_.IsSeparator(*stop) || *stop == layout_.line_end) return stop;
      at = stop;
    } else if (at = ReadLongDecimal(at, point, value); at == nullptr) {
      return nullptr;
    }
    while (at < end_ && (*at == ' ' || *at == '\t') && !layout_.IsSeparator(*at)) ++at;
    return at == end_ || layout_.IsSeparator(*at) || IsLineEnd(at) ? at : nullptr;
  }

  const char* ReadLongDecimal(const char* at, char point, double& value) const {
    const char* const digit = at < end_ && *at == '-' ? at + 1 : at;
    if (digit >= end_ || *digit < '0' || *digit > '9') return nullptr;
    const auto result = fast_float::from_chars_advanced(
        at, end_, value, fast_float::parse_options{fast_float::chars_format::general, point});
    return result.ec == std::errc() ? result.ptr : nullptr;
  }

  /// From the end of one field to the beginning of the next; null at the line's end.
  const char* NextPlainField(const char* at) const {
    if (at == end_ || !layout_.IsSeparator(*at)) return nullptr;
    ++at;
    if (layout_.merge) {
      while (at < end_ && layout_.IsSeparator(*at)) ++at;
    }
    return at;
  }

  /// Over a field that is not wanted; null when it may hold markers or is the last.
  const char* SkipPlainField(const char* at) const {
    while (at < end_ && !layout_.IsSeparator(*at)) {
      if (IsLineEnd(at) || layout_.IsMarker(*at)) return nullptr;
      ++at;
    }
    return at;
  }

  /// The first character that is no blank belongs to a field of a row, not to a comment or a blank line.
  bool StartsRow() const {
    const char* at = at_;
    while (at < end_ && (*at == ' ' || *at == '\t')) ++at;
    return at < end_ && !IsBlankByte(*at) && !layout_.BeginsComment(at, end_);
  }

  bool ReadPlainRow(const RowPlace& row) {
    if (!StartsRow()) return false;
    const char* at = at_;
    if (layout_.merge) {
      while (at < end_ && layout_.IsSeparator(*at)) ++at;
    }
    for (const PlainField& field : plain_fields_) {
      if (&field != plain_fields_.data() && (at = NextPlainField(at)) == nullptr) return false;
      for (std::int32_t i = 0; i < field.passed_over; ++i) {
        at = SkipPlainField(at);
        if (at == nullptr || (at = NextPlainField(at)) == nullptr) return false;
      }
      at = ReadPlainNumber(at, field.point, row[field.request]);
      if (at == nullptr) return false;
    }
    const char* const stop =
        at < end_ && *at == layout_.line_end ? at : FindLineEnd(at, end_, layout_.line_end);
    at_ = stop == end_ ? end_ : stop + 1;
    return true;
  }

  void ReadAnyRow(std::string_view line, const RowPlace& row) {
    FieldCursor cursor(line, layout_);
    std::optional<std::string_view> field;
    std::int32_t taken = 0;
    for (const std::size_t which : order_) {
      if (requests_[which].column == kJoinedTimeColumn) {
        row[which] = JoinedTimeValue(line, requests_[which].format, layout_);
        continue;
      }
      while (taken <= requests_[which].column) {
        field = cursor.Next();
        taken = field ? taken + 1 : std::numeric_limits<std::int32_t>::max();
      }
      row[which] = BlockValue(field, requests_[which], layout_, buffer_);
    }
  }

  const TextLayout& layout_;
  std::span<const ColumnRequest> requests_;
  std::vector<std::size_t> order_;        // requests by ascending column
  std::vector<PlainField> plain_fields_;  // in that order
  const char* at_;
  const char* end_;
  bool plain_allowed_ = false;
  BlankLines blanks_;
  std::string buffer_;
};

constexpr std::size_t kRowsPerGrowth = 1024;

/// Room for so many rows; `columns` are where the columns lie then.
void GrowTo(std::size_t rows, RowBlock& block, std::vector<double*>& columns) {
  columns.clear();
  for (std::vector<double>& column : block.storage) {
    if (column.size() < rows) column.resize(std::max(rows, 2 * column.size()));
    columns.push_back(column.data());
  }
}

/// All exponents are those of numbers. No branch and no order of steps: several values are looked at together.
bool AreFinite(std::span<const double> values) {
  constexpr std::uint64_t kAllButSign = ~std::uint64_t{0} >> 1U;
  constexpr std::uint64_t kExponentStep = std::uint64_t{1} << 52U;
  std::uint64_t overflow = 0;
  for (const double value : values) {
    overflow |= (std::bit_cast<std::uint64_t>(value) & kAllButSign) + kExponentStep;
  }
  return (overflow >> 63U) == 0;
}

/// Numbers beyond the range of a double are no numbers, and some stand for no value. True when every value is a number.
bool SettleNumbers(std::span<double> values, const MissingValues& missing, std::int32_t column) {
  if (!missing.Empty()) {
    for (double& value : values) {
      if (missing.MatchesNumber(value, column)) value = kMissingValue;
    }
  }
  if (AreFinite(values)) return true;
  for (double& value : values) {
    if (std::isinf(value)) value = kNotNumberValue;
  }
  return false;
}

}  // namespace

double BlockValue(std::optional<std::string_view> field, const ColumnRequest& request,
                  const TextLayout& layout, std::string& buffer) {
  if (!field) return kMissingValue;
  const std::string_view text = FieldText(*field, layout, buffer);
  if (text.empty() || (!layout.missing.Empty() && layout.missing.Matches(text, request.column))) {
    return kMissingValue;
  }
  return ValueOfField(text, request.format).value_or(kNotNumberValue);
}

double JoinedTimeValue(std::string_view line, ColumnFormat date_format, const TextLayout& layout) {
  std::vector<std::string> texts;
  std::string buffer;
  for (const std::int32_t column : layout.time.columns) {
    const std::optional<std::string_view> field = FieldAt(line, layout, column);
    texts.emplace_back(field ? FieldText(*field, layout, buffer) : std::string_view());
    if (texts.back().empty()) return kMissingValue;
  }
  const std::vector<std::string_view> views(texts.begin(), texts.end());
  return JoinTime(layout.time.parts, views, date_format).value_or(kNotNumberValue);
}

std::string_view LinesBeginningIn(std::string_view text, std::size_t from, std::size_t to,
                                  char line_end) {
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  if (from >= text.size()) return {};
  const char* first = begin;
  if (from > 0) {
    // A line that begins in the range has its predecessor's end there too, so no search leaves the range in vain.
    const std::size_t found = text.substr(from - 1, to - from).find(line_end);
    if (found == text.npos) return {};
    first = begin + from + found;
  }
  if (first == end) return {};
  const char* last = end;
  if (to < text.size()) {
    last = FindLineEnd(begin + to - 1, end, line_end);
    if (last != end) ++last;
  }
  return {first, static_cast<std::size_t>(last - first)};
}

void ReadRowBlock(std::string_view lines, const TextLayout& layout,
                  std::span<const ColumnRequest> requests, RowBlock& block) {
  block.text = lines;
  block.rows = 0;
  block.lines = 0;
  block.storage.resize(requests.size());
  std::vector<double*> columns;
  block.blanks.clear();
  std::size_t rows = 0;
  RowReader reader(lines, layout, requests);
  for (; !reader.AtEnd(); ++block.lines) {
    if (rows % kRowsPerGrowth == 0) GrowTo(rows + kRowsPerGrowth, block, columns);
    if (!reader.ReadLine({columns, rows})) continue;
    if (BlankLines blanks = reader.TakeBlanks(); blanks.lines > 0 || blanks.remark) [[unlikely]] {
      blanks.row = static_cast<std::int64_t>(rows);
      block.blanks.push_back(blanks);
    }
    ++rows;
  }
  block.rows = static_cast<std::int64_t>(rows);
  block.blanks_behind = reader.TakeBlanks();
  block.complete.clear();
  for (std::size_t i = 0; i < requests.size(); ++i) {
    const std::span<double> values = std::span(block.storage[i]).first(rows);
    block.complete.push_back(SettleNumbers(values, layout.missing, requests[i].column) ? 1 : 0);
  }
}

std::int64_t LineInBlock(const RowBlock& block, std::int64_t row, const TextLayout& layout) {
  LineWalker walker(block.text, layout.line_end);
  for (std::int64_t line = 0; !walker.AtEnd(); ++line) {
    if (IsDataLine(walker.Next(), layout) && row-- == 0) return line;
  }
  return block.lines;
}

}  // namespace tarnwick
