// Files into and out of a graph's state: the one place where documents meet the file formats. Plain functions on values,
// fit for a worker thread; they know no document and ask nothing.
#pragma once

#include <QSize>
#include <filesystem>
#include <string>
#include <vector>

#include "base/progress.h"
#include "data/ds_info.h"
#include "data/import/import_told.h"
#include "desk/document/filed_points.h"
#include "graph/graph_state.h"

namespace tarnwick {

struct ImportOptions;

/// A state read, and what there is to say about the reading.
struct ReadResult {
  GraphState state;
  ImportTold told =
      {};  ///< what was decided or left out; what was read again is told by its reports
  bool cancelled = false;
  std::vector<PointsOfFile> points = {};  ///< those that came from files
  std::string note = {};                  ///< a remark in passing; may be empty
};

/// Told is which of its DataSets hold only some of their sources' rows. Throws FileError.
ReadResult ReadGraph(const std::filesystem::path& path);
/// `into` with the DataSets of a text or binary data file added. Throws FileError.
ReadResult ReadData(const GraphState& into, const std::filesystem::path& path,
                    const ImportOptions& options, Progress& progress);
/// `into` with the DataSets of a text that is no file's added; `name` is for messages. Throws FileError.
ReadResult ReadDataText(const GraphState& into, const std::string& text, const std::string& name,
                        Progress& progress);
/// `into` with the DataSets of a place that is no file added, of which only kind and place are told. Throws Error.
ReadResult ReadPlaceInto(const GraphState& into, const TDSInfo& place, Progress& progress);
/// `into`, a graph of that size, with another one pasted into it. Throws Error.
ReadResult PastedGraph(const GraphState& into, const GraphState& pasted, QSize size);
/// `into` with its current DataSet (or a first one) replaced by that of a DataSet file. Throws FileError.
ReadResult ReadDataSet(const GraphState& into, const std::filesystem::path& path);
/// `state` with the DataSets at these places of SeriesOfWhole read again, where they have a source. Throws Error where one has
/// not its columns any more.
ReadResult Refreshed(const GraphState& state, const std::vector<std::size_t>& which,
                     Progress& progress);

/// How one of the DataSets of SeriesOfWhole, by its place there, is read from now on.
struct NewSource {
  std::size_t place = 0;
  TDSInfo source;
};
/// `state` with these DataSets read by other descriptions, and for each of `columns` a DataSet more whose Y that is, beside the
/// first of them and read like it. A DataSet named after its column is named after the new one. Throws Error, also for columns
/// that are not there and for a column expression that cannot be used.
ReadResult ReadBy(const GraphState& state, const std::vector<NewSource>& sources,
                  const std::vector<std::string>& columns, Progress& progress);

/// What came of reading several graphs again together.
struct RefreshedGraphs {
  std::vector<ReadResult> graphs = {};     ///< in the order of their states
  std::vector<std::string> troubles = {};  ///< one for each source that cannot be read
  bool cancelled = false;                  ///< then there are no graphs
};
/// All DataSets of the graphs read again where they have a source, each source once for all of them. One that cannot be
/// read leaves its DataSets as they are.
RefreshedGraphs RefreshedTogether(const std::vector<GraphState>& states, Progress& progress);

/// `state` with the DataSets that show only some of the rows of their sources read again, from now on with every row.
ReadResult WithAllRows(const GraphState& state, Progress& progress);

/// Writes what a file of this name keeps of a graph; a DataSet file keeps the current one. Throws FileError, and Error "No
/// DataSet found!".
void WriteByKind(const GraphState& state, const std::filesystem::path& path);

}  // namespace tarnwick
