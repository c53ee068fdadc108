// Tables of peaks as text that other programs read. Knows figures; no file.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "analysis/peak_figures.h"
#include "results/peak_model.h"

namespace tarnwick {

/// A figure as tables call it.
struct PeakColumn {
  const char* name;
  double PeakFigures::*figure;
};
std::span<const PeakColumn> PeakColumns();

/// A line of names, and a line for each peak, in full precision.
std::string PeakTableText(std::span<const PeakFigures> peaks, char separator);
/// The same of fitted peaks, the error of each figure behind it.
std::string FittedTableText(std::span<const FittedPeak> peaks, char separator);

}  // namespace tarnwick
