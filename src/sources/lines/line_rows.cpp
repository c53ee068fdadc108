#include "sources/lines/line_rows.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "base/error.h"
#include "base/number_text.h"
#include "base/undefined.h"
#include "data/fields/field_value.h"
#include "data/fields/text_fields.h"
#include "data/fields/text_lines.h"
#include "data/pseudo_columns.h"
#include "sources/streams/stream_clock.h"

namespace tarnwick {
namespace {

/// The place of "Y", "Y2", … among the Y of a line.
std::optional<std::size_t> PlaceOfY(std::string_view name) {
  if (!name.starts_with('Y')) return std::nullopt;
  if (name.size() == 1) return 0;
  const std::optional<std::int32_t> number = ParseInteger(name.substr(1));
  const bool good = number && *number >= 1 && std::cmp_less_equal(*number, kMostLineColumns);
  return good ? std::optional(static_cast<std::size_t>(*number) - 1) : std::nullopt;
}

}  // namespace

/// How a line is cut into numbers.
class LineRows::Cutter {
 public:
  explicit Cutter(const TDSInfo& info)
      : layout_(info, '\n'), x_format_(info.XFormat), y_format_(info.YFormat) {}

  bool IsRow(std::string_view line) const { return IsDataLine(line, layout_); }
  std::vector<double> Numbers(std::string_view line, bool x_first) const {
    std::vector<double> numbers;
    FieldCursor cursor(line, layout_);
    std::string buffer;
    while (numbers.size() <= kMostLineColumns) {
      const std::optional<std::string_view> field = cursor.Next();
      if (!field) break;
      const std::string_view text = FieldText(*field, layout_, buffer);
      const auto column = static_cast<std::int32_t>(numbers.size());
      const bool missing = !layout_.missing.Empty() && layout_.missing.Matches(text, column);
      const ColumnFormat format = x_first && numbers.empty() ? x_format_ : y_format_;
      numbers.push_back(missing ? kUndefined : ValueOfField(text, format).value_or(kUndefined));
    }
    return numbers;
  }

 private:
  TextLayout layout_;
  ColumnFormat x_format_;
  ColumnFormat y_format_;
};

StreamColumns LineColumns(const TDSInfo& info) {
  const std::string& x = info.XDataColumn;
  if (x != kLineX && x != kLineClock && x != kRowNumberName) {
    throw Error("X of a line is \"X\", \"Clock\" or \"Row number\", not \"" + x + "\"");
  }
  const std::optional<std::size_t> y = PlaceOfY(info.YDataColumn);
  if (!y)
    throw Error("Y of a line is \"Y\", \"Y2\", \"Y3\" and so on, not \"" + info.YDataColumn + "\"");
  return {.y = *y};
}

std::string NameOfY(std::size_t place) {
  return place == 0 ? "Y" : "Y" + std::to_string(place + 1);
}

bool SameLines(const TDSInfo& one, const TDSInfo& other) {
  const auto reading = [](const TDSInfo& info) {
    return std::tie(info.DatasourceInfo, info.TextSeparators, info.TextMarkers, info.CommentMarks,
                    info.MissingValues, info.MergeSeparators, info.DivideTextByWidth,
                    info.ColumnWidth, info.ColumnCuts, info.XDataColumn, info.XFormat,
                    info.YFormat);
  };
  return reading(one) == reading(other);
}

LineRows::LineRows(const TDSInfo& info, Clock now)
    : cutter_(std::make_unique<const Cutter>(info)), now_(now) {
  LineColumns(info);
  if (info.XDataColumn == kLineClock) x_from_ = XFrom::Clock;
  if (info.XDataColumn == kRowNumberName) x_from_ = XFrom::RowNumber;
}

LineRows::~LineRows() = default;

void LineRows::DropUnended() {
  unended_.clear();
  passing_ = false;
}

void LineRows::Take(std::string_view bytes, StreamRows& rows) {
  while (!bytes.empty()) {
    const std::size_t end = bytes.find('\n');
    const std::string_view part = bytes.substr(0, end);
    if (!passing_) unended_ += part;
    if (unended_.size() > kLongestLine) {
      unended_.clear();
      passing_ = true;
    }
    if (end == bytes.npos) return;
    bytes.remove_prefix(end + 1);
    if (std::exchange(passing_, false)) {
      ++rows.unreadable;
    } else {
      TakeLine(LineView(unended_.data(), unended_.data() + unended_.size()), rows);
    }
    unended_.clear();
  }
}

void LineRows::TakeLine(std::string_view line, StreamRows& rows) {
  if (!cutter_->IsRow(line)) return;
  ++row_;
  std::vector<double> numbers = cutter_->Numbers(line, x_from_ == XFrom::Line);
  double x = static_cast<double>(row_);
  if (x_from_ == XFrom::Clock) x = LocalDay(now_());
  if (x_from_ == XFrom::Line && numbers.size() > 1) {
    x = numbers.front();
    numbers.erase(numbers.begin());
  }
  const bool any = std::ranges::any_of(numbers, [](double y) { return std::isfinite(y); });
  if (!std::isfinite(x) || !any) {
    ++rows.unreadable;
    return;
  }
  while (rows.y.size() < numbers.size()) rows.y.emplace_back(rows.x.size(), kUndefined);
  rows.x.push_back(x);
  numbers.resize(rows.y.size(), kUndefined);
  for (std::size_t i = 0; i < numbers.size(); ++i) rows.y[i].push_back(numbers[i]);
}

}  // namespace tarnwick
