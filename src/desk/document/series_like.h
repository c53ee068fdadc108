// DataSets that are described and drawn like others of their source. Knows graphs; reads nothing.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "data/import/load_report.h"

namespace tarnwick {

class TDataSeries;
class TSeries;
class TxyGraph;

/// The graph or inserted graph that holds the DataSet; null for none.
TxyGraph* GraphOf(TxyGraph& graph, const TSeries& series);

/// A DataSet described and drawn like another one, of another column and in a colour of its own; without points yet.
TSeries& AddLike(TxyGraph& graph, const TSeries& first, const std::string& column);

/// DataSets, without points yet, for the runs that a source has got since each of its runs became DataSets: like those of its
/// last run, beside them. `read`: what came of reading the DataSets of the source, one for each. A table of more runs than an
/// import would part gets none.
std::vector<TDataSeries*> AddNewRuns(std::span<const std::unique_ptr<TxyGraph>> graphs,
                                     std::span<TDataSeries* const> source,
                                     std::span<const LoadReport> read);

}  // namespace tarnwick
