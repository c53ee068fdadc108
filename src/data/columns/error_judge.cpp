#include "data/columns/error_judge.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <vector>

#include "base/ascii.h"
#include "base/quantile.h"
#include "data/columns/error_names.h"
#include "data/columns/value_order.h"
#include "data/names/name_words.h"

namespace tarnwick {
namespace {

using Words = std::vector<std::string>;

/// Values below zero that are more than marks of no value.
bool HoldsNegatives(std::vector<double> values) {
  const std::size_t all = values.size();
  if (all > 0 && std::ranges::max(values) < 0) return true;
  std::erase_if(values, [](double value) { return value >= 0; });
  std::ranges::sort(values);
  const auto distinct = std::unique(values.begin(), values.end()) - values.begin();
  return 4 * values.size() > all && distinct > 2;
}

/// "SIGMA(1,1)"
bool IsOfMatrix(std::string_view name) {
  const std::size_t comma = name.find(',');
  const std::size_t open = name.find('(');
  return comma != name.npos && open < comma && comma + 1 < name.size() && comma > 0 &&
         IsDigit(name[comma - 1]) && IsDigit(name[comma + 1]) && name.ends_with(')');
}

/// "max error", "test error": how well something was computed, no error of a value.
bool NamesExtreme(const Words& words) {
  constexpr std::string_view kExtremes[] = {
      "max",  "maximum", "min",  "mean",  "rms",      "avg",        "average", "l2",
      "linf", "norm",    "test", "train", "training", "validation", "residual"};
  return !words.empty() && std::ranges::all_of(words, [&kExtremes](const std::string& word) {
    return std::ranges::find(kExtremes, word) != std::end(kExtremes);
  });
}

/// Among others of the rose of winds "SE" is a direction.
bool IsDirection(const ImportSource& source, std::string_view name) {
  constexpr std::string_view kSouthEast[] = {"se"};
  constexpr std::string_view kOthers[] = {"ne", "nw", "sw"};
  return HasWord(name, kSouthEast) &&
         std::ranges::any_of(source.supplier->ColumnNames(),
                             [&](const std::string& other) { return HasWord(other, kOthers); });
}

class ErrorJudge {
 public:
  ErrorJudge(const ImportSource& source, const ErrorPairs& pairs, std::int32_t x,
             std::int32_t column)
      : source_(source), pairs_(pairs), x_(x), column_(column), name_(source.NameOf(column)) {}

  bool GivesErrors() const {
    constexpr std::string_view kDx[] = {"dx"}, kDy[] = {"dy"}, kX[] = {"x"};
    const std::vector<double>& values = source_.GuessOf(column_).values;
    const auto is_zero = [](double error) { return error == 0; };
    if (!values.empty() && std::ranges::all_of(values, is_zero)) return false;
    if (HoldsNegatives(values) || IsOfMatrix(name_)) return false;
    const bool x_named = HasWord(source_.NameOf(x_), kX);
    if (HasWord(name_, kDx)) return x_named;
    const auto is_dx = [&](std::int32_t other) { return HasWord(source_.NameOf(other), kDx); };
    if (HasWord(name_, kDy) && !x_named && std::ranges::any_of(source_.NumberColumns(), is_dx)) {
      return false;
    }
    if (pairs_.ValueOf(column_) || pairs_.AxisOf(column_) != ErrorAxis::None) return true;
    if (IsDirection(source_, name_)) return false;
    if (IsNamedLike(WordsBehindD(name_)) || IsNamedLike(WordsBesideErr(name_))) return true;
    if (StandsBehindSign(source_, column_)) return true;
    return NamesErrors(name_) && StandsBesideValues() && (NamesRelative(name_) || BelongsToSome());
  }

 private:
  bool IsNamedLike(const Words& value) const {
    return !value.empty() && std::ranges::any_of(source_.NumberColumns(), [&](std::int32_t other) {
      return other != x_ && other != column_ && WordsOf(source_.NameOf(other)) == value;
    });
  }

  bool IsValue(std::int32_t other) const {
    return other >= 0 && other != column_ && source_.GuessOf(other).has_numbers &&
           !NamesErrors(source_.NameOf(other));
  }

  /// "n err_l2 err_h1": where all columns but X are called so, they are what was computed.
  bool StandsBesideValues() const {
    return std::ranges::any_of(source_.NumberColumns(), [this](std::int32_t other) {
      return other != x_ && IsValue(other);
    });
  }

  /// A "sigma" that is larger than its value measures something else.
  bool IsOfSizeFor(std::int32_t value) const {
    if (!NamesDoubtfulErrors(name_)) return true;
    std::vector<double> errors = source_.GuessOf(column_).values;
    const std::vector<double>& values = source_.GuessOf(value).values;
    return errors.empty() || values.empty() || MedianOf(errors) <= SizeOf(values);
  }

  /// The names begin alike: "Temp SD" behind "Temperature mean".
  bool IsCalledAlike(const Words& after, std::int32_t value) const {
    constexpr std::size_t kAlike = 3;
    const Words words = WordsOf(source_.NameOf(value));
    return !words.empty() && after.front().size() >= kAlike &&
           words.front().starts_with(after.front().substr(0, kAlike));
  }

  bool BelongsToSome() const {
    const Words after = ValueNamedIn(name_);
    const auto names_it = [&](std::int32_t other) {
      return IsValue(other) && NameMatch(after, WordsOf(source_.NameOf(other))) > 0 &&
             IsOfSizeFor(other);
    };
    if (std::ranges::any_of(source_.NumberColumns(), names_it)) return true;
    const std::int32_t before = ValueBefore();
    // What nobody would measure for itself is left out even where it belongs to nobody.
    if (!NamesDoubtfulErrors(name_)) return !NamesExtreme(after);
    if (!after.empty()) {
      return before >= 0 && IsCalledAlike(after, before) && IsOfSizeFor(before);
    }
    return before >= 0 && (before != x_ || IsBehindXAndOthers()) && IsOfSizeFor(before);
  }

  /// The nearest column of values before this one, over other errors: "a b sigma sigma".
  std::int32_t ValueBefore() const {
    std::int32_t before = column_ - 1;
    while (before >= 0 && NamesErrors(source_.NameOf(before))) --before;
    return before >= 0 && IsValue(before) ? before : -1;
  }

  /// "x sigma y sigma"
  bool IsBehindXAndOthers() const {
    const auto columns = static_cast<std::int32_t>(source_.columns.size());
    return column_ + 2 < columns && IsValue(column_ + 1) &&
           NamesErrors(source_.NameOf(column_ + 2));
  }

  const ImportSource& source_;
  const ErrorPairs& pairs_;
  const std::int32_t x_;
  const std::int32_t column_;
  const std::string name_;
};

}  // namespace

bool StandsBehindSign(const ImportSource& source, std::int32_t column) {
  const auto before = static_cast<std::size_t>(column) - 1;
  if (column < 2 || before >= source.samples.size()) return false;
  const std::vector<std::string>& texts = source.samples[before];
  constexpr std::string_view kSigns[] = {"+-", "+/-", "\xC2\xB1"};
  return !texts.empty() && std::ranges::all_of(texts, [&kSigns](const std::string& text) {
    return std::ranges::find(kSigns, text) != std::end(kSigns);
  });
}

bool IsErrorColumn(const ImportSource& source, const ErrorPairs& pairs, std::int32_t x,
                   std::int32_t column) {
  return ErrorJudge(source, pairs, x, column).GivesErrors();
}

}  // namespace tarnwick
