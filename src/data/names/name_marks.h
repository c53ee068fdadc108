// Signs on a line of names that part or end these as no sentence is parted. Knows texts only.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/fields/text_fields.h"

namespace tarnwick {

/// The text of a remark without a last word of signs that holds its mark again: "omega  e  k  @#". The text itself where blanks
/// part it into `columns` words with that one.
std::string_view WithoutClosingMark(std::string_view text, const TextLayout& layout,
                                    std::size_t columns);

/// What stands before a mark of remarks that is a word of its own with others behind it: "t U I  ## as set by hand". The text
/// itself where there is none.
std::string_view WithoutRemarkBehindNames(std::string_view text);

/// "x [mm] - c_f - Tu [%]" at its dashes between blanks; fewer than three parts, or two without units, are a title: nothing.
std::vector<std::string_view> SplitAtDashes(std::string_view text);

/// "ClassA", "ClassB": two names as long as each other that differ in their last character.
bool AreTwins(std::span<const std::string> names);

/// The names that go on behind the comma at the end of `upper`, both lines without marks of remarks; nothing where no comma ends
/// it, a name is empty, or one of several words.
std::vector<std::string_view> NamesOverCommas(std::string_view upper, std::string_view lower);

}  // namespace tarnwick
