// Which varied parameters make up for each other, as far as the data can tell. Knows a FitResult's directions; no sentences.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "fit/fit_result.h"

namespace tarnwick {

/// Parameters that trade against each other, in as many independent directions.
struct TradingGroup {
  std::vector<std::int32_t> parameters;
  std::size_t directions = 1;
};

/// The singular directions, those that share a parameter as one.
std::vector<TradingGroup> TradingGroups(const FitResult& result);

}  // namespace tarnwick
