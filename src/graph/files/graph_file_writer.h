// Writes a graph section by section in the order of a graph file. Knows the layout; opens no file.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "graph/files/graph_file.h"

namespace tarnwick {

/// Children below the outermost graph that a file may nest; deeper ones are neither written nor read.
inline constexpr int kDeepestChild = 64;
inline constexpr const char* kNestedTooDeep = "Child graphs are nested deeper than 64 levels";

inline constexpr const char* kDataSetFilingError = "internal filing error: TxyGraph";
inline constexpr const char* kMarkFilingError = "internal filing error2: TxyGraph";

/// Gets each piece of the bytes; the string is to be left empty.
using ByteSink = std::function<void(std::string& bytes)>;

/// Hands the bytes of a whole graph file to `sink` in small pieces. Throws Error kNestedTooDeep.
void WriteGraphPieces(const TxyGraph& graph, const GraphFileOptions& options, const ByteSink& sink);

/// The same of the graph with the DataSet `index` alone, which is current and titles the X axis; without marks and child
/// graphs. Throws Error "No DataSet found!" when there is no such DataSet.
void WriteDataSetPieces(const TxyGraph& graph, std::size_t index, const GraphFileOptions& options,
                        const ByteSink& sink);

}  // namespace tarnwick
