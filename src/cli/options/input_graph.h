// FILE on the command line: a graph, template or DataSet file, or a text data file with its import options.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/options/import_options.h"
#include "cli/options/size_option.h"
#include "data/columns/import_source.h"
#include "data/import/import_told.h"
#include "data/import/load_report.h"
#include "graph/xy_graph.h"

namespace tarnwick::cli {

class Command;
class Output;
struct SaveArguments;

struct InputArguments {
  std::string file;
  ImportArguments import;
};

struct InputGraph {
  std::unique_ptr<TxyGraph> graph;
  std::vector<LoadReport> reports;  ///< one per DataSet of a text file, else empty
  ImportTold told;                  ///< what came of reading it
  bool from_data = false;           ///< read from a text or binary data file
};

/// The sentence with the options that have it otherwise.
std::string NoteOf(ImportTold told);

/// Declares the positional FILE and the import options.
void AddInput(Command& command, InputArguments& arguments);

/// True for graph files, templates and DataSet files.
bool IsGraphFile(const std::string& file);

/// Opens the data that are no graph: a file, or the data base that the options name. Throws UsageError when they name
/// neither or both.
ImportSource OpenData(const InputArguments& arguments, Progress& progress);

/// Notes in `output` what was skipped, replaced, joined or guessed.
InputGraph ReadInput(const InputArguments& arguments, Output& output);

/// The same for a command that saves what it made: in a file that keeps a look, data get theirs, for a picture of `size`.
InputGraph ReadInput(const InputArguments& arguments, const SaveArguments& save, Output& output,
                     const PictureSize& size = {});

/// Gives a graph that came from data alone, which has no look of its own, the one that the desktop program gives it in a
/// window of this size; does nothing to others. Needs a HeadlessGui.
void GiveLook(InputGraph& input, const InputArguments& arguments, QSizeF size, Output& output);

/// Declares --dataset.
void AddDataset(Command& command, std::string& dataset);

/// The DataSet by name, or by number from 1; for an empty text the graph's current one, else the first. Throws Error.
std::size_t ChooseSeries(TxyGraph& graph, const std::string& dataset);

/// The same for a command whose answer is of this DataSet alone: notes which it is where the text is empty and the graph has
/// several.
std::size_t ChooseToldSeries(TxyGraph& graph, const std::string& dataset, Output& output);

}  // namespace tarnwick::cli
