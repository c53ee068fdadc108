#include "data/guess/row_frame.h"

#include <algorithm>
#include <map>

#include "base/ascii.h"
#include "data/fields/text_fields.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestRows = 3;
constexpr double kAgreement = 0.9;  // of the lines of numbers
constexpr std::string_view kOpening = "[({";
constexpr std::string_view kClosing = "])}";
constexpr std::string_view kAtEnd = ",;";

bool MayBeginRow(char c) {
  return IsDigit(c) || c == '+' || c == '-' || c == '.' || kOpening.find(c) != kOpening.npos;
}

/// "1548500700: 0.9 0.8": a colon behind the number that begins the row, and none further on, as times have.
bool HasColonBehindFirst(std::string_view line) {
  const std::size_t colon = line.find(':');
  return colon != line.npos && colon > 0 && colon + 1 < line.size() &&
         line.find_first_not_of("+-.0123456789") == colon && IsBlankByte(line[colon + 1]) &&
         line.find(':', colon + 1) == line.npos;
}

std::string FrameOf(std::string_view line) {
  std::string frame;
  constexpr std::string_view kRowEnd = "\\\\";  // of typeset tables
  if (line.ends_with(kRowEnd)) {
    frame += kRowEnd.front();
    line = TrimBlankBytes(line.substr(0, line.size() - kRowEnd.size()));
  } else if (kAtEnd.find(line.back()) != kAtEnd.npos) {
    frame += line.back();
    line = TrimBlankBytes(line.substr(0, line.size() - 1));
  }
  const std::size_t open = line.empty() ? kOpening.npos : kOpening.find(line.front());
  if (open != kOpening.npos && line.back() == kClosing[open]) {
    frame += {kOpening[open], kClosing[open]};
  }
  if (HasColonBehindFirst(line)) frame += ':';
  return frame;
}

}  // namespace

std::string FrameOfRows(std::span<const std::string_view> lines) {
  std::map<std::string, std::size_t> frames;
  std::size_t rows = 0;
  for (const std::string_view whole : lines) {
    const std::string_view line = TrimBlankBytes(whole);
    if (line.size() < 2 || !MayBeginRow(line.front()) || std::ranges::none_of(line, IsDigit))
      continue;
    ++rows;
    ++frames[FrameOf(line)];
  }
  if (rows < kFewestRows) return {};
  const auto most =
      std::ranges::max_element(frames, {}, [](const auto& frame) { return frame.second; });
  // The last row of a list has no comma behind it.
  const bool agreed =
      static_cast<double>(most->second) + 1 > kAgreement * static_cast<double>(rows);
  return agreed ? most->first : std::string();
}

}  // namespace tarnwick
