// Whether the words of a line stand apart, as those of a sentence never do. Knows characters; knows no names.
#pragma once

#include <cstddef>
#include <string_view>

namespace tarnwick {

/// Each of so many words stands in double quotes of its own.
bool AllInQuotes(std::string_view line, std::size_t words);

/// Two blanks and more part all words of a line, of which there are several.
bool HasWideGapsOnly(std::string_view line);

}  // namespace tarnwick
