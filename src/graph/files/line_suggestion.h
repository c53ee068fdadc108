// How the points of a file that nobody has looked at yet are best joined. Knows DataSets and their style; knows no file.
#pragma once

#include <string>
#include <vector>

#include "data/series/data_series.h"
#include "graph/series_style.h"

namespace tarnwick {

enum class LineSuggestion {
  ByX,          ///< X keeps rising, or falling
  LateRows,     ///< the same but for a few rows: what was added behind the end, a clock set back
  AsTheyCame,   ///< X turns back and goes on smoothly: a loop, a sweep there and back
  SymbolsOnly,  ///< X is in no order: a line would only scribble
  Places,       ///< latitude over a longitude that turns back
  Groups,       ///< a few X, measured many times each: a line would only go up and down
};

/// Looks at X in the order in which the points came, piece by piece.
LineSuggestion SuggestLineOrder(const TDataSeries& series);

/// The style with the suggestion followed.
SeriesStyle FollowSuggestion(SeriesStyle style, LineSuggestion suggestion);

/// One clause for all DataSets of an import together, without a full stop; empty where lines are joined as ever.
std::string TellSuggestions(const std::vector<LineSuggestion>& suggestions);

}  // namespace tarnwick
