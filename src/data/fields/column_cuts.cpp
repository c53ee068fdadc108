#include "data/fields/column_cuts.h"

#include <algorithm>
#include <charconv>

namespace tarnwick {
namespace {

constexpr std::size_t kMostCuts = 1000;
constexpr std::int32_t kFarthest = 1'000'000'000;
constexpr std::string_view kBetween = " ,\t";

}  // namespace

std::optional<std::vector<std::int32_t>> ParseColumnCuts(std::string_view text) {
  std::vector<std::int32_t> cuts;
  for (;;) {
    text.remove_prefix(std::min(text.find_first_not_of(kBetween), text.size()));
    if (text.empty()) break;
    std::int32_t place = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), place);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    const bool ends = text.empty() || kBetween.find(text.front()) != kBetween.npos;
    const bool rises =
        place >= 1 && place <= kFarthest && (cuts.empty() || place - 1 > cuts.back());
    if (error != std::errc() || !ends || !rises || cuts.size() == kMostCuts) return std::nullopt;
    cuts.push_back(place - 1);
  }
  return cuts;
}

std::string ColumnCutsText(std::span<const std::int32_t> cuts) {
  std::string text;
  for (const std::int32_t cut : cuts) text += (text.empty() ? "" : " ") + std::to_string(cut + 1);
  return text;
}

}  // namespace tarnwick
