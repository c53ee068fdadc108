// Columns that tell what the rows of a table belong to: labels of rows, numbers of objects, persons measured again and again.
// Knows names and sampled values.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "data/columns/import_source.h"

namespace tarnwick {

/// "id", "subject", "star_id": what tells which person or thing.
bool NamesIdentity(std::string_view name);

/// The column tells apart what the rows belong to and is called so ("object", "source_id", "subject"), by whole numbers that are
/// not all one, and no few ones in no order.
bool IdentifiesRows(const ImportSource& source, std::int32_t column);

/// The first column, the only one without a name, numbers the rows of which some were left out: whole numbers, most of them one
/// more than the one before, or in no order and none twice, or in uneven steps beside a time or the like that rises as well.
bool LabelsRows(const ImportSource& source, std::int32_t column);

/// Rows that follow each other belong to one person or thing, which was measured again and again.
struct RowBlocks {
  std::int32_t identity = 0;  ///< the column that tells which: whole numbers, called so ("id")
  std::int32_t x = 0;         ///< when: called as a time, and rising within each block
};

/// The blocks among these columns of numbers; none where no column identifies them or none tells when.
std::optional<RowBlocks> FindRowBlocks(const ImportSource& source,
                                       std::span<const std::int32_t> numbers);

}  // namespace tarnwick
