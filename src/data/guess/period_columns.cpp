#include "data/guess/period_columns.h"

#include <algorithm>

#include "base/ascii.h"
#include "base/number_text.h"
#include "data/fields/text_fields.h"

namespace tarnwick {
namespace {

constexpr std::size_t kYearDigits = 4;
constexpr std::size_t kFewestRows = 4;

struct Period {
  int year = 0;
  int number = 0;
};

std::optional<Period> PeriodOf(std::string_view text, char mark) {
  text = TrimBlankBytes(text);
  const bool as_long = text.size() == kYearDigits + 2 || text.size() == kYearDigits + 3;
  if (!as_long || text[kYearDigits] != mark) return std::nullopt;
  const std::string_view year = text.substr(0, kYearDigits);
  const std::string_view number = text.substr(kYearDigits + 1);
  if (!AreDigits(year) || !AreDigits(number)) return std::nullopt;
  return Period{static_cast<int>(*ParseInteger(year)), static_cast<int>(*ParseInteger(number))};
}

/// The last number of a year, the same in all rows that end one but for weeks; nothing where a row is not the one after the row
/// before it, or no year ends.
std::optional<int> LastOfYear(std::span<const std::string_view> texts, char mark) {
  std::optional<Period> before;
  std::optional<int> last;
  for (const std::string_view text : texts) {
    const std::optional<Period> period = PeriodOf(text, mark);
    if (!period) return std::nullopt;
    if (before && period->year == before->year) {
      if (period->number != before->number + 1) return std::nullopt;
    } else if (before) {
      const bool weeks = last.value_or(before->number) >= 52 && before->number >= 52;
      if (period->year != before->year + 1 || period->number != 1) return std::nullopt;
      if (last && *last != before->number && !weeks) return std::nullopt;
      last = before->number;
    }
    before = period;
  }
  return last;
}

std::optional<TimePart> PartOf(int last, char mark) {
  if (last == 4) return TimePart::YearQuarter;
  if (last == 12 && mark == ':') return TimePart::YearMonth;
  if (last == 52 || last == 53) return TimePart::YearWeek;
  return std::nullopt;
}

/// "2000/01", "2001/02" in every row: the second year follows the first.
bool AreYearPairs(std::span<const std::string_view> texts) {
  return std::ranges::all_of(texts, [](std::string_view text) {
    for (const char mark : {'/', '-'}) {
      const std::optional<Period> years = PeriodOf(text, mark);
      const bool two = TrimBlankBytes(text).size() == kYearDigits + 3;
      if (years && two && years->number == (years->year + 1) % 100) return true;
    }
    return false;
  });
}

}  // namespace

std::optional<JoinedTimeFound> FindPeriods(std::span<const std::vector<std::string_view>> columns,
                                           std::size_t first) {
  if (columns[first].size() < kFewestRows) return std::nullopt;
  if (AreYearPairs(columns[first])) return JoinedTimeFound{{TimePart::Year}, {first}};
  for (const char mark : {':', '-'}) {
    const std::optional<int> last = LastOfYear(columns[first], mark);
    const std::optional<TimePart> part = last ? PartOf(*last, mark) : std::nullopt;
    if (part) return JoinedTimeFound{{*part}, {first}};
  }
  return std::nullopt;
}

}  // namespace tarnwick
