#include "data/columns/x_rules.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

#include "base/ascii.h"
#include "base/text_encoding.h"
#include "data/columns/block_parameter.h"
#include "data/columns/counted_rows.h"
#include "data/columns/error_names.h"
#include "data/columns/like_columns.h"
#include "data/columns/row_identity.h"
#include "data/columns/series_in_rows.h"
#include "data/columns/value_order.h"
#include "data/columns/x_evidence.h"
#include "data/names/argument_names.h"
#include "data/names/text_names.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewColumns = 4;  // of many some rise by chance

using Columns = std::vector<std::int32_t>;

bool Rises(const ImportSource& source, std::int32_t column) {
  return IsMonotone(source.GuessOf(column).values);
}

bool IsArgument(const ImportSource& source, std::int32_t column) {
  return NamesArgument(source.NameOf(column));
}

bool AnyIsArgument(const XCandidates& found) {
  return std::ranges::any_of(found.varying,
                             [&](std::int32_t column) { return IsArgument(found.source, column); });
}

/// The first column is called like an X and holds nothing: the rows are even steps of it.
bool LeavesOutX(const ImportSource& source) {
  if (source.samples.empty() || source.samples.front().empty()) return false;
  const std::string name = source.NameOf(0);
  return (NamesScan(name) || NamesTime(name)) &&
         std::ranges::all_of(source.samples.front(), &std::string::empty);
}

/// The first column rises in every row, and is no time at which a sweep further on was taken: that may be what the sweep became.
bool LeadsByItself(const ImportSource& source, const Columns& varying, std::int32_t scan) {
  const std::vector<double>& values = source.GuessOf(varying.front()).values;
  return varying.front() != scan && varying.front() == source.NumberColumns().front() &&
         RisesBeyondChance(values) && !NamesTime(source.NameOf(varying.front()));
}

/// Amino acids over the rows of a matrix: "A R N D … X".
bool IsOneLetterOfMany(const ImportSource& source, std::int32_t column) {
  constexpr std::size_t kMany = 8;
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  const auto letters =
      std::ranges::count_if(names, [](const std::string& name) { return name.size() == 1; });
  return names.size() >= kMany && 4 * static_cast<std::size_t>(letters) >= 3 * names.size() &&
         !IsMonotone(source.GuessOf(column).values);
}

/// "y", "y2": no "year".
bool IsCalledY(std::string_view name) {
  const std::string lower = LowerAscii(name);
  return lower.starts_with('y') && (lower.size() == 1 || !IsLetter(lower[1]));
}

/// "MJD X Y": coordinates over a time that rises ahead of them. "chr pos N X": what is called X and stands in no order is none
/// where a column ahead of it rises and nothing is called Y.
bool IsCountedBesideX(const ImportSource& source, std::int32_t x) {
  const Columns numbers = source.NumberColumns();
  const auto is_y = [&](std::int32_t column) { return IsCalledY(source.NameOf(column)); };
  const auto rises_ahead = [&](std::int32_t column) {
    return column < x && RisesThroughout(source.GuessOf(column).values);
  };
  const auto is_time_ahead = [&](std::int32_t column) {
    return rises_ahead(column) && NamesTime(source.NameOf(column));
  };
  const auto is_measured_ahead = [&](std::int32_t column) {
    return rises_ahead(column) && !source.GuessOf(column).CountsRows();
  };
  if (std::ranges::any_of(numbers, is_time_ahead)) return true;
  return !IsMonotone(source.GuessOf(x).values) && std::ranges::none_of(numbers, is_y) &&
         std::ranges::any_of(numbers, is_measured_ahead);
}

/// Beside an "x" in no order dates are what it was measured over.
bool GivesWayToDates(const ImportSource& source, std::int32_t x) {
  const Columns numbers = source.NumberColumns();
  return numbers.size() == 2 && IsInNoOrder(source.GuessOf(x).values) &&
         std::ranges::any_of(numbers, [&](std::int32_t column) {
           return source.GuessOf(column).is_date && !source.GuessOf(column).IsConstant();
         });
}

/// Ahead of all others "sigma" is a stress and "se" how sensitive a test is.
bool MayGiveErrors(const ImportSource& source, std::int32_t column) {
  const std::string name = source.NameOf(column);
  return NamesErrors(name) &&
         !(NamesDoubtfulErrors(name) && column == source.NumberColumns().front());
}

/// The columns that go on from row to row and are no errors.
Columns VaryingColumns(const ImportSource& source, const Columns& numbers) {
  Columns columns;
  for (const std::int32_t column : numbers) {
    const ColumnGuess& guess = source.GuessOf(column);
    if (guess.IsConstant() || guess.only_ahead || MayGiveErrors(source, column) ||
        CountsRows(source, column) || IdentifiesRows(source, column)) {
      continue;
    }
    columns.push_back(column);
  }
  return columns;
}

/// Those of them that may be X, a dose of two values behind what varies more.
Columns MayBeX(const ImportSource& source, Columns columns) {
  std::erase_if(columns, [&](std::int32_t column) { return SpeaksAgainstX(source, column); });
  if (columns.size() > 2 && HasNamedColumns(source)) {
    std::stable_partition(columns.begin(), columns.end(), [&](std::int32_t column) {
      return !HasTwoValues(source.GuessOf(column).values);
    });
  }
  return columns;
}

using Answer = std::optional<std::int32_t>;

/// The first of the varying columns that `is`.
template <class Is>
Answer FirstThat(const XCandidates& found, Is is) {
  const auto at = std::ranges::find_if(found.varying, is);
  return at == found.varying.end() ? Answer() : Answer(*at);
}

Answer FirstRising(const XCandidates& found) {
  return FirstThat(found, [&](std::int32_t column) { return Rises(found.source, column); });
}

/// How long each lap took is no time to plot laps over, nor is a date of each row that stands far behind other columns, in no
/// order.
Answer DateX(const XCandidates& found) {
  const Answer rising = FirstRising(found);
  return FirstThat(found, [&](std::int32_t column) {
    const ColumnGuess& guess = found.source.GuessOf(column);
    if (!guess.is_date) return false;
    const bool lasts = std::ranges::all_of(guess.values, [](double day) { return day < 1; });
    const bool aside =
        column > found.numbers.front() && IsInNoOrder(guess.values) && found.varying.size() > 2;
    return !aside && (!rising || !lasts || !IsInNoOrder(guess.values));
  });
}

Answer ScannedX(const XCandidates& found) {
  const Answer scan = FirstThat(found, [&](std::int32_t column) {
    const std::string name = found.source.NameOf(column);
    const bool beside_time = LowerAscii(name) == "x" && IsCountedBesideX(found.source, column);
    return NamesScan(name) && Rises(found.source, column) && !beside_time;
  });
  if (scan && LeadsByItself(found.source, found.varying, *scan)) return found.varying.front();
  return scan;
}

/// Longitude and latitude alone make a map.
Answer LongitudeOfTwo(const XCandidates& found) {
  if (found.varying.size() != 2) return std::nullopt;
  const std::string first = found.source.NameOf(found.varying.front());
  if (!NameCoordinates(first, found.source.NameOf(found.varying.back()))) return std::nullopt;
  return NamesLongitude(first) ? found.varying.front() : found.varying.back();
}

/// Nothing goes on from row to row but what counts the rows, or one column over it.
Answer CountedX(const XCandidates& found) {
  if (found.varying.empty()) {
    return found.counts.empty() ? kRowNumberColumn : found.counts.front();
  }
  if (found.varying.size() == 1 && !found.counts.empty()) return found.counts.front();
  return std::nullopt;
}

/// One column alone behind others that do not vary was measured over the rows. A time or the like that stands first and rises may
/// have codes drawn over it.
Answer RowsOfOneColumn(const XCandidates& found) {
  const std::int32_t only = found.varying.front();
  if (found.varying.size() != 1 || only == found.numbers.front()) return std::nullopt;
  const bool over_codes =
      found.numbers.size() > 2 && Rises(found.source, only) && IsArgument(found.source, only);
  return over_codes ? Answer() : kRowNumberColumn;
}

/// What runs anew for each value of a parameter that stands ahead of it.
Answer RunningWithinBlocks(const XCandidates& found) {
  constexpr std::size_t kFewest = 3;
  if (found.numbers.size() < kFewest) return std::nullopt;
  const std::int32_t second = found.numbers[1];
  return FindBlockParameter(found.source, second) ? Answer(second) : std::nullopt;
}

/// The last column rises in every row, all others mostly stand.
Answer RisingLast(const XCandidates& found) {
  const std::int32_t last = found.numbers.back();
  const ColumnGuess& guess = found.source.GuessOf(last);
  const auto stands = [&](std::int32_t column) {
    return column == last ||
           (MostlyStands(found.source.GuessOf(column).values) && !IsArgument(found.source, column));
  };
  const bool rises = RisesBeyondChance(guess.values) && !guess.CountsRows();
  return found.varying.size() > 1 && rises && std::ranges::all_of(found.numbers, stands)
             ? Answer(last)
             : std::nullopt;
}

/// Rows may have been put in the order of what was found: what rises in even steps or is called so is more.
Answer OrderedX(const XCandidates& found) {
  const std::vector<double>& first = found.source.GuessOf(found.varying.front()).values;
  if (found.labelled || !IsInNoOrder(first)) return std::nullopt;
  return FirstThat(found, [&](std::int32_t column) {
    const ColumnGuess& guess = found.source.GuessOf(column);
    const bool steps = found.varying.size() <= kFewColumns &&
                       StepsEvenly(guess.Successive(), Evenness::AsWritten) && !guess.CountsRows();
    return RisesBeyondChance(guess.values) && guess.values.size() >= first.size() &&
           (steps || IsArgument(found.source, column));
  });
}

/// One of three columns without names, behind the first, stands for a few rows each time and goes one way: it tells which slice
/// of a surface the others go through.
bool AreSlices(const XCandidates& found) {
  constexpr std::size_t kColumns = 3, kFewestSlices = 3;
  if (HasNamedColumns(found.source) || found.numbers.size() != kColumns) return false;
  const auto parts_slices = [&](std::int32_t column) {
    const ColumnGuess& guess = found.source.GuessOf(column);
    const std::span<const double> values = guess.Successive();
    std::size_t slices = 1, rows = 1;
    for (std::size_t i = 1; i < values.size(); ++i, ++rows) {
      if (values[i] == values[i - 1]) continue;
      if (rows < 2) return false;
      ++slices;
      rows = 0;
    }
    return slices >= kFewestSlices && IsMonotone(guess.values);
  };
  return std::ranges::any_of(std::span(found.numbers).subspan(1), parts_slices);
}

/// Columns of one kind, none of which is called like an X or goes in even steps as the others do not.
Answer RowsOfLikeColumns(const XCandidates& found) {
  if (AnyIsArgument(found) || OrderedX(found) || AreSlices(found)) return std::nullopt;
  const bool alike = AreAlike(found.source, found.together) ||
                     AreSeries(found.source, found.together) ||
                     AreItems(found.source, found.together);
  return alike ? Answer(kRowNumberColumn) : std::nullopt;
}

/// One time stands for all rows, and what was measured then may turn back as it will.
Answer RowsOfOneTime(const XCandidates& found) {
  const bool time_stands = std::ranges::any_of(found.numbers, [&](std::int32_t column) {
    return found.source.GuessOf(column).is_date && found.source.GuessOf(column).IsConstant();
  });
  const bool rows = time_stands && !FirstRising(found) && !AnyIsArgument(found);
  return rows ? Answer(kRowNumberColumn) : std::nullopt;
}

/// A first column without a name that numbers the rows of a matrix whose columns are called by numbers.
Answer NumberOfMatrixRow(const XCandidates& found) {
  const std::int32_t first = found.numbers.front();
  const bool numbered = found.counts.size() == 1 && found.counts.front() == first &&
                        found.source.NameOf(first) == UnnamedColumn(first);
  return numbered && AreCalledByNumbers(found.source) ? Answer(first) : std::nullopt;
}

Answer RowsOfSeries(const XCandidates& found) {
  const bool rows = HoldsSeriesInRows(found.source) &&
                    (found.labelled || !Rises(found.source, found.varying.front()));
  return rows ? Answer(kRowNumberColumn) : std::nullopt;
}

Answer RunningTime(const XCandidates& found) {
  return FirstThat(found, [&](std::int32_t column) {
    return NamesTime(found.source.NameOf(column)) && Rises(found.source, column) &&
           !MostlyStands(found.source.GuessOf(column).values);
  });
}

Answer ArgumentThatRunsAnew(const XCandidates& found) {
  return FirstThat(found, [&](std::int32_t column) {
    return IsArgument(found.source, column) && RunsAnew(found.source.GuessOf(column).values);
  });
}

/// Behind a first column that mostly stands, what rises in every row and is called as an X, or among columns without names the
/// next.
Answer RisingBehindStanding(const XCandidates& found) {
  if (!MostlyStands(found.source.GuessOf(found.varying.front()).values)) return std::nullopt;
  const bool named = HasNamedColumns(found.source);
  return FirstThat(found, [&](std::int32_t column) {
    return RisesBeyondChance(found.source.GuessOf(column).values) &&
           (named ? IsArgument(found.source, column) : column == found.numbers[1]);
  });
}

/// The first that varies, where it rises. Labelled rows may as well be in the order of what was found; a cycle or step that
/// stands for many rows gives way to the time that runs, or to what runs anew in each.
Answer FirstWhereItRises(const XCandidates& found) {
  const std::int32_t first = found.varying.front();
  const std::vector<double>& values = found.source.GuessOf(first).values;
  const bool stands = MostlyStands(values);
  if (!IsMonotone(values) || (stands && (RunningTime(found) || ArgumentThatRunsAnew(found)))) {
    return std::nullopt;
  }
  const bool stepped = IsArgument(found.source, first) ||
                       MostlyStepsEvenly(found.source.GuessOf(first).Successive());
  return !found.labelled || stepped ? Answer(first) : std::nullopt;
}

/// A few doses, depths or the like that many rows share each, behind the one other column, which is in no order: the rows are
/// groups.
Answer ArgumentOfGroups(const XCandidates& found) {
  constexpr std::size_t kMostGroups = 12, kRowsOfGroup = 4;
  const std::int32_t first = found.varying.front();
  if (found.varying.size() != 2 || IsArgument(found.source, first) ||
      !IsInNoOrder(found.source.GuessOf(first).values)) {
    return std::nullopt;
  }
  return FirstThat(found, [&](std::int32_t column) {
    const std::vector<double>& values = found.source.GuessOf(column).values;
    const std::size_t different = CountDifferent(values, kMostGroups);
    return IsArgument(found.source, column) && MostlyStands(values) && different > 2 &&
           different <= kMostGroups && kRowsOfGroup * different <= values.size();
  });
}

/// What goes on from row to row and turns back again and again was measured over the rows, if a column with a name counts them,
/// unless it is called as an X itself.
Answer CountRatherThanSeries(const XCandidates& found) {
  constexpr std::size_t kFewest = 20;
  constexpr std::size_t kPointsOfTurn = 20;  // cycles that are measured have more
  const std::int32_t first = found.varying.front();
  const ColumnGuess& guess = found.source.GuessOf(first);
  const std::span<const double> values = guess.Successive();
  const bool series = values.size() >= kFewest && TurnsOften(values, kPointsOfTurn) &&
                      GoesOn(values) && !RunsAnew(guess.values);
  // Names of rows, which stand without a name of their own, tell cases apart.
  const auto named = std::ranges::find_if(found.counts, [&](std::int32_t column) {
    return found.source.NameOf(column) != UnnamedColumn(column);
  });
  const bool counted = named != found.counts.end();
  return counted && series && !IsArgument(found.source, first) ? Answer(*named) : std::nullopt;
}

Answer FirstUnlessLabelled(const XCandidates& found) {
  return found.labelled ? Answer() : Answer(found.varying.front());
}

Answer RisingArgument(const XCandidates& found) {
  return FirstThat(found, [&](std::int32_t column) {
    return Rises(found.source, column) && IsArgument(found.source, column);
  });
}

/// "energy x y": what is called so, stands first and alone runs through all rows is what an "x" was measured over.
bool GivesWayToArgument(const ImportSource& source, std::int32_t x) {
  const std::int32_t first = source.NumberColumns().front();
  return first != x && NamesArgument(source.NameOf(first)) &&
         RisesThroughout(source.GuessOf(first).values) &&
         !RisesThroughout(source.GuessOf(x).values);
}

}  // namespace

Answer StatedX(const ImportSource& source, const Columns& numbers) {
  if (LeavesOutX(source)) return kRowNumberColumn;
  const auto named = std::ranges::find_if(numbers, [&](std::int32_t column) {
    return LowerAscii(source.NameOf(column)) == "x" && !source.GuessOf(column).IsConstant();
  });
  if (named != numbers.end() && !IsOneLetterOfMany(source, *named) &&
      !IsCountedBesideX(source, *named) && !GivesWayToDates(source, *named) &&
      !GivesWayToArgument(source, *named)) {
    return *named;
  }
  const auto blocks = FindRowBlocks(source, numbers);
  return blocks ? Answer(blocks->x) : std::nullopt;
}

XCandidates FindXCandidates(const ImportSource& source, const Columns& numbers) {
  XCandidates found{.source = source, .numbers = numbers};
  std::ranges::copy_if(numbers, std::back_inserter(found.counts),
                       [&](std::int32_t column) { return CountsRows(source, column); });
  found.together = VaryingColumns(source, numbers);
  found.varying = MayBeX(source, found.together);
  found.labelled = HasRowLabels(source);
  return found;
}

std::int32_t XByRules(const XCandidates& found) {
  // Those behind CountedX may look at the first that varies.
  constexpr Answer (*kRules[])(const XCandidates&) = {DateX,
                                                      ScannedX,
                                                      CountedX,
                                                      LongitudeOfTwo,
                                                      RunningWithinBlocks,
                                                      RisingLast,
                                                      RowsOfOneColumn,
                                                      RowsOfLikeColumns,
                                                      RowsOfOneTime,
                                                      NumberOfMatrixRow,
                                                      RowsOfSeries,
                                                      RisingBehindStanding,
                                                      FirstWhereItRises,
                                                      RunningTime,
                                                      OrderedX,
                                                      ArgumentThatRunsAnew,
                                                      ArgumentOfGroups,
                                                      CountRatherThanSeries,
                                                      FirstUnlessLabelled,
                                                      RisingArgument};
  for (const auto rule : kRules) {
    if (const Answer x = rule(found)) return *x;
  }
  return kRowNumberColumn;
}

}  // namespace tarnwick
