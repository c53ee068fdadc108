#include "data/columns/error_notation.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <utility>

#include "base/number_text.h"
#include "base/text_encoding.h"
#include "base/word_list.h"
#include "data/column_caption.h"
#include "data/columns/error_names.h"
#include "data/names/name_words.h"

namespace tarnwick {
namespace {

using Words = std::vector<std::string>;
using Readings = std::vector<ErrorReading>;

constexpr std::string_view kDelta = "delta";

// Those that no name ends or begins with by chance stand without a gap as well: "fluxerr", "sigmay".
constexpr std::string_view kGluedBefore[] = {"error", "err", "sigma", "stderr", "stdev",
                                             "std",   "unc", "sem",   "se",     "sd"};
constexpr std::string_view kGluedBehind[] = {"errors", "error", "err", "sigma", "stderr", "stddev",
                                             "stdev",  "std",   "unc", "sem",   "se",     "sd"};
// Words and quantities of their own, whatever columns stand beside them.
constexpr std::string_view kOwnWords[] = {
    "sex",  "set",  "sec",   "seq",   "see",   "sea",  "sed",   "use",  "used",  "base",
    "case", "dose", "rise",  "phase", "pulse", "ev",   "event", "else", "noise", "false",
    "step", "sum",  "slope", "state", "start", "stop", "score", "scale"};

void ReplaceAll(std::string& text, std::string_view sought, std::string_view by) {
  for (std::size_t at = text.find(sought); at != text.npos; at = text.find(sought, at + by.size()))
    text.replace(at, sought.size(), by);
}

/// Greek letters as the words they stand for.
std::string Spelled(std::string_view name) {
  std::string text(name);
  ReplaceAll(text, "\xCE\x94", " delta ");      // capital delta
  ReplaceAll(text, "\xCE\xB4", " delta ");      // small delta
  ReplaceAll(text, "\xE2\x88\x86", " delta ");  // increment
  ReplaceAll(text, "\xCF\x83", " sigma ");
  return text;
}

void Add(Readings& readings, ErrorReading reading) {
  if (reading.value.empty()) return;
  const auto same = [&](const ErrorReading& known) { return known.value == reading.value; };
  if (std::ranges::none_of(readings, same)) readings.push_back(std::move(reading));
}

bool IsErrorWord(const std::string& word) {
  constexpr std::string_view kMore[] = {"se", "errs", "sterr", "uncert", "uncertainties", "1sigma"};
  return std::ranges::find(ErrorWords(), word) != ErrorWords().end() ||
         std::ranges::find(kMore, word) != std::end(kMore);
}

/// "y err", "standard error of y", "y_err_low"
void ReadWords(const Words& words, Readings& readings) {
  if (std::ranges::none_of(words, &IsErrorWord)) return;
  Words rest = words;
  std::erase_if(rest,
                [](const std::string& word) { return IsErrorWord(word) || IsErrorFiller(word); });
  Add(readings, {.value = Joined(rest, "")});
}

/// Errors are written with small letters, fields and velocities with capitals: "s_y" unlike "E_y". A name of capitals only may be
/// that of either but for "S".
bool IsErrorLetter(std::string_view written) {
  constexpr std::string_view kLetters = "sued";
  return kLetters.find(written.front()) != kLetters.npos ||
         (written.front() == 'S' && LowerAscii(written) != written &&
          std::ranges::none_of(written, [](char c) { return c >= 'a' && c <= 'z'; }));
}

/// "s_y", "u(y)", "delta y": a letter or "delta" that stands by itself before the name, no unit behind one ("E/V", "E (V)").
void ReadLetter(std::string_view written, Readings& readings) {
  constexpr std::string_view kGaps = "_-. (";
  const bool delta = LowerAscii(written).starts_with(kDelta);
  const std::size_t end = delta ? kDelta.size() : 1;
  if (written.size() <= end || (!delta && !IsErrorLetter(written))) return;
  const bool brackets = written[end] == '(' && written.ends_with(')');
  const std::string_view rest = written.substr(end);
  const std::size_t name = rest.find_first_not_of(" _-.");
  if (name == rest.npos || kGaps.find(rest.front()) == kGaps.npos) return;
  if (!brackets && (rest[name] == '(' || rest[name] == '[')) return;
  const bool difference = delta || LowerAscii(written).front() == 'd';
  Add(readings,
      {SquashedName(rest), brackets ? ErrorSign::Function : ErrorSign::Letter, difference});
}

/// "yerr", "erry", "deltay", but for those of the words that are none.
void ReadGlued(const std::string& text, Readings& readings) {
  constexpr std::size_t kShortWord = 2, kShortestBeside = 3;
  const auto is_long_enough = [](std::string_view word, std::string_view value) {
    return word.size() > kShortWord || value.size() >= kShortestBeside || value == "x" ||
           value == "y";
  };
  for (const std::string_view word : kGluedBehind) {
    if (!text.ends_with(word)) continue;
    Add(readings, {.value = text.substr(0, text.size() - word.size())});
  }
  for (const std::string_view word : kGluedBefore) {
    if (!text.starts_with(word)) continue;
    const std::string value = text.substr(word.size());
    if (is_long_enough(word, value)) Add(readings, {.value = value});
  }
  if (text.starts_with(kDelta)) {
    Add(readings, {text.substr(kDelta.size()), ErrorSign::Letter, true});
  }
}

/// "sy", "eFlux": one letter longer than the value's name. "dt" is a step more often than not.
void ReadGluedLetter(std::string_view written, Readings& readings) {
  if (written.size() < 2 || !IsErrorLetter(written)) return;
  const char letter = LowerAscii(written).front();
  const std::string value = SquashedName(written.substr(1));
  const bool of_axis = value == "x" || value == "y";
  if (letter == 'u' || (letter == 'd' && !of_axis)) return;
  const bool capital = written.front() == letter && written[1] >= 'A' && written[1] <= 'Z';
  const bool sure = of_axis || capital || value.size() > 1;
  Add(readings, {value, sure ? ErrorSign::Letter : ErrorSign::LetterOfLetter, letter == 'd'});
}

}  // namespace

std::string SquashedName(std::string_view name) {
  return Joined(WordsOf(Spelled(name)), "");
}

std::string SquashedWithoutUnit(std::string_view name) {
  return SquashedName(NameWithoutUnit(name));
}

std::vector<ErrorReading> ReadAsError(std::string_view name) {
  Readings readings;
  const std::string spelled = Spelled(name);
  const Words words = WordsOf(spelled);
  if (CountsErrors(words)) {
    if (words.front() == "err")
      readings.push_back({Joined(std::span(words).subspan(1), ""), ErrorSign::Word, false, true});
    return readings;
  }
  const std::string_view bare = NameWithoutUnit(spelled);
  for (const std::string_view form : {std::string_view(spelled), bare}) {
    ReadWords(WordsOf(form), readings);
    ReadLetter(form, readings);
  }
  const std::string text = SquashedName(bare);
  const bool own = std::ranges::find(kOwnWords, text) != std::end(kOwnWords) || IsErrorWord(text);
  if (text.empty() || own) return readings;
  ReadGlued(text, readings);
  ReadGluedLetter(bare, readings);
  std::ranges::stable_sort(readings, std::ranges::greater(), &ErrorReading::sign);
  return readings;
}

}  // namespace tarnwick
