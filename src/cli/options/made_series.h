// What all commands have in common that make a DataSet of what a graph holds: FILE, --name, --axis, -o. Knows nothing of what is
// computed.
#pragma once

#include <functional>
#include <string>

#include "cli/options/input_graph.h"
#include "cli/options/save_output.h"
#include "results/new_series.h"

namespace tarnwick::cli {

struct MadeSeriesArguments {
  InputArguments input;
  SaveArguments save;
  std::string name;             ///< empty: the one that the computation offers
  std::string axis = "second";  ///< or "main"

  bool show_source = false;  ///< of commands that draw it no longer

  AxisId Axis() const { return axis == "main" ? AxisId::Y : AxisId::Y2; }
  NewSeries Wanted(const std::string& offered) const {
    return {name.empty() ? offered : name, Axis()};
  }
};

void AddMadeSeries(Command& command, MadeSeriesArguments& arguments);

/// --show-source, of a command that draws the DataSet it computes from no longer, since `why`.
void AddShowSource(Command& command, MadeSeriesArguments& arguments, const std::string& why);
/// Tells that it is no longer drawn, where the graph is saved.
void TellHidden(const MadeSeriesArguments& arguments, const TSeries& source, Output& output);

/// Reads the graph, has the DataSet added to it, and prints that one's points or saves the graph.
void RunMadeSeries(const MadeSeriesArguments& arguments, Output& output,
                   const std::function<const TSeries&(TxyGraph&)>& make);

}  // namespace tarnwick::cli
