#include "desk/document/document_io.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "base/error.h"
#include "data/columns/import_source.h"
#include "data/import/loader.h"
#include "data/import/whole_data.h"
#include "desk/document/coarse_first.h"
#include "desk/document/series_like.h"
#include "graph/edit/paste_edit.h"
#include "graph/files/file_kinds.h"
#include "graph/files/graph_file.h"
#include "graph/files/import_into_graph.h"
#include "graph/files/waiting_series.h"
#include "graph/series_of_whole.h"
#include "graph/xy_graph.h"
#include "sources/all_source_kinds.h"
#include "sources/stream_kinds.h"

namespace tarnwick {
namespace {

LoadOptions Loading(Progress& progress) {
  LoadOptions load;
  load.progress = &progress;
  load.kinds = AllSourceKinds(FirstPicture::Coarse);
  return load;
}

bool WasCancelled(const std::vector<LoadReport>& reports) {
  return std::any_of(reports.begin(), reports.end(),
                     [](const LoadReport& report) { return report.cancelled; });
}

/// The points of a DataSet as those of its source; nothing for points of one's own.
void AddPoints(std::vector<PointsOfFile>& points, const TDataSeries& series,
               const LoadReport& report) {
  const TDSInfo& source = series.Source();
  if (source.DataSource == DataSourceKind::Manual) return;
  points.push_back({source.DatasourceInfo, series.Points(), report});
}

using AddData = std::function<ImportedData(TxyGraph&, const LoadOptions&)>;

ReadResult WithDataAdded(const GraphState& into, Progress& progress, const AddData& add) {
  TxyGraph graph;
  graph.SetState(into);
  const LoadOptions load = Loading(progress);
  const std::size_t before = graph.SeriesCount();
  ImportedData added = add(graph, load);
  std::vector<TDataSeries*> read;
  for (std::size_t i = before; i < graph.SeriesCount(); ++i) read.push_back(&graph.Series(i));
  if (WasCancelled(added.reports) || progress.Cancelled() || !SettleCoarse(read, progress)) {
    return {into, {}, true};
  }
  ReadResult result{graph.State(), std::move(added.told)};
  for (std::size_t i = before; i < graph.SeriesCount(); ++i) {
    AddPoints(result.points, graph.Series(i), added.reports.at(i - before));
  }
  return result;
}

/// Puts a DataSet to the others of its source, where it has one.
void AddToSource(TDataSeries& series, std::vector<std::vector<TDataSeries*>>& sources) {
  const TDSInfo& info = series.Source();
  if (info.DataSource == DataSourceKind::Manual) return;
  const auto same = std::ranges::find_if(sources, [&](const std::vector<TDataSeries*>& source) {
    const TDSInfo& other = source.front()->Source();
    return other.DataSource == info.DataSource && other.DatasourceInfo == info.DatasourceInfo &&
           other.RelativeSource == info.RelativeSource;
  });
  if (same == sources.end()) {
    sources.push_back({&series});
  } else {
    same->push_back(&series);
  }
}

/// What reading these of its DataSets again made of a graph.
ReadResult ResultOf(TxyGraph& graph, const std::map<const TDataSeries*, LoadReport>& reports) {
  ReadResult result{graph.State()};
  for (const TSeries* const series : SeriesOfWhole(graph)) {
    const auto report = reports.find(series);
    if (report != reports.end() && report->second.loaded)
      AddPoints(result.points, *series, report->second);
  }
  return result;
}

/// Each once: two lists of links may fail by the same one, many DataSets for the X that they share.
void AddTrouble(const std::string& trouble, std::vector<std::string>& troubles) {
  if (!trouble.empty() && std::ranges::find(troubles, trouble) == troubles.end())
    troubles.push_back(trouble);
}

/// Points that a source has none in place of stay; answers why.
std::string KeepWhereEmptied(TDataSeries& series, const DataState& before, LoadReport& read) {
  if (!read.loaded || read.points > 0 || before.points.Empty()) return {};
  read.loaded = false;
  const std::string place = series.Source().DatasourceInfo;
  series.SetState(before);
  return FileError("No row gives a point any more, the points of before stay", place,
                   read.SkippedText())
      .what();
}

/// `graph` with these DataSets of it read again. Throws Error where one of them cannot be: then none is.
ReadResult ReadAgain(TxyGraph& graph, const std::vector<TDataSeries*>& all, Progress& progress) {
  const LoadOptions load = Loading(progress);
  const std::vector<LoadReport> read = RefreshAll(all, load);
  for (const LoadReport& report : read) {
    if (!report.absent_column.empty()) throw Error(report.absent_column);
  }
  if (WasCancelled(read) || progress.Cancelled() || !SettleCoarse(all, progress)) {
    return {{}, {}, true};
  }
  std::map<const TDataSeries*, LoadReport> reports;
  for (std::size_t i = 0; i < all.size(); ++i) reports[all[i]] = read[i];
  return ResultOf(graph, reports);
}

/// Describes another source, or the same one otherwise. The name and the rule of errors follow the columns.
void TakeSource(TSeries& series, const TDSInfo& source) {
  const TDSInfo before = std::exchange(series.Source(), source);
  if (series.SeriesName() == before.YDataColumn) series.SetSeriesName(source.YDataColumn);
  PointErrors errors = series.Errors();
  if (source.YErrorColumn != before.YErrorColumn) {
    errors.y.kind = source.YErrorColumn.empty() ? ErrorKind::None : ErrorKind::Column;
  }
  if (source.XErrorColumn != before.XErrorColumn) {
    errors.x.kind = source.XErrorColumn.empty() ? ErrorKind::None : ErrorKind::Column;
  }
  series.SetErrors(std::move(errors));
}

/// What brings its points by itself has none yet.
ReadResult WithStreamAdded(const GraphState& into, const TDSInfo& place) {
  TxyGraph graph;
  graph.SetState(into);
  const TDSInfo source = BeginStream(place);
  const XMeaning x = StreamOf(source)->x_is_moment(source) ? XMeaning::Moments : XMeaning::Numbers;
  ImportTold told;
  if (std::string note = NoteOfMixedX(graph, x); !note.empty())
    told.push_back({.text = std::move(note)});
  AddWaitingSeries(graph, source, source.YDataColumn, x);
  return {graph.State(), std::move(told)};
}

/// "Pasted 2 DataSets, 1 mark"
std::string NoteOf(const PastedParts& parts) {
  std::string note;
  const auto tell = [&note](std::size_t count, const char* one) {
    if (count == 0) return;
    note += (note.empty() ? "Pasted " : ", ") + std::to_string(count) + ' ' + one;
    if (count > 1) note += 's';
  };
  tell(parts.data_sets, "DataSet");
  tell(parts.marks, "mark");
  tell(parts.graphs, "inserted graph");
  return note;
}

}  // namespace

ReadResult ReadGraph(const std::filesystem::path& path) {
  const std::unique_ptr<TxyGraph> graph = LoadGraph(path);
  const std::vector<TSeries*> whole = SeriesOfWhole(*graph);
  const std::vector<const TDataSeries*> all(whole.begin(), whole.end());
  ReadResult result{graph->State(), TellSomeRows(all)};
  result.points = PointsOfGraph(result.state, path);
  return result;
}

ReadResult ReadData(const GraphState& into, const std::filesystem::path& path,
                    const ImportOptions& options, Progress& progress) {
  return WithDataAdded(into, progress, [&](TxyGraph& graph, const LoadOptions& load) {
    return ImportIntoGraph(graph, path, options, load);
  });
}

ReadResult ReadDataText(const GraphState& into, const std::string& text, const std::string& name,
                        Progress& progress) {
  return WithDataAdded(into, progress, [&](TxyGraph& graph, const LoadOptions& load) {
    return ImportTextIntoGraph(graph, text, name, load);
  });
}

ReadResult ReadPlaceInto(const GraphState& into, const TDSInfo& place, Progress& progress) {
  const SourceKind* const kind =
      FindSourceKind(AllSourceKinds(FirstPicture::Coarse), place.DataSource);
  if (kind == nullptr || kind->begin == nullptr) return WithStreamAdded(into, place);
  return WithDataAdded(into, progress, [&](TxyGraph& graph, const LoadOptions& load) {
    const ImportOptions options;
    return ImportIntoGraph(graph, kind->begin(place, options, progress), options, load);
  });
}

ReadResult PastedGraph(const GraphState& into, const GraphState& pasted, QSize size) {
  TxyGraph graph;
  graph.Resize(size.width(), size.height());
  graph.SetState(into);
  const std::string note = NoteOf(PasteGraph(graph, pasted));
  return {.state = graph.State(), .note = note};
}

ReadResult ReadDataSet(const GraphState& into, const std::filesystem::path& path) {
  TxyGraph graph;
  graph.SetState(into);
  LoadDataSetFile(path, graph);
  return {.state = graph.State(), .points = {{path, graph.CurrentSeries()->Points()}}};
}

ReadResult Refreshed(const GraphState& state, const std::vector<std::size_t>& which,
                     Progress& progress) {
  TxyGraph graph;
  graph.SetState(state);
  const std::vector<TSeries*> whole = SeriesOfWhole(graph);
  std::vector<TDataSeries*> all;
  all.reserve(which.size());
  for (const std::size_t place : which) all.push_back(whole.at(place));
  return ReadAgain(graph, all, progress);
}

ReadResult ReadBy(const GraphState& state, const std::vector<NewSource>& sources,
                  const std::vector<std::string>& columns, Progress& progress) {
  TxyGraph graph;
  graph.SetState(state);
  const std::vector<TSeries*> whole = SeriesOfWhole(graph);
  std::vector<TDataSeries*> changed;
  for (const NewSource& one : sources) {
    TSeries& series = *whole.at(one.place);
    TakeSource(series, one.source);
    changed.push_back(&series);
  }
  for (const std::string& column : columns) {
    const TSeries& first = *whole.at(sources.front().place);
    changed.push_back(&AddLike(*GraphOf(graph, first), first, column));
  }
  return ReadAgain(graph, changed, progress);
}

RefreshedGraphs RefreshedTogether(const std::vector<GraphState>& states, Progress& progress) {
  const LoadOptions load = Loading(progress);
  std::vector<std::unique_ptr<TxyGraph>> graphs;
  std::vector<std::vector<TDataSeries*>> sources;  // the DataSets of each
  for (const GraphState& state : states) {
    graphs.push_back(std::make_unique<TxyGraph>());
    graphs.back()->SetState(state);
    for (TSeries* const series : SeriesOfWhole(*graphs.back())) AddToSource(*series, sources);
  }
  RefreshedGraphs refreshed;
  std::map<const TDataSeries*, LoadReport> reports;
  for (std::vector<TDataSeries*>& source : sources) {
    std::vector<DataState> before;
    before.reserve(source.size());
    for (const TDataSeries* const series : source) before.push_back(series->State());
    try {
      std::vector<LoadReport> read = RefreshAll(source, load);
      if (const std::vector<TDataSeries*> runs = AddNewRuns(graphs, source, read); !runs.empty()) {
        source.insert(source.end(), runs.begin(), runs.end());
        before.resize(source.size());
        read = RefreshAll(source, load);
      }
      if (WasCancelled(read) || progress.Cancelled() || !SettleCoarse(source, progress)) {
        return {.cancelled = true};
      }
      for (std::size_t i = 0; i < source.size(); ++i) {
        AddTrouble(read[i].absent_column, refreshed.troubles);
        AddTrouble(KeepWhereEmptied(*source[i], before[i], read[i]), refreshed.troubles);
        reports[source[i]] = read[i];
      }
    } catch (const Error& error) {
      AddTrouble(error.what(), refreshed.troubles);
    }
  }
  for (const auto& graph : graphs) refreshed.graphs.push_back(ResultOf(*graph, reports));
  return refreshed;
}

ReadResult WithAllRows(const GraphState& state, Progress& progress) {
  TxyGraph graph;
  graph.SetState(state);
  std::vector<TDataSeries*> sampled;
  for (TSeries* const series : SeriesOfWhole(graph)) {
    if (!ShowsSomeRows(series->Source())) continue;
    TakeAllRows(series->Source());
    series->Source().ThinnedAtSource = false;
    sampled.push_back(series);
  }
  return ReadAgain(graph, sampled, progress);
}

void WriteByKind(const GraphState& state, const std::filesystem::path& path) {
  const FileKind& kind = KindOf(path);
  if (!kind.write)
    throw FileError("No kind of file with this ending is written", path.string(), "");
  TxyGraph graph;
  graph.SetState(state);
  kind.write(path,
             {.graph = graph, .series = static_cast<std::size_t>(graph.CurrentSeriesIndex())});
}

}  // namespace tarnwick
