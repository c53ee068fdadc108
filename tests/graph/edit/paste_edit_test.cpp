#include "graph/edit/paste_edit.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "graph/edit/child_edit.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

void AddLine(TxyGraph& graph, const std::string& name) {
  auto series = std::make_unique<TSeries>();
  series->SetSeriesName(name);
  series->AddPoint(1, 2);
  graph.AddSeries(std::move(series));
}

void SetTitle(TxyGraph& graph, const std::string& title) {
  Appearance appearance = graph.GetAppearance();
  appearance.title_of_graph = title;
  graph.SetAppearance(appearance);
}

TEST(PasteEdit, AnEmptyGraphBecomesThePastedOneAtItsOwnPlace) {
  TxyGraph source, target;
  AddLine(source, "A");
  SetTitle(source, "Copied");
  source.Marks().AddMark({});
  Dimensions place;
  place.hor_size = 0.5;
  target.SetDimensions(place);
  PasteGraph(target, source.State());
  EXPECT_EQ(target.GetAppearance().title_of_graph, "Copied");
  EXPECT_EQ(target.Marks().All().size(), 1u);
  EXPECT_EQ(target.GetDimensions().hor_size, 0.5);
}

TEST(PasteEdit, AGraphInUseGetsTheDataSetsToldApartAndMarksAndInsertedGraphs) {
  TxyGraph source, target;
  AddLine(source, "A");
  AddLine(source, "B");
  Mark there;
  there.x1 = 3;
  Mark another;
  another.x1 = 4;
  for (const Mark& mark : {there, another}) source.Marks().AddMark(mark);
  InsertChild(source, "Inset");
  AddLine(target, "C");
  there.caption = "1";
  for (const Mark& mark : {Mark{}, there}) target.Marks().AddMark(mark);
  SetTitle(target, "Own");
  const PastedParts parts = PasteGraph(target, source.State());
  EXPECT_EQ(parts.data_sets, 2u);
  EXPECT_EQ(parts.marks, 1u);  // the graph has the other one already
  EXPECT_EQ(parts.graphs, 1u);
  EXPECT_EQ(target.Marks().All().size(), 3u);
  EXPECT_EQ(target.Marks().FindMark(3)->x1, 4);
  EXPECT_EQ(target.Marks().FindMark(3)->caption, "3");
  EXPECT_EQ(target.Children().at(0)->GetAppearance().title_of_graph, "Inset");
  ASSERT_EQ(target.SeriesCount(), 3u);
  EXPECT_EQ(target.GetAppearance().title_of_graph, "Own");
  EXPECT_EQ(target.CurrentSeries()->SeriesName(), "A");
  EXPECT_EQ(target.Series(2).SeriesName(), "B");
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      EXPECT_NE(target.Series(i).Style().line_color, target.Series(j).Style().line_color);
    }
  }
  EXPECT_THROW(PasteGraph(target, GraphState()), Error);
  PasteGraph(target, source.State());  // once more: no two of one name
  EXPECT_EQ(target.Series(3).SeriesName(), "A_1");
  EXPECT_EQ(target.Series(4).SeriesName(), "B_1");
}

TEST(PasteEdit, AChildComesBackToItsPlaceOrBesideTheOneThere) {
  TxyGraph graph;
  graph.Resize(400, 300);
  AddLine(*graph.Children()[InsertChild(graph, "Inset")], "A");
  const GraphState copied = graph.Children()[0]->State();
  const TxyChildGr::Place place = graph.Children()[0]->PlaceIn(400, 300);
  const TxyGraph& beside = *graph.Children()[PasteChild(graph, copied)];
  EXPECT_EQ(beside.Series(0).SeriesName(), "A");
  EXPECT_EQ(graph.Children()[1]->PlaceIn(400, 300).left, place.left + 20);
  graph.DeleteChild(0);
  graph.DeleteChild(0);
  PasteChild(graph, copied);
  EXPECT_EQ(graph.Children()[0]->PlaceIn(400, 300).left, place.left);
  EXPECT_EQ(graph.Children()[0]->PlaceIn(400, 300).width, place.width);
}

}  // namespace
}  // namespace tarnwick
