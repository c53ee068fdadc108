#include "cli/options/input_graph.h"

#include <QCoreApplication>
#include <filesystem>
#include <optional>
#include <vector>
#include "data/import/open_source.h"

#include "base/error.h"
#include "base/number_text.h"
#include "cli/options/command.h"
#include "cli/options/option_parser.h"
#include "cli/options/save_output.h"
#include "cli/output/headless_gui.h"
#include "cli/output/output.h"
#include "cli/output/terminal_progress.h"
#include "graph/axes/plot_metrics.h"
#include "graph/files/file_kinds.h"
#include "graph/files/graph_file.h"
#include "graph/files/import_into_graph.h"
#include "graph/layout/automatic_legend.h"
#include "graph/layout/finished_look.h"
#include "graph/layout/second_quantity.h"
#include "graph/series_of_whole.h"
#include "sources/all_source_kinds.h"
#include "sources/database/database_source.h"
#include "sources/links/link_source.h"
#include "sources/links/link_text.h"

namespace tarnwick::cli {
namespace {

bool NamesDatabase(const InputArguments& arguments) {
  const ImportArguments& import = arguments.import;
  return !import.database.empty() || !import.table.empty() || !import.query.empty();
}

/// --table and --query alone take FILE as an SQLite data base.
DatabasePlace PlaceNamed(const InputArguments& arguments) {
  const ImportArguments& import = arguments.import;
  return ReadOption([&] {
    DatabasePlace place =
        import.database.empty() ? PlaceOfFile(arguments.file) : ParseDatabaseUrl(import.database);
    place.table = import.table;
    place.query = import.query;
    if (!place.query.empty()) RequireReadingQuery(place.query);
    return place;
  });
}

bool NamesLinks(const InputArguments& arguments) {
  return !arguments.import.links.empty();
}

void RequireOneSource(const InputArguments& arguments) {
  const bool database = !arguments.import.database.empty();
  const bool links = NamesLinks(arguments);
  if (arguments.file.empty() && !database && !links) throw UsageError("FILE is required");
  if (!arguments.file.empty() && database)
    throw UsageError("--database stands instead of FILE: only one of them is read");
  if (links && (!arguments.file.empty() || NamesDatabase(arguments)))
    throw UsageError("--link stands instead of FILE or a data base: only one of them is read");
}

/// What the title of a plot without one of its own says.
std::string TitleOf(const TxyGraph& graph, const InputArguments& arguments) {
  if (NamesDatabase(arguments) && graph.SeriesCount() > 0)
    return TitleOfTable(graph.Series(0).Source());
  if (NamesLinks(arguments)) return arguments.import.links;
  return arguments.file == "-" ? std::string() : NameOfData(arguments.file);
}

/// The bus speaks to programs with a loop of events only.
class BusIsHeard {
 public:
  BusIsHeard() {
    if (QCoreApplication::instance() == nullptr) loop_.emplace();
  }

 private:
  std::optional<HeadlessGui> loop_;
};

ImportSource AskOverTheBus(const std::string& links, const ImportOptions& options,
                           Progress& progress) {
  ReadOption([&] { return ReadLinkList(links); });
  const BusIsHeard heard;
  return OpenLinks(links, options, progress);
}

/// A server may want a password that the key store, which is on the bus, keeps.
ImportSource AskDatabase(const DatabasePlace& place, const ImportOptions& options,
                         Progress& progress) {
  std::optional<BusIsHeard> heard;
  if (!place.Server().empty()) heard.emplace();
  return OpenDatabase(place, options, progress);
}

void RefuseArrays(FileToExamine file, ImportSource&) {
  throw FileError(
      "--array is for HDF5 and NetCDF files; --sheet and --range say what to read of a workbook",
      file.name, "");
}

void RefuseSheets(FileToExamine file, ImportSource&) {
  throw FileError("--sheet and --range are for workbooks; --array says what to read of this file",
                  file.name, "");
}

/// A part that was asked for is one of a certain kind of file.
std::vector<SourceKind> KindsFor(const ImportArguments& import) {
  const SourceKinds all = AllSourceKinds();
  std::vector<SourceKind> kinds(all.begin(), all.end());
  const bool sheets = !import.sheet.empty() || !import.range.empty();
  for (SourceKind& kind : kinds) {
    if (kind.kind == DataSourceKind::Spreadsheet && !import.arrays.empty())
      kind.examine = &RefuseArrays;
    if (kind.kind == DataSourceKind::Arrays && sheets) kind.examine = &RefuseSheets;
  }
  return kinds;
}

InputGraph ImportData(const InputArguments& arguments, Output& output) {
  InputGraph input;
  input.from_data = true;
  input.graph = std::make_unique<TxyGraph>();
  TerminalProgress progress;
  LoadOptions load;
  load.progress = &progress;
  const std::vector<SourceKind> kinds = KindsFor(arguments.import);
  load.kinds = kinds;
  const ImportOptions options = ToImportOptions(arguments.import);
  ImportedData imported =
      arguments.file.empty() || NamesDatabase(arguments)
          ? ImportIntoGraph(*input.graph, OpenData(arguments, progress), options, load)
          : ImportIntoGraph(*input.graph, arguments.file, options, load);
  input.told = std::move(imported.told);
  input.reports = std::move(imported.reports);
  output.Note(NoteOf(input.told));
  return input;
}

}  // namespace

std::string NoteOf(ImportTold told) {
  for (ToldClause& clause : told) {
    if (clause.about == ToldAbout::Sampling) clause.option = "--every 1 reads all";
    if (clause.about == ToldAbout::Errors)
      clause.option = "--y-error none and --x-error none leave them out";
    if (clause.about == ToldAbout::Replacing) clause.option = "--duplicates keeps all";
    if (!clause.option.empty()) clause.text += " (" + clause.option + ')';
  }
  return Sentence(told);
}

void AddInput(Command& command, InputArguments& arguments) {
  command.Add("FILE", arguments.file,
              "Graph, template, DataSet file or data; - reads standard input");
  AddImportOptions(command, arguments.import);
}

bool IsGraphFile(const std::string& file) {
  return HoldsSections(KindToRead(file));
}

ImportSource OpenData(const InputArguments& arguments, Progress& progress) {
  RequireOneSource(arguments);
  const ImportOptions options = ToImportOptions(arguments.import);
  if (NamesLinks(arguments)) return AskOverTheBus(arguments.import.links, options, progress);
  return NamesDatabase(arguments)
             ? AskDatabase(PlaceNamed(arguments), options, progress)
             : OpenImportSource(arguments.file, options, KindsFor(arguments.import), progress);
}

InputGraph ReadInput(const InputArguments& arguments, Output& output) {
  RequireOneSource(arguments);
  if (NamesDatabase(arguments) && IsGraphFile(arguments.file))
    throw UsageError("--table and --query read data bases, not " + arguments.file);
  if (!IsGraphFile(arguments.file)) return ImportData(arguments, output);
  InputGraph input;
  input.graph = LoadGraph(arguments.file);
  const std::vector<TSeries*> whole = SeriesOfWhole(*input.graph);
  input.told = TellSomeRows(std::vector<const TDataSeries*>(whole.begin(), whole.end()));
  output.Note(Sentence(input.told));
  return input;
}

InputGraph ReadInput(const InputArguments& arguments, const SaveArguments& save, Output& output,
                     const PictureSize& size) {
  InputGraph input = ReadInput(arguments, output);
  if (input.from_data && KeepsLook(save)) {
    const HeadlessGui gui;
    GiveLook(input, arguments, QSizeF(size.width, size.height), output);
  }
  return input;
}

void GiveLook(InputGraph& input, const InputArguments& arguments, QSizeF size, Output& output) {
  if (!input.from_data) return SettleLegend(*input.graph, size, TextMetrics());
  FinishedLookOptions look;
  if (const std::string title = TitleOf(*input.graph, arguments); !title.empty())
    look.title = title;
  SeparateQuantities(*input.graph);
  if (const std::string flat = FlatLinesText(*input.graph); !flat.empty())
    output.Note(Sentence({{ToldAbout::Guessing, flat}}));
  ApplyFinishedLook(*input.graph, size, TextMetrics(), look);
}

void AddDataset(Command& command, std::string& dataset) {
  command.Add("--dataset", dataset, "DataSet by name, or by number from 1").NotEmpty();
}

std::size_t ChooseSeries(TxyGraph& graph, const std::string& dataset) {
  if (graph.SeriesCount() == 0) throw Error("No DataSet Found!");
  if (dataset.empty()) {
    const std::int32_t current = graph.GetAppearance().current_series_index;
    const bool usable = current >= 0 && static_cast<std::size_t>(current) < graph.SeriesCount();
    return usable ? static_cast<std::size_t>(current) : 0;
  }
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    if (graph.Series(i).SeriesName() == dataset) return i;
  }
  const std::optional<std::int32_t> number = ParseInteger(dataset);
  if (number && *number >= 1 && static_cast<std::size_t>(*number) <= graph.SeriesCount()) {
    return static_cast<std::size_t>(*number) - 1;
  }
  throw Error("there is no DataSet \"" + dataset + "\"");
}

std::size_t ChooseToldSeries(TxyGraph& graph, const std::string& dataset, Output& output) {
  const std::size_t index = ChooseSeries(graph, dataset);
  if (dataset.empty() && graph.SeriesCount() > 1) {
    output.Note("of \"" + graph.Series(index).SeriesName() + "\", DataSet " +
                std::to_string(index + 1) + " of " + std::to_string(graph.SeriesCount()) +
                " (--dataset names another).");
  }
  return index;
}

}  // namespace tarnwick::cli
