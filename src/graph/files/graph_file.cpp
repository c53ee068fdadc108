#include "graph/files/graph_file.h"

#include <utility>

#include "base/error.h"
#include "base/mapped_file.h"
#include "base/whole_file.h"
#include "data/import/source_place.h"
#include "graph/files/graph_file_reader.h"
#include "graph/files/graph_file_writer.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

/// Writes a file from the pieces that `write` hands to its sink.
template <class Write>
void SavePieces(const std::filesystem::path& path, Write&& write) {
  WholeFile file(path);
  write([&file](std::string& bytes) {
    file.Write(bytes);
    bytes.clear();
  });
  file.Commit();
}

void TellFolder(GraphState& state, const std::string& folder) {
  for (SeriesState& series : state.series) {
    TDSInfo& source = series.data.settings.source;
    if (!source.RelativeSource.empty()) source.GraphFolder = folder;
  }
  for (auto& child : state.children) {
    GraphState told = *child;
    TellFolder(told, folder);
    child = std::make_shared<const GraphState>(std::move(told));
  }
}

GraphState LoadState(const std::filesystem::path& path) {
  const MappedFile file(path);
  GraphState state = ReadGraphState(file.Bytes(), path.string());
  TellFolder(state, FolderOfFile(path).string());
  return state;
}

std::unique_ptr<TxyGraph> MakeGraph(const GraphState& state) {
  auto graph = std::make_unique<TxyGraph>();
  graph->SetState(state);
  return graph;
}

}  // namespace

std::string EncodeGraph(const TxyGraph& graph, const GraphFileOptions& options) {
  std::string whole;
  WriteGraphPieces(graph, options, [&whole](std::string& bytes) {
    whole += bytes;
    bytes.clear();
  });
  return whole;
}

std::unique_ptr<TxyGraph> DecodeGraph(std::string_view bytes, std::string_view file_name) {
  return MakeGraph(ReadGraphState(bytes, file_name));
}

void SaveGraph(const TxyGraph& graph, const std::filesystem::path& path,
               const GraphFileOptions& options) {
  GraphFileOptions placed = options;
  placed.folder = FolderOfFile(path);
  SavePieces(path, [&](const ByteSink& sink) { WriteGraphPieces(graph, placed, sink); });
}

std::unique_ptr<TxyGraph> LoadGraph(const std::filesystem::path& path) {
  return MakeGraph(LoadState(path));
}

void SaveDataSetFile(const TxyGraph& graph, std::size_t index, const std::filesystem::path& path,
                     WriterMode mode) {
  SavePieces(path, [&](const ByteSink& sink) {
    WriteDataSetPieces(graph, index, {WithPoints::Yes, mode, FolderOfFile(path)}, sink);
  });
}

void LoadDataSetFile(const std::filesystem::path& path, TxyGraph& target) {
  GraphState state = LoadState(path);
  if (state.series.empty()) throw FileError("The file holds no DataSet", path.string(), "");
  const SeriesState& loaded = state.series.front();
  target.BeginUpdate();
  TSeries* series = target.CurrentSeries();
  if (series == nullptr) {
    const auto index = static_cast<std::int32_t>(target.SeriesCount());
    series = &target.AddSeries(std::make_unique<TSeries>());
    target.SetCurrentSeriesIndex(index);
  }
  series->SetStyle(loaded.style);
  series->SetState(loaded.data);
  target.EndUpdate();
}

}  // namespace tarnwick
