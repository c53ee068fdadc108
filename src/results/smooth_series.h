// A DataSet made smoother, and one less its estimated base line, as they join their graph: name, titles, what is told. Know
// graphs
// and what is computed; ask nothing.
#pragma once

#include "analysis/background.h"
#include "analysis/smoothing.h"
#include "results/new_series.h"

namespace tarnwick {

enum class SmoothMethod { Polynomials, Median };

struct SmoothOptions {
  SmoothMethod method = SmoothMethod::Polynomials;
  LocalPolynomial local = {};  ///< the window is that of the median, too
};

enum class BaseLineMethod { RubberBand, Asymmetric };
/// What the new DataSet holds.
enum class BaseLineResult { Less, Line };

struct BaseLineOptions {
  BaseLineMethod method = BaseLineMethod::Asymmetric;
  ArPls asymmetric = {};
  BaseLineResult result = BaseLineResult::Less;
};

/// "X_SMO" for the DataSet X, "X_BLC"; with "_" and a number where the graph has that already.
std::string SmoothName(const TxyGraph& graph, const TSeries& source);
std::string BaseLineName(const TxyGraph& graph, const TSeries& source);

/// A DataSet that was added, and what is told of it: sentences.
struct MadeSeries {
  TSeries& series;
  std::string told;
};

/// Computes it from the points with a finite Y, less the base line, and adds it; its data source says how it was made.
/// Throws Error
/// as AddNewSeries, and as the computation does; the graph is then as it was.
MadeSeries AddSmooth(TxyGraph& graph, const TSeries& source, const SmoothOptions& options,
                     const NewSeries& wanted);
MadeSeries AddLessBaseLine(TxyGraph& graph, const TSeries& source, const BaseLineOptions& options,
                           const NewSeries& wanted);

}  // namespace tarnwick
