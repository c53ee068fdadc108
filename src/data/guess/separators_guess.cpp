#include "data/guess/separators_guess.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/ascii.h"
#include "data/fields/field_kind.h"
#include "data/fields/line_words.h"
#include "data/guess/row_frame.h"
#include "data/guess/shared_fields.h"

namespace tarnwick {
namespace {

using Lines = std::span<const std::string_view>;

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kSingleSeparators[] = {"\t", ";", ",", "|", "&"};
// Labels hold blanks: "sample 1<tab>3.4" is no table of three columns.
constexpr double kBlanksMustBeatBy = 1.4;
constexpr double kLoneValuesMustBeatBy = 1.2;
constexpr double kFramesMustBeatBy = 1.1;
constexpr double kMoreValues = 0.25;

/// Characters that separate together where one alone leaves several values in a field.
struct Together {
  char alone;
  std::string_view all;
};
constexpr Together kTogether[] = {{'|', " |"},       // "1 | 2.5 3.5 |"
                                  {' ', " ,()"},     // "0.1 (2.5,3.5)"
                                  {' ', " ,[]"},     // "0.1 [2.5, 3.5]"
                                  {'\t', "\t,"},     // "0.1<tab>2.5,3.5"
                                  {'\t', "\t,()"}};  // "0.1<tab>(2.5,3.5)"
constexpr std::string_view kOtherMarks[] = {"!", "//", ";", "*", ">", "&", "@"};

/// The tables that certain separators make of the lines. Every field counts but where blanks separate, or frames of rows do.
std::vector<FoundTable> TablesBy(std::string_view separators, const TextFormat& format, Lines lines,
                                 char line_end) {
  TextFormat tried = format;
  tried.separators = separators;
  tried.merge_separators =
      separators.find(' ') != separators.npos || separators.size() > kBlanks.size();
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

bool HoldAll(std::string_view characters, Lines lines) {
  return std::ranges::all_of(characters, [lines](char c) {
    return std::ranges::any_of(lines, [c](std::string_view l) { return l.find(c) != l.npos; });
  });
}

/// How many values the rows have in the mean.
double ValuesOfRow(const Separation& separation) {
  const FoundTable* const best = HeaviestTable(separation.tables);
  if (best == nullptr || best->rows == 0) return 0;
  return best->weight * best->fields / static_cast<double>(best->rows);
}

/// Outlines in parentheses have as many points each as it takes.
bool IsRagged(std::span<const FoundTable> tables) {
  const FoundTable* const best = HeaviestTable(tables);
  return best != nullptr && best->odd_rows > 0;
}

/// True where no field that is a value without them holds the further separators, as "0,5" and "2024-03-01 12:00" do.
bool MayJoin(const Together& together, Lines lines) {
  const auto holds = [&together](std::string_view text) {
    return text.find_first_of(together.all) != text.npos;
  };
  for (std::string_view rest : lines) {
    while (!rest.empty()) {
      const std::string_view field = TrimBlankBytes(rest.substr(0, rest.find(together.alone)));
      if (holds(field) && IsValue(KindOfField(field))) return false;
      rest.remove_prefix(std::min(rest.find(together.alone), rest.size() - 1) + 1);
    }
  }
  return true;
}

/// What may stand behind "*" where it marks a value, not a remark.
bool IsFlag(char c) {
  return !IsBlankByte(c) && !IsLetter(c) && c != '*';
}

/// "*  -4  1 -3": the mark labels a row.
bool LabelsRow(std::string_view rest) {
  const std::vector<LineWord> words = WordsOfLine(rest);
  return words.size() > 1 && std::ranges::all_of(words, [](const LineWord& word) {
           return KindOfField(word.text) == FieldKind::Number;
         });
}

/// True where the mark at the beginning of the line belongs to a value or labels a row; "*" and ";" alone stand for what is
/// missing, ">5" for what is beyond what can be measured.
bool BelongsToRow(std::string_view mark, std::string_view line) {
  const std::string_view rest = TrimBlankBytes(line.substr(mark.size()));
  if (rest.empty()) return false;
  if (mark == "&") return true;  // alone it ends a set of points
  const char next = line[mark.size()];
  if (mark == ">") return IsDigit(next) || next == '=' || next == '.';
  return mark == "*" && (IsFlag(next) || LabelsRow(rest));
}

/// "O 15.999 ; oxygen": between blanks, once; behind nothing but numbers "1.5 2.5 !free text" serves, too.
bool EndsLine(std::string_view mark, std::string_view line) {
  const std::size_t at = line.find(mark);
  const std::size_t behind = at + mark.size();
  if (at == line.npos || at == 0 || !IsBlankByte(line[at - 1]) || behind >= line.size()) {
    return false;
  }
  const std::string_view before = line.substr(0, at);
  if (std::ranges::none_of(before, &IsDigit)) return false;
  const bool numbers = before.find_first_not_of("+-.0123456789eEdD, \t") == before.npos;
  if (numbers && mark != ";") return true;
  return IsBlankByte(line[behind]) && line.find(mark, behind) == line.npos;
}

/// A remark stands behind the values of nearly every line.
bool EndsLines(std::string_view mark, Lines lines) {
  constexpr std::size_t kFewest = 3;
  std::size_t filled = 0, ended = 0;
  for (const std::string_view line : lines) {
    if (TrimBlankBytes(line).empty()) continue;
    ++filled;
    ended += EndsLine(mark, line) ? 1 : 0;
  }
  return ended >= kFewest && 5 * ended >= 4 * filled;
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
  for (const Together& together : kTogether) {
    // Most files hold none of the characters, and none is looked at twice.
    if (!HoldAll(together.all, lines) || !MayJoin(together, lines)) continue;
    Separation joined = SeparateBy(together.all, format, lines, line_end);
    if (together.alone == ' ' && IsRagged(joined.tables)) continue;
    // "0.1,2.5<tab>label": where one value stands in a row there is nothing to lose.
    const bool lone = together.all == "\t," && ValuesOfRow(best) < 2;
    const double must_beat_by = lone ? kLoneValuesMustBeatBy : kBlanksMustBeatBy;
    // Lines of names between rows end their tables unless they are cut into more fields than those have.
    const bool more =
        together.alone != ' ' || ValuesOfRow(joined) > ValuesOfRow(best) + kMoreValues;
    if (more && joined.heaviest > must_beat_by * best.heaviest) best = std::move(joined);
  }
  if (const std::string marks = MarksOfSharedFields(lines); !marks.empty()) {
    best = SeparateBy(marks, format, lines, line_end);
  }
  if (best.separators.empty()) return TablesBy(format.separators, format, lines, line_end);
  format.separators = best.separators;
  return std::move(best.tables);
}

void ChooseCommentMarks(Lines lines, TextFormat& format) {
  for (const std::string_view mark : kOtherMarks) {
    // Settings of sets that end with "&"; elsewhere what "@" begins may be data.
    if (mark == "@" && !format.comment_marks.ends_with('&')) continue;
    std::size_t remarks = 0;
    bool separates = format.separators.find(mark.front()) != std::string::npos;
    for (const std::string_view whole : lines) {
      const std::string_view line = TrimBlankBytes(whole);
      if (!line.starts_with(mark)) continue;
      ++remarks;
      separates = separates || BelongsToRow(mark, line);
    }
    const bool ends = remarks == 0 && (mark == ";" || mark == "!" || mark == "//");
    if (ends && EndsLines(mark, lines)) remarks = 1;
    if (remarks > 0 && !separates) format.comment_marks += " " + std::string(mark);
  }
}

}  // namespace tarnwick
