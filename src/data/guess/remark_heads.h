// Remarks above rows that name their columns, and so tell where another table begins. Knows lines and fields; knows no rows but
// the one below.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "data/fields/text_fields.h"

namespace tarnwick {

/// What a remark calls the columns of the rows below it.
struct RemarkHead {
  std::int32_t columns = 0;  ///< that these rows have
  std::string first;   ///< the name of their first column; empty where only the others have names
  std::string labels;  ///< the whole line, where it is marked as that of labels
};

/// "#L Energy  I0": marked as the labels of columns.
bool IsLineOfLabels(std::string_view remark);

/// The head that `remark` is over `row`: as many texts as the row has fields and none of them a value; between blanks each must
/// stand over its own field, and the first field may have none. A line of labels needs only be as many. Nothing for any other
/// remark.
std::optional<RemarkHead> HeadOfRow(std::string_view remark, std::string_view row,
                                    const TextLayout& layout);

/// Rows below `next` are another table than those below `head`: they have another number of columns, or of three and more the
/// first is called otherwise, over which the others were measured ("#Freq vp(a2) vp(a3)", "#Time v(a2) v(a3)"), or their labels
/// are others.
bool HeadsAnotherTable(const RemarkHead& head, const RemarkHead& next);

}  // namespace tarnwick
