// Why a text in which no table was found has none, in words that are true of it. Knows lines and words; knows no kinds of files.
#pragma once

#include <string>
#include <string_view>

#include "data/guess/format_guess.h"

namespace tarnwick {

/// One clause for the text of a layout that is no table: what its lines hold instead, and what to tell the program where they are
/// data all the same. "of the first lines" where the text is longer than what is looked at.
std::string WhatStandsInstead(std::string_view text, const TextFormat& format);

}  // namespace tarnwick
