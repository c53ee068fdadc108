// Errors in expressions as they are told: with the place. Knows texts only.
#pragma once

#include <string>
#include <string_view>

#include "expr/words/parser_exception.h"

namespace tarnwick {

/// The error's message, where it repeats all of a long `expression` with some 30 characters about the place instead.
std::string ShortMessage(const EParserException& error, std::string_view expression);

/// The short message with the character of `expression` (UTF-8) that it is about, where it has a place.
std::string MessageWithPlace(const EParserException& error, std::string_view expression);

}  // namespace tarnwick
