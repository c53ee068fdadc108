#include "data/columns/column_roles.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

#include "base/ascii.h"
#include "base/error.h"
#include "base/text_encoding.h"
#include "base/word_list.h"
#include "data/columns/constant_columns.h"
#include "data/columns/counted_rows.h"
#include "data/columns/error_columns.h"
#include "data/columns/error_judge.h"
#include "data/columns/error_names.h"
#include "data/columns/import_options.h"
#include "data/columns/like_columns.h"
#include "data/columns/row_identity.h"
#include "data/columns/series_in_rows.h"
#include "data/columns/value_order.h"
#include "data/columns/values_in_turn.h"
#include "data/columns/x_choice.h"
#include "data/fields/complex_text.h"
#include "data/fields/field_kind.h"
#include "data/fields/text_fields.h"
#include "data/names/argument_names.h"
#include "data/names/name_words.h"
#include "data/text/turned_rows.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostNames = 5;  // in a note
constexpr double kEarliestYear = 1600;
constexpr std::size_t kRowsAboutOne =
    4;  // one value among so many belongs to the file, not to its row

using Columns = std::vector<std::int32_t>;

template <class T>
bool Holds(const std::vector<T>& all, const T& one) {
  return std::ranges::find(all, one) != all.end();
}

/// What the rows belong to, which measures nothing.
bool NamesPlace(std::string_view name) {
  constexpr std::string_view kWords[] = {"id",   "no",    "number", "code",   "station",
                                         "site", "wban",  "usaf",   "serial", "record",
                                         "year", "month", "day",    "hour"};
  return HasWord(name, kWords);
}

std::string ListOf(const ImportSource& source, const Columns& columns) {
  std::vector<std::string> names;
  names.reserve(columns.size());
  for (const std::int32_t column : columns) names.push_back(source.Quoted(column));
  return Listed(names, kMostNames);
}

/// Takes a kind of columns out as long as others remain, and says so.
class LeavingOut {
 public:
  LeavingOut(const ImportSource& source, ChosenColumns& chosen)
      : source_(source), chosen_(chosen) {}

  /// `remain`: how many others there must be.
  template <class Is>
  void If(const char* what, Is is, std::size_t remain = 1) {
    Tell(Taken(is, remain), what);
  }
  /// The same without a word; answers what was taken out.
  template <class Is>
  Columns Taken(Is is, std::size_t remain = 1) {
    Columns left;
    Columns kept;
    for (const std::int32_t column : chosen_.y) (is(column) ? left : kept).push_back(column);
    if (kept.size() < remain) return {};
    chosen_.y = std::move(kept);
    return left;
  }
  void Tell(const Columns& left, const char* what) {
    if (left.empty()) return;
    chosen_.notes.push_back(ListOf(source_, left) + (left.size() == 1 ? " is" : " are") +
                            " left out: " + what);
  }

 private:
  const ImportSource& source_;
  ChosenColumns& chosen_;
};

/// The name itself of "x1 [s]".
std::string_view WithoutUnit(std::string_view name) {
  return name.ends_with(']') ? TrimBlankBytes(name.substr(0, name.rfind('['))) : name;
}

/// "X1", "X 2", "time (s).1", "x1 [s]" without what counts them and without the unit.
std::string WithoutCount(std::string_view name) {
  name = WithoutUnit(name);
  const std::size_t last = name.find_last_not_of("0123456789");
  const std::string_view bare = name.substr(0, last == name.npos ? name.size() : last + 1);
  const std::size_t end = bare.find_last_not_of(" ._-#");
  return LowerAscii(bare.substr(0, end == bare.npos ? bare.size() : end + 1));
}

/// "B Strain [%]" behind "A Strain [%]", where the words over columns tell groups of them apart.
bool EndAlike(std::string_view one, std::string_view other) {
  one = WithoutUnit(one);
  other = WithoutUnit(other);
  const auto [first, second] =
      std::mismatch(one.rbegin(), one.rend(), other.rbegin(), other.rend());
  const std::string_view shared =
      one.substr(one.size() - static_cast<std::size_t>(first - one.rbegin()));
  const std::size_t gap = shared.find(' ');
  return one != other && gap != shared.npos && gap + 1 < shared.size();
}

/// Columns of complex numbers in every row.
Columns ComplexColumns(const ImportSource& source) {
  Columns columns;
  for (std::size_t i = 0; i < source.samples.size(); ++i) {
    const std::vector<std::string>& texts = source.samples[i];
    if (!texts.empty() &&
        std::ranges::all_of(texts, [](const std::string& text) { return IsComplexNumber(text); })) {
      columns.push_back(static_cast<std::int32_t>(i));
    }
  }
  return columns;
}

/// Columns called as X that stand ahead of others each give these their X, if all have equally many behind them; where some have
/// none, what stands there is no Y.
void PairColumns(const ImportSource& source, ChosenColumns& chosen) {
  if (chosen.x < 0) return;
  const std::string name = WithoutCount(source.NameOf(chosen.x));
  // "x, A, x, B": one name that says X is no chance, in whatever order its values stand.
  const bool is_argument = NamesScan(source.NameOf(chosen.x)) || NamesTime(source.NameOf(chosen.x));
  Columns xs{chosen.x};
  Columns ys;
  for (const std::int32_t column : chosen.y) {
    const bool alike =
        WithoutCount(source.NameOf(column)) == name ||
        (source.info.StackedNames && EndAlike(source.NameOf(chosen.x), source.NameOf(column)));
    const bool repeats = column > chosen.x && alike &&
                         (IsMonotone(source.GuessOf(column).values) ||
                          (is_argument && source.NameOf(column) == source.NameOf(chosen.x)));
    (repeats ? xs : ys).push_back(column);
  }
  if (xs.size() < 2) return;
  std::vector<std::size_t> group_sizes(xs.size());
  Columns own;
  for (const std::int32_t column : ys) {
    const auto behind = std::ranges::upper_bound(xs, column);
    if (behind == xs.begin()) return;
    own.push_back(*(behind - 1));
    ++group_sizes[static_cast<std::size_t>(behind - xs.begin()) - 1];
  }
  const std::size_t size = group_sizes.back();
  const auto is_other = [&](std::size_t other) { return other != 0 && other != size; };
  const auto empty = static_cast<std::size_t>(std::ranges::count(group_sizes, std::size_t{0}));
  const bool enough = empty == 0 || group_sizes.size() - empty > 1;
  if (size == 0 || !enough || std::ranges::any_of(group_sizes, is_other)) return;
  chosen.y = std::move(ys);
  chosen.own_x = std::move(own);
  chosen.notes.push_back("each column is shown over the " + source.Quoted(chosen.x) +
                         " column before it");
}

/// 2024.375 beside the year 2024 and its month.
bool IsDecimalYear(const ImportSource& source, std::int32_t column) {
  const std::vector<double>& values = source.GuessOf(column).values;
  const auto whole = [](double value) { return value == std::floor(value); };
  if (values.size() < 3 || std::ranges::all_of(values, whole)) return false;
  return std::ranges::any_of(source.time_columns, [&](std::int32_t part) {
    const std::vector<double>& years = source.GuessOf(part).values;
    return !years.empty() && years.front() > kEarliestYear &&
           std::ranges::equal(years, values, {}, {},
                              [](double value) { return std::floor(value); });
  });
}

/// "1/4", "12:3"
bool IsPairOfNumbers(std::string_view text) {
  const auto is_mark = [](char c) { return c == '/' || c == ':' || c == '-'; };
  return text.size() > 1 && IsDigit(text.front()) && IsDigit(text.back()) &&
         std::ranges::none_of(text, &IsLetter) && std::ranges::count_if(text, is_mark) == 1;
}

/// "0x1C", "-01:30:02.5", "48:50N": numbers to the base of sixteen, angles below zero or of a place.
bool IsWrittenOtherwise(std::string_view text) {
  const bool hexadecimal = text.size() > 2 && text.front() == '0' && (text[1] | 0x20) == 'x' &&
                           text.find_first_not_of("0123456789abcdefABCDEF", 2) == text.npos;
  const bool angle =
      std::ranges::count(text, ':') == 2 && text.find_first_not_of("0123456789:.+- ") == text.npos;
  constexpr std::string_view kSides = "NSEW";
  const bool place = text.size() > 3 && kSides.find(text.back()) != kSides.npos &&
                     text.find(':') != text.npos &&
                     text.find_first_not_of("0123456789:.") + 1 == text.size();
  return hexadecimal || angle || place;
}

/// "5.088E-12.09190.391"
bool AreTouchingNumbers(std::string_view text) {
  constexpr std::string_view kOfNumbers = "0123456789.+-eE";
  return std::ranges::count(text, '.') > 1 && text.find_first_not_of(kOfNumbers) == text.npos &&
         text.find_first_of("-+eE") != text.npos;
}

/// Columns that look like numbers and are none do not vanish without a word.
void TellOfNearNumbers(const ImportSource& source, ChosenColumns& chosen) {
  Columns near;
  for (std::size_t i = 0; i < std::min(source.samples.size(), source.columns.size()); ++i) {
    const std::vector<std::string>& texts = source.samples[i];
    if (source.columns[i].has_numbers || texts.empty()) continue;
    const auto is_near = [](const std::string& text) {
      return IsPairOfNumbers(text) || AreTouchingNumbers(text) || IsWrittenOtherwise(text) ||
             KindOfField(text) == FieldKind::Quantity;
    };
    if (std::ranges::all_of(texts, is_near)) near.push_back(static_cast<std::int32_t>(i));
  }
  const auto is_part = [&](std::int32_t column) { return Holds(source.time_columns, column); };
  std::erase_if(near, is_part);
  if (near.empty()) return;
  const std::string& text = source.samples[static_cast<std::size_t>(near.front())].front();
  chosen.notes.push_back(ListOf(source, near) + (near.size() == 1 ? " is" : " are") +
                         " left out: \"" + text + "\" is read as no number");
}

/// Texts with some numbers among them: too many to be called by one, too few to be plotted.
void TellOfSomeNumbers(const ImportSource& source, ChosenColumns& chosen) {
  constexpr std::size_t kFewest = 3, kShare = 5;
  for (std::size_t i = 0; i < std::min(source.samples.size(), source.columns.size()); ++i) {
    const auto column = static_cast<std::int32_t>(i);
    if (source.columns[i].has_numbers || Holds(source.time_columns, column)) continue;
    const std::vector<std::string>& texts = source.samples[i];
    const auto numbers = static_cast<std::size_t>(std::ranges::count_if(
        texts, [](const std::string& text) { return KindOfField(text) == FieldKind::Number; }));
    if (numbers < kFewest || kShare * numbers < texts.size() || numbers == texts.size()) continue;
    chosen.notes.push_back(
        source.Quoted(column) + " is left out: " + std::to_string(texts.size() - numbers) +
        " of its first " + std::to_string(texts.size()) + " fields are no numbers");
  }
}

/// A tenth of the rows at most have a value in any column but X: words of remarks.
bool HoldSomeValuesOnly(const ImportSource& source, const ChosenColumns& chosen) {
  constexpr std::size_t kFewest = 20, kShare = 10;
  if (chosen.x < 0 || source.samples.empty()) return false;
  const std::size_t values = source.GuessOf(chosen.x).values.size();
  return values >= kFewest && std::ranges::all_of(chosen.y, [&](std::int32_t column) {
           return kShare * source.GuessOf(column).values.size() <= values;
         });
}

/// A name that several columns have means the first of them, which is told.
void TellOfEqualNames(const ImportSource& source, std::span<const std::string> asked,
                      ChosenColumns& chosen) {
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  for (std::size_t i = 0; i < asked.size(); ++i) {
    const std::int32_t column = chosen.y[i];
    if (column < 0 || asked[i].starts_with('#')) continue;
    const auto is_other = [&](std::size_t other) {
      return names[other] == source.NameOf(column) && std::cmp_not_equal(other, column);
    };
    for (std::size_t other = 0; other < names.size(); ++other) {
      if (!is_other(other)) continue;
      chosen.notes.push_back("several columns are called " + source.Quoted(column) + ": read is #" +
                             std::to_string(column) + ", another is #" + std::to_string(other));
      break;
    }
  }
}

/// The columns that the user says give errors; the sources' other columns may be plotted.
Columns GivenErrorColumns(const ImportSource& source, const ImportOptions& options) {
  Columns columns;
  const auto add = [&](const ErrorOption& errors) {
    if (errors.rule.kind == ErrorKind::Column) columns.push_back(source.Column(errors.column));
  };
  std::ranges::for_each(options.y_errors, add);
  if (options.x_errors) add(*options.x_errors);
  return columns;
}

/// "; "dP" holds no numbers: "(0.5)"": of the first column whose texts hold digits all the same; empty where there is none.
std::string WhatReadsAsNoNumber(const ImportSource& source) {
  constexpr std::size_t kLongest = 40;
  for (std::size_t i = 0; i < std::min(source.columns.size(), source.samples.size()); ++i) {
    if (source.columns[i].has_numbers) continue;
    const auto text = std::ranges::find_if(source.samples[i], [](const std::string& field) {
      return field.size() <= kLongest && std::ranges::any_of(field, &IsDigit);
    });
    if (text == source.samples[i].end()) continue;
    return "; " + source.Quoted(static_cast<std::int32_t>(i)) + " holds no numbers: \"" + *text +
           '"';
  }
  return {};
}

}  // namespace

ChosenColumns ChooseColumns(const ImportSource& source, const ImportOptions& options) {
  const Columns numbers = source.NumberColumns();
  ChosenColumns chosen;
  chosen.y_is_stated = !options.y_columns.empty();
  for (const std::string& name : options.y_columns) chosen.y.push_back(source.Column(name));
  TellOfEqualNames(source, options.y_columns, chosen);
  if (options.x_column) {
    chosen.x = source.Column(*options.x_column);
  } else if (!source.time_columns.empty()) {
    chosen.x = kJoinedTimeColumn;
  } else if (numbers.size() > 1) {
    chosen.x = ChooseX(source, numbers);
    const bool rises = chosen.x >= 0 && IsMonotone(source.GuessOf(chosen.x).values) &&
                       !MostlyStands(source.GuessOf(chosen.x).values);
    // Of rows that were turned the first is X where it rises; values in turn have none.
    const bool along = TurnsRows(source.info) || HoldsValuesInTurn(source) != ValuesInTurn::No;
    if ((!rises && along) || ShareOneName(source, numbers)) chosen.x = kRowNumberColumn;
  }
  const ErrorPairs pairs(source, chosen.x);
  const auto is_error = [&](std::int32_t column) {
    return IsErrorColumn(source, pairs, chosen.x, column);
  };
  Columns errors;
  if (!chosen.y.empty()) {
    std::ranges::copy_if(numbers, std::back_inserter(errors), [&](std::int32_t column) {
      return column != chosen.x && !Holds(chosen.y, column) && is_error(column);
    });
    ChooseErrors(source, pairs, options, chosen, errors);
    return chosen;
  }
  const Columns given = GivenErrorColumns(source, options);
  for (const std::int32_t column : numbers) {
    const bool makes_time = chosen.x == kJoinedTimeColumn && Holds(source.time_columns, column);
    if (column != chosen.x && !makes_time && !Holds(given, column)) chosen.y.push_back(column);
  }
  if (chosen.y.empty()) {
    throw FileError("The file holds no numbers to plot", source.supplier->Describe(),
                    "columns: " + std::to_string(source.columns.size()));
  }
  if (!options.x_column && HoldSomeValuesOnly(source, chosen)) {
    chosen.notes.push_back(ListOf(source, chosen.y) + (chosen.y.size() == 1 ? " is" : " are") +
                           " left out: values in a few rows only");
    chosen.y = {chosen.x};
    chosen.x = kRowNumberColumn;
  }
  if (!options.x_column && chosen.x == kRowNumberColumn && source.columns.size() > 1) {
    chosen.notes.emplace_back("no column gives X: the rows are counted");
  }
  if (!options.x_column && chosen.x == kRowNumberColumn && HoldsSeriesInRows(source)) {
    chosen.notes.emplace_back(
        "columns are called by numbers or dates: each row holds a series, which is shown column by "
        "column");
  }
  if (!options.x_column && !TurnsRows(source.info) &&
      HoldsValuesInTurn(source) != ValuesInTurn::No) {
    chosen.notes.emplace_back(
        "the values of a row seem to go on in the next, as one curve: they are shown column by "
        "column");
  }
  TellOfNearNumbers(source, chosen);
  TellOfSomeNumbers(source, chosen);
  if (chosen.x == kRowNumberColumn && chosen.y.size() == 1 && source.columns.size() > 1 &&
      !options.x_column && source.GuessOf(chosen.y.front()).CountsRows()) {
    throw FileError("Of the columns only one holds numbers, and it counts the rows",
                    source.supplier->Describe(),
                    source.Quoted(chosen.y.front()) + WhatReadsAsNoNumber(source) +
                        (source.notes.empty() ? "" : "; ") + Joined(source.notes, "; "));
  }
  LeavingOut out(source, chosen);
  out.Tell(ComplexColumns(source),
           "complex numbers, which are read where each part has a column of its own");
  out.If("no value in them",
         [&](std::int32_t column) { return source.GuessOf(column).values.empty(); });
  out.If("dates", [&](std::int32_t column) { return source.GuessOf(column).is_date; });
  out.If("values in the first rows only",
         [&](std::int32_t column) { return source.GuessOf(column).only_ahead; });
  if (chosen.x >= 0 && !source.GuessOf(chosen.x).is_date) {
    for (const std::int32_t column : chosen.y) {
      if (!source.GuessOf(column).is_date) continue;
      chosen.notes.push_back(source.Quoted(column) + " holds dates and is shown over " +
                             source.Quoted(chosen.x) + " (--x " + source.NameOf(column) +
                             " makes it X)");
    }
  }
  errors = out.Taken(is_error);
  out.If("counting the rows", [&](std::int32_t column) { return CountsRows(source, column); });
  const std::optional<RowBlocks> blocks = FindRowBlocks(source, numbers);
  out.If("telling apart what the rows belong to", [&](std::int32_t column) {
    const bool parts_x = blocks && blocks->x == chosen.x && blocks->identity == column;
    return parts_x || IdentifiesRows(source, column);
  });
  if (chosen.x >= 0) {
    const std::vector<double>& x = source.GuessOf(chosen.x).values;
    const std::vector<std::string> name = WordsOf(source.NameOf(chosen.x));
    // One with a name of its own may well be a straight line.
    out.If("the values of X again", [&](std::int32_t column) {
      return x.size() > 2 && !source.GuessOf(chosen.x).IsConstant() &&
             source.GuessOf(column).values == x && WordsOf(source.NameOf(column)) == name;
    });
  }
  if (chosen.x == kJoinedTimeColumn) {
    out.If("dates", [&](std::int32_t column) { return IsDecimalYear(source, column); });
  }
  // Of few columns a constant one is wanted: a set point beside what was measured; not of many that are, nor beside errors.
  constexpr std::size_t kManyConstants = 5;
  Columns standing;
  std::ranges::copy_if(chosen.y, std::back_inserter(standing), [&](std::int32_t column) {
    const ColumnGuess& guess = source.GuessOf(column);
    const bool alone = guess.values.size() == 1 && !source.samples.empty() &&
                       source.samples.front().size() >= kRowsAboutOne;
    return alone || guess.IsConstant();
  });
  standing = ConstantThroughout(source, std::move(standing));
  const auto constant = [&](std::int32_t column) { return Holds(standing, column); };
  Columns constants = out.Taken([&](std::int32_t column) {
    return constant(column) &&
           (NamesPlace(source.NameOf(column)) || NamesErrors(source.NameOf(column)) ||
            pairs.ValueOf(column).has_value());
  });
  const bool many = constants.size() + kManyConstants <= standing.size();
  const std::size_t remain = many || !errors.empty() ? 1 : 2;
  std::ranges::copy(out.Taken(constant, remain), std::back_inserter(constants));
  std::ranges::sort(constants);
  out.Tell(constants, "one value throughout");
  if (!options.x_column) PairColumns(source, chosen);
  ChooseErrors(source, pairs, options, chosen, errors);
  out.Tell(errors, "errors of the values beside them");
  return chosen;
}

}  // namespace tarnwick
