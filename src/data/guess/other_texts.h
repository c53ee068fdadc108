// Texts whose lines look like rows of a table and are none: messages of instruments, molecules, meshes, programs. Knows lines
// and fields; decides nothing about columns.
#pragma once

#include <string>
#include <string_view>

#include "data/guess/format_guess.h"
#include "data/guess/format_notes.h"

namespace tarnwick {

/// What such a text is and what to do about it, as the text of a FileError; empty for everything else. What the user says to be a
/// table is refused only where no row of it could be read.
std::string WhyNoTable(std::string_view text, const TextFormat& format, TableBy by);

}  // namespace tarnwick
