// What there is to say of a layout that was guessed: refusals and notes. Knows the guess; prints nothing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/guess/format_guess.h"

namespace tarnwick {

/// Throws FileError when the text holds no table of values. `name` is for the message.
void RequireTable(const TextFormat& format, std::string_view text, const std::string& name);

/// One clause for each decision that a reader may see otherwise: several tables, rows that do not fit.
std::vector<std::string> NotesOf(const TextFormat& format);

}  // namespace tarnwick
