// Texts whose lines are no rows of one table: records that go over several of them, lists of many lengths. Knows lines only.
#pragma once

#include <span>
#include <string_view>

#include "data/guess/format_guess.h"

namespace tarnwick {

/// Lines end in a stroke that says "the record goes on": beyond a table of one row a line.
bool ContinueAtStrokes(std::span<const std::string_view> lines);

/// At least half of the lines begin with "+ ", which says that they go on with the record above; among signs there are minus as
/// well.
bool ContinueBehindPlus(std::span<const std::string_view> lines);

/// Where commas part the rows: now many of them on a line and now few, as each is a list.
bool AreListsOfManyLengths(std::span<const std::string_view> lines, const TextFormat& format);

/// Most lines are bytes in hexadecimal digits, letters among them: "81 08 a7 9b".
bool AreBytesInHexadecimal(std::span<const std::string_view> lines);

/// Lists in brackets under their keys go over several lines, three of them at least and most lines: "energy = [ 1.0  1.5".
bool AreListsUnderKeys(std::span<const std::string_view> lines);

}  // namespace tarnwick
