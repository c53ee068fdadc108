// What becomes of a layout while one of its settings goes through a range: every place where something comes, goes or turns.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "graph/layout/ruled_metrics.h"
#include "graph/mark.h"
#include "graph/xy_graph.h"
#include "support/told.h"

namespace tarnwick {
namespace {

using testing::Told;
using testing::WordsOf;
using Teller = std::function<std::string(const PlotLayout&)>;

/// X from 0 to 10, Y to 100 and Y2 to 0.1, three titles, two DataSets; the plot from 90, 70 to 530, 390 of 640 x 480 pixels.
class Scene {
 public:
  Scene() {
    Alter([](Dimensions& margins) {
      margins.left_margin = 90, margins.top_margin = 70;
      margins.right_margin = 110, margins.bottom_margin = 90;
      margins.tick_length = 5, margins.graph_title_offset = 40;
      margins.x_axis_label_offset = 3, margins.y_axis_label_offset = 6;
      margins.x_axis_title_offset = 7, margins.y_axis_title_offset = 9;
    });
    for (const bool first : {true, false}) {
      auto series = std::make_unique<TSeries>();
      for (const double x : {0.0, 10.0}) series->AddPoint(x, first ? 10 * x : x / 100);
      series->SetSeriesName(first ? "first" : "second one");
      SeriesStyle style;
      style.first_axis = first;
      series->SetStyle(style);
      graph.AddSeries(std::move(series));
    }
    Legend legend;
    legend.visible = false;
    graph.SetLegend(legend);
    Range(AxisId::X, 0, 10, 1);
    Range(AxisId::Y, 0, 100, 20);
    Range(AxisId::Y2, 0, 0.1, 0.02);
    Look([](Appearance& look) { look.title_of_graph = "Run"; });
    for (const AxisId id : {AxisId::X, AxisId::Y, AxisId::Y2})
      Title(id, id == AxisId::X ? "Time" : id == AxisId::Y ? "Rate" : "Pressure");
  }

  void Range(AxisId id, double min, double max, double step) {
    Axis(id, [&](AxisState& axis) {
      axis.AutoSizing = axis.AutoStepping = axis.EnableAutoTitle = false;
      axis.ShowAxis = axis.Gridlines = true;
      axis.LabelDecimals = id == AxisId::Y2 ? 2 : 0;
      axis.Min = min, axis.Max = max, axis.StepSize = step;
    });
  }
  void Title(AxisId id, const std::string& title) {
    Axis(id, [&](AxisState& axis) { axis.Title = title; });
  }
  template <class Change>
  void Axis(AxisId id, Change change) {
    AxisState axis = graph.Axis(id).State();
    change(axis);
    graph.Axis(id).SetState(axis);
    graph.UpdateScales();
  }
  template <class Change>
  void Alter(Change change) {
    Dimensions margins = graph.GetDimensions();
    change(margins);
    graph.SetDimensions(margins);
  }
  template <class Change>
  void Look(Change change) {
    Appearance look = graph.GetAppearance();
    change(look);
    graph.SetAppearance(look);
  }
  PlotLayout Layout() {
    graph.Resize(width, height);
    return LayoutPlot(graph, QSizeF(width, height), metrics);
  }

  int width = 640, height = 480;
  testing::RuledMetrics metrics;
  TxyGraph graph;
};

std::string Place(const std::optional<PlacedText>& text) {
  return text ? Told(*text) : "none";
}
std::string Words(const std::optional<PlacedText>& text) {
  return text ? WordsOf(*text) : "none";
}
std::string Labels(const AxisLayout& axis) {
  std::string words;
  for (const PlacedText& label : axis.labels) words += (words.empty() ? "" : " ") + WordsOf(label);
  return words.empty() ? "none" : words;
}
std::string LabelPlaces(const AxisLayout& axis) {
  std::string words;
  for (const PlacedText& label : axis.labels) words += (words.empty() ? "" : "; ") + Told(label);
  return words.empty() ? "none" : words;
}
std::string Counts(const AxisLayout& axis) {
  int major = 0;
  for (const AxisTick& tick : axis.ticks) major += tick.major ? 1 : 0;
  return std::to_string(major) + " ticks, " + std::to_string(std::ssize(axis.ticks) - major) +
         " minor, " + std::to_string(axis.grid.size()) + " grid, " +
         std::to_string(axis.labels.size()) + " labels";
}

const AxisLayout& X(const PlotLayout& layout) {
  return layout.Axis(AxisId::X);
}
const AxisLayout& Y(const PlotLayout& layout) {
  return layout.Axis(AxisId::Y);
}
const AxisLayout& Y2(const PlotLayout& layout) {
  return layout.Axis(AxisId::Y2);
}
std::string AllTitles(const PlotLayout& layout) {
  return "graph " + Words(layout.title) + ", X " + Words(X(layout).title) + ", Y " +
         Words(Y(layout).title) + ", Y2 " + Words(Y2(layout).title);
}
std::string AllPlaces(const PlotLayout& layout) {
  return "graph " + Place(layout.title) + ", X " + Place(X(layout).title) + ", Y " +
         Place(Y(layout).title) + ", Y2 " + Place(Y2(layout).title);
}
std::string AllFactors(const PlotLayout& layout) {
  return AllPlaces(layout) + "; factors " + Place(X(layout).factor) + ", " +
         Place(Y(layout).factor) + ", " + Place(Y2(layout).factor);
}

/// What is told of every value from `first` to `last`, one line for neighbours of which the same is told.
std::vector<std::string> Sweep(int first, int last, const std::function<std::string(int)>& tell) {
  std::vector<std::string> lines;
  std::string told = tell(first);
  int from = first;
  for (int value = first + 1; value <= last + 1; ++value) {
    const std::string next = value <= last ? tell(value) : "";
    if (value <= last && next == told) continue;
    lines.push_back((from == value - 1 ? std::to_string(from)
                                       : std::to_string(from) + ".." + std::to_string(value - 1)) +
                    ": " + told);
    from = value;
    told = next;
  }
  return lines;
}

/// A setting, the values it takes, and what is told of each layout. Settings follow each other on one scene.
struct Setting {
  const char* name;
  std::function<void(Scene&)> prepare;
  std::function<void(Scene&, int)> set;
  int first, last;
  Teller tell;
};

void ExpectSweeps(const std::vector<Setting>& settings) {
  for (const Setting& setting : settings) {
    const auto tell = [&](int value) {
      Scene scene;
      if (setting.prepare) setting.prepare(scene);
      setting.set(scene, value);
      return setting.tell(scene.Layout());
    };
    testing::ExpectTold("graph/layout/layouts.txt", setting.name,
                        Sweep(setting.first, setting.last, tell));
  }
}

template <auto kMember>
void SetMargin(Scene& scene, int value) {
  scene.Alter([&](Dimensions& margins) { margins.*kMember = value; });
}

/// Around the ends of a range that an offset may have.
template <auto kMember, int kLargest>
void SetNearEnds(Scene& scene, int step) {
  SetMargin<kMember>(scene, step < 3 ? step - 1 : kLargest + step - 4);
}

void ShowLargeNumbers(Scene& scene) {
  scene.Range(AxisId::X, 0, 1e9, 1e8);
  scene.Range(AxisId::Y, 0, 1e-6, 2e-7);
  scene.Range(AxisId::Y2, 0, 1e7, 2e6);
}

void ShowDates(Scene& scene) {
  scene.Axis(AxisId::X, [](AxisState& axis) {
    axis.ShowAsTime = true, axis.TickType = DateTickType::Day;
    axis.Min = 45000, axis.Max = 45006, axis.StepSize = 1;
    axis.DateTimeFormat = "dd mmmm yyyy";
  });
}

void ShowDecades(Scene& scene) {
  scene.Axis(AxisId::X, [](AxisState& axis) {
    axis.LogScale = true, axis.Min = 0.5, axis.Max = 2e4, axis.LogCycleDivisions = 2;
  });
}

TEST(LayoutSweep, OffsetsGoFromNothingToTheirLargest) {
  const Teller first_labels = [](const PlotLayout& layout) {
    return Told(X(layout).labels.empty() ? PlacedText() : X(layout).labels[1]) + "; " +
           (Y(layout).labels.empty() ? "none" : Told(Y(layout).labels[1])) + "; " +
           (Y2(layout).labels.empty() ? "none" : Told(Y2(layout).labels[1]));
  };
  const Teller ticks = [&](const PlotLayout& layout) {
    if (X(layout).ticks.empty()) return "none; " + first_labels(layout);
    return Told(X(layout).ticks.front().line) + "; " + Told(X(layout).ticks.back().line) + "; " +
           Told(Y(layout).ticks.front().line) + "; " + first_labels(layout);
  };
  const auto with_room = [](Scene& scene) {
    scene.width = scene.height = 1000;
    scene.Alter([](Dimensions& margins) {
      margins.left_margin = margins.right_margin = margins.bottom_margin = margins.top_margin = 300;
    });
  };
  ExpectSweeps({
      {"tick length", with_room, SetNearEnds<&Dimensions::tick_length, 40>, 0, 5, ticks},
      {"label offset of X", with_room, SetNearEnds<&Dimensions::x_axis_label_offset, 200>, 0, 5,
       first_labels},
      {"label offset of Y", with_room, SetNearEnds<&Dimensions::y_axis_label_offset, 200>, 0, 5,
       first_labels},
      {"title offset of X", with_room, SetNearEnds<&Dimensions::x_axis_title_offset, 200>, 0, 5,
       AllPlaces},
      {"title offset of Y", with_room, SetNearEnds<&Dimensions::y_axis_title_offset, 200>, 0, 5,
       AllPlaces},
      {"title offset of the graph", with_room, SetNearEnds<&Dimensions::graph_title_offset, 200>, 0,
       5, AllPlaces},
  });
}

TEST(LayoutSweep, MarginsTakeLabelsAndTitlesAway) {
  const Teller words = [](const PlotLayout& layout) {
    return AllTitles(layout) + "; " + Counts(X(layout)) + "; " + Counts(Y(layout)) + "; " +
           Counts(Y2(layout));
  };
  const Teller factors = [](const PlotLayout& layout) {
    return AllTitles(layout) + "; factors " + Words(X(layout).factor) + ", " +
           Words(Y(layout).factor) + ", " + Words(Y2(layout).factor);
  };
  ExpectSweeps({
      {"left margin", {}, SetMargin<&Dimensions::left_margin>, -1, 90, words},
      {"right margin", {}, SetMargin<&Dimensions::right_margin>, -1, 90, words},
      {"top margin", {}, SetMargin<&Dimensions::top_margin>, -1, 90, words},
      {"bottom margin", {}, SetMargin<&Dimensions::bottom_margin>, -1, 90, words},
      {"left margin with factors", ShowLargeNumbers, SetMargin<&Dimensions::left_margin>, -1, 90,
       factors},
      {"right margin with factors", ShowLargeNumbers, SetMargin<&Dimensions::right_margin>, -1, 90,
       factors},
      {"top margin with factors", ShowLargeNumbers, SetMargin<&Dimensions::top_margin>, -1, 90,
       factors},
      {"bottom margin with factors", ShowLargeNumbers, SetMargin<&Dimensions::bottom_margin>, -1,
       90, factors},
      {"bottom margin with dates", ShowDates, SetMargin<&Dimensions::bottom_margin>, -1, 150,
       [](const PlotLayout& layout) { return Labels(X(layout)) + "; " + Words(X(layout).title); }},
  });
}

TEST(LayoutSweep, NarrowPicturesThinTicksAndLabels) {
  const auto set_width = [](Scene& scene, int width) { scene.width = width; };
  const auto set_height = [](Scene& scene, int height) { scene.height = height; };
  const Teller x_axis = [](const PlotLayout& layout) {
    return Counts(X(layout)) + ": " + Labels(X(layout)) + "; " + Words(X(layout).title);
  };
  const Teller y_axis = [](const PlotLayout& layout) {
    return Counts(Y(layout)) + ": " + Labels(Y(layout)) + "; " + Words(Y(layout).title);
  };
  const auto many = [](Scene& scene) { scene.Range(AxisId::X, 0, 100, 1); };
  const auto many_y = [](Scene& scene) { scene.Range(AxisId::Y, 0, 100, 1); };
  const auto decades_y = [](Scene& scene) {
    scene.Axis(AxisId::Y, [](AxisState& axis) {
      axis.LogScale = true, axis.Min = 1e-4, axis.Max = 1e5, axis.LogCycleDivisions = 9;
    });
  };
  ExpectSweeps({
      {"width", {}, set_width, 195, 480, x_axis},
      {"width with a hundred ticks", many, set_width, 195, 640, x_axis},
      {"width with dates", ShowDates, set_width, 195, 720, x_axis},
      {"width with decades", ShowDecades, set_width, 195, 720, x_axis},
      {"height", {}, set_height, 155, 300, y_axis},
      {"height with a hundred ticks", many_y, set_height, 155, 430, y_axis},
      {"height with decades", decades_y, set_height, 240, 500, y_axis},
  });
}

TEST(LayoutSweep, FontsAndLongTitles) {
  const auto set_labels = [](Scene& scene, int size) {
    scene.Look([&](Appearance& look) { look.font_for_labels.size = size; });
  };
  const Teller words = [](const PlotLayout& layout) {
    return AllTitles(layout) + "; " + Labels(X(layout)) + "; " + Labels(Y(layout));
  };
  const auto lengthen = [](AxisId id) {
    return [id](Scene& scene, int letters) {
      scene.Title(id, std::string(static_cast<std::size_t>(letters), 'W'));
    };
  };
  const Teller sizes = [](const PlotLayout& layout) {
    const auto size = [](const std::optional<PlacedText>& text) {
      return !text ? "none"
                   : (text->text.text.contains(u'\u2026') ? "cut " : "") +
                         std::to_string(text->font.size) + "/" + Told(text->angle);
    };
    return "X " + size(X(layout).title) + ", Y " + size(Y(layout).title) + ", Y2 " +
           size(Y2(layout).title) + ", graph " + size(layout.title);
  };
  ExpectSweeps({
      {"size of labels", {}, set_labels, 1, 24, words},
      {"letters of X", {}, lengthen(AxisId::X), 0, 130, sizes},
      {"letters of X with a factor", ShowLargeNumbers, lengthen(AxisId::X), 0, 130, sizes},
      {"letters of Y", {}, lengthen(AxisId::Y), 0, 130, sizes},
      {"letters of Y2", {}, lengthen(AxisId::Y2), 0, 130, sizes},
      {"letters of Y above the plot",
       [](Scene& scene) { SetMargin<&Dimensions::left_margin>(scene, 34); }, lengthen(AxisId::Y), 0,
       130, sizes},
      {"letters of the title",
       {},
       [](Scene& scene, int letters) {
         scene.Look([&](Appearance& look) {
           look.title_of_graph = std::string(static_cast<std::size_t>(letters), 'W');
         });
       },
       0,
       170,
       sizes},
  });
}

TEST(LayoutSweep, AxesCrossWhereTheyAreTold) {
  const Teller places = [](const PlotLayout& layout) {
    return "X " + Told(X(layout).line) + ": " + LabelPlaces(X(layout)) + "; Y " +
           Told(Y(layout).line) + ": " + LabelPlaces(Y(layout)) + "; " + AllPlaces(layout) +
           "; grid " + std::to_string(X(layout).grid.size()) + "," +
           std::to_string(Y(layout).grid.size());
  };
  const auto cross = [](Scene& scene, int step) {
    const double values[] = {-1, 0, 0.2, 5, 5.2, 9.95, 10, 11};
    scene.Axis(AxisId::Y, [&](AxisState& axis) {
      axis.Offset_type = OffsetType::Value, axis.Offset = values[step];
    });
    scene.Axis(AxisId::X, [&](AxisState& axis) {
      axis.Offset_type = OffsetType::Percent, axis.Offset = 10 * values[step];
    });
  };
  const auto flipped = [](Scene& scene) {
    for (const AxisId id : {AxisId::X, AxisId::Y, AxisId::Y2})
      scene.Axis(id, [](AxisState& axis) { axis.Reversed = true; });
  };
  ExpectSweeps({
      {"crossing", {}, cross, 0, 7, places},
      {"crossing, labels on the other side", flipped, cross, 0, 7, places},
      {"factors in their places", ShowLargeNumbers,
       [](Scene& scene, int margin) {
         scene.Alter([&](Dimensions& margins) {
           margins.left_margin = margins.right_margin = 30 * margin;
         });
       },
       0, 3, AllFactors},
  });
}

TEST(LayoutSweep, ThePanelComesWithTheHeight) {
  const auto in_panel = [](Scene& scene) {
    SeriesStyle style = scene.graph.Series(1).Style();
    style.in_panel = true;
    scene.graph.Series(1).SetStyle(style);
  };
  const Teller panel = [](const PlotLayout& layout) -> std::string {
    if (!layout.panel) return "none, plot " + std::to_string(!layout.plot.isEmpty());
    const AxisLayout& y = layout.panel->y;
    return Counts(y) + ": " + Labels(y) + "; " + Words(y.title) + "; zero " +
           (layout.panel->zero ? "yes" : "no") + ", edge " +
           (layout.panel->plot_edge ? "yes" : "no");
  };
  const Teller places = [](const PlotLayout& layout) -> std::string {
    if (!layout.panel) return "none, plot " + Told(layout.plot);
    return Told(layout.plot) + ", panel " + Told(layout.panel->plot) + ", " +
           Place(layout.panel->y.title) + ", " + AllPlaces(layout);
  };
  const auto set_height = [](Scene& scene, int height) { scene.height = height; };
  ExpectSweeps({
      {"height with a panel", in_panel, set_height, 155, 600, panel},
      {"places with a panel", in_panel,
       [](Scene& scene, int step) {
         const int heights[] = {162, 200, 300, 480, 800};
         scene.height = heights[step];
       },
       0, 4, places},
  });
}

}  // namespace
}  // namespace tarnwick
