#include "data/import/error_columns.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "data/import/import_file.h"
#include "data/import/name_words.h"

namespace tarnwick {
namespace {

using Columns = std::vector<std::int32_t>;
using Words = std::vector<std::string>;

constexpr std::string_view kErrorWords[] = {"err",   "error",  "errors",      "sigma",   "std",
                                            "stdev", "stddev", "sd",          "sem",     "stderr",
                                            "unc",   "dy",     "uncertainty", "\xCF\x83"};
constexpr std::string_view kErrorSigns[] = {"+-", "+/-", "\xC2\xB1"};
// Of columns whose numbers are parts of the values beside them.
constexpr std::string_view kRelativeWords[] = {"rel", "relative", "percent", "pct"};
constexpr std::string_view kFillers[] = {"in",        "of",  "on",       "the",     "dev",
                                         "deviation", "abs", "standard", "absolute"};

bool IsOf(std::span<const std::string_view> known, const std::string& word) {
  return std::ranges::find(known, word) != known.end();
}

/// What is left of an error's name: that of what it belongs to, "y" of "dy".
Words NamedAfter(std::string_view name) {
  Words words = WordsOf(name);
  const bool sign = std::ranges::any_of(
      kErrorSigns, [name](std::string_view mark) { return name.find(mark) != name.npos; });
  for (std::string& word : words) {
    if (word == "dy" || word == "dx") word.erase(0, 1);
  }
  std::erase_if(words, [sign](const std::string& word) {
    return IsOf(kErrorWords, word) || IsOf(kFillers, word) || (sign && word.empty());
  });
  return words;
}

/// How well a column's name is the one that an error is named after: 2 wholly, 1 but for words behind it, such as units, or
/// before it ("set A" and "err A").
int Match(const Words& after, const Words& name) {
  if (after.empty() || after.size() > name.size()) return 0;
  const bool begins = std::equal(after.begin(), after.end(), name.begin());
  const bool ends = std::equal(after.rbegin(), after.rend(), name.rbegin());
  return !begins && !ends ? 0 : after.size() == name.size() ? 2 : 1;
}

/// The guess, error by error.
class ErrorGuess {
 public:
  ErrorGuess(const ImportSource& source, ChosenColumns& chosen, Columns& candidates)
      : source_(source), chosen_(chosen), candidates_(candidates) {}

  void GiveX() {
    const auto found = std::ranges::find_if(candidates_, [this](std::int32_t column) {
      return BelongsToX(NamedAfter(source_.NameOf(column))) ||
             (IsNameless(column) && IsBehindX(column));
    });
    if (found == candidates_.end()) return;
    Take(*found, chosen_.x, chosen_.x_errors);
  }
  void GiveY() {
    for (const int least : {2, 1}) {
      for (const std::int32_t column : Columns(candidates_)) GiveNamed(column, least);
    }
    if (!GiveInOrder()) {
      for (const std::int32_t column : Columns(candidates_)) GiveLeftNeighbour(column);
    }
  }
  void Tell() {
    constexpr std::size_t kMost = 5;
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
  /// "A Day", "A Mean", "A SD": where the name tells no more of X than of some Y, the error is that of Y.
  bool BelongsToX(const Words& after) const {
    const int x = Match(after, WordsOf(source_.NameOf(chosen_.x)));
    return x > 0 && std::ranges::none_of(chosen_.y, [&](std::int32_t y) {
             return Match(after, WordsOf(source_.NameOf(y))) >= x;
           });
  }
  bool IsNameless(std::int32_t column) const {
    const std::string name = source_.NameOf(column);
    constexpr std::string_view kDy[] = {"dy"};
    return NamedAfter(name).empty() || HasWord(name, kDy);
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
    const std::string name = source_.NameOf(column);
    const Words after = NamedAfter(name);
    const Words behind_d = WordsBehindD(name);
    const Words beside_err = WordsBesideErr(name);
    const auto matches = [&](std::int32_t y) {
      const Words words = WordsOf(source_.NameOf(y));
      return !ErrorsOf(y)->column && (Match(after, words) >= least || Match(behind_d, words) == 2 ||
                                      Match(beside_err, words) == 2);
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
    if (IsNameless(column)) GiveTo(column, column - 1);
  }

  const ImportSource& source_;
  ChosenColumns& chosen_;
  Columns& candidates_;
  std::vector<std::pair<std::int32_t, std::int32_t>> taken_;
};

ChosenErrors Chosen(const ImportSource& source, const ErrorOption& option, Columns& candidates) {
  ChosenErrors errors{option.rule, {}};
  if (option.rule.kind != ErrorKind::Column) return errors;
  errors.column = source.Column(option.column);
  std::erase(candidates, *errors.column);
  return errors;
}

void TakeYOptions(const ImportSource& source, const ImportOptions& options, ChosenColumns& chosen,
                  Columns& candidates) {
  const std::vector<ErrorOption>& given = options.y_errors;
  const bool for_all = given.size() == 1 && given.front().rule.kind != ErrorKind::Column;
  if (!for_all && given.size() != chosen.y.size()) {
    throw Error("The errors of Y are given " +
                Counted(static_cast<std::int64_t>(given.size()), "time") + " for " +
                Counted(static_cast<std::int64_t>(chosen.y.size()), "DataSet") +
                ": one for each is needed, in their order");
  }
  for (std::size_t i = 0; i < chosen.y.size(); ++i) {
    chosen.y_errors[i] = Chosen(source, given[for_all ? 0 : i], candidates);
  }
}

bool NamesRelative(std::string_view name) {
  return HasWord(name, kRelativeWords) || name.find('%') != name.npos;
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

bool NamesErrors(std::string_view name) {
  const bool sign = std::ranges::any_of(
      kErrorSigns, [name](std::string_view mark) { return name.find(mark) != name.npos; });
  return sign || HasWord(name, kErrorWords);
}

std::string ErrorsHeading(std::string_view name) {
  const std::string heading = std::string(name) + " error";
  const bool found =
      !NamesRelative(name) && !NamesErrors(name) && Match(NamedAfter(heading), WordsOf(name)) == 2;
  return found ? heading : "error";
}

void ChooseErrors(const ImportSource& source, const ImportOptions& options, ChosenColumns& chosen,
                  std::vector<std::int32_t>& candidates) {
  chosen.y_errors.assign(chosen.y.size(), {});
  if (!options.y_errors.empty()) TakeYOptions(source, options, chosen, candidates);
  if (options.x_errors) chosen.x_errors = Chosen(source, *options.x_errors, candidates);
  Columns relative;
  std::ranges::copy_if(candidates, std::back_inserter(relative),
                       [&](std::int32_t column) { return IsRelative(source, column); });
  std::erase_if(candidates, [&](std::int32_t column) { return IsRelative(source, column); });
  ErrorGuess guess(source, chosen, candidates);
  if (!options.x_errors) guess.GiveX();
  if (options.y_errors.empty()) guess.GiveY();
  guess.Tell();
  if (MeetExpression(options, chosen))
    chosen.errors_note += ", as read: no expression of X or Y is applied to errors";
  candidates.insert(candidates.end(), relative.begin(), relative.end());
  std::ranges::sort(candidates);
}

}  // namespace tarnwick
