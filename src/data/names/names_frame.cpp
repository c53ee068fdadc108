#include "data/names/names_frame.h"

#include <algorithm>
#include <string>

#include "base/text_encoding.h"
#include "data/fields/text_fields.h"

namespace tarnwick {
namespace {

/// What stands behind "Columns are:" and the like.
std::string_view BehindLead(std::string_view line) {
  constexpr std::size_t kLongestLead = 24;
  constexpr std::string_view kWords[] = {"columns", "fields", "data columns", "column names"};
  const std::size_t colon = line.find(": ");
  if (colon > kLongestLead) return line;
  const std::string lead = LowerAscii(line.substr(0, colon));
  const bool leads = std::ranges::any_of(kWords, [&lead](std::string_view word) {
    return lead == word || lead == std::string(word) + " are";
  });
  return leads ? TrimBlankBytes(line.substr(colon + 1)) : line;
}

/// The names without a remark behind them: "a(um) Qabs      ! comment".
std::string_view WithoutRemarkBehind(std::string_view line) {
  const std::size_t mark = std::min(line.find("  ! "), line.find("\t! "));
  return line.substr(0, mark);
}

}  // namespace

std::string_view WithoutFrame(std::string_view whole) {
  const std::string_view line = TrimBlankBytes(whole);
  if (const std::string_view bare = WithoutRemarkBehind(BehindLead(line)); bare != line)
    return bare;
  if (line.starts_with('~')) return line.substr(1);
  // "DATE  TIME  X  |": a bar ends the lines of a head.
  if (line.ends_with(" |") && line.find('|') == line.size() - 1) {
    return TrimBlankBytes(line.substr(0, line.size() - 1));
  }
  const bool framed = line.size() > 2 && line.front() == '[' && line.back() == ']' &&
                      line.find_first_of("[]", 1) == line.size() - 1;
  if (framed) return line.substr(1, line.size() - 2);
  const std::size_t equals = line.find('=');
  const bool listed =
      equals != line.npos &&
      TrimBlankBytes(line.substr(0, equals)).find_first_of(",; \t\"") == line.npos &&
      TrimBlankBytes(line.substr(equals + 1)).starts_with('"');
  return listed ? TrimBlankBytes(line.substr(equals + 1)) : whole;
}

}  // namespace tarnwick
