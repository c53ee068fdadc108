#include "data/columns/x_choice.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include "base/text_encoding.h"
#include "data/columns/counted_rows.h"
#include "data/columns/error_names.h"
#include "data/columns/row_identity.h"
#include "data/columns/value_order.h"
#include "data/columns/x_evidence.h"
#include "data/columns/x_rules.h"
#include "data/names/argument_names.h"
#include "data/names/name_words.h"
#include "data/names/text_names.h"

namespace tarnwick {
std::int32_t ChooseX(const ImportSource& source, const std::vector<std::int32_t>& numbers) {
  const std::optional<std::int32_t> stated = StatedX(source, numbers);
  const std::int32_t x = stated ? *stated : XByRules(FindXCandidates(source, numbers));
  // Labels of rows say that these are cases, which stand side by side unless a time or the like tells when.
  const bool labelled = !numbers.empty() && LabelsRows(source, numbers.front());
  const bool tells = x >= 0 && (source.GuessOf(x).is_date || NamesArgument(source.NameOf(x)));
  return labelled && !tells ? kRowNumberColumn : x;
}

bool IsXForWantOfBetter(const ImportSource& source, std::int32_t column) {
  constexpr std::size_t kFewestColumns = 3;  // of two the first is X
  if (column < 0 || source.columns.size() < kFewestColumns) return false;
  const ColumnGuess& guess = source.GuessOf(column);
  const std::string name = source.NameOf(column);
  const bool is_longitude =
      NamesLongitude(name) && std::ranges::any_of(source.NumberColumns(), [&](std::int32_t other) {
        return NameCoordinates(name, source.NameOf(other));
      });
  if (guess.is_date || is_longitude || NamesArgument(name) || CountsRows(source, column))
    return false;
  return (IsInNoOrder(guess.values) && !RunsAnew(guess.values)) || HasTwoValues(guess.values) ||
         HasFewWholeValues(guess.values) || NamesIdentity(name);
}

std::optional<std::int32_t> RivalOfX(const ImportSource& source, std::int32_t x) {
  if (x < 0 || x == kRowNumberColumn || source.GuessOf(x).is_date ||
      LowerAscii(source.NameOf(x)) == "x") {
    return std::nullopt;
  }
  const bool scans = NamesScan(source.NameOf(x));
  const bool nameless = source.NameOf(x) == UnnamedColumn(x);
  for (const std::int32_t column : source.NumberColumns()) {
    const std::string name = source.NameOf(column);
    const bool may_be =
        column < x || (column > x && !scans && NamesScan(name)) || (nameless && NamesTime(name));
    const ColumnGuess& guess = source.GuessOf(column);
    if (may_be && RisesBeyondChance(guess.values) && !CountsRows(source, column) &&
        !IdentifiesRows(source, column) && !guess.CountsRows() && !NamesErrors(name)) {
      return column;
    }
  }
  return std::nullopt;
}

bool HoldsUnreadDays(const ImportSource& source, std::int32_t column) {
  constexpr double kShortestDay = 1e7;                           // as a number
  constexpr double kFirstSerial = 30'000, kLastSerial = 60'000;  // as spreadsheets count days
  constexpr std::string_view kDates[] = {"date", "datetime"};
  if (column < 0) return false;
  const ColumnGuess& guess = source.GuessOf(column);
  const auto is_long = [](double value) {
    return value >= kShortestDay && value == std::floor(value);
  };
  const auto is_serial = [](double value) { return value > kFirstSerial && value < kLastSerial; };
  const bool serial =
      HasWord(source.NameOf(column), kDates) && std::ranges::all_of(guess.values, is_serial);
  return !guess.is_date && NamesTime(source.NameOf(column)) && !guess.values.empty() &&
         (serial || std::ranges::all_of(guess.values, is_long));
}

}  // namespace tarnwick
