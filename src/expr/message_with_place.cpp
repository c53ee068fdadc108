#include "expr/message_with_place.h"

namespace tarnwick {
namespace {

// A longer expression would hide the message that repeats it.
constexpr std::size_t kLongestQuoted = 200;

/// The character of a UTF-8 text, from 1, that the byte `place` belongs to.
std::size_t CharacterAt(std::string_view text, std::size_t place) {
  std::size_t character = 1;
  for (const char c : text.substr(0, place))
    character += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  return character;
}

}  // namespace

std::string MessageWithPlace(const EParserException& error, std::string_view expression) {
  const std::string hint = error.Hint().empty() ? "" : ": " + error.Hint();
  if (!error.Place()) return error.what() + hint;
  const bool short_enough = expression.size() <= kLongestQuoted;
  const std::string quoted = short_enough ? " of \"" + std::string(expression) + "\"" : "";
  return std::string(error.what()) + " (character " +
         std::to_string(CharacterAt(expression, *error.Place())) + quoted + ")" + hint;
}

}  // namespace tarnwick
