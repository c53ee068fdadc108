#include "data/columns/block_parameter.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <span>
#include <vector>

#include "data/names/argument_names.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestRows = 5;  // of a block
constexpr std::size_t kFewestColumns = 3;

/// Only rising or only falling.
bool GoesOneWay(std::span<const double> values) {
  const auto never = [&](auto is) {
    return std::ranges::adjacent_find(values, is) == values.end();
  };
  return never(std::ranges::less_equal()) || never(std::ranges::greater_equal());
}

/// The same of what is called a time or the like, which may stand for several rows, and start over once in ten of them.
bool MostlyRises(std::span<const double> values) {
  constexpr std::size_t kRowsOfPiece = 10;
  std::size_t rises = 0, falls = 0;
  for (std::size_t i = 1; i < values.size(); ++i) {
    rises += values[i] > values[i - 1] ? 1 : 0;
    falls += values[i] < values[i - 1] ? 1 : 0;
  }
  return values.size() == 1 || (3 * rises > values.size() && kRowsOfPiece * falls <= values.size());
}

/// "0 1 2", "0 1 2 3": nearer to where the block before began than to where it ended.
bool StartsOver(std::span<const double> before, double next) {
  return std::abs(next - before.front()) < std::abs(next - before.back());
}

/// Where each block of equal values ends; none where a value comes in two of them.
std::vector<std::size_t> EndsOfBlocks(std::span<const double> values) {
  std::vector<std::size_t> ends;
  std::vector<double> seen;
  for (std::size_t i = 1; i <= values.size(); ++i) {
    if (i < values.size() && values[i] == values[i - 1]) continue;
    if (std::ranges::find(seen, values[i - 1]) != seen.end()) return {};
    seen.push_back(values[i - 1]);
    ends.push_back(i);
  }
  return ends;
}

}  // namespace

std::optional<std::int32_t> FindBlockParameter(const ImportSource& source, std::int32_t x) {
  const std::vector<std::int32_t> numbers = source.NumberColumns();
  if (numbers.size() < kFewestColumns || x != numbers[1]) return std::nullopt;
  const ColumnGuess& parameter = source.GuessOf(numbers.front());
  const std::span<const double> values = parameter.Successive();
  const std::span<const double> steps = source.GuessOf(x).Successive();
  if (parameter.is_date || values.size() != steps.size()) return std::nullopt;
  // Times stand first, and what was measured at each comes behind them.
  if (NamesTime(source.NameOf(numbers.front()))) return std::nullopt;
  const bool is_argument = NamesArgument(source.NameOf(x));
  const auto goes_on = [is_argument](std::span<const double> within) {
    return is_argument ? MostlyRises(within) : GoesOneWay(within);
  };
  const std::vector<std::size_t> ends = EndsOfBlocks(values);
  if (ends.size() < 2) return std::nullopt;
  for (std::size_t block = 0; block < ends.size(); ++block) {
    const std::size_t begin = block == 0 ? 0 : ends[block - 1];
    const std::size_t end = ends[block];
    const bool last = block + 1 == ends.size();  // of which only some rows may have been looked at
    if (!last && end - begin < kFewestRows) return std::nullopt;
    const std::span<const double> within = steps.subspan(begin, end - begin);
    if (!goes_on(within) || (!last && !StartsOver(within, steps[end]))) return std::nullopt;
  }
  return numbers.front();
}

}  // namespace tarnwick
