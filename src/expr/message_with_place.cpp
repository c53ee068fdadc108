#include "expr/message_with_place.h"

#include <algorithm>

namespace tarnwick {
namespace {

// A longer expression would hide the message that repeats it.
constexpr std::size_t kLongestRepeated = 60;

/// The character of a UTF-8 text, from 1, that the byte `place` belongs to.
std::size_t CharacterAt(std::string_view text, std::size_t place) {
  std::size_t character = 1;
  for (const char c : text.substr(0, place))
    character += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  return character;
}

bool IsInner(std::string_view text, std::size_t place) {
  return place < text.size() && (static_cast<unsigned char>(text[place]) & 0xC0) == 0x80;
}

/// What stands about a byte of a UTF-8 text, on one line; all of a short one.
std::string Excerpt(std::string_view text, std::size_t place) {
  constexpr std::size_t kBefore = 18;
  constexpr std::size_t kBehind = 14;
  if (text.size() <= kLongestRepeated) return std::string(text);
  std::size_t from = place > kBefore ? place - kBefore : 0;
  while (from > 0 && IsInner(text, from)) --from;
  std::size_t to = std::min(text.size(), std::max(place, kBefore) + kBehind);
  while (IsInner(text, to)) ++to;
  std::string shown(text.substr(from, to - from));
  for (char& c : shown) {
    if (static_cast<unsigned char>(c) < ' ') c = ' ';
  }
  return (from > 0 ? "…" : "") + shown + (to < text.size() ? "…" : "");
}

}  // namespace

std::string ShortMessage(const EParserException& error, std::string_view expression) {
  std::string message = error.what();
  const std::size_t repeated = expression.empty() ? std::string::npos : message.find(expression);
  if (repeated != std::string::npos)
    message.replace(repeated, expression.size(),
                    Excerpt(expression, error.LikelyPlace().value_or(0)));
  return message;
}

std::string MessageWithPlace(const EParserException& error, std::string_view expression) {
  const std::string message = ShortMessage(error, expression);
  const std::string hint = error.Hint().empty() ? "" : ": " + error.Hint();
  if (!error.LikelyPlace()) return message + hint;
  const bool short_enough = expression.size() <= kLongestRepeated;
  const std::string quoted = short_enough ? " of \"" + std::string(expression) + "\"" : "";
  return message + " (character " + std::to_string(CharacterAt(expression, *error.LikelyPlace())) +
         quoted + ")" + hint;
}

}  // namespace tarnwick
