// The lines of a text that its layout is guessed from. Knows lines and fields; decides nothing.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// A handful of lines: the first ones, and some from places further on.
struct GuessLines {
  std::vector<std::string_view>
      first;  ///< whole from the text's beginning, comments and blank lines among them
  std::vector<std::string_view> later;  ///< rows only
  bool whole = false;                   ///< `first` holds all lines of the text
};

/// How far the first lines reach.
struct GuessReach {
  std::size_t lines = 0;
  std::size_t bytes = 0;
};
inline constexpr GuessReach kFirstReach = {1000, 256 * 1024};
/// The next larger one, for texts whose table begins behind it.
constexpr GuessReach Further(GuessReach reach) {
  return {16 * reach.lines, 16 * reach.bytes};
}

/// Long lines are cut: what is guessed from a line stands at its beginning.
GuessLines CollectGuessLines(std::string_view text, GuessReach reach = kFirstReach);

/// '\r' when the text has no '\n' in its first lines.
char GuessLineEnd(std::string_view text);

}  // namespace tarnwick
