// Quoted fields that run over several lines, as spreadsheets write them. Knows quotes, the usual separators and line ends;
// knows no description of a source.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace tarnwick {

/// The places of all line ends that stand inside a quoted field. Such a field begins behind a separator (tab, comma,
/// semicolon, "|") or a line end with a double quote, and ends at the next one that is not doubled, where a separator or
/// a line end must follow. A quote that is not closed so within a few thousand bytes encloses nothing, nor does one in a
/// line that begins with "#" or "%".
std::vector<std::size_t> LineEndsInQuotes(std::string_view text);

}  // namespace tarnwick
