// What stands in data for "no value". Knows no columns, no rows and no files.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// The texts and numbers of a list such as `-9999 NA "not measured"`: blanks between, a text with blanks in double quotes.
class MissingValues {
 public:
  explicit MissingValues(std::string_view list);

  bool Empty() const { return texts_.empty() && numbers_.empty(); }
  /// True when the field (without markers) is one of the texts, in whatever case, or is written as one of the numbers in
  /// any form of ParseNumber: -9999 matches "-9999.0" and "-9.999e3".
  bool Matches(std::string_view field_text) const;
  /// True when `value` is one of the numbers; those from 1e20 up need agree in single precision only, as they are written
  /// by programs that compute in it.
  bool MatchesNumber(double value) const;

 private:
  std::vector<std::string> texts_;  // in small letters
  std::vector<double> numbers_;
};

/// Written as numbers that stand for no value are: nines only (-9999, -99.9, 999.9), fill values of single precision, or powers
/// of ten from 1e20 up, below zero from 1e6.
bool LooksMissing(double value);

/// The numbers, as texts for such a list, that one column's values give away as standing for no value: such that look so and lie
/// far from all other values, or are all there is. Never more than two; never 99 itself or those below 99 in size, but for a -9
/// that comes again and again among many values far above it.
std::vector<std::string> SuggestMissing(std::span<const double> values);

}  // namespace tarnwick
