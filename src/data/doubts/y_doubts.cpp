#include "data/doubts/y_doubts.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "base/word_list.h"
#include "data/columns/import_options.h"
#include "data/columns/value_order.h"
#include "data/doubts/days_in_digits.h"
#include "data/points/point_columns.h"
#include "data/series/data_series.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostNames = 3;  // in a clause
constexpr std::size_t kFewestValues = 10;
constexpr double kTimesFarther = 1000;

/// The values of every second column from `first` on as they stand along the rows; empty where some lack values.
std::vector<double> EverySecond(const ImportSource& source, std::size_t first) {
  std::vector<double> along;
  const std::size_t rows = source.columns[first].Successive().size();
  for (std::size_t i = first; i < source.columns.size(); i += 2) {
    if (source.columns[i].Successive().size() != rows) return {};
  }
  for (std::size_t row = 0; row < rows; ++row) {
    for (std::size_t i = first; i < source.columns.size(); i += 2) {
      along.push_back(source.columns[i].values[row]);
    }
  }
  return along;
}

/// The least or the greatest value.
struct Farthest {
  double value = 0;
  std::int32_t id = 0;
  double next = 0;  ///< the one nearest to it
};

/// Least and greatest Y of a DataSet.
struct YEnds {
  Farthest low, high;
  std::int32_t first_id = 0, last_id = 0;
};

YEnds EndsOf(const PointChain& points) {
  constexpr double kBeyond = std::numeric_limits<double>::infinity();
  YEnds ends{{kBeyond, 0, kBeyond},
             {-kBeyond, 0, -kBeyond},
             std::numeric_limits<std::int32_t>::max(),
             std::numeric_limits<std::int32_t>::min()};
  const std::vector<double> values = YValues(points);
  const std::vector<std::int32_t> ids = Ids(points);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double value = values[i];
    if (value < ends.low.value) {
      ends.low = {value, ids[i], ends.low.value};
    } else {
      ends.low.next = std::min(ends.low.next, value);
    }
    if (value > ends.high.value) {
      ends.high = {value, ids[i], ends.high.value};
    } else {
      ends.high.next = std::max(ends.high.next, value);
    }
    ends.first_id = std::min(ends.first_id, ids[i]);
    ends.last_id = std::max(ends.last_id, ids[i]);
  }
  return ends;
}

/// The value of one row a thousand times farther from the others than they go, or than their only one is from zero. The first and
/// the last row are looked at apart.
std::optional<double> FarValue(const PointChain& points) {
  const YEnds ends = EndsOf(points);
  // What goes through decades may go on to the next.
  const auto is_far = [&](const Farthest& far, double least, double most) {
    const bool decades = least > 0 && most > kTimesFarther * least;
    const double width = most > least ? most - least : std::abs(least);
    return width > 0 && !decades && std::abs(far.value - far.next) > kTimesFarther * width &&
           far.id != ends.first_id && far.id != ends.last_id;
  };
  if (is_far(ends.high, ends.low.value, ends.high.next)) return ends.high.value;
  if (is_far(ends.low, ends.low.next, ends.high.value)) return ends.low.value;
  return std::nullopt;
}

/// 99, -9.99, 9999: all digits are nines.
bool AreNines(double value) {
  const std::string text = ShortestText(std::abs(value));
  return text.size() > 1 && text.find_first_not_of("9.") == text.npos;
}

/// The end of the values that is a code by how it is written and how it stands beside the others.
std::optional<double> CodeAmong(const std::vector<double>& values) {
  constexpr std::size_t kFewestOthers = 20;
  constexpr double kApart = 0.1;  // of how far the others go
  if (values.size() <= kFewestOthers) return std::nullopt;
  const auto ends = std::ranges::minmax(values);
  for (const double end : {ends.min, ends.max}) {
    const auto [low, high, others] = ValuesBut(values, end);
    if (others < kFewestOthers || values.size() - others < 2 || high == low) continue;
    // Among whole numbers minus one is the next below zero.
    const bool beside = end == -1 && std::ranges::all_of(values, [](double value) {
                          return value == std::floor(value);
                        });
    const bool below = end < 0 && low >= 0 && (AreNines(end) || (end == -1 && !beside));
    const double gap = end < low ? low - end : end - high;
    if (below || (AreNines(end) && gap > kApart * (high - low))) return end;
  }
  return std::nullopt;
}

/// The least value where it is all nines, five times as far below zero as the greatest is above, and the only one below.
std::optional<double> CodeBelow(const PointChain& points) {
  constexpr double kFarBelow = 5;
  const std::vector<double> values = YValues(points);
  const double least = std::ranges::min(values);
  if (least >= 0 || !AreNines(least)) return std::nullopt;
  const OtherValues others = ValuesBut(values, least);
  const bool below = others.count > 0 && others.low >= 0 && least < -kFarBelow * others.high;
  return below ? std::optional(least) : std::nullopt;
}

/// "y is -99 in several rows (--missing …)"
Doubt OfNoValue(std::string text, double number, const char* where) {
  const std::string value = ShortestText(number);
  text += value;
  text += where;
  text += " (--missing " + value;
  text += " has it stand for no value)";
  return {DoubtAbout::Values, std::move(text)};
}

/// The columns of each code that was found.
class CodesFound {
 public:
  void Add(double code, std::string column) {
    const auto known = std::ranges::find(codes_, code, &Code::value);
    Code& of = known != codes_.end() ? *known : codes_.emplace_back(Code{code, {}});
    of.columns.push_back(std::move(column));
  }
  void Tell(const char* where, Doubts& doubts) const {
    for (const Code& code : codes_) {
      const char* const are = code.columns.size() == 1 ? " is " : " are ";
      doubts.push_back(OfNoValue(Listed(code.columns, kMostNames) + are, code.value, where));
    }
  }

 private:
  struct Code {
    double value = 0;
    std::vector<std::string> columns;
  };
  std::vector<Code> codes_;
};

}  // namespace

void DoubtPairsInRows(const ReadColumns& read, Doubts& doubts) {
  constexpr std::size_t kFewest = 4;
  const ImportSource& source = read.source;
  const std::size_t count = source.columns.size();
  if (count < kFewest || count % 2 != 0 || !read.chosen.own_x.empty()) return;
  if (!std::ranges::all_of(source.columns, &ColumnGuess::has_numbers)) return;
  if (!RisesBeyondChance(EverySecond(source, 0)) || IsMonotone(EverySecond(source, 1))) return;
  doubts.push_back({DoubtAbout::X, "every second column goes on from row to row: rows may hold " +
                                       std::to_string(count / 2) + " pairs of X and Y each"});
}

void DoubtDigits(const ReadColumns& read, Doubts& doubts) {
  const ImportSource& source = read.source;
  for (const std::int32_t column : read.chosen.y) {
    const ColumnGuess& guess = source.GuessOf(column);
    const auto at = static_cast<std::size_t>(std::max(column, 0));
    if (column < 0 || guess.is_date || at >= source.samples.size()) continue;
    const std::string_view way = DaysInDigits(guess.values, source.samples[at]);
    if (way.empty()) continue;
    doubts.push_back({DoubtAbout::Values,
                      source.Quoted(column) + " is shown as numbers, though all may be " +
                          std::string(way) + " (" + ShortestText(guess.values.front()) + ")"});
  }
}

void DoubtFarValues(const ReadColumns& read, Doubts& doubts) {
  constexpr std::size_t kMostPoints = 200'000;
  std::size_t points = 0;
  CodesFound below;
  for (std::size_t i = 0; i < read.chosen.y.size(); ++i) {
    const std::int32_t column = read.chosen.y[i];
    const PointChain& chain = read.series[i]->Points();
    points += chain.Size();
    if (points > kMostPoints) break;
    if (read.source.GuessOf(column).is_date || chain.Size() <= kFewestValues) continue;
    const std::string name = read.source.Quoted(column);
    if (const std::optional<double> far = FarValue(chain)) {
      doubts.push_back(OfNoValue(name + " is ", *far, " in one row, far from all others"));
    } else if (!read.options.missing && !CodeAmong(read.source.GuessOf(column).values)) {
      if (const std::optional<double> code = CodeBelow(chain)) below.Add(*code, name);
    }
  }
  below.Tell(", far below all others", doubts);
}

void DoubtCodes(const ReadColumns& read, Doubts& doubts) {
  if (read.options.missing) return;
  CodesFound found;
  for (const std::int32_t column : read.chosen.y) {
    const ColumnGuess& guess = read.source.GuessOf(column);
    if (guess.is_date || RepeatedFarFromOthers(guess.values)) continue;
    const std::optional<double> code = CodeAmong(guess.values);
    if (code) found.Add(*code, read.source.Quoted(column));
  }
  found.Tell(" in several rows", doubts);
}

}  // namespace tarnwick
