// What a fit gives back to the graph of a document, each as one step to be undone. Knows documents; what is made is decided
// below both faces (results/).
#pragma once

namespace tarnwick {

class Document;

/// The residuals of the current DataSet's fit as a DataSet "Residuals of X". Throws Error.
void AddResiduals(Document& document);

/// Confidence and prediction bands of the current DataSet's fit; `level` lies between 0 and 1. Throws Error, also when the
/// model has no result that holds.
void AddBands(Document& document, double level);

/// The current DataSet's fitted parameters as marks. Throws Error, also when there is nothing to print.
void PrintFitOnGraph(Document& document);

}  // namespace tarnwick
