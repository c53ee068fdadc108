#include "data/series/number_run_text.h"

#include <utility>

namespace tarnwick {
namespace {

constexpr std::string_view kDigits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint64_t kMore = 32;
constexpr int kBits = 5, kMostBits = 35;  // a difference of 32-bit numbers, and its sign

}  // namespace

std::string NumberRunText(std::span<const std::int32_t> numbers) {
  std::string text;
  text.reserve(numbers.size());
  std::int64_t before = 0;
  for (const std::int32_t number : numbers) {
    const std::int64_t step = number - std::exchange(before, number);
    auto left = static_cast<std::uint64_t>(step < 0 ? -step : step) << 1 | (step < 0 ? 1U : 0U);
    for (; left >= kMore; left >>= kBits) text += kDigits[left % kMore + kMore];
    text += kDigits[left];
  }
  return text;
}

std::optional<std::vector<std::int32_t>> ParseNumberRun(std::string_view text, std::size_t most) {
  std::vector<std::int32_t> numbers;
  std::int64_t number = 0;
  std::uint64_t bits = 0;
  int shift = 0;
  for (const char c : text) {
    const std::size_t digit = kDigits.find(c);
    if (digit == kDigits.npos || shift >= kMostBits) return std::nullopt;
    bits |= digit % kMore << shift;
    shift += kBits;
    if (digit >= kMore) continue;
    const auto size = static_cast<std::int64_t>(bits >> 1);
    number += bits % 2 == 0 ? size : -size;
    if (!std::in_range<std::int32_t>(number) || numbers.size() == most) return std::nullopt;
    numbers.push_back(static_cast<std::int32_t>(number));
    bits = 0;
    shift = 0;
  }
  if (shift != 0) return std::nullopt;
  return numbers;
}

}  // namespace tarnwick
