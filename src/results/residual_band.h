// Where residuals stand in the picture of their data: a band of its own on the second Y axis. Knows the graph and its axes;
// no fit and no window.
#pragma once

namespace tarnwick {

class TSeries;
class TxyGraph;

/// Scales the second Y axis so that `residuals`, which the graph holds, lie around zero in the lowest part of the plot, or in
/// the highest where that is the one without data. Where both have data, the first Y axis gets room below. Nothing happens
/// when another DataSet has the second axis, or when no residual differs from zero. The graph's scales must be those of the
/// data without the residuals.
void GiveResidualsABand(TxyGraph& graph, const TSeries& residuals);

}  // namespace tarnwick
