// What the columns of a text mean beyond their fields: times in several columns, seconds since 1970. Knows names and sampled
// values; fills in what the source's description keeps.
#pragma once

#include "data/columns/import_source.h"

namespace tarnwick {

struct ImportOptions;

/// Recognises the time that several columns make together (TimeColumns; the supplier does not know of it yet), columns of
/// dates written as plain digits and of seconds since 1970, and tells of zones and of dates that read two ways. Nothing is
/// looked for that the options settle.
void SettleTimes(const ImportOptions& options, ImportSource& source);

/// The same of sources that store their times whole: no columns are joined.
void SettleStoredTimes(const ImportOptions& options, ImportSource& source);

}  // namespace tarnwick
