#include "data/series/number_list_text.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "base/undefined.h"

namespace tarnwick {
namespace {

constexpr std::string_view kNone = "-";

}  // namespace

std::string NumberListText(std::span<const double> numbers) {
  std::string text;
  for (const double number : numbers) {
    if (!text.empty()) text += ' ';
    text += std::isfinite(number) ? ShortestText(number) : kNone;
  }
  return text;
}

std::optional<std::vector<double>> ParseNumberList(std::string_view text, std::size_t count) {
  std::vector<double> numbers;
  // Two characters a number at least: what a damaged count asks for is not reserved.
  numbers.reserve(std::min(count, text.size() / 2 + 1));
  while (!text.empty()) {
    const std::string_view one = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(text.size(), one.size() + 1));
    const std::optional<double> number = one == kNone ? kUndefined : ParseNumber(one);
    if (!number || numbers.size() == count) return std::nullopt;
    numbers.push_back(*number);
  }
  if (numbers.size() != count) return std::nullopt;
  return numbers;
}

}  // namespace tarnwick
