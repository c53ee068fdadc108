#include "cli/options/save_output.h"

#include <array>
#include <filesystem>
#include <vector>

#include "base/error.h"
#include "base/text_encoding.h"
#include "base/whole_file.h"
#include "cli/options/command.h"
#include "graph/files/data_text_file.h"
#include "graph/files/graph_file.h"

namespace tarnwick::cli {
namespace {

struct Target {
  const TxyGraph& graph;
  std::size_t series;
  const std::string& file;
  WriterMode mode;
};

std::string CsvText(const TxyGraph& graph) {
  std::vector<const TDataSeries*> all;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) all.push_back(&graph.Series(i));
  DataTextOptions options;
  options.separators = ",";
  options.x_tolerance = 0;
  if (!all.empty()) options.x_heading = all.front()->Source().XDataColumn;
  return DataText(all, options);
}

void SaveGraphKind(const Target& target) {
  SaveGraph(target.graph, target.file, {WithPoints::Yes, target.mode});
}
void SaveTemplateKind(const Target& target) {
  SaveGraph(target.graph, target.file, {WithPoints::No, target.mode});
}
void SaveDataSetKind(const Target& target) {
  if (target.series >= target.graph.SeriesCount()) throw Error("No DataSet found!");
  SaveDataSetFile(target.graph, target.series, target.file, target.mode);
}
void SaveTextKind(const Target& target) {
  SaveDataText(target.graph, target.file);
}
void SaveCsvKind(const Target& target) {
  WriteWholeFile(target.file, CsvText(target.graph));
}

struct Kind {
  std::string_view extension;
  void (*save)(const Target&);
};
constexpr std::array<Kind, 5> kKinds = {{{".tgr", &SaveGraphKind},
                                         {".ttp", &SaveTemplateKind},
                                         {".tds", &SaveDataSetKind},
                                         {".dat", &SaveTextKind},
                                         {".csv", &SaveCsvKind}}};

const Kind& KindOf(const std::string& file) {
  const std::string extension = LowerAscii(std::filesystem::path(file).extension().string());
  for (const Kind& kind : kKinds) {
    if (kind.extension == extension) return kind;
  }
  throw Error("no kind of file ends in \"" + extension +
              "\"; .tgr, .ttp, .tds, .dat and .csv do: " + file);
}

}  // namespace

void AddSave(Command& command, SaveArguments& arguments) {
  command.Add("-o,--output", arguments.file, "Where the result is written, its kind by extension");
  command.AddFlag("--overwrite", arguments.overwrite, "Replace the file if it exists");
}

void CheckOverwrite(const SaveArguments& arguments) {
  std::error_code ignored;  // what cannot be looked at will fail with its reason when it is written
  if (arguments.file != "-" && !arguments.overwrite &&
      std::filesystem::is_regular_file(arguments.file, ignored)) {
    throw Error("File " + arguments.file + " exists. Overwrite? (--overwrite does)");
  }
}

void CheckSave(const SaveArguments& arguments) {
  if (arguments.file != "-") KindOf(arguments.file);
  CheckOverwrite(arguments);
}

void SaveOutput(const TxyGraph& graph, std::size_t series, const SaveArguments& arguments,
                Output& output, WriterMode mode) {
  CheckOverwrite(arguments);
  if (arguments.file == "-") {
    if (output.IsJson()) throw UsageError("standard output cannot hold the data and a document");
    output.Text() << (mode == WriterMode::Text ? EncodeGraph(graph, {WithPoints::Yes, mode})
                                               : CsvText(graph));
    output.Flush();
    return;
  }
  KindOf(arguments.file).save({graph, series, arguments.file, mode});
}

void PrintSaved(const SaveArguments& arguments, Output& output) {
  if (output.IsJson()) output.Document({{"file", arguments.file}});
}

}  // namespace tarnwick::cli
