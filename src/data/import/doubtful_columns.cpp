#include "data/import/doubtful_columns.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "base/word_list.h"
#include "data/import/import_file.h"

namespace tarnwick {
namespace {

using Columns = std::vector<std::int32_t>;
using Notes = std::vector<std::string>;

Columns GuessedColumns(const ImportOptions& options, const ChosenColumns& columns) {
  Columns guessed;
  const auto add = [&guessed](std::int32_t column) {
    if (std::ranges::find(guessed, column) == guessed.end()) guessed.push_back(column);
  };
  for (std::size_t i = 0; i < columns.y.size() && !options.x_format; ++i) add(columns.XOf(i));
  for (std::size_t i = 0; i < columns.y.size() && !options.y_format; ++i) add(columns.y[i]);
  return guessed;
}

/// A column whose commas can be nothing but the mark of decimals speaks for all.
void TellOfCommas(const ImportSource& source, const Columns& guessed, Notes& notes) {
  const auto decides = [](const ColumnGuess& column) {
    return column.format == ColumnFormat::DecimalComma && !column.commas_open;
  };
  if (std::ranges::any_of(source.columns, decides)) return;
  std::vector<std::string> open;
  for (const std::int32_t column : guessed) {
    if (source.GuessOf(column).commas_open) open.push_back(source.Quoted(column));
  }
  if (open.empty()) return;
  notes.push_back("the commas in " + Listed(open) +
                  " are read as the mark of decimals, though they would group thousands as well "
                  "(--y-format thousands, of X --x-format, has it so)");
}

void TellOfUnits(const ImportSource& source, const Columns& guessed, Notes& notes) {
  for (const std::int32_t column : guessed) {
    const std::vector<std::string>& units = source.GuessOf(column).units;
    if (units.size() < 2) continue;
    std::vector<std::string> written;
    written.reserve(units.size());
    for (const std::string& unit : units) {
      written.push_back(unit.empty() ? "none" : '"' + unit + '"');
    }
    notes.push_back("the units in " + source.Quoted(column) + " differ (" + Listed(written) +
                    "): numbers are read as they stand, not brought to one unit");
  }
}

/// True for times of day that rise from row to row, but fall back from late to early.
bool PassMidnight(const ColumnGuess& column) {
  constexpr double kHalfDay = 0.5;
  const std::vector<double>& times = column.values;
  const auto of_day = [](double time) { return time >= 0 && time < 1; };
  if (!column.is_date || !std::ranges::all_of(times, of_day)) return false;
  bool passes = false;
  for (std::size_t i = 1; i < times.size(); ++i) {
    if (times[i] >= times[i - 1]) continue;
    if (times[i - 1] - times[i] < kHalfDay) return false;
    passes = true;
  }
  return passes;
}

void TellOfMidnight(const ImportSource& source, const Columns& guessed, Notes& notes) {
  for (const std::int32_t column : guessed) {
    if (!PassMidnight(source.GuessOf(column))) continue;
    notes.push_back("the times in " + source.Quoted(column) +
                    " go on past midnight without a date: all are shown on one day (dates in a "
                    "column beside them part the days)");
  }
}

}  // namespace

std::vector<std::string> DoubtsOf(const ImportSource& source, const ImportOptions& options,
                                  const ChosenColumns& columns) {
  const Columns guessed = GuessedColumns(options, columns);
  Notes notes;
  TellOfCommas(source, guessed, notes);
  TellOfUnits(source, guessed, notes);
  TellOfMidnight(source, guessed, notes);
  return notes;
}

}  // namespace tarnwick
