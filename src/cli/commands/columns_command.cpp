#include <memory>

#include "base/number_text.h"
#include "cli/commands/commands.h"
#include "cli/options/input_graph.h"
#include "cli/output/terminal_progress.h"
#include "data/import/import_file.h"
#include "data/import/import_told.h"
#include "data/import/load_source.h"

namespace tarnwick::cli {
namespace {

Json ColumnJson(const ColumnSummary& column) {
  Json values = Json::Array();
  for (const std::optional<double>& value : column.values) values.Append(JsonNumber(value));
  return {{"index", column.index}, {"name", column.name}, {"values", std::move(values)}};
}

void PrintColumnsText(const SourceSummary& summary, std::ostream& out) {
  out << "rows: " << summary.rows << "\nskipped: " << summary.skipped
      << "\nline of names: " << (summary.names_line ? "yes" : "no") << '\n';
  for (const ColumnSummary& column : summary.columns) {
    out << '#' << column.index << ' ' << column.name << ':';
    for (const std::optional<double>& value : column.values)
      out << ' ' << (value ? ShortestText(*value) : "-");
    out << '\n';
  }
}

ImportTold Told(const SourceSummary& summary) {
  ImportTold told = TellImport({}, {}, summary.notes);
  if (summary.skipped > 0) {
    told.insert(told.begin(), {ToldAbout::Skipping, "in " + Counted(summary.skipped, "row") +
                                                        " some column is empty or no number"});
  }
  return told;
}

void RunColumns(const InputArguments& arguments, Output& output) {
  if (IsGraphFile(arguments.file))
    throw UsageError("columns reads data files; info reads " + arguments.file);
  TerminalProgress progress;
  const SourceSummary summary = SummarizeOpened(OpenData(arguments, progress), progress);
  output.Note(NoteOf(Told(summary)));
  if (!output.IsJson()) {
    PrintColumnsText(summary, output.Text());
    return;
  }
  Json columns = Json::Array();
  for (const ColumnSummary& column : summary.columns) columns.Append(ColumnJson(column));
  output.Document({{"rows", summary.rows},
                   {"skipped", summary.skipped},
                   {"names_line", summary.names_line},
                   {"columns", std::move(columns)}});
}

}  // namespace

void DeclareColumns(Command& command, Action& action) {
  auto arguments = std::make_shared<InputArguments>();
  AddInput(command, *arguments);
  OnCommand(command, action, arguments, &RunColumns);
}

}  // namespace tarnwick::cli
