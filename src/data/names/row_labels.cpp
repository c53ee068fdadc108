#include "data/names/row_labels.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "data/fields/field_kind.h"
#include "data/fields/line_words.h"
#include "data/names/argument_names.h"
#include "data/names/clock_names.h"
#include "data/names/names_line.h"

namespace tarnwick {
namespace {

/// How rows of one number of fields begin and end.
struct Ends {
  std::size_t rows = 0;
  std::size_t fields = 0;       ///< of each; 0 where they differ
  bool text_first = true;       ///< in all rows
  bool fraction_first = false;  ///< in one of them
  bool number_first = true;     ///< without quotes
  bool counts_first = true;     ///< the numbers of the rows, from 0 or 1
  bool text_last = true;        ///< in all rows
  bool same_text_last = true;   ///< the very same
  bool value_last = true;
};

/// "0.5", unlike the "3" or "3." that rows are numbered by.
bool HoldsFraction(std::string_view field) {
  const std::optional<double> value = ParseNumber(field);
  return value && *value != std::floor(*value);
}

Ends EndsOf(std::span<const std::string_view> rows, const TextLayout& layout) {
  Ends ends;
  std::string buffer, remark;
  double begin = 0;
  for (const std::string_view row : rows) {
    if (!IsDataLine(row, layout)) continue;
    FieldCursor cursor(row, layout);
    std::optional<std::string_view> field = cursor.Next();
    const FieldKind first =
        field ? KindOfField(FieldText(*field, layout, buffer)) : FieldKind::Empty;
    ends.text_first = ends.text_first && first == FieldKind::Text;
    ends.fraction_first = ends.fraction_first || HoldsFraction(field ? *field : std::string_view());
    const double number = field ? ParseNumber(*field).value_or(-1) : -1;
    begin = ends.rows == 0 ? number : begin;
    ends.counts_first = ends.counts_first && number == begin + static_cast<double>(ends.rows);
    ends.number_first = ends.number_first && first == FieldKind::Number && !field->starts_with('"');
    std::string last;
    std::size_t fields = 0;
    for (; field; field = cursor.Next(), ++fields) last = FieldText(*field, layout, buffer);
    const FieldKind kind = KindOfField(last);
    ends.text_last = ends.text_last && kind == FieldKind::Text;
    ends.value_last = ends.value_last && kind == FieldKind::Number;
    ends.same_text_last = ends.same_text_last && (ends.rows == 0 || last == remark);
    ends.fields = ends.rows == 0 || ends.fields == fields ? fields : 0;
    remark = std::move(last);
    ++ends.rows;
  }
  ends.counts_first = ends.counts_first && (begin == 0 || begin == 1);
  return ends;
}

/// "time force" above rows of three numbers: what is measured over a column is named behind it.
bool NamesArgumentFirst(std::string_view line, std::size_t names, const TextLayout& layout) {
  const std::string_view text = WithoutCommentMarks(line, layout);
  std::vector<std::string> fields = NameTexts(text, layout);
  if (fields.size() == 1) {
    fields.clear();
    for (const LineWord& word : WordsOfLine(text)) fields.push_back(NameText(word.text, layout));
  }
  return fields.size() == names && NamesArgument(fields.front()) &&
         std::ranges::none_of(fields, &std::string::empty);
}

}  // namespace

RowLabels LabelsOf(std::span<const std::string_view> rows, const TextLayout& layout,
                   std::span<const std::string_view> above) {
  if (layout.ByPlace()) return RowLabels::Possible;
  const Ends ends = EndsOf(rows, layout);
  if (ends.rows < 2) return RowLabels::Possible;
  if (ends.text_first) return RowLabels::Ahead;
  if (!ends.number_first) return RowLabels::Possible;
  if (layout.IsSeparator(' ')) return RowLabels::Possible;
  if (ends.text_last && (ends.same_text_last || NamesClockFromLeft(above, rows, layout))) {
    return RowLabels::AtEnd;
  }
  constexpr std::size_t kFewestCounted = 3;
  if (ends.counts_first && ends.rows >= kFewestCounted) return RowLabels::Ahead;
  // What rows are numbered by is whole, and so it may be where some rows were taken out.
  const bool from_left = ends.value_last && ends.fields > 2 && ends.fraction_first &&
                         std::ranges::any_of(above, [&](std::string_view line) {
                           return NamesArgumentFirst(line, ends.fields - 1, layout);
                         });
  return from_left ? RowLabels::AtEnd : RowLabels::Possible;
}

}  // namespace tarnwick
