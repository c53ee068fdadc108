#include "base/month_words.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/day_number.h"

namespace tarnwick {
namespace {

struct Language {
  const char* name;
  std::array<std::string_view, 12> months;
};

const Language kLanguages[] = {
    {"German",
     {"Januar", "Februar", "März", "April", "Mai", "Juni", "Juli", "August", "September", "Oktober",
      "November", "Dezember"}},
    {"Austrian",
     {"Jänner", "Februar", "März", "April", "Mai", "Juni", "Juli", "August", "September", "Oktober",
      "November", "Dezember"}},
    {"French",
     {"janvier", "février", "mars", "avril", "mai", "juin", "juillet", "août", "septembre",
      "octobre", "novembre", "décembre"}},
    {"Spanish",
     {"enero", "febrero", "marzo", "abril", "mayo", "junio", "julio", "agosto", "septiembre",
      "octubre", "noviembre", "diciembre"}},
    {"Italian",
     {"gennaio", "febbraio", "marzo", "aprile", "maggio", "giugno", "luglio", "agosto", "settembre",
      "ottobre", "novembre", "dicembre"}},
    {"Portuguese",
     {"janeiro", "fevereiro", "março", "abril", "maio", "junho", "julho", "agosto", "setembro",
      "outubro", "novembro", "dezembro"}},
    {"Dutch",
     {"januari", "februari", "maart", "april", "mei", "juni", "juli", "augustus", "september",
      "oktober", "november", "december"}},
    {"Polish",
     {"styczeń", "luty", "marzec", "kwiecień", "maj", "czerwiec", "lipiec", "sierpień", "wrzesień",
      "październik", "listopad", "grudzień"}},
    {"Polish dates",
     {"stycznia", "lutego", "marca", "kwietnia", "maja", "czerwca", "lipca", "sierpnia", "września",
      "października", "listopada", "grudnia"}},
};

/// The first letters of a word in UTF-8.
std::string_view Cut(std::string_view word, int letters) {
  std::size_t end = 0;
  while (end < word.size() && letters-- > 0) {
    for (++end; end < word.size() && (word[end] & 0xC0) == 0x80;) ++end;
  }
  return word.substr(0, end);
}

std::string Upper(std::string_view word) {
  std::string text(word);
  for (char& c : text) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
  return text;
}

TEST(MonthWords, AreThoseOfTheirLanguagesWholeAndCut) {
  for (const Language& language : kLanguages) {
    for (std::size_t i = 0; i < 12; ++i) {
      const std::string_view whole = language.months[i];
      for (const std::string& name : {std::string(whole), Upper(whole), std::string(Cut(whole, 4)),
                                      std::string(Cut(whole, 3))}) {
        const std::string text = "3 " + name + " 2021";
        const std::string english = "3 " + std::string(kMonthNames[i]) + " 2021";
        // "jui" may begin either of two.
        const bool ambiguous = name == "jui";
        EXPECT_EQ(WithEnglishMonth(text).value_or(text), ambiguous ? text : english)
            << language.name;
      }
    }
  }
}

TEST(MonthWords, LoseWhatStandsAroundThem) {
  const struct {
    const char* text;
    const char* english;  // nullptr: nothing to change
  } rows[] = {
      {"3. März 2021", "3 March 2021"},
      {"3 de marzo de 2021", "3 March 2021"},
      {"12-déc.-21", "12-December-21"},
      {"3.Okt.2021 06:00", "3 October 2021 06:00"},
      {"M\xE4rz 2021", "March 2021"},
      {"3 March 2021", nullptr},
      {"3 ma 2021", nullptr},
      {"3 Marzipan 2021", nullptr},
      {"", nullptr},
  };
  for (const auto& row : rows) {
    const std::optional<std::string> found = WithEnglishMonth(row.text);
    EXPECT_EQ(found.value_or("nothing"), row.english == nullptr ? "nothing" : row.english)
        << row.text;
  }
}

}  // namespace
}  // namespace tarnwick
