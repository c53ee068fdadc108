// Everything a graph or a fitting-function file holds, as the "info" and "import" commands print it. Goes by the field
// tables: a new field shows up
// by itself.
#pragma once

#include "cli/options/input_graph.h"
#include "cli/output/output.h"
#include "fit/model/fit_settings.h"

namespace tarnwick::cli {

/// Prints all that the graph holds and, where it was just imported, how many rows gave no point and why, and what else
/// there is to tell.
void PrintInfo(const InputGraph& input, Output& output);
/// The same of a fitting-function file.
void PrintFunctionInfo(const FitSettings& function, Output& output);

}  // namespace tarnwick::cli
