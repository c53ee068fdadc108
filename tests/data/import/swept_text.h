// Texts of tables in which one number runs, for the tests of what the guess decides by counting.
#pragma once

#include <string>
#include <string_view>

namespace tarnwick::testing {

/// A text made by a form of lines, each ended by "\n". In a line "{n}" is the running number, "{n+2}" and "{9-n}" what they say,
/// and "{N*text}" the text N times, "#" in it the index from 0, "~" a line's end; "{{" is "{", "{/}" a line's end. A line "*N
/// form" stands for N rows as Rows() makes them, "%N form" for N lines that are no rows.
struct SweptText {
  std::string text;
  int rows = 0;  ///< those of the "*" lines
};

/// Throws std::invalid_argument on a form that is none.
SweptText MakeSwept(std::string_view form, int n);

}  // namespace tarnwick::testing
