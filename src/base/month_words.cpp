#include "base/month_words.h"

#include <algorithm>
#include <cstddef>

#include "base/ascii.h"
#include "base/day_number.h"

namespace tarnwick {
namespace {

constexpr std::size_t kShortest = 3;
constexpr std::size_t kLongestDate = 64;

/// Each between strokes, in small letters without their marks.
constexpr std::array<std::string_view, 12> kNames = {
    "|january|januar|janner|janvier|enero|gennaio|janeiro|januari|styczen|stycznia|",
    "|february|februar|fevrier|febrero|febbraio|fevereiro|februari|luty|lutego|",
    "|march|marz|mrz|maerz|mars|marzo|marco|maart|mrt|marts|marzec|marca|",
    "|april|avril|abril|aprile|kwiecien|kwietnia|",
    "|may|mai|mayo|maggio|maio|mei|maj|maja|",
    "|june|juni|juin|junio|giugno|junho|czerwiec|czerwca|",
    "|july|juli|juillet|julio|luglio|julho|lipiec|lipca|",
    "|august|aout|agosto|augustus|augusti|sierpien|sierpnia|",
    "|september|septembre|septiembre|settembre|setembro|wrzesien|wrzesnia|",
    "|october|oktober|octobre|octubre|ottobre|outubro|pazdziernik|pazdziernika|",
    "|november|novembre|noviembre|novembro|listopad|listopada|",
    "|december|dezember|decembre|diciembre|dicembre|dezembro|desember|grudzien|grudnia|",
};

bool IsOfWord(char c) {
  return IsLetter(c) || static_cast<unsigned char>(c) >= 0x80;
}

/// The plain small letter of one of Latin-1; '\0' where it has none.
char PlainLetter(unsigned char letter) {
  if (IsLetter(static_cast<char>(letter))) return static_cast<char>(letter | 0x20);
  constexpr std::string_view kPlain = "aaaaaaaceeeeiiiidnooooo ouuuuy";
  const std::size_t at = (letter | 0x20U) - 0xE0U;
  return letter >= 0xC0 && at < kPlain.size() ? kPlain[at] : '\0';
}

/// The same of the Polish ones behind Latin-1, by their second byte in UTF-8.
char PlainPolish(char second) {
  constexpr std::string_view kSeconds = "\x81\x82\x83\x84\x9A\x9B\xB9\xBA\xBB\xBC";
  constexpr std::string_view kPlain = "llnnsszzzz";
  const std::size_t at = kSeconds.find(second);
  return at < kPlain.size() ? kPlain[at] : '\0';
}

std::string PlainWord(std::string_view word) {
  std::string plain;
  for (std::size_t i = 0; i < word.size(); ++i) {
    auto letter = static_cast<unsigned char>(word[i]);
    const bool polish = letter == 0xC5 && i + 1 < word.size();
    const bool two_bytes = letter == 0xC3 && i + 1 < word.size();
    if (two_bytes) letter = static_cast<unsigned char>(word[++i] + 0x40);
    const char small = polish ? PlainPolish(word[++i]) : PlainLetter(letter);
    if (small == '\0') return {};
    plain += small;
  }
  return plain;
}

/// The month that a word in plain small letters begins, from 1; 0: none, or more than one, as "jui" does.
int MonthOf(const std::string& word) {
  int month = 0;
  if (word.size() < kShortest) return 0;
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    if (kNames[i].find("|" + word) == std::string_view::npos) continue;
    if (month != 0) return 0;
    month = static_cast<int>(i) + 1;
  }
  return month;
}

std::string_view WithoutEnd(std::string_view text, std::string_view end) {
  return text.ends_with(end) ? text.substr(0, text.size() - end.size()) : text;
}

/// "3", "3." or "3 de" before the month: the day, and what parts it from the month.
std::string DayBefore(std::string_view text) {
  const bool apart = text.ends_with(' ') || text.ends_with('.');
  while (text.ends_with(' ')) text.remove_suffix(1);
  text = WithoutEnd(WithoutEnd(text, " de"), ".");
  return std::string(text) + (apart && !text.empty() ? " " : "");
}

/// ". 2021", ".2021" and " de 2021" behind the month, and whatever else as it is.
std::string YearBehind(std::string_view text) {
  const bool pointed = text.starts_with('.');
  if (pointed) text.remove_prefix(1);
  if (text.starts_with(" de ")) text.remove_prefix(3);
  const bool joined = pointed && !text.empty() && IsDigit(text.front());
  return (joined ? " " : "") + std::string(text);
}

}  // namespace

std::optional<std::string> WithEnglishMonth(std::string_view text) {
  if (text.size() > kLongestDate) return std::nullopt;
  for (std::size_t begin = 0; begin < text.size();) {
    std::size_t end = begin;
    while (end < text.size() && IsOfWord(text[end])) ++end;
    const int month = MonthOf(PlainWord(text.substr(begin, end - begin)));
    if (month == 0) {
      begin = end + 1;
      continue;
    }
    std::string english = DayBefore(text.substr(0, begin));
    english += kMonthNames[static_cast<std::size_t>(month - 1)];
    english += YearBehind(text.substr(end));
    return english != text ? std::optional(english) : std::nullopt;
  }
  return std::nullopt;
}

}  // namespace tarnwick
