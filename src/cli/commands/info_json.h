// Everything a graph or a fitting-function file holds, as the "info" and "import" commands print it. Goes by the field tables: a new field shows up
// by itself.
#pragma once

#include <vector>

#include "cli/output/output.h"
#include "data/import/load_report.h"
#include "fit/model/fit_settings.h"
#include "graph/xy_graph.h"

namespace tarnwick::cli {

/// The document of "info". `reports` (of a file just imported, one per DataSet, else empty) add how many rows gave no
/// point and why.
Json InfoJson(const TxyGraph& graph, const std::vector<LoadReport>& reports);

/// Prints the document, or its text for people.
void PrintInfo(const TxyGraph& graph, const std::vector<LoadReport>& reports, Output& output);
/// The same of a fitting-function file.
void PrintFunctionInfo(const FitSettings& function, Output& output);

}  // namespace tarnwick::cli
