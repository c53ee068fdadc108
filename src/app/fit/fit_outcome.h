// What a fit gives back to the graph: residuals and bands as DataSets, parameters printed beside the curve. Each is one
// step to be undone, and done again it takes the place of what it made before. Knows documents; no window.
#pragma once

#include <QSizeF>

namespace tarnwick {

class Document;

/// Y less model, of every point between the margins, as a DataSet against the second Y axis. Throws Error.
void AddResiduals(Document& document);

/// Confidence and prediction bands of the current DataSet's fit as four DataSets; `level` lies between 0 and 1. Throws Error,
/// also when the model has no result that holds.
void AddBands(Document& document, double level);

/// Prints the parameters marked so on the graph (all varied ones, which are marked then, if none is), each with its error, as
/// marks where they cover few points of a picture of this size. Throws Error, also when there is nothing to print.
void PrintFitOnGraph(Document& document, QSizeF size);

}  // namespace tarnwick
