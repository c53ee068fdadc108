// The rules by which X is found among the columns of a table, in the order in which they are asked. Knows names and sampled
// values.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "data/columns/import_source.h"

namespace tarnwick {

/// What the rules ask of the columns of numbers, found once.
struct XCandidates {
  const ImportSource& source;
  std::vector<std::int32_t> numbers;        ///< all, in order
  std::vector<std::int32_t> counts = {};    ///< that count the rows
  std::vector<std::int32_t> together = {};  ///< that go on from row to row, no errors of others
  std::vector<std::int32_t> varying = {};   ///< of these, those that nothing speaks against
  bool labelled = false;                    ///< the rows have labels (HasRowLabels)
};

/// X where the table says which it is, by a name, by an X left empty or by blocks of rows that begin it anew; kRowNumberColumn
/// where it says that none is. None where it says nothing.
std::optional<std::int32_t> StatedX(const ImportSource& source,
                                    const std::vector<std::int32_t>& numbers);

XCandidates FindXCandidates(const ImportSource& source, const std::vector<std::int32_t>& numbers);

/// The X of the first rule that finds one; kRowNumberColumn where none gives X.
std::int32_t XByRules(const XCandidates& found);

}  // namespace tarnwick
