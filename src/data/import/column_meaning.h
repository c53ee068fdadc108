// What the columns of a text mean beyond their fields: times in several columns, seconds since 1970, numbers that stand for
// no value. Knows names and sampled values; fills in what the source's description keeps.
#pragma once

#include <string_view>

#include "data/import/import_source.h"

namespace tarnwick {

/// Recognises the time that several columns make together (TimeColumns; the supplier does not know of it yet), columns of
/// dates written as plain digits and of seconds since 1970, and tells of zones and of dates that read two ways. Nothing is
/// looked for that the options settle.
void SettleTimes(const ImportOptions& options, ImportSource& source);

/// The same of sources that store their times whole: no columns are joined.
void SettleStoredTimes(const ImportOptions& options, ImportSource& source);

/// Recognises numbers that stand for no value (MissingValues), unless the options say which do. The guesses' values are
/// without them from then on.
void SettleMissingValues(const ImportOptions& options, ImportSource& source);

/// The same of numbers whose rows lift the pen in the text of a map's outlines (FindPenMarks), where they lie beyond all values
/// of its columns.
void SettlePenMarks(const ImportOptions& options, std::string_view text, char line_end,
                    ImportSource& source);

}  // namespace tarnwick
