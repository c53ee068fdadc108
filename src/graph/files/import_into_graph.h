// Text and binary data files into a graph: the road of one file, composed. Knows the import and the graph; knows no
// window.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "data/import/import_file.h"
#include "data/import/import_told.h"

namespace tarnwick {

class TSeries;
class TxyGraph;
struct ImportSource;

/// What came into a graph, and what there is to tell of it.
struct ImportedData {
  std::vector<LoadReport> reports;  ///< one per DataSet added
  ImportTold told;
};

/// Adds the DataSets that `path` holds to the graph, sets up a time axis where X (Y) holds dates, makes the first new
/// DataSet current when the graph had none, and rescales. Throws what ImportFile throws; the graph is then as it was.
ImportedData ImportIntoGraph(TxyGraph& graph, const std::filesystem::path& path,
                             const ImportOptions& options = {}, const LoadOptions& load = {});

/// The same for a source that is opened already.
ImportedData ImportIntoGraph(TxyGraph& graph, ImportSource source, const ImportOptions& options,
                             const LoadOptions& load);

/// The same for a text that is no file's, as a spreadsheet puts it on the clipboard: its DataSets are manual ones with
/// every row. `name` is for messages.
ImportedData ImportTextIntoGraph(TxyGraph& graph, std::string text, const std::string& name,
                                 const LoadOptions& load = {});

/// That the DataSets' lines are broken at gaps of what was read; nothing where none is.
ImportTold TellGaps(std::span<TSeries* const> all);

}  // namespace tarnwick
