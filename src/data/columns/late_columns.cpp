#include "data/columns/late_columns.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "data/block_source.h"

namespace tarnwick {
namespace {

constexpr std::int64_t kMostRows = 1'000'000;
constexpr std::size_t kFewestNumbers = 3;
constexpr std::size_t kNumbersPerOther = 9;
constexpr std::size_t kKept = 400;  // values, as the guess keeps

/// What such a column has further down.
struct Late {
  ColumnRequest request;
  std::vector<double> values;  // the first
  std::size_t numbers = 0;
  std::size_t others = 0;

  void Take(std::span<const double> block) {
    for (const double value : block) {
      if (IsMissingValue(value)) continue;
      ++(std::isnan(value) ? others : numbers);
      if (!std::isnan(value) && values.size() < kKept) values.push_back(value);
    }
  }
  bool HoldsNumbers() const {
    return numbers >= kFewestNumbers && numbers >= kNumbersPerOther * others;
  }
};

bool IsEmptySoFar(const ImportSource& source, std::size_t column) {
  const std::vector<std::string>& texts = source.samples[column];
  return !source.columns[column].has_numbers && !texts.empty() &&
         std::ranges::all_of(texts, [](const std::string& text) { return text.empty(); });
}

}  // namespace

void FindLateColumns(ImportSource& source) {
  const BlockSource* const blocks = source.supplier->Blocks();
  if (blocks == nullptr) return;
  std::vector<Late> late;
  std::vector<ColumnRequest> requests;
  for (std::size_t i = 0; i < std::min(source.samples.size(), source.columns.size()); ++i) {
    if (!IsEmptySoFar(source, i)) continue;
    requests.push_back({static_cast<std::int32_t>(i), ColumnFormat::Number});
    late.push_back({requests.back(), {}, 0, 0});
  }
  if (late.empty()) return;
  std::int64_t rows = 0;
  blocks->ReadBlocks(requests, 0, [&](const RowBlock& block) {
    for (std::size_t i = 0; i < late.size(); ++i) late[i].Take(block.Column(i));
    rows += block.rows;
    return rows < kMostRows;
  });
  for (Late& one : late) {
    if (!one.HoldsNumbers()) continue;
    ColumnGuess& column = source.columns[static_cast<std::size_t>(one.request.column)];
    column.has_numbers = true;
    column.later_values = one.values.size();
    column.values = std::move(one.values);
  }
}

}  // namespace tarnwick
