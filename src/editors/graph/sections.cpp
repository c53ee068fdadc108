#include "editors/graph/sections.h"

#include <array>
#include <utility>

#include "data/series/data_series_file.h"
#include "graph/appearance_fields.h"
#include "graph/axes/axis_fields.h"
#include "graph/axes/plot_metrics.h"
#include "graph/edit/axis_edit.h"
#include "graph/edit/legend_edit.h"
#include "graph/edit/mark_edit.h"
#include "graph/layout/automatic_legend.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

AxisId AxisOf(std::int32_t id) {
  return static_cast<AxisId>(id);
}

TSeries& SeriesOf(TxyGraph& graph, std::int32_t id) {
  return graph.Series(static_cast<std::size_t>(id));
}

const TSeries& SeriesOf(const TxyGraph& graph, std::int32_t id) {
  return graph.Series(static_cast<std::size_t>(id));
}

/// Of what a graph hands out and takes back as a value.
template <class Owner, class Read, class Write>
Section OfValues(FieldTable<Owner> table, Read read, Write write) {
  return {RowsOf<Owner>(table),
          [=](const TxyGraph& graph, std::int32_t id, std::size_t row) {
            return GetField(table[row], Owner(read(graph, id)));
          },
          [=](TxyGraph& graph, std::int32_t id, std::size_t row, const FieldValue& value) {
            Owner owner = read(graph, id);
            SetField(table[row], owner, value);
            write(graph, id, owner);
          }};
}

/// Another layout is arranged as by the command for it; another place is one that was chosen.
void TakeLegend(TxyGraph& graph, Legend legend) {
  const bool stays = legend.automatic && !StandsOtherwise(legend, graph.GetLegend());
  if (!stays) legend = ChosenByHand(legend);
  if (legend.layout_mode != graph.GetLegend().layout_mode) {
    SetLegendLayout(graph, legend.layout_mode, TextMetrics());
  } else {
    graph.SetLegend(legend);
  }
}

Mark MarkOf(const TxyGraph& graph, std::int32_t id) {
  const Mark* mark = graph.Marks().FindMark(id);
  return mark ? *mark : Mark();
}

Section OfDataSets() {
  const FieldTable<TDataSeries> table = DataSeriesFields();
  return {RowsOf<TDataSeries>(table),
          [=](const TxyGraph& graph, std::int32_t id, std::size_t row) {
            return GetField<TDataSeries>(table[row], SeriesOf(graph, id));
          },
          [=](TxyGraph& graph, std::int32_t id, std::size_t row, const FieldValue& value) {
            SetField<TDataSeries>(table[row], SeriesOf(graph, id), value);
          }};
}

std::array<Section, 7> MakeSections() {
  return {
      OfValues<Appearance>(
          AppearanceFields(), [](const TxyGraph& g, std::int32_t) { return g.GetAppearance(); },
          [](TxyGraph& g, std::int32_t, const Appearance& a) { g.SetAppearance(a); }),
      OfValues<Dimensions>(
          DimensionsFields(), [](const TxyGraph& g, std::int32_t) { return g.GetDimensions(); },
          [](TxyGraph& g, std::int32_t, const Dimensions& d) { g.SetDimensions(d); }),
      OfValues<Legend>(
          LegendFields(), [](const TxyGraph& g, std::int32_t) { return g.GetLegend(); },
          [](TxyGraph& g, std::int32_t, const Legend& l) { TakeLegend(g, l); }),
      OfValues<AxisState>(
          AxisFields(),
          [](const TxyGraph& g, std::int32_t id) { return g.Axis(AxisOf(id)).State(); },
          [](TxyGraph& g, std::int32_t id, const AxisState& a) {
            ChangeAxis(g.Axis(AxisOf(id)), a);
          }),
      OfValues<SeriesStyle>(
          SeriesFields(),
          [](const TxyGraph& g, std::int32_t id) { return SeriesOf(g, id).Style(); },
          [](TxyGraph& g, std::int32_t id, const SeriesStyle& s) { SeriesOf(g, id).SetStyle(s); }),
      OfDataSets(),
      OfValues<Mark>(MarkFields(), MarkOf,
                     [](TxyGraph& g, std::int32_t, const Mark& mark) { SetMark(g, mark); }),
  };
}

}  // namespace

const Section& SectionOf(SectionId section) {
  static const std::array<Section, 7> kSections = MakeSections();
  return kSections[static_cast<std::size_t>(section)];
}

}  // namespace tarnwick
