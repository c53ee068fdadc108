// Steps of a document: made, undone and made again through Document alone.
#include <array>
#include <random>

#include <gtest/gtest.h>

#include "base/error.h"
#include "desk/document/document.h"
#include "desk/document/open_edit.h"
#include "document/immediate_work.h"
#include "graph/edit/child_edit.h"
#include "graph/edit/mark_edit.h"
#include "graph/edit/point_edit.h"
#include "graph/files/graph_file.h"
#include "support/scripted_prompt.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

class DocumentEditTest : public ::testing::Test {
 protected:
  DocumentEditTest() {
    auto series = std::make_unique<TSeries>();
    for (int i = 1; i <= 40; ++i) series->AddPoint(i, (i % 7) + 1);
    PointErrors errors{{ErrorKind::Column, 0}, {}, {}, {}};
    for (int id = 1; id <= 40; ++id) errors.y_values.Set(id, id / 8.0);
    series->SetErrors(std::move(errors));
    document_.Graph().AddSeries(std::move(series));
    document_.Graph().Resize(600, 400);
    document_.History().SetChanged(false);
  }

  bool SetTitle(const std::string& title, Merging merging = Merging::No) {
    return document_.Edit("Change Title", TitleChange(title), merging);
  }
  static std::function<void(TxyGraph&)> TitleChange(const std::string& title) {
    return [title](TxyGraph& graph) {
      Appearance appearance = graph.GetAppearance();
      appearance.title_of_graph = title;
      graph.SetAppearance(appearance);
    };
  }
  const std::string& Title() { return document_.Graph().GetAppearance().title_of_graph; }
  /// What is saved of the graph now.
  std::string Saved() {
    document_.Files().SaveGraphFile(folder_.File("saved.tgr"));
    return testing::ReadFile(folder_.File("saved.tgr"));
  }
  std::string Encoded() { return EncodeGraph(document_.Graph()); }

  testing::TemporaryFolder folder_;
  testing::ScriptedPrompt prompt_;
  testing::ImmediateWork work_;
  Document document_{"Graph_1", work_, prompt_};
};

/// Edits of every kind at random, with the same luck every time.
class RandomEdits {
 public:
  explicit RandomEdits(Document& document) : document_(document) {}

  void Make() {
    using Change = void (RandomEdits::*)(TxyGraph&);
    constexpr std::array<Change, 13> kChanges = {
        &RandomEdits::MoveAPoint,  &RandomEdits::InsertAPoint,  &RandomEdits::DeleteAPoint,
        &RandomEdits::AddAMark,    &RandomEdits::MoveAMark,     &RandomEdits::DeleteAMark,
        &RandomEdits::UseAMark,    &RandomEdits::PlaceAChild,   &RandomEdits::DeleteAChild,
        &RandomEdits::ScaleAnAxis, &RandomEdits::DrawOtherwise, &RandomEdits::ChangeDataSets,
        &RandomEdits::GiveAnError};
    const Change change = kChanges[Below(kChanges.size())];
    try {
      document_.Edit("Change", [&](TxyGraph& graph) { (this->*change)(graph); });
    } catch (const Error&) {
      // A mark or a place that does not suit: as if nothing had been tried.
    }
  }

 private:
  std::size_t Below(std::size_t count) { return random_() % count; }
  double Value() { return std::uniform_real_distribution<double>(-20, 60)(random_); }
  TSeries* SomeSeries(TxyGraph& graph) {
    return graph.SeriesCount() == 0 ? nullptr : &graph.Series(Below(graph.SeriesCount()));
  }
  std::int32_t SomeId(const TSeries& series) {
    const std::size_t count = series.Points().Size();
    return count == 0 ? 0 : series.Points().At(Below(count)).id;
  }
  std::int32_t SomeMark(const TxyGraph& graph) {
    const std::vector<Mark>& marks = graph.Marks().All();
    return marks.empty() ? 0 : marks[Below(marks.size())].id;
  }

  void MoveAPoint(TxyGraph& graph) {
    if (TSeries* series = SomeSeries(graph)) {
      MovePoint(graph, *series, SomeId(*series), {Value(), Value()});
    }
  }
  void InsertAPoint(TxyGraph& graph) {
    if (TSeries* series = SomeSeries(graph)) InsertPoint(*series, {Value(), Value()});
  }
  void DeleteAPoint(TxyGraph& graph) {
    if (TSeries* series = SomeSeries(graph)) series->DeletePoint(SomeId(*series));
  }
  void GiveAnError(TxyGraph& graph) {
    TSeries* const series = SomeSeries(graph);
    if (series == nullptr || series->Points().Empty()) return;
    PointErrors errors = series->Errors();
    errors.y_values.Set(SomeId(*series), Value());
    series->SetErrors(std::move(errors));
  }
  void AddAMark(TxyGraph& graph) {
    Mark mark;
    mark.type = static_cast<MarkType>(Below(4));
    mark.x1 = Value(), mark.y1 = Value(), mark.x2 = Value(), mark.y2 = Value();
    AddMark(graph, mark);
  }
  void MoveAMark(TxyGraph& graph) { MoveMark(graph, SomeMark(graph), {Value(), Value()}); }
  void DeleteAMark(TxyGraph& graph) { DeleteMark(graph, SomeMark(graph)); }
  void UseAMark(TxyGraph& graph) {
    SetCurrentMark(graph, SomeMark(graph));
    Below(2) == 0 ? MoveXOriginToCurrentMark(graph) : SetBaseLineFromCurrentMark(graph);
  }
  void PlaceAChild(TxyGraph& graph) {
    if (Below(3) == 0 || graph.Children().empty()) InsertChild(graph, "Inset");
    const std::size_t index = Below(graph.Children().size());
    MoveChild(graph, index, static_cast<int>(Value()), static_cast<int>(Value()));
    if (Below(4) == 0) SetChildPlace(graph, index, {10, 10, 50, 120});
  }
  void DeleteAChild(TxyGraph& graph) {
    if (Below(4) == 0) return ClearChildren(graph);
    if (!graph.Children().empty()) graph.DeleteChild(Below(graph.Children().size()));
  }
  void ScaleAnAxis(TxyGraph& graph) {
    TAxis& axis = graph.Axis(static_cast<AxisId>(Below(3)));
    switch (Below(4)) {
      case 0:
        return axis.SetAutoSizing(true);
      case 1:
        return axis.SetLogScale(!axis.LogScale());
      case 2:
        return axis.SetMin(Value());
      default:
        return axis.SetMax(Value() + 80);
    }
  }
  void DrawOtherwise(TxyGraph& graph) {
    Legend legend = graph.GetLegend();
    legend.left = static_cast<std::int32_t>(Value());
    graph.SetLegend(legend);
    if (TSeries* series = SomeSeries(graph)) {
      SeriesStyle style = series->Style();
      style.first_axis = Below(2) == 0;
      style.line_width = 1 + static_cast<std::int32_t>(Below(4));
      series->SetStyle(style);
      series->SetRegressionType(static_cast<RegressionType>(Below(4)));
    }
  }
  void ChangeDataSets(TxyGraph& graph) {
    if (graph.SeriesCount() > 4) return graph.DeleteSeries(Below(graph.SeriesCount()));
    auto series = std::make_unique<TSeries>();
    for (int i = 0; i < 30; ++i) series->AddPoint(Value(), Value());
    graph.AddSeries(std::move(series));
    if (Below(4) == 0) graph.Series(Below(graph.SeriesCount())).Clear();
  }

  Document& document_;
  std::mt19937 random_{20};
};

TEST_F(DocumentEditTest, TwoHundredRandomEditsGoBackAndForthToTheByte) {
  RandomEdits edits(document_);
  std::vector<std::string> states = {Encoded()};
  const std::string first = Saved();
  int tries = 0;
  while (states.size() <= 200) {
    ASSERT_LT(++tries, 1000);
    edits.Make();
    std::string now = Encoded();
    if (now != states.back()) states.push_back(std::move(now));
  }
  const std::string last = Saved();
  for (std::size_t i = states.size() - 1; i-- > 0;) {
    document_.History().Undo();
    ASSERT_EQ(Encoded() == states[i], true) << "undone to " << i;
  }
  EXPECT_FALSE(document_.History().CanUndo());
  EXPECT_EQ(Saved() == first, true);
  for (std::size_t i = 1; i < states.size(); ++i) {
    document_.History().Redo();
    ASSERT_EQ(Encoded() == states[i], true) << "made again to " << i;
  }
  EXPECT_FALSE(document_.History().CanRedo());
  EXPECT_EQ(Saved() == last, true);
}

TEST_F(DocumentEditTest, TheChangedFlagFollowsTheSteps) {
  EXPECT_FALSE(document_.History().Changed());
  SetTitle("one");
  EXPECT_TRUE(document_.History().Changed());
  document_.History().Undo();
  EXPECT_FALSE(document_.History().Changed());
  document_.History().Redo();
  Saved();
  EXPECT_FALSE(document_.History().Changed());
  document_.History().Undo();
  EXPECT_TRUE(document_.History().Changed());
  SetTitle("two");  // what was saved cannot be reached any more
  document_.History().Undo();
  EXPECT_TRUE(document_.History().Changed());
  EXPECT_EQ(document_.Graph().Changed(), true);
}

TEST_F(DocumentEditTest, WhatChangesNothingOrFailsIsNoStep) {
  const std::string before = Encoded();
  EXPECT_FALSE(document_.Edit("Nothing", [](TxyGraph&) {}));
  EXPECT_FALSE(SetTitle(Title()));
  EXPECT_THROW(document_.Edit("Half",
                              [](TxyGraph& graph) {
                                AddMark(graph, {});
                                graph.DeleteSeries(0);
                                throw Error("no");
                              }),
               Error);
  {
    OpenEdit drag(document_, "Drag");
    AddMark(document_.Graph(), {});
    EXPECT_FALSE(document_.History().CanUndo());
  }
  EXPECT_EQ(Encoded(), before);
  EXPECT_FALSE(document_.History().CanUndo());
  EXPECT_FALSE(document_.History().Changed());
  document_.History().Undo();
  document_.History().Redo();
  EXPECT_EQ(Encoded(), before);
}

TEST_F(DocumentEditTest, ARegressionThatFailsIsToldOnce) {
  const auto average = [this](double alpha) {
    document_.Edit("Average", [alpha](TxyGraph& graph) {
      graph.Series(0).SetRegressionAlpha(alpha);
      graph.Series(0).SetRegressionType(RegressionType::RunningAverage);
    });
  };
  average(0.5);
  prompt_.ExpectTold("Invalid Running Average limit");
  average(0.6);
  average(0.7);
  SetTitle("Other");
  average(0.5);
  prompt_.ExpectTold("Invalid Running Average limit");
  average(0.6);
  document_.Files().SaveGraphFile(folder_.File("failing.tgr"));
  prompt_.ExpectTold("Invalid Running Average limit");
  document_.Files().LoadGraphFile(folder_.File("failing.tgr"));
}

TEST_F(DocumentEditTest, OpenEditsAndLikeStepsAreOneStep) {
  {
    OpenEdit dialog(document_, "Edit Marks");
    AddMark(document_.Graph(), {});
    EXPECT_FALSE(SetTitle("inner"));
    EXPECT_FALSE(document_.History().CanUndo());
    EXPECT_TRUE(dialog.Finish());
  }
  EXPECT_EQ(document_.History().UndoName(), "Edit Marks");
  for (const char* title : {"a", "ab", "abc"}) SetTitle(title, Merging::WithLikeStep);
  EXPECT_EQ(document_.History().UndoName(), "Change Title");
  document_.History().Undo();
  EXPECT_EQ(Title(), "inner");
  EXPECT_EQ(document_.History().RedoName(), "Change Title");
  document_.History().Undo();
  EXPECT_EQ(Title(), "Graph_1");
  EXPECT_EQ(document_.Graph().Marks().All().size(), 0u);
  EXPECT_EQ(document_.History().UndoName(), "");
  for (const char* title : {"x", "Graph_1"}) SetTitle(title, Merging::WithLikeStep);
  EXPECT_FALSE(document_.History().CanUndo());  // there and back again
}

TEST_F(DocumentEditTest, ZoomingStaysAndIsNoStep) {
  TxyGraph& graph = document_.Graph();
  document_.Edit("Move Point", [](TxyGraph& g) { MovePoint(g, *g.CurrentSeries(), 40, {90, 3}); });
  EXPECT_GE(graph.Axis(AxisId::X).Max(), 90);
  document_.Zoom().Remember(graph);
  graph.Axis(AxisId::X).SetMin(5);
  graph.Axis(AxisId::X).SetMax(12);
  document_.History().Undo();
  EXPECT_EQ(graph.CurrentSeries()->Points().LastX(), 40);
  EXPECT_EQ(graph.Axis(AxisId::X).Min(), 5);
  EXPECT_EQ(graph.Axis(AxisId::X).Max(), 12);
  EXPECT_FALSE(document_.History().CanUndo());
  document_.Zoom().GoBack(graph);
  EXPECT_LT(graph.Axis(AxisId::X).Max(), 90);  // scaled to the points as they are now
  document_.History().Redo();
  EXPECT_GE(graph.Axis(AxisId::X).Max(), 90);
  document_.Edit("Change Axis", [](TxyGraph& g) { g.Axis(AxisId::X).SetMax(7); });
  graph.Axis(AxisId::X).SetMax(70);
  document_.History().Undo();
  EXPECT_TRUE(graph.Axis(AxisId::X).AutoSizing());  // that step did set the scale
}

TEST_F(DocumentEditTest, DataAreAStepAndAGraphFileBeginsAnew) {
  const auto data = folder_.Write("run.dat", "x,y\n1,10\n2,20\n3,30\n");
  document_.Files().ReadDataFile(data);
  EXPECT_EQ(document_.History().UndoName(), "Load Data");
  folder_.Write("run.dat", "x,y\n1,10\n2,20\n3,30\n4,40\n");
  document_.Files().Refresh();
  document_.Files().Refresh();
  EXPECT_EQ(document_.Graph().Series(1).PointCount(), 4);
  document_.History().Undo();
  EXPECT_EQ(document_.Graph().Series(1).PointCount(), 3);
  document_.History().Undo();
  EXPECT_EQ(document_.Graph().SeriesCount(), 1u);
  document_.History().Redo();
  document_.Files().SaveGraphFile(folder_.File("run.tgr"));
  SetTitle("lost");
  document_.Files().Reload();
  EXPECT_EQ(Title(), "Graph_1");
  EXPECT_FALSE(document_.History().Changed());
  document_.History().Undo();
  EXPECT_EQ(Title(), "lost") << "what was discarded by mistake comes back";
  EXPECT_TRUE(document_.History().Changed());
  document_.Files().LoadGraphFile(folder_.File("run.tgr"));
  EXPECT_FALSE(document_.History().CanUndo());
  EXPECT_FALSE(document_.History().CanRedo());
  EXPECT_THROW(document_.Files().ReadDataFile(folder_.Write("bad.txt", "no numbers\n")), Error);
  EXPECT_FALSE(document_.History().CanUndo());
  EXPECT_FALSE(document_.History().Changed());
}

}  // namespace
}  // namespace tarnwick
