// What the functions that judge columns of numbers answer, as one line each to compare. A question is numbers with blanks
// between; "1..9" counts, "3x7" is 7 three times.
#pragma once

#include <string>
#include <vector>

namespace tarnwick::testing {

std::vector<double> NumbersOf(const std::string& text);
/// In what order the values stand.
std::string OrderVerdict(const std::string& numbers);
/// Which of them stand for no value, and whether they are times since 1970.
std::string MissingVerdict(const std::string& numbers);

}  // namespace tarnwick::testing
