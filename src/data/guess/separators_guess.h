// What parts the fields of a text, and what begins its remarks. Knows lines; decides nothing about columns.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "data/fields/text_fields.h"
#include "data/guess/format_guess.h"
#include "data/guess/table_search.h"

namespace tarnwick {

/// How lines are cut by a format as far as it is known.
TextLayout LayoutOf(const TextFormat& format, char line_end);

/// Sets the separators with the heaviest table of several columns, with what stands around every row among them, and answers the
/// tables that they make; those of `format` stay where no separators make one.
std::vector<FoundTable> ChooseSeparators(std::span<const std::string_view> lines, char line_end,
                                         TextFormat& format);

/// Adds marks that begin lines of text and no rows to those of comments.
void ChooseCommentMarks(std::span<const std::string_view> lines, TextFormat& format);

}  // namespace tarnwick
