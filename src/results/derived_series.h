// DataSets computed from a DataSet of a graph, as they join that graph: name, titles and axis. Knows graphs and what is
// computed; asks nothing.
#pragma once

#include <cstdint>
#include <string>

#include "results/made_series.h"

namespace tarnwick {

enum class DerivedKind { Integral, RunningSum, Histogram, Derivative };
/// Whether the source is drawn any longer.
enum class SourceAfter { Shown, Hidden };

struct DerivedOptions {
  std::string name;            ///< of the new DataSet; empty: DerivedName
  AxisId y_axis = AxisId::Y2;  ///< Y or Y2
  SourceAfter source = SourceAfter::Shown;
  std::int32_t bins = 100;  ///< of a histogram
};

/// Whether the source is drawn no longer unless that is asked for: only a derivative is read beside it.
bool HidesSource(DerivedKind kind);

/// The source's name with the kind's suffix ("Rate_INT", "_SUM", "_HIS", "_DIF"), and "_" and the lowest number from 1 where
/// the graph has that already.
std::string DerivedName(const TxyGraph& graph, const TSeries& source, DerivedKind kind);

/// Computes the DataSet from one that the graph holds and adds it, its columns named for the axes' titles. A second Y axis
/// that it is drawn against is shown. Tells what became of the source's errors. Throws Error when the name cannot be had, or when
/// the source's regression, whose derivative is asked for, fails; the graph is then as it was.
MadeSeries AddDerived(TxyGraph& graph, TSeries& source, DerivedKind kind,
                      const DerivedOptions& options);

}  // namespace tarnwick
