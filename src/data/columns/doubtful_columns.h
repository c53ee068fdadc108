// What the fields of the columns that are read leave open, for the reader to decide. Knows sampled fields; reads no rows.
#pragma once

#include <string>
#include <vector>

#include "data/columns/column_roles.h"
#include "data/columns/import_source.h"

namespace tarnwick {

struct ImportOptions;

/// A clause for each thing that the chosen columns leave open: commas that may group thousands as well as be the decimals'
/// mark, units that differ from row to row, times of a day that go on past midnight. Of columns whose format the options
/// state nothing is said.
std::vector<std::string> DoubtsOf(const ImportSource& source, const ImportOptions& options,
                                  const ChosenColumns& columns);

}  // namespace tarnwick
