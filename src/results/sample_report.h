// Two DataSets beside each other, as it is told: a table of figures, sentences on the tests, and a picture of boxes and
// histograms. Knows DataSets and graphs; no window.
#pragma once

#include <string>
#include <vector>

#include "analysis/sample_comparison.h"
#include "graph/series.h"

namespace tarnwick {

class TxyGraph;

/// A figure of both.
struct SampleRow {
  const char* name;
  double first = 0;
  double second = 0;
};

struct SampleReport {
  SampleComparison comparison;
  std::vector<SampleRow> rows;
  std::vector<std::string> sentences;  ///< one for each test, and what was left out
};

/// Of finite Y less the base line. Throws Error "No Data Found in DataSet ...!" where one has none.
SampleReport CompareSeries(const TSeries& first, const TSeries& second);

/// Draws into an empty graph a box of each, at X = 1 and 2: quartiles and median, whiskers to the outermost values within 1.5
/// times the quartiles' distance, points beyond, a cross at the mean; and beside it how often values lie where, in bins common to
/// both.
void DrawSamples(TxyGraph& graph, const TSeries& first, const TSeries& second);

}  // namespace tarnwick
