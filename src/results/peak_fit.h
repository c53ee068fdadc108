// Peaks on a straight line as a fitting model: made from measured peaks, and its parts as DataSets of the graph. Knows models and
// graphs; runs no fit.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "analysis/peak_figures.h"
#include "fit/model/fit_settings.h"
#include "results/peak_model.h"

namespace tarnwick {

class TSeries;
class TxyGraph;

/// As many peaks as one fit can vary.
std::size_t MostFittedPeaks(PeakShape shape);

/// The sum of the peaks on a line, fitted from the first one's left valley to the last one's right one. Every peak starts as
/// measured, its centre between its valleys, its width within theirs; those beyond MostFittedPeaks are held. `look` gives what
/// does not concern the function. Throws Error for no peaks.
FitSettings PeakModel(std::span<const PeakFigures> peaks, PeakShape shape, const FitSettings& look);

/// The peaks of a DataSet whose model is a PeakModel, at its present values; errors as its fit told them. Empty for other models.
std::vector<FittedPeak> FittedPeaks(const TSeries& series);

/// Draws each peak of the model, on its line, as a DataSet "Peak 1 of X", in place of those that were made before.
void AddPeakParts(TxyGraph& graph, const TSeries& series);

}  // namespace tarnwick
