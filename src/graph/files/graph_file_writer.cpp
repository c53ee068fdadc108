#include "graph/files/graph_file_writer.h"

#include <memory>
#include <span>
#include <vector>

#include "base/error.h"
#include "data/import/source_place.h"
#include "graph/all_series.h"
#include "graph/appearance_fields.h"
#include "graph/axes/axis_fields.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

/// What of a graph is written.
struct Contents {
  const TxyGraph& graph;
  Appearance appearance;
  std::vector<const TSeries*> series;
  std::span<const Mark> marks;
  std::span<const std::unique_ptr<TxyChildGr>> children;
};

Contents WholeGraph(const TxyGraph& graph) {
  Contents contents = {graph, graph.GetAppearance(), {}, graph.Marks().All(), graph.Children()};
  for (const TSeries& series : AllSeries(graph)) contents.series.push_back(&series);
  return contents;
}

Contents DataSetAlone(const TxyGraph& graph, std::size_t index) {
  if (index >= graph.SeriesCount()) throw Error("No DataSet found!");
  Contents contents = {graph, graph.GetAppearance(), {&graph.Series(index)}, {}, {}};
  contents.appearance.current_series_index = 0;
  contents.appearance.x_axis_series_index = 0;
  return contents;
}

class Writer {
 public:
  Writer(const GraphFileOptions& options, const ByteSink& sink) : options_(options), sink_(sink) {}

  void Write(const Contents& contents, int level) {
    if (level > kDeepestChild) throw Error(kNestedTooDeep);
    WriteHead(contents);
    if (!contents.series.empty()) WriteDataSets(contents.series);
    if (!contents.marks.empty()) WriteMarks(contents.marks);
    ValueWriter(bytes_).WriteRawInteger(static_cast<std::int32_t>(contents.children.size()));
    sink_(bytes_);
    for (const auto& child : contents.children) Write(WholeGraph(*child), level + 1);
  }

 private:
  void WriteHead(const Contents& contents) {
    const TxyGraph& graph = contents.graph;
    SectionWriter writer(bytes_, options_.mode);
    writer.WritePlainString(kGraphMagic);
    WriteSection(writer, kAppearanceSection, AppearanceFields(), contents.appearance);
    WriteSection(writer, kDimensionsSection, DimensionsFields(), graph.GetDimensions());
    for (const AxisId axis : {AxisId::X, AxisId::Y, AxisId::Y2}) {
      WriteSection(writer, kAxisSection, AxisFields(), graph.Axis(axis).State());
    }
    WriteSection(writer, kLegendSection, LegendFields(), graph.GetLegend());
    writer.WriteCount(static_cast<std::int32_t>(contents.series.size()));
    writer.WriteCount(static_cast<std::int32_t>(contents.marks.size()));
  }

  void WriteDataSets(std::span<const TSeries* const> all) {
    if (all.empty()) throw Error(kDataSetFilingError);
    SectionWriter writer(bytes_, options_.mode);
    for (const TSeries* series : all) {
      WriteSection(writer, kSeriesSection, SeriesFields(), series->Style());
      TDataSeries placed;  // with the source told from the file's folder; points are shared
      placed.SetState(series->State());
      placed.Source().RelativeSource = RelativeSourceIn(options_.folder, series->Source());
      WriteDataSeries(writer, placed, PointsOf(*series), [this] { sink_(bytes_); });
      sink_(bytes_);
    }
  }

  WithPoints PointsOf(const TSeries& series) const {
    const bool asks_for_order = series.Style().line_order != LineOrder::ByX;
    return options_.points == WithPoints::Yes && asks_for_order ? WithPoints::YesAndOrder
                                                                : options_.points;
  }

  void WriteMarks(std::span<const Mark> marks) {
    if (marks.empty()) throw Error(kMarkFilingError);
    SectionWriter writer(bytes_, options_.mode);
    for (const Mark& mark : marks) WriteSection(writer, kMarkSection, MarkFields(), mark);
  }

  const GraphFileOptions& options_;
  const ByteSink& sink_;
  std::string bytes_;
};

}  // namespace

void WriteGraphPieces(const TxyGraph& graph, const GraphFileOptions& options,
                      const ByteSink& sink) {
  Writer(options, sink).Write(WholeGraph(graph), 0);
}

void WriteDataSetPieces(const TxyGraph& graph, std::size_t index, const GraphFileOptions& options,
                        const ByteSink& sink) {
  Writer(options, sink).Write(DataSetAlone(graph, index), 0);
}

}  // namespace tarnwick
