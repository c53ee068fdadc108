#include "data/columns/constant_columns.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

#include "data/block_source.h"

namespace tarnwick {
namespace {

bool HoldsAnother(std::span<const double> values, double first) {
  return std::ranges::any_of(
      values, [first](double value) { return value != first && !std::isnan(value); });
}

}  // namespace

std::vector<std::int32_t> ConstantThroughout(const ImportSource& source,
                                             std::vector<std::int32_t> columns) {
  const BlockSource* const blocks = source.supplier->Blocks();
  std::vector<ColumnRequest> requests;
  requests.reserve(columns.size());
  for (const std::int32_t column : columns) {
    requests.push_back({column, source.GuessOf(column).format});
  }
  if (blocks == nullptr || columns.empty()) return columns;
  std::vector<char> varies(columns.size());
  blocks->ReadBlocks(requests, 0, [&](const RowBlock& block) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const double first = source.GuessOf(columns[i]).values.front();
      if (varies[i] == 0 && HoldsAnother(block.Column(i), first)) varies[i] = 1;
    }
    return std::ranges::find(varies, 0) != varies.end();
  });
  std::vector<std::int32_t> constant;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (varies[i] == 0) constant.push_back(columns[i]);
  }
  return constant;
}

}  // namespace tarnwick
