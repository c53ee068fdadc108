// Fitted parameters written on the graph. Knows graphs, models and the picture's layout; no window.
#pragma once

#include "base/color.h"

namespace tarnwick {

class TSeries;
class TxyGraph;

/// Prints the parameters marked so on the graph (all varied ones, which are marked then, if none is), each with its error, as
/// marks where they cover few points of a picture of the graph's client size. A line printed before for the same parameter
/// is written anew where it stands. The graph holds `series` and its scales are up to date; needs a QGuiApplication.
/// Throws Error when there is nothing to print.
void PrintFitOnGraph(TxyGraph& graph, TSeries& series);

/// Writes the lines that stand there of the DataSet's parameters anew, where they stand.
void RenewPrinted(TxyGraph& graph, const TSeries& series);

/// Gives the lines of the DataSet's parameters that have the colour `before` that of its model's curve.
void RecolourPrinted(TxyGraph& graph, const TSeries& series, Color before);

/// Whether a line stands on the graph that this printed of the DataSet.
bool IsPrinted(const TxyGraph& graph, const TSeries& series);

}  // namespace tarnwick
