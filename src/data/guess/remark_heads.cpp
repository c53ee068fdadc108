#include "data/guess/remark_heads.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "data/fields/field_kind.h"
#include "data/fields/line_words.h"
#include "data/names/names_line.h"

namespace tarnwick {
namespace {

constexpr std::int32_t kMostNames = 200;  // more are compared with nothing

bool IsName(std::string_view text) {
  const FieldKind kind = KindOfField(text);
  return kind == FieldKind::Text || kind == FieldKind::Quantity;
}

/// Each of these names stands over one of the last fields, in their order.
bool StandOverLast(const std::vector<LineWord>& names, const std::vector<LineWord>& fields) {
  const std::size_t unnamed = fields.size() - names.size();
  for (std::size_t i = 0; i < names.size(); ++i) {
    const LineWord& field = fields[unnamed + i];
    if (names[i].begin >= field.end || field.begin >= names[i].end) return false;
  }
  return true;
}

std::optional<RemarkHead> HeadBetweenBlanks(const std::string& remark, std::string_view row) {
  const std::vector<LineWord> names = WordsOfLine(remark), fields = WordsOfLine(row);
  const bool fits = names.size() == fields.size() || names.size() + 1 == fields.size();
  const auto is_name = [](const LineWord& word) { return IsName(word.text); };
  if (!fits || names.empty() || std::cmp_greater(names.size(), kMostNames) ||
      !std::ranges::all_of(names, is_name) || !StandOverLast(names, fields)) {
    return std::nullopt;
  }
  const bool all = names.size() == fields.size();
  return RemarkHead{static_cast<std::int32_t>(fields.size()),
                    all ? std::string(names.front().text) : std::string(),
                    {}};
}

std::optional<RemarkHead> HeadOfLabels(std::string_view remark, std::string_view row,
                                       const TextLayout& layout) {
  const std::int32_t fields = CountFields(row, layout, kMostNames + 1);
  if (fields < 2 || fields > kMostNames || !SplitNames(remark, layout, fields)) return std::nullopt;
  return RemarkHead{fields, std::string(), std::string(TrimBlankBytes(remark))};
}

}  // namespace

bool IsLineOfLabels(std::string_view remark) {
  return remark.starts_with("#L ");
}

std::optional<RemarkHead> HeadOfRow(std::string_view remark, std::string_view row,
                                    const TextLayout& layout) {
  if (remark.empty() || layout.ByPlace()) return std::nullopt;
  if (IsLineOfLabels(remark)) return HeadOfLabels(remark, row, layout);
  if (layout.IsSeparator(' ')) return HeadBetweenBlanks(WithBlankedMarks(remark, layout), row);
  const std::vector<std::string> names = NameTexts(WithoutCommentMarks(remark, layout), layout);
  const std::vector<std::string> fields = FieldTexts(row, layout);
  if (names.size() != fields.size() || names.size() < 2 ||
      std::cmp_greater(names.size(), kMostNames) ||
      !std::ranges::all_of(names, [](const std::string& name) { return IsName(name); })) {
    return std::nullopt;
  }
  return RemarkHead{static_cast<std::int32_t>(names.size()), names.front(), {}};
}

bool HeadsAnotherTable(const RemarkHead& head, const RemarkHead& next) {
  constexpr std::int32_t kFewest = 3;  // two words may be any remark
  if (head.columns != next.columns) return true;
  if (!head.labels.empty() && !next.labels.empty()) return head.labels != next.labels;
  return next.columns >= kFewest && head.first != next.first;
}

}  // namespace tarnwick
