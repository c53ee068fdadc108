// What stands in data for "no value". Knows no columns, no rows and no files.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// The texts and numbers of a list such as `-9999 NA "not measured" 99@#3`: blanks between, a text with blanks in double quotes;
/// what ends with `@#3` stands for no value in column #3 alone.
class MissingValues {
 public:
  static constexpr std::int32_t kEveryColumn = -1;

  explicit MissingValues(std::string_view list);

  bool Empty() const { return texts_.empty() && numbers_.empty(); }
  /// True when the field (without markers) of that column is one of the texts, in whatever case, or is written as one of the
  /// numbers in any form of ParseNumber: -9999 matches "-9999.0" and "-9.999e3". Of kEveryColumn only what stands for none
  /// wherever it comes.
  bool Matches(std::string_view field_text, std::int32_t column = kEveryColumn) const;
  /// True when `value` is one of the numbers; those from 1e20 up need agree in single precision only, as they are written
  /// by programs that compute in it.
  bool MatchesNumber(double value, std::int32_t column = kEveryColumn) const;

 private:
  template <class Value>
  struct Entry {
    Value value;
    std::int32_t column = kEveryColumn;  // in which it stands for no value

    bool IsOf(std::int32_t of) const { return column == kEveryColumn || column == of; }
  };

  std::vector<Entry<std::string>> texts_;  // in small letters
  std::vector<Entry<double>> numbers_;
};

/// The entry of such a list by which `value` stands for none in that column alone.
std::string MissingInColumn(double value, std::int32_t column);

/// Written as numbers that stand for no value are: nines only (-9999, -99.9, 999.9), fill values of single precision, or powers
/// of ten from 1e20 up, below zero from 1e6.
bool LooksMissing(double value);

/// The numbers, as texts for such a list, that one column's values give away as standing for no value: such that look so and lie
/// far from all other values, or are all there is. Never more than two; never 99 itself or those below 99 in size, but for a -9
/// that comes again and again among many values far above it.
std::vector<std::string> SuggestMissing(std::span<const double> values);

/// The numbers that stand for no value in this column, as its values alone tell: several times the same number of nines and
/// nothing else, 99 and -9.99 and -0.99 among them, farther from twenty others or more than these are from each other (below
/// zero, beside others that are not: from eight, by half of that). Never more than two. They may be values of other columns.
std::vector<double> SuggestMissingOfColumn(std::span<const double> values);

}  // namespace tarnwick
