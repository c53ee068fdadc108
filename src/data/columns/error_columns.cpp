#include "data/columns/error_columns.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "base/word_list.h"
#include "data/columns/error_judge.h"
#include "data/columns/error_names.h"
#include "data/columns/import_options.h"
#include "data/names/name_words.h"

namespace tarnwick {
namespace {

using Columns = std::vector<std::int32_t>;
using Words = std::vector<std::string>;

/// The guess, error by error.
class ErrorGuess {
 public:
  ErrorGuess(const ImportSource& source, const ErrorPairs& pairs, ChosenColumns& chosen,
             Columns& candidates)
      : source_(source), pairs_(pairs), chosen_(chosen), candidates_(candidates) {}

  void GiveX() {
    const auto found = std::ranges::find_if(candidates_, [this](std::int32_t column) {
      if (const auto value = pairs_.ValueOf(column)) return *value == chosen_.x;
      return pairs_.AxisOf(column) == ErrorAxis::X || BelongsToX(column) ||
             (IsNameless(column) && IsBehindX(column));
    });
    if (found == candidates_.end()) return;
    Take(*found, chosen_.x, chosen_.x_errors);
  }
  void GiveY() {
    for (const std::int32_t column : Columns(candidates_)) {
      if (StandsBehindSign(source_, column)) GiveTo(column, column - 2);
    }
    for (const std::int32_t column : Columns(candidates_)) {
      if (const auto value = pairs_.ValueOf(column)) GiveTo(column, *value);
    }
    for (const int least : {2, 1}) {
      for (const std::int32_t column : Columns(candidates_)) GiveNamed(column, least);
    }
    if (!GiveInOrder()) {
      for (const std::int32_t column : Columns(candidates_)) GiveLeftNeighbour(column);
    }
  }
  /// "12.5 ± 0.2": from the column of the values itself.
  void GiveOwn(std::int32_t value, const std::optional<ColumnFormat>& format,
               ChosenErrors& errors) {
    if (format || errors.column || !source_.GuessOf(value).has_errors) return;
    errors = {{ErrorKind::Column, 0}, value};
    own_.push_back(source_.Quoted(value));
  }
  void Tell() {
    constexpr std::size_t kMost = 5;
    if (!own_.empty()) {
      chosen_.errors_note = "what stands behind the numbers of " + Listed(own_, kMost) +
                            " (\"± 0.2\", \"(5)\") is taken as their error";
      chosen_.errors_note += taken_.empty() ? "" : ", ";
    }
    for (std::size_t i = 0; i < std::min(taken_.size(), kMost); ++i) {
      const auto& [column, value] = taken_[i];
      const std::string of = " of " + source_.Quoted(value);
      chosen_.errors_note += i == 0 ? source_.Quoted(column) + " is taken as the error" + of
                                    : ", " + source_.Quoted(column) + of;
    }
    if (taken_.size() > kMost) {
      chosen_.errors_note +=
          ", and so are " +
          Counted(static_cast<std::int64_t>(taken_.size() - kMost), "more column");
    }
  }

 private:
  /// "A Day", "A Mean", "A SD": where the name tells no more of X than of some Y, the error is that of Y, unless it stands right
  /// behind X, and no such Y ahead of it: "MAG_I ERR_I AMAG_I AERR_I".
  bool BelongsToX(std::int32_t column) const {
    const Words after = ValueNamedIn(source_.NameOf(column));
    const int x = NameMatch(after, WordsOf(source_.NameOf(chosen_.x)));
    return x > 0 && std::ranges::none_of(chosen_.y, [&](std::int32_t y) {
             const int match = NameMatch(after, WordsOf(source_.NameOf(y)));
             return match > x || (match == x && (column - 1 != chosen_.x || y < column));
           });
  }
  bool IsNameless(std::int32_t column) const {
    const std::string name = source_.NameOf(column);
    constexpr std::string_view kDy[] = {"dy"};
    if (pairs_.ValueOf(column)) return false;
    return pairs_.AxisOf(column) == ErrorAxis::Y || ValueNamedIn(name).empty() ||
           HasWord(name, kDy);
  }
  bool IsCandidate(std::int32_t column) const {
    return std::ranges::find(candidates_, column) != candidates_.end();
  }
  bool IsY(std::int32_t column) const {
    return std::ranges::find(chosen_.y, column) != chosen_.y.end();
  }
  /// "x err y err": behind X, as another is behind Y.
  bool IsBehindX(std::int32_t column) const {
    return column - 1 == chosen_.x && IsY(column + 1) && IsCandidate(column + 2);
  }
  ChosenErrors* ErrorsOf(std::int32_t y) {
    const auto found = std::ranges::find(chosen_.y, y);
    if (found == chosen_.y.end()) return nullptr;
    return &chosen_.y_errors[static_cast<std::size_t>(found - chosen_.y.begin())];
  }
  void Take(std::int32_t column, std::int32_t value, ChosenErrors& errors) {
    errors = {{ErrorKind::Column, 0}, column};
    taken_.emplace_back(column, value);
    std::erase(candidates_, column);
  }
  void GiveTo(std::int32_t column, std::int32_t y) {
    ChosenErrors* const errors = ErrorsOf(y);
    if (errors != nullptr && !errors->column) Take(column, y, *errors);
  }
  void GiveNamed(std::int32_t column, int least) {
    if (pairs_.ValueOf(column)) return;
    const std::string name = source_.NameOf(column);
    const Words after = ValueNamedIn(name);
    const Words behind_d = WordsBehindD(name);
    const Words beside_err = WordsBesideErr(name);
    const auto matches = [&](std::int32_t y) {
      const Words words = WordsOf(source_.NameOf(y));
      return !ErrorsOf(y)->column &&
             (NameMatch(after, words) >= least || NameMatch(behind_d, words) == 2 ||
              NameMatch(beside_err, words) == 2);
    };
    // Of columns with one name each has the next; "flow sigma" behind "flow min" and "flow mean" is that of the last.
    if (least == 1 && IsY(column - 1) && matches(column - 1)) return GiveTo(column, column - 1);
    const auto found = std::ranges::find_if(chosen_.y, matches);
    if (found != chosen_.y.end()) GiveTo(column, *found);
  }
  /// "a b err err": as many as the columns before them.
  bool GiveInOrder() {
    const bool behind = std::ranges::all_of(candidates_, [this](std::int32_t column) {
      return IsNameless(column) && column > chosen_.y.back();
    });
    const bool none_yet = std::ranges::none_of(
        chosen_.y_errors, [](const ChosenErrors& errors) { return errors.column.has_value(); });
    if (!behind || !none_yet || candidates_.size() != chosen_.y.size()) return false;
    const Columns errors = candidates_;
    for (std::size_t i = 0; i < errors.size(); ++i) GiveTo(errors[i], chosen_.y[i]);
    return true;
  }
  void GiveLeftNeighbour(std::int32_t column) {
    if (!IsNameless(column)) return;
    const bool alone = pairs_.AxisOf(column) == ErrorAxis::Y && chosen_.y.size() == 1;
    GiveTo(column, alone ? chosen_.y.front() : column - 1);
  }

  const ImportSource& source_;
  const ErrorPairs& pairs_;
  ChosenColumns& chosen_;
  Columns& candidates_;
  std::vector<std::pair<std::int32_t, std::int32_t>> taken_;
  std::vector<std::string> own_;
};

ChosenErrors Chosen(const ImportSource& source, const ErrorOption& option, Columns& candidates) {
  ChosenErrors errors{option.rule, {}};
  if (option.rule.kind != ErrorKind::Column) return errors;
  errors.column = source.Column(option.column);
  std::erase(candidates, *errors.column);
  return errors;
}

/// Which of several DataSets one column of errors belongs to.
std::optional<std::size_t> DataSetOf(std::int32_t column, const ErrorPairs& pairs,
                                     const ChosenColumns& chosen, bool y_given) {
  for (const std::int32_t y : {pairs.ValueOf(column).value_or(-1), column - 1}) {
    const auto found = std::ranges::find(chosen.y, y);
    if (y >= 0 && found != chosen.y.end()) {
      return static_cast<std::size_t>(found - chosen.y.begin());
    }
  }
  if (y_given) return std::nullopt;
  return 0;
}

[[noreturn]] void RefuseCount(const ImportSource& source, const ChosenColumns& chosen,
                              std::size_t given) {
  constexpr std::size_t kMost = 5;
  std::vector<std::string> names;
  for (const std::int32_t y : chosen.y) names.push_back(source.Quoted(y));
  throw Error("The errors of Y are given " + Counted(static_cast<std::int64_t>(given), "time") +
              " for " + Counted(static_cast<std::int64_t>(chosen.y.size()), "DataSet") + " (" +
              Listed(names, kMost) + "): one for each is needed, in their order");
}

/// True when one column is given and others have none yet.
bool TakeYOptions(const ImportSource& source, const ErrorPairs& pairs, const ImportOptions& options,
                  ChosenColumns& chosen, Columns& candidates) {
  const std::vector<ErrorOption>& given = options.y_errors;
  const bool one = given.size() == 1 && chosen.y.size() > 1;
  const bool for_all = given.size() == 1 && given.front().rule.kind != ErrorKind::Column;
  if (one && !for_all) {
    const std::int32_t column = source.Column(given.front().column);
    const auto number = DataSetOf(column, pairs, chosen, !options.y_columns.empty());
    if (!number) RefuseCount(source, chosen, given.size());
    chosen.y_errors[*number] = Chosen(source, given.front(), candidates);
    chosen.notes.push_back(source.Quoted(column) + " is the error of " +
                           source.Quoted(chosen.y[*number]) + " alone");
    return true;
  }
  if (!for_all && given.size() != chosen.y.size()) RefuseCount(source, chosen, given.size());
  for (std::size_t i = 0; i < chosen.y.size(); ++i) {
    chosen.y_errors[i] = Chosen(source, given[for_all ? 0 : i], candidates);
  }
  return false;
}

bool IsRelative(const ImportSource& source, std::int32_t column) {
  return NamesRelative(source.NameOf(column));
}

/// Errors taken by the guess are those of values from which an expression makes others.
bool MeetExpression(const ImportOptions& options, const ChosenColumns& chosen) {
  const auto has_column = [](const ChosenErrors& errors) { return errors.column.has_value(); };
  return (options.y_expression && options.y_errors.empty() &&
          std::ranges::any_of(chosen.y_errors, has_column)) ||
         (options.x_expression && !options.x_errors && has_column(chosen.x_errors));
}

}  // namespace

void ChooseErrors(const ImportSource& source, const ErrorPairs& pairs, const ImportOptions& options,
                  ChosenColumns& chosen, std::vector<std::int32_t>& candidates) {
  chosen.y_errors.assign(chosen.y.size(), {});
  const bool guess_y =
      options.y_errors.empty() || TakeYOptions(source, pairs, options, chosen, candidates);
  if (options.x_errors) chosen.x_errors = Chosen(source, *options.x_errors, candidates);
  Columns relative;
  std::ranges::copy_if(candidates, std::back_inserter(relative),
                       [&](std::int32_t column) { return IsRelative(source, column); });
  std::erase_if(candidates, [&](std::int32_t column) { return IsRelative(source, column); });
  ErrorGuess guess(source, pairs, chosen, candidates);
  if (!options.x_errors) guess.GiveX();
  if (guess_y) guess.GiveY();
  for (std::size_t i = 0; i < chosen.y.size() && guess_y; ++i) {
    guess.GiveOwn(chosen.y[i], options.y_format, chosen.y_errors[i]);
  }
  if (!options.x_errors) guess.GiveOwn(chosen.x, options.x_format, chosen.x_errors);
  guess.Tell();
  if (MeetExpression(options, chosen))
    chosen.errors_note += ", as read: no expression of X or Y is applied to errors";
  candidates.insert(candidates.end(), relative.begin(), relative.end());
  std::ranges::sort(candidates);
}

}  // namespace tarnwick
