#include "cli/options/save_output.h"

#include <filesystem>

#include "base/error.h"
#include "base/text_encoding.h"
#include "cli/options/command.h"
#include "graph/files/data_text_file.h"
#include "graph/files/file_kinds.h"
#include "graph/files/graph_file.h"

namespace tarnwick::cli {
namespace {

bool HoldsData(const FileKind& kind) {
  return kind.write && kind.needs != FileNeeds::Size;
}

const FileKind& KindToSave(const std::string& file) {
  const FileKind& kind = KindOf(file);
  if (HoldsData(kind)) return kind;
  const std::string ending = LowerAscii(std::filesystem::path(file).extension().string());
  throw Error("no kind of file ends in \"" + ending + "\"; " + WrittenEndings(&HoldsData) +
              " do: " + file);
}

}  // namespace

void AddSave(Command& command, SaveArguments& arguments) {
  command.Add("-o,--output", arguments.file, "Where the result is written, its kind by extension");
  command.AddFlag("--overwrite", arguments.overwrite, "Replace the file if it exists");
}

bool KeepsLook(const SaveArguments& arguments) {
  if (arguments.file == "-") return arguments.text_mode;
  return arguments.Wanted() && HoldsSections(KindOf(arguments.file));
}

void CheckOverwrite(const SaveArguments& arguments) {
  std::error_code ignored;  // what cannot be looked at will fail with its reason when it is written
  if (arguments.file != "-" && !arguments.overwrite &&
      std::filesystem::is_regular_file(arguments.file, ignored)) {
    throw Error("File " + arguments.file + " exists. Overwrite? (--overwrite does)");
  }
}

void CheckSave(const SaveArguments& arguments) {
  if (arguments.file != "-") KindToSave(arguments.file);
  CheckOverwrite(arguments);
}

void SaveOutput(const TxyGraph& graph, std::size_t series, const SaveArguments& arguments,
                Output& output) {
  CheckOverwrite(arguments);
  if (arguments.file == "-") {
    if (output.IsJson()) throw UsageError("standard output cannot hold the data and a document");
    output.Text() << (arguments.text_mode ? EncodeGraph(graph, {WithPoints::Yes, arguments.Mode()})
                                          : CsvText(graph));
    if (!arguments.text_mode) output.Note(LeftOutOfTable(graph));
    output.Flush();
    return;
  }
  const FileKind& kind = KindToSave(arguments.file);
  kind.write(arguments.file, {.graph = graph, .series = series, .mode = arguments.Mode()});
  if (kind.leaves_out) output.Note(kind.leaves_out(graph));
}

void PrintSaved(const SaveArguments& arguments, Output& output) {
  if (output.IsJson()) output.Document({{"file", arguments.file}});
}

}  // namespace tarnwick::cli
