// What is done to a graph, deed by deed, and what it then holds: ranges, titles, numbers of DataSets, places, marks, points.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/error.h"
#include "base/number_text.h"
#include "graph/edit/axis_edit.h"
#include "graph/edit/child_edit.h"
#include "graph/edit/mark_edit.h"
#include "graph/edit/paste_edit.h"
#include "graph/edit/point_edit.h"
#include "graph/graph_state_compare.h"
#include "graph/line_way.h"
#include "graph/read_out.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"
#include "support/told.h"

namespace tarnwick {
namespace {

std::string Text(double number) {
  return GeneralText(number, 6);
}

std::string Told(const TAxis& axis) {
  const AxisState& a = axis.State();
  return Text(a.Min) + ".." + Text(a.Max) + " by " + Text(a.StepSize) + " '" + a.Title + "' " +
         std::to_string(a.LabelDecimals) + (a.AutoSizing ? "" : " sized") +
         (a.AutoStepping ? "" : " stepped") + (a.LogScale ? " log" : "") +
         (a.LogScale ? " " + std::to_string(a.LogCycleDivisions) : "") +
         (a.NarrowLogRange ? " narrow" : "") + (a.ShowAsTime ? " time" : "") +
         (a.EnableAutoTitle ? "" : " titled") + (a.AdjustDecPlaces ? "" : " fixed");
}

std::string Told(const TSeries& series) {
  std::string told = series.SeriesName() + ":";
  for (std::size_t i = 0; i < series.Points().Size(); ++i) {
    const Point point = series.Points().At(i);
    told += " #" + std::to_string(point.id) + " " + Text(point.x) + "," + Text(point.y);
  }
  return told;
}

std::string Told(const Mark& mark) {
  return std::to_string(mark.id) + " '" + mark.caption + "' " + Text(mark.x1) + "," +
         Text(mark.y1) + "," + Text(mark.x2) + "," + Text(mark.y2);
}

/// A graph of 640 x 480 pixels with three DataSets, the last against the second axis, and what is told of it.
class Story {
 public:
  Story() {
    graph.Resize(640, 480);
    Add("first", {{0, 1}, {2, 5}, {4, 3}, {9.5, 8}});
    Add("second", {{1, -2}, {3, 40}});
    TSeries& third = Add("third", {{-1, 1e6}, {5, 3e6}});
    SeriesStyle style = third.Style();
    style.first_axis = false;
    third.SetStyle(style);
    AxisState second = graph.Axis(AxisId::Y2).State();
    second.AutoSizing = second.AutoStepping = second.AdjustDecPlaces = true;
    second.EnableAutoTitle = true;
    graph.Axis(AxisId::Y2).SetState(second);
    graph.UpdateScales();
    graph.SetListener(
        [this](GraphChange change) { changes_ += "RSLMCKE"[static_cast<std::size_t>(change)]; });
  }

  TSeries& Add(const std::string& name, const std::vector<std::pair<double, double>>& points) {
    auto series = std::make_unique<TSeries>();
    series->SetSeriesName(name);
    for (const auto& [x, y] : points) series->AddPoint(x, y);
    return graph.AddSeries(std::move(series));
  }

  /// What is done, what the graph told of it, and what is to be seen.
  void Do(const std::string& deed, const std::function<std::string(TxyGraph&)>& act) {
    changes_.clear();
    std::string answer;
    try {
      answer = act(graph);
    } catch (const Error& error) {
      answer = error.what();
    }
    told.push_back(deed + " -> " + (changes_.empty() ? "-" : changes_) +
                   (answer.empty() ? "" : "; " + answer));
  }
  void Axes(const std::string& deed, const std::function<void(TxyGraph&)>& act) {
    Do(deed, [&](TxyGraph& g) {
      act(g);
      return "X " + Told(g.Axis(AxisId::X)) + "; Y " + Told(g.Axis(AxisId::Y)) + "; Y2 " +
             Told(g.Axis(AxisId::Y2)) + (g.ScaleError().empty() ? "" : "; " + g.ScaleError());
    });
  }

  TxyGraph graph;
  std::vector<std::string> told;

 private:
  std::string changes_;
};

void ExpectStory(const char* name, const Story& story) {
  testing::ExpectTold("graph/stories.txt", name, story.told);
}

template <class Change>
void Edit(TxyGraph& graph, AxisId id, Change change) {
  AxisState wanted = graph.Axis(id).State();
  change(wanted);
  ChangeAxis(graph.Axis(id), wanted);
}

template <class Change>
void Restyle(TxyGraph& graph, std::size_t index, Change change) {
  SeriesStyle style = graph.Series(index).Style();
  change(style);
  graph.Series(index).SetStyle(style);
}

TEST(GraphStory, OfAxes) {
  Story story;
  const auto x = [&](const char* deed, void (*set)(AxisState&)) {
    story.Axes(deed, [&](TxyGraph& g) { Edit(g, AxisId::X, set); });
  };
  const auto y = [&](const char* deed, void (*set)(AxisState&)) {
    story.Axes(deed, [&](TxyGraph& g) { Edit(g, AxisId::Y, set); });
  };
  story.Axes("nothing", [](TxyGraph&) {});
  x("log X over negative data", [](AxisState& a) { a.LogScale = true; });
  x("linear X", [](AxisState& a) { a.LogScale = false; });
  x("time on X", [](AxisState& a) { a.ShowAsTime = true; });
  x("by days", [](AxisState& a) { a.TickType = DateTickType::Day; });
  x("no time", [](AxisState& a) { a.ShowAsTime = false; });
  x("minimum of X", [](AxisState& a) { a.Min = -4; });
  x("maximum of X", [](AxisState& a) { a.Max = 14; });
  x("step of X", [](AxisState& a) { a.StepSize = 3; });
  x("least length of X", [](AxisState& a) { a.MinScaleLength = 30; });
  x("X by itself", [](AxisState& a) { a.AutoSizing = true; });
  x("its step, too", [](AxisState& a) { a.AutoStepping = true; });
  x("no least length", [](AxisState& a) { a.MinScaleLength = 0; });
  y("logarithmic Y", [](AxisState& a) { a.LogScale = true; });
  y("five divisions", [](AxisState& a) { a.LogCycleDivisions = 5; });
  y("title", [](AxisState& a) { a.Title = "given"; });
  y("title by itself", [](AxisState& a) { a.EnableAutoTitle = true; });
  y("decimals", [](AxisState& a) { a.LabelDecimals = 3; });
  y("linear Y", [](AxisState& a) { a.LogScale = false, a.AutoStepping = true; });
  story.Axes("second hidden",
             [](TxyGraph& g) { Restyle(g, 1, [](SeriesStyle& s) { s.visible = false; }); });
  story.Axes("all hidden", [](TxyGraph& g) {
    for (const std::size_t i : {0U, 2U}) Restyle(g, i, [](SeriesStyle& s) { s.visible = false; });
  });
  story.Axes("first shown",
             [](TxyGraph& g) { Restyle(g, 0, [](SeriesStyle& s) { s.visible = true; }); });
  story.Axes("panel", [](TxyGraph& g) {
    Restyle(g, 1, [](SeriesStyle& s) { s.visible = s.in_panel = true; });
  });
  story.Do("of the panel", [](TxyGraph& g) {
    return Text(g.PanelAxis().Min) + ".." + Text(g.PanelAxis().Max) + " by " +
           Text(g.PanelAxis().StepSize) + "; " + std::to_string(g.PixelLength(AxisId::Y)) + " of " +
           std::to_string(g.HeightWithPanel());
  });
  story.Axes("against its X source", [](TxyGraph& g) { g.SetPlotsAgainstXSource(true); });
  story.Axes("steps of all", [](TxyGraph& g) {
    Appearance look = g.GetAppearance();
    look.min_steps = 12;
    look.max_steps = 29;
    g.SetAppearance(look);
  });
  story.Axes("logarithmic Y2",
             [](TxyGraph& g) { Edit(g, AxisId::Y2, [](AxisState& a) { a.LogScale = true; }); });
  story.Axes("all axes by hand", [](TxyGraph& g) {
    for (const AxisId id : {AxisId::X, AxisId::Y, AxisId::Y2})
      Edit(g, id, [](AxisState& a) { a.Min = 7, a.Max = 3; });
  });
  story.Axes("all by themselves", [](TxyGraph& g) {
    for (const AxisId id : {AxisId::X, AxisId::Y, AxisId::Y2})
      Edit(g, id, [](AxisState& a) { a.AutoSizing = a.AutoStepping = true; });
  });
  story.Axes("put off", [](TxyGraph& g) {
    g.BeginUpdate();
    g.BeginUpdate();
    g.Series(0).AddPoint(100, 1000);
    g.EndUpdate();
  });
  story.Axes("caught up", [](TxyGraph& g) { g.EndUpdate(); });
  story.Axes("one end too many", [](TxyGraph& g) { g.EndUpdate(); });
  ExpectStory("axes", story);

  const StepLimits limits;
  std::vector<std::string> objections;
  const auto object = [&](const char* what, void (*set)(AxisState&)) {
    AxisState wanted;
    wanted.Min = 1, wanted.Max = 11, wanted.StepSize = 1, wanted.AutoStepping = false;
    set(wanted);
    objections.push_back(std::string(what) + ": " + AxisObjection(wanted, limits));
  };
  object("good", [](AxisState&) {});
  object("empty", [](AxisState& a) { a.Max = 1; });
  object("reversed", [](AxisState& a) { a.Max = 0.5; });
  object("fifty steps", [](AxisState& a) { a.StepSize = 0.2; });
  object("more", [](AxisState& a) { a.StepSize = 0.199; });
  object("more by itself", [](AxisState& a) { a.StepSize = 0.199, a.AutoStepping = true; });
  object("no step", [](AxisState& a) { a.StepSize = 0; });
  object("a step back", [](AxisState& a) { a.StepSize = -1; });
  object("log", [](AxisState& a) { a.LogScale = true, a.StepSize = -1; });
  object("log from zero", [](AxisState& a) { a.LogScale = true, a.Min = 0; });
  object("by days", [](AxisState& a) {
    a.ShowAsTime = true, a.TickType = DateTickType::Day, a.StepSize = 0.1;
  });
  object("by the clock", [](AxisState& a) {
    a.ShowAsTime = true, a.TickType = DateTickType::Automatic, a.StepSize = 0.1;
  });
  object("days of no time", [](AxisState& a) { a.TickType = DateTickType::Day, a.StepSize = 0.1; });
  testing::ExpectTold("graph/stories.txt", "objections", objections);
}

TEST(GraphStory, OfDataSets) {
  Story story;
  const auto list = [&](const std::string& deed, const std::function<void(TxyGraph&)>& act) {
    story.Do(deed, [&](TxyGraph& g) {
      act(g);
      std::string names;
      for (std::size_t i = 0; i < g.SeriesCount(); ++i) names += g.Series(i).SeriesName() + " ";
      const TSeries* source = XSource(g);
      return names + "current " + std::to_string(g.CurrentSeriesIndex()) + " X of " +
             (source == nullptr ? "none" : source->SeriesName()) + "; Y '" +
             g.Axis(AxisId::Y).Look().Title + "' in use " +
             std::to_string(AxisInUse(g, AxisId::Y)) + std::to_string(AxisInUse(g, AxisId::Y2));
    });
  };
  list("nothing", [](TxyGraph&) {});
  for (const int index : {2, 3, -1, -2, 1})
    list("current " + std::to_string(index), [=](TxyGraph& g) { g.SetCurrentSeriesIndex(index); });
  list("none", [](TxyGraph& g) { g.SetCurrentSeriesIndex(-1); });
  list("a fourth", [&](TxyGraph&) { story.Add("fourth", {{1, 1}}); });
  list("an empty one", [&](TxyGraph&) { story.Add("empty", {}); });
  list("out of the list", [](TxyGraph& g) { g.DeleteSeries(5); });
  for (const int index : {2, 0, 0, 1})
    list("delete " + std::to_string(index),
         [=](TxyGraph& g) { g.DeleteSeries(static_cast<std::size_t>(index)); });
  const GraphState kept = story.graph.State();
  list("delete the last", [](TxyGraph& g) { g.DeleteSeries(0); });
  list("none current", [](TxyGraph& g) { g.SetCurrentSeriesIndex(0); });
  list("a new one", [&](TxyGraph&) { story.Add("new", {{1, 1}, {2, 2}}); });
  list("as it was", [&](TxyGraph& g) { g.SetState(kept); });
  list("once more", [&](TxyGraph& g) { g.SetState(kept); });
  list("two more, and as it was", [&](TxyGraph& g) {
    story.Add("fifth", {{1, 1}}), story.Add("sixth", {{2, 2}});
    g.SetState(kept);
  });
  list("pasted", [&](TxyGraph& g) { PasteGraph(g, kept); });
  list("pasted again", [&](TxyGraph& g) { PasteGraph(g, StateOfCurrentDataSet(g)); });
  list("pasted nothing", [&](TxyGraph& g) { PasteGraph(g, GraphState()); });
  ExpectStory("DataSets", story);
}

TEST(GraphStory, OfPoints) {
  Story story;
  TxyGraph& graph = story.graph;
  TSeries& first = graph.Series(0);
  first.SetZeroValue(1);
  first.SetBaseLineSlope(0.5);
  const auto points = [&](const std::string& deed,
                          const std::function<std::string(TSeries&)>& act) {
    story.Do(deed, [&](TxyGraph& g) {
      const std::string answer = act(g.Series(0));
      return answer + " | " + Told(g.Series(0));
    });
  };
  const auto number = [](std::int64_t value) { return std::to_string(value); };
  points("move the second", [&](TSeries& s) { return number(MovePoint(graph, s, 2, {3, 7})); });
  points("move it behind all", [&](TSeries& s) { return number(MovePoint(graph, s, 2, {20, 7})); });
  points("move it where it is", [&](TSeries& s) {
    return number(MovePoint(graph, s, 2, {20, 7}));
  });
  points("move it onto another", [&](TSeries& s) {
    return number(MovePoint(graph, s, 2, {4, 7}));
  });
  points("move one that is gone", [&](TSeries& s) {
    return number(MovePoint(graph, s, 3, {4, 7}));
  });
  points("move it nowhere", [&](TSeries& s) {
    return number(MovePoint(graph, s, 2, {HUGE_VAL, 7}));
  });
  points("insert before all", [&](TSeries& s) { return number(InsertPoint(s, {-3, 1})); });
  points("insert on one", [&](TSeries& s) { return number(InsertPoint(s, {4, 2})); });
  points("insert behind all", [&](TSeries& s) { return number(InsertPoint(s, {30, 2})); });
  points("overwrite two", [&](TSeries& s) {
    return number(static_cast<std::int64_t>(OverwriteY(s, 1, std::vector<double>{7, 8})));
  });
  points("overwrite over the end", [&](TSeries& s) {
    return number(static_cast<std::int64_t>(OverwriteY(s, 3, std::vector<double>{1, 2, 3})));
  });
  points("overwrite behind the end", [&](TSeries& s) {
    return number(static_cast<std::int64_t>(OverwriteY(s, 5, std::vector<double>{1})));
  });
  points("delete one", [](TSeries& s) { return DeletePoints(s, 1, 1), std::string(); });
  points("delete over the end", [](TSeries& s) { return DeletePoints(s, 3, 99), std::string(); });
  points("delete behind the end", [](TSeries& s) { return DeletePoints(s, 9, 12), std::string(); });
  points("ask", [&](TSeries& s) {
    return DeletePointQuestion(graph, s, 4) + MovePointQuestion(graph, s, 4, {2, 3}) + "," +
           DeletePointQuestion(graph, s, 77) + MovePointQuestion(graph, s, 77, {2, 3});
  });
  story.Do("ask of the third", [&](TxyGraph& g) { return DeletePointQuestion(g, g.Series(2), 2); });
  for (const bool log_x : {false, true}) {
    for (const bool log_y : {false, true}) {
      graph.Axis(AxisId::X).SetLogScale(log_x);
      graph.Axis(AxisId::Y).SetLogScale(log_y);
      for (const PlotPoint to : {PlotPoint{1, 1}, PlotPoint{0, 1}, PlotPoint{1, 0},
                                 PlotPoint{-1, 0.5}, PlotPoint{0.5, -1}}) {
        for (const std::size_t index : {0U, 2U}) {
          story.Do(std::to_string(log_x) + std::to_string(log_y) + " move " +
                       std::to_string(index) + " to " + Text(to.x) + "," + Text(to.y),
                   [&](TxyGraph& g) {
                     CheckMove(g, g.Series(index), to);
                     return std::string();
                   });
        }
      }
    }
  }
  graph.Axis(AxisId::X).SetLogScale(false);
  graph.Axis(AxisId::Y).SetLogScale(false);
  for (const int index : {0, 2, -1}) {
    graph.SetCurrentSeriesIndex(index);
    for (const int px : {39, 40, 200, 625, 640}) {
      story.Do("read out of " + std::to_string(index) + " at " + std::to_string(px),
               [&](TxyGraph& g) { return ReadOutAt(g, px, 100).text; });
    }
  }
  ExpectStory("points", story);
}

TEST(GraphStory, OfMarksAndInsertedGraphs) {
  Story story;
  TxyGraph& graph = story.graph;
  for (const MarkType type : {MarkType::Vertical, MarkType::Horizontal, MarkType::Line,
                              MarkType::Rectangle, MarkType::Text}) {
    Mark mark{0, 2, 10, 4, 20, {}, "", type, MarkStatus::XAndY};
    AddMark(graph, mark);
    mark.status = MarkStatus::XAndY2;
    AddMark(graph, mark);
  }
  const auto marks = [](TxyGraph& g) {
    std::string told = "current " + std::to_string(g.Marks().CurrentId());
    for (const Mark& mark : g.Marks().All()) told += "; " + Told(mark);
    return told;
  };
  story.Do("marks", marks);
  for (const int id : {1, 2, 3, 5, 7, 9, 11}) {
    story.Do("move mark " + std::to_string(id), [&](TxyGraph& g) {
      const bool moved = MoveMark(g, id, {58.5, -41});
      return moved ? Told(*g.Marks().FindMark(id)) : "none";
    });
  }
  for (const MarkPart part : {MarkPart::Origin, MarkPart::End}) {
    for (const int id : {5, 9}) {
      story.Do("move a part of " + std::to_string(id), [&](TxyGraph& g) {
        return Told(MovedMark(g, *g.Marks().FindMark(id), {58.5, -41}, part));
      });
    }
  }
  story.Do("shift all", [&](TxyGraph& g) {
    ShiftGraphX(g, 1.5);
    return marks(g) + " | " + Told(g.Series(0));
  });
  story.Do("shift by nothing", [](TxyGraph& g) { return ShiftGraphX(g, 0), std::string(); });
  for (const int id : {1, 3, 5, 9}) {
    story.Do("base line from " + std::to_string(id), [&](TxyGraph& g) {
      SetCurrentMark(g, id);
      SetBaseLineFromCurrentMark(g);
      const BaseLine line = g.CurrentSeries()->GetBaseLine();
      return Text(line.offset) + " " + Text(line.slope);
    });
  }
  story.Do("of another axis", [](TxyGraph& g) {
    g.SetCurrentSeriesIndex(2);
    SetBaseLineFromCurrentMark(g);
    return std::string();
  });
  story.Do("origin of 3", [](TxyGraph& g) {
    SetCurrentMark(g, 3);
    MoveXOriginToCurrentMark(g);
    return std::string();
  });
  story.Do("origin of 1", [&](TxyGraph& g) {
    SetCurrentMark(g, 1);
    MoveXOriginToCurrentMark(g);
    return Told(g.Series(1));
  });
  story.Do("delete 4 and 44", [](TxyGraph& g) {
    const bool fourth = DeleteMark(g, 4);
    return std::to_string(fourth) + std::to_string(DeleteMark(g, 44));
  });
  story.Do("a new one in its place", [&](TxyGraph& g) { return AddMark(g, Mark()), marks(g); });
  story.Do("clear", [&](TxyGraph& g) { return ClearMarks(g), marks(g); });

  const auto places = [](TxyGraph& g) {
    std::string told;
    for (const auto& child : g.Children()) {
      const TxyChildGr::Place p = child->PlaceIn(g.ClientWidth(), g.ClientHeight());
      told += " " + std::to_string(p.left) + "," + std::to_string(p.top) + " " +
              std::to_string(p.width) + "x" + std::to_string(p.height) + "/" +
              std::to_string(child->ClientWidth()) + "x" +
              std::to_string(child->PixelLength(AxisId::X)) + "x" +
              std::to_string(child->PixelLength(AxisId::Y));
    }
    return told;
  };
  for (int i = 0; i < 10; ++i)
    story.Do("insert", [&](TxyGraph& g) { return InsertChild(g, "child"), places(g); });
  const GraphState ten = graph.State();
  story.Do("move beyond the list",
           [](TxyGraph& g) { return MoveChild(g, 10, 5, 5), std::string(); });
  story.Do("move the last", [&](TxyGraph& g) { return MoveChild(g, 9, 5, -5), places(g); });
  for (std::size_t i = 8; i > 1; --i) graph.DeleteChild(i);
  story.Do("delete beyond the list", [&](TxyGraph& g) { return g.DeleteChild(3), places(g); });
  story.Do("delete the first", [&](TxyGraph& g) { return g.DeleteChild(0), places(g); });
  story.Do("paste what is there",
           [&](TxyGraph& g) { return PasteChild(g, g.Children()[0]->State()), places(g); });
  story.Do("smaller", [&](TxyGraph& g) { return g.Resize(300, 200), places(g); });
  for (const double place : {10.0, -10.0, 1e9, -1e9, std::nan("")}) {
    story.Do("placed at " + Text(place), [&](TxyGraph& g) {
      Dimensions at = g.Children()[0]->GetDimensions();
      at.hor_position = at.ver_position = at.hor_size = at.ver_size = place;
      g.Children()[0]->SetDimensions(at);
      return places(g);
    });
  }
  story.Do("nothing", [&](TxyGraph& g) { return g.Resize(0, 0), places(g); });
  story.Do("less", [&](TxyGraph& g) { return g.Resize(-5, 2'000'000), places(g); });
  story.Do("as it was", [&](TxyGraph& g) {
    g.Resize(640, 480);
    g.SetState(ten);
    return places(g);
  });
  ExpectStory("marks and inserted graphs", story);
}

/// What a step of undoing leaves alone: where somebody looked since.
TEST(GraphStory, OfAViewThatIsKept) {
  std::vector<std::string> told;
  for (const bool edited : {false, true}) {
    for (const int zoomed : {0, 1, 2}) {
      for (const std::size_t children : {0U, 1U, 2U}) {
        Story story;
        InsertChild(story.graph, "child");
        const GraphState before = story.graph.State();
        if (edited) {
          story.graph.Axis(AxisId::Y).SetMax(77);
          story.graph.Children()[0]->Axis(AxisId::Y2).SetMax(66);
        } else {
          story.graph.Series(0).SetSeriesName("other");
        }
        const GraphState after = story.graph.State();
        if (zoomed == 1) story.graph.Axis(AxisId::X).SetMin(-9);
        if (zoomed == 2) story.graph.Axis(AxisId::Y).SetMax(88);
        if (zoomed > 0) story.graph.Children()[0]->Axis(AxisId::Y2).SetMax(55);
        story.graph.Resize(320, 240);
        while (story.graph.Children().size() > children) story.graph.DeleteChild(0);
        while (story.graph.Children().size() < children) InsertChild(story.graph, "more");
        GraphState target = before;
        KeepView(target, story.graph.State(), {before, after});
        std::string line =
            std::to_string(edited) + std::to_string(zoomed) + std::to_string(children);
        for (const AxisState& axis : target.axes)
          line += " " + Text(axis.Min) + ".." + Text(axis.Max) + (axis.AutoSizing ? "" : "!");
        for (const auto& child : target.children) {
          for (const AxisState& axis : child->axes)
            line += " / " + Text(axis.Min) + ".." + Text(axis.Max) + (axis.AutoSizing ? "" : "!");
        }
        told.push_back(line);
      }
    }
  }
  testing::ExpectTold("graph/stories.txt", "a view that is kept", told);
}

}  // namespace
}  // namespace tarnwick
