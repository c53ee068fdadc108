#include "graph/edit/child_edit.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

TEST(ChildEdit, PlacesAreKeptWithinReachAndGoAlongWithTheParent) {
  struct Row {
    TxyChildGr::Place asked, given;
  };
  const Row rows[] = {
      {{100, 50, 200, 100}, {100, 50, 200, 100}},
      {{-150, -90, 200, 100}, {-150, -76, 200, 100}},  // a strip stays in sight
      {{399, 400, 200, 100}, {376, 276, 200, 100}},    // at the other corner too
      {{10, 10, 1, -5}, {10, 10, kSmallestChild, kSmallestChild}},
      {{0, 0, 9000, 9000}, {0, 0, 400, 300}},
  };
  for (const Row& row : rows) {
    TxyGraph graph;
    graph.Resize(400, 300);
    const std::size_t index = InsertChild(graph, "Inset");
    SetChildPlace(graph, index, row.asked);
    const TxyChildGr& child = *graph.Children()[index];
    const TxyChildGr::Place place = child.PlaceIn(400, 300);
    EXPECT_EQ(place.left, row.given.left);
    EXPECT_EQ(place.top, row.given.top);
    EXPECT_EQ(place.width, row.given.width);
    EXPECT_EQ(place.height, row.given.height);
    EXPECT_EQ(child.ClientWidth(), row.given.width);
    graph.Resize(800, 600);
    EXPECT_EQ(child.ClientWidth(), 2 * row.given.width);
  }
}

TEST(ChildEdit, ChildrenAreInsertedMovedAndCleared) {
  TxyGraph graph;
  graph.Resize(400, 300);
  EXPECT_EQ(InsertChild(graph, "First"), 0u);
  EXPECT_EQ(InsertChild(graph, "Second"), 1u);
  EXPECT_EQ(graph.Children()[1]->GetAppearance().title_of_graph, "Second");
  EXPECT_GT(graph.Children()[1]->PixelLength(AxisId::X), 40);
  const TxyChildGr::Place before = graph.Children()[1]->PlaceIn(400, 300);
  // None hides those before it: each stands a twentieth of the graph further left and down.
  const TxyChildGr::Place first = graph.Children()[0]->PlaceIn(400, 300);
  EXPECT_EQ(before.left, first.left - 20);
  EXPECT_EQ(before.top, first.top + 15);
  EXPECT_GT(first.left + first.width, 300);
  int told = 0;
  graph.SetListener([&](GraphChange change) { told += change == GraphChange::Children; });
  MoveChild(graph, 1, 15, -10);
  MoveChild(graph, 7, 15, -10);
  EXPECT_EQ(told, 1);
  const TxyChildGr::Place after = graph.Children()[1]->PlaceIn(400, 300);
  EXPECT_EQ(after.left, before.left + 15);
  EXPECT_EQ(after.top, before.top - 10);
  EXPECT_EQ(after.width, before.width);
  graph.Resize(0, 0);
  MoveChild(graph, 1, 15, -10);  // no size to move in
  graph.Resize(400, 300);
  EXPECT_EQ(graph.Children()[1]->PlaceIn(400, 300).left, after.left);
  ClearChildren(graph);
  EXPECT_TRUE(graph.Children().empty());

  // What was written into the usual corner stays to be read.
  graph.Resize(800, 600);
  Mark written;
  written.type = MarkType::Line;
  written.x1 = written.x2 = 0.7;
  written.y1 = written.y2 = 0.8;
  written.x2 += 0.01;
  written.caption = "k = 3";
  graph.Marks().AddMark(written);
  InsertChild(graph, "Third");
  EXPECT_GT(graph.Children()[0]->PlaceIn(800, 600).top, 250);
}

}  // namespace
}  // namespace tarnwick
