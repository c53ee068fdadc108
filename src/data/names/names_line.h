// Lines of names of columns and of their units, cut into these. Knows how such lines are written; knows no rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/fields/text_fields.h"
#include "data/names/row_labels.h"

namespace tarnwick {

/// A line of a comment without its marks and the blanks around them.
std::string_view WithoutCommentMarks(std::string_view line, const TextLayout& layout);

/// The line with as many blanks in place of a comment's marks.
std::string WithBlankedMarks(std::string_view line, const TextLayout& layout);

/// A field of a line of names as UTF-8, without markers, at most 255 bytes; blanks stand for control characters.
std::string NameText(std::string_view field, const TextLayout& layout);
/// The same of all fields of a line.
std::vector<std::string> NameTexts(std::string_view line, const TextLayout& layout);

/// True when the line ends with a separator that counts: its last field is empty.
bool EndsWithSeparator(std::string_view line, const TextLayout& layout);

/// A line of names as `columns` names, some of them empty, or nothing when it cannot be cut so. The separators of the
/// rows come first; names are often separated otherwise: behind a comment mark, within one pair of quotes, by two blanks,
/// by commas over columns of blanks. One name less than columns leaves the first column, the label of the rows, without,
/// or else the last. A remark behind names is none of them.
std::optional<std::vector<std::string>> SplitNames(std::string_view line, const TextLayout& layout,
                                                   std::int32_t columns,
                                                   RowLabels labels = RowLabels::Possible);

/// The units that stand under some of the names of the line above them, told by their places; empty where a name has none.
/// Nothing when the rows are not parted by blanks, or a unit stands under no name.
std::optional<std::vector<std::string>> UnitsUnderNames(std::string_view units,
                                                        std::string_view names,
                                                        const TextLayout& layout,
                                                        std::int32_t columns);

/// The words of a line that stand over each stroke of the rule ("-----  ----") below it, which has as many as there are columns;
/// nothing where it has not, a word goes over a gap, or the rows are not parted by blanks.
std::optional<std::vector<std::string>> UnitsOverRule(std::string_view units, std::string_view rule,
                                                      const TextLayout& layout,
                                                      std::int32_t columns);

/// "(s)", "[V]".
bool IsBracketed(std::string_view text);

/// The unit itself: without brackets around it; empty for what says that there is none ("-", "#", "[]").
std::string UnitText(std::string_view text);

}  // namespace tarnwick
