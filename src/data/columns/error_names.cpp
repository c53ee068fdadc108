#include "data/columns/error_names.h"

#include <algorithm>
#include <span>

#include "base/text_encoding.h"
#include "data/names/name_words.h"

namespace tarnwick {
namespace {

using Words = std::vector<std::string>;

constexpr std::string_view kErrorWords[] = {"err",   "error",  "errors",      "sigma",   "std",
                                            "stdev", "stddev", "sd",          "sem",     "stderr",
                                            "unc",   "dy",     "uncertainty", "\xCF\x83"};
constexpr std::string_view kErrorSigns[] = {"+-", "+/-", "\xC2\xB1"};
// Of columns whose numbers are parts of the values beside them.
constexpr std::string_view kRelativeWords[] = {"rel", "relative", "percent", "pct"};
constexpr std::string_view kFillers[] = {
    "in",       "of",    "on",   "the",   "dev",         "deviation",  "abs", "standard",
    "absolute", "stat",  "sys",  "syst",  "statistical", "systematic", "tot", "total",
    "low",      "lower", "high", "upper", "plus",        "minus"};
// What they name may be measured as well: a stress, a conductivity.
constexpr std::string_view kDoubtfulWords[] = {"sigma", "std", "sd", "\xCF\x83"};

bool IsOf(std::span<const std::string_view> known, const std::string& word) {
  return std::ranges::find(known, word) != known.end();
}

/// "SE", "se", "S.E.", unlike the element "Se".
bool NamesStandardError(std::string_view name) {
  const std::string lower = LowerAscii(name);
  if (lower == "s.e." || lower == "s.e") return true;
  constexpr std::string_view kWord[] = {"se"};
  return HasWord(name, kWord) && name.find("Se") == name.npos;
}

}  // namespace

std::span<const std::string_view> ErrorWords() {
  return kErrorWords;
}

bool IsErrorFiller(const std::string& word) {
  return IsOf(kFillers, word);
}

bool CountsErrors(const Words& words) {
  constexpr std::string_view kRates[] = {"rate",   "rates", "count",
                                         "counts", "ratio", "probability"};
  // "std counts" are the errors of counts, "error counts" are how many there were.
  constexpr std::string_view kCounted[] = {"err", "error", "errors"};
  for (std::size_t i = 1; i < words.size(); ++i) {
    if (IsOf(kCounted, words[i - 1]) && IsOf(kRates, words[i])) return true;
  }
  return false;
}

std::vector<std::string> ValueNamedIn(std::string_view name) {
  Words words = WordsOf(name);
  for (std::string& word : words) {
    if (word == "dy" || word == "dx") word.erase(0, 1);
  }
  const bool standard = NamesStandardError(name);
  std::erase_if(words, [&](const std::string& word) {
    return IsOf(kErrorWords, word) || IsOf(kFillers, word) || IsOf(kErrorSigns, word) ||
           (standard && (word == "se" || word == "s" || word == "e"));
  });
  return words;
}

int NameMatch(const std::vector<std::string>& after, const std::vector<std::string>& name) {
  if (after.empty() || after.size() > name.size()) return 0;
  const bool begins = std::equal(after.begin(), after.end(), name.begin());
  const bool ends = std::equal(after.rbegin(), after.rend(), name.rbegin());
  return !begins && !ends ? 0 : after.size() == name.size() ? 2 : 1;
}

bool NamesErrors(std::string_view name) {
  if (CountsErrors(WordsOf(name))) return false;
  const bool sign = std::ranges::any_of(
      kErrorSigns, [name](std::string_view mark) { return name.find(mark) != name.npos; });
  return sign || HasWord(name, kErrorWords) || NamesStandardError(name);
}

bool NamesRelative(std::string_view name) {
  return HasWord(name, kRelativeWords) || name.find('%') != name.npos;
}

bool NamesDoubtfulErrors(std::string_view name) {
  return HasWord(name, kDoubtfulWords) || NamesStandardError(name);
}

std::string ErrorsHeading(std::string_view name) {
  const std::string heading = std::string(name) + " error";
  const bool found = !NamesRelative(name) && !NamesErrors(name) &&
                     NameMatch(ValueNamedIn(heading), WordsOf(name)) == 2;
  return found ? heading : "error";
}

}  // namespace tarnwick
