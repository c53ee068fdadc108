#include "data/text/separators_guess.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/ascii.h"
#include "data/text/row_frame.h"

namespace tarnwick {
namespace {

using Lines = std::span<const std::string_view>;

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kSingleSeparators[] = {"\t", ";", ",", "|"};
// Labels hold blanks: "sample 1<tab>3.4" is no table of three columns.
constexpr double kBlanksMustBeatBy = 1.4;
constexpr double kFramesMustBeatBy = 1.1;
constexpr std::string_view kOtherMarks[] = {"!", "//", ";", "*"};

/// The tables that certain separators make of the lines. Every field counts but where blanks separate, or frames of rows do.
std::vector<FoundTable> TablesBy(std::string_view separators, const TextFormat& format, Lines lines,
                                 char line_end) {
  TextFormat tried = format;
  tried.separators = separators;
  tried.merge_separators = separators.starts_with(kBlanks) || separators.size() > kBlanks.size();
  return FindTables(lines, LayoutOf(tried, line_end));
}

/// What certain separators make of the lines.
struct Separation {
  std::string separators;
  std::vector<FoundTable> tables;
  double heaviest = 0;  ///< of those with several columns
};

Separation SeparateBy(std::string_view separators, const TextFormat& format, Lines lines,
                      char line_end) {
  Separation separation{std::string(separators), {}, 0};
  const bool occurs = std::ranges::any_of(lines, [separators](std::string_view line) {
    return std::ranges::any_of(separators, [line](char c) { return line.find(c) != line.npos; });
  });
  if (!occurs) return separation;
  separation.tables = TablesBy(separators, format, lines, line_end);
  for (const FoundTable& table : separation.tables) {
    if (table.fields > 1) separation.heaviest = std::max(separation.heaviest, table.weight);
  }
  return separation;
}

/// The best of the separators, each with `frame` beside it.
Separation BestSeparation(std::string_view frame, Lines lines, char line_end,
                          const TextFormat& format) {
  const auto separate = [&](std::string_view separators) {
    return SeparateBy(std::string(separators).append(frame), format, lines, line_end);
  };
  Separation best;
  for (const std::string_view separators : kSingleSeparators) {
    if (frame.find(separators) != frame.npos) continue;
    Separation tried = separate(separators);
    if (tried.heaviest > best.heaviest + 1e-9) best = std::move(tried);
  }
  Separation blanks = separate(kBlanks);
  if (blanks.heaviest > kBlanksMustBeatBy * best.heaviest) best = std::move(blanks);
  return best;
}

/// What may stand behind "*" where it marks a value, not a remark.
bool IsFlag(char c) {
  return !IsBlankByte(c) && !IsLetter(c) && c != '*';
}

}  // namespace

TextLayout LayoutOf(const TextFormat& format, char line_end) {
  TDSInfo info;
  format.ApplyTo(info);
  return TextLayout(info, line_end);
}

std::vector<FoundTable> ChooseSeparators(Lines lines, char line_end, TextFormat& format) {
  Separation best = BestSeparation({}, lines, line_end, format);
  if (const std::string frame = FrameOfRows(lines); !frame.empty()) {
    Separation framed = BestSeparation(frame, lines, line_end, format);
    if (framed.heaviest > kFramesMustBeatBy * best.heaviest) best = std::move(framed);
  }
  if (best.separators.empty()) return TablesBy(format.separators, format, lines, line_end);
  format.separators = best.separators;
  return std::move(best.tables);
}

void ChooseCommentMarks(Lines lines, TextFormat& format) {
  for (const std::string_view mark : kOtherMarks) {
    std::size_t remarks = 0;
    bool separates = format.separators.find(mark.front()) != std::string::npos;
    for (const std::string_view whole : lines) {
      const std::string_view line = TrimBlankBytes(whole);
      if (!line.starts_with(mark)) continue;
      ++remarks;
      const std::string_view rest = TrimBlankBytes(line.substr(mark.size()));
      // "*" and ";" alone stand for what is missing, and before a value they belong to it.
      separates = separates || (mark == "*" && !rest.empty() && IsFlag(line[mark.size()]));
    }
    if (remarks > 0 && !separates) format.comment_marks += " " + std::string(mark);
  }
}

}  // namespace tarnwick
