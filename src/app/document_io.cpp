#include "app/document_io.h"

#include <algorithm>
#include <vector>

#include "base/error.h"
#include "base/text_encoding.h"
#include "data/loader.h"
#include "graph/data_text_file.h"
#include "graph/graph_file.h"
#include "graph/import_into_graph.h"
#include "graph/picture_export.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

/// What the reports say, each text once: DataSets of one file mostly share it.
std::string Summary(const std::vector<LoadReport>& reports) {
  std::vector<std::string> texts;
  for (const LoadReport& report : reports) {
    if (!report.loaded) continue;
    const std::string text = report.Message();
    if (std::find(texts.begin(), texts.end(), text) == texts.end()) texts.push_back(text);
  }
  std::string summary;
  for (const std::string& text : texts) summary += (summary.empty() ? "" : "; ") + text;
  return summary;
}

bool WasCancelled(const std::vector<LoadReport>& reports) {
  return std::any_of(reports.begin(), reports.end(),
                     [](const LoadReport& report) { return report.cancelled; });
}

}  // namespace

std::string LowerExtension(const std::filesystem::path& path) {
  return LowerAscii(path.extension().string());
}

ReadResult ReadGraph(const std::filesystem::path& path) {
  return {LoadGraph(path)->State(), {}};
}

ReadResult ReadData(const GraphState& into, const std::filesystem::path& path, Progress& progress) {
  TxyGraph graph;
  graph.SetState(into);
  LoadOptions load;
  load.progress = &progress;
  const std::vector<LoadReport> reports = ImportIntoGraph(graph, path, {}, load);
  return {graph.State(), Summary(reports), WasCancelled(reports) || progress.Cancelled()};
}

ReadResult ReadDataSet(const GraphState& into, const std::filesystem::path& path) {
  TxyGraph graph;
  graph.SetState(into);
  LoadDataSetFile(path, graph);
  return {graph.State(), {}};
}

ReadResult Refreshed(const GraphState& state, const std::vector<std::size_t>& which,
                     Progress& progress) {
  TxyGraph graph;
  graph.SetState(state);
  std::vector<TDataSeries*> all;
  for (const std::size_t index : which) all.push_back(&graph.Series(index));
  LoadOptions load;
  load.progress = &progress;
  const std::vector<LoadReport> reports = RefreshAll(all, load);
  return {graph.State(), Summary(reports), WasCancelled(reports) || progress.Cancelled()};
}

void WriteGraph(const GraphState& state, const std::filesystem::path& path) {
  TxyGraph graph;
  graph.SetState(state);
  GraphFileOptions options;
  options.points = LowerExtension(path) == ".ttp" ? WithPoints::No : WithPoints::Yes;
  SaveGraph(graph, path, options);
}

void WriteDataText(const GraphState& state, const std::filesystem::path& path) {
  TxyGraph graph;
  graph.SetState(state);
  SaveDataText(graph, path);
}

void WriteDataSet(const GraphState& state, const std::filesystem::path& path) {
  TxyGraph graph;
  graph.SetState(state);
  if (!graph.CurrentSeries()) throw Error("No DataSet found!");
  SaveDataSetFile(graph, static_cast<std::size_t>(graph.CurrentSeriesIndex()), path);
}

void WritePictureOf(const GraphState& state, const std::filesystem::path& path, int width,
                    int height) {
  TxyGraph graph;
  graph.Resize(width, height);
  graph.SetState(state);
  PictureOptions options;
  options.width = width;
  options.height = height;
  WritePicture(graph, path, options);
}

}  // namespace tarnwick
