// What there is to say of a layout that was guessed: refusals and notes. Knows the guess; prints nothing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "data/guess/format_guess.h"

namespace tarnwick {

/// Whose word it is that the text holds a table.
enum class TableBy { Guess, User };

/// Throws FileError when the text holds no table of values; for the guess, also when its rows are what they never are in one.
/// `name` is for the message.
void RequireTable(const TextFormat& format, std::string_view text, const std::string& name,
                  TableBy by = TableBy::Guess);

/// What has the table read that so many header lines stand above: "--headers 40 reads it".
std::string OptionToRead(std::int32_t headers);

/// One clause for each decision that a reader may see otherwise: several tables, rows that do not fit.
std::vector<std::string> NotesOf(const TextFormat& format);

}  // namespace tarnwick
