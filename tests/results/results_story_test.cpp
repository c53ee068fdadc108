// What joins a graph when peaks, samples and fits of several DataSets are computed from it, told figure by figure.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

#include "analysis/fits/fit_run.h"
#include "analysis/fits/fit_share.h"
#include "base/error.h"
#include "base/number_text.h"
#include "base/progress.h"
#include "base/undefined.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"
#include "results/fit_colours.h"
#include "results/fit_texts.h"
#include "results/joint_fit.h"
#include "results/new_series.h"
#include "results/peak_fit.h"
#include "results/peak_groups.h"
#include "results/peak_marks.h"
#include "results/peak_model.h"
#include "results/peak_table.h"
#include "results/peak_table_text.h"
#include "results/sample_report.h"
#include "support/told.h"

namespace tarnwick {
namespace {

using Lines = std::vector<std::string>;

std::string Text(double number) {
  return GeneralText(std::abs(number) < 1e-11 ? 0 : number, 5);
}

TSeries& Add(TxyGraph& graph, const std::string& name, int count, double step,
             const std::function<double(double)>& y) {
  auto series = std::make_unique<TSeries>();
  series->SetSeriesName(name);
  for (int i = 0; i < count; ++i) series->AddPoint(i * step, y(i * step));
  return graph.AddSeries(std::move(series));
}

double Bell(double x, double at, double height, double width) {
  return height * std::exp(-4 * std::numbers::ln2 * (x - at) * (x - at) / (width * width));
}

/// Three peaks on a slope, in a little noise that is the same in every run.
TSeries& AddPeaks(TxyGraph& graph) {
  return Add(graph, "S", 241, 0.25, [](double x) {
    return 2 + 0.1 * x + Bell(x, 12, 10, 3) + Bell(x, 25, 20, 4) + Bell(x, 44, 6, 8) +
           0.05 * std::sin(1000 * x);
  });
}

Lines LinesOf(const std::string& text) {
  Lines lines(1);
  for (const char c : text) {
    if (c == '\n') {
      lines.emplace_back();
    } else {
      lines.back() += c;
    }
  }
  return lines;
}

/// Each number of a table to five digits.
Lines TableLines(const std::string& table) {
  Lines lines;
  for (const std::string& line : LinesOf(table)) {
    if (line.empty()) continue;
    std::string told;
    for (std::size_t at = 0; at < line.size();) {
      const std::size_t end = std::min(line.find(',', at), line.size());
      const auto number = ParseNumber(line.substr(at, end - at));
      told += (number ? Text(*number) : line.substr(at, end - at)) + " ";
      at = end + 1;
    }
    lines.push_back(told);
  }
  return lines;
}

std::string Told(const FittedPeak& peak) {
  const auto value = [](const FittedValue& v) { return Text(v.value) + "±" + Text(v.error); };
  return value(peak.x) + " " + value(peak.height) + " " + value(peak.width) + " " +
         value(peak.area);
}

/// A DataSet as it was added: its look, its points with steps between those told.
std::string Told(const TSeries& series, std::size_t step) {
  const SeriesStyle& style = series.Style();
  std::string told =
      series.SeriesName() + (style.first_axis ? "" : " on Y2") +
      (style.connect_points ? " line" : "") + (style.show_symbols ? " symbols" : "") +
      (style.show_in_legend != 0 ? "" : " unnamed") + (style.selectable ? "" : " fixed") + " " +
      std::to_string(style.line_width) + ":";
  for (std::size_t i = 0; i < series.Points().Size(); i += step) {
    const Point point = series.Points().At(i);
    told += " " + Text(point.x) + "," + Text(point.y);
  }
  return told;
}

template <class Act>
std::string Refused(Act act) {
  try {
    act();
  } catch (const Error& error) {
    return error.what();
  }
  return "not refused";
}

TEST(ResultsStory, OfPeaksFoundAndModelled) {
  TxyGraph graph;
  TSeries& series = AddPeaks(graph);
  const auto table = [&](const char* name, const PeakTableOptions& options) {
    const PeakTable made = MakePeakTable(graph, series, options);
    Lines told = TableLines(PeakTableText(made.peaks, ','));
    if (!made.told.empty()) told.push_back(made.told);
    testing::ExpectTold("results/stories.txt", name, told);
    return made;
  };
  const PeakTable all = table("peaks by prominence", {.times_noise = 20});
  PeakTableOptions within{.times_noise = 20};
  within.search.left = 5, within.search.right = 30;
  table("peaks within margins", within);
  PeakTableOptions neighbours{.rule = PeakRule::Neighbours};
  neighbours.search.noise_percent = 0.2;
  table("peaks above their neighbours", neighbours);
  series.SetZeroValue(2);
  PointErrors errors;
  errors.y = {ErrorKind::Constant, 0.5};
  series.SetErrors(errors);
  table("peaks above a base line, of known errors", {.times_noise = 5});
  series.SetZeroValue(0);
  series.SetErrors({});

  FitSettings look;
  look.Tolerance = 1e-7;
  for (const PeakShape shape :
       {PeakShape::Gauss, PeakShape::Lorentz, PeakShape::PseudoVoigt, PeakShape::Voigt}) {
    const FitSettings model = PeakModel(all.peaks, shape, look);
    Lines told = {model.Expression, Text(model.LeftMargin) + " " + Text(model.RightMargin) + " " +
                                        Text(model.Tolerance) + " " +
                                        std::to_string(MostFittedPeaks(shape))};
    for (const ParameterSettings& one : model.parameters)
      told.push_back(one.Name + " '" + one.Description + "' " + Text(one.Value) + " " +
                     Text(one.Low) + ".." + Text(one.High) + (one.Vary ? "" : " held"));
    series.Fit().SetSettings(model, MarkModified::Yes);
    NoProgress progress;
    ApplyFit(series, RunFit(PrepareFit(series, {.points = FitPointChoice::All}), progress));
    for (const std::string& line : TableLines(FittedTableText(FittedPeaks(series), ',')))
      told.push_back(line);
    AddPeakParts(graph, series);
    for (std::size_t i = 1; i < graph.SeriesCount(); ++i)
      told.push_back(Told(graph.Series(i), 119));
    testing::ExpectTold("results/stories.txt",
                        std::string("model of ") + kPeakShapeNames[static_cast<int>(shape)], told);
  }
  EXPECT_EQ(Refused([&] { PeakModel({}, PeakShape::Gauss, look); }), "There is no peak to fit.");
}

TEST(ResultsStory, OfManyPeaksInGroups) {
  for (const bool weighed : {false, true}) {
    TxyGraph graph;
    TSeries& series = Add(graph, "M", 1301, 0.1, [](double x) {
      double y = 1 + 0.02 * x + 0.02 * std::sin(1000 * x);
      for (int i = 0; i < 12; ++i) y += Bell(x, 8 + 10 * i, 5 + i % 4, 3 + 0.2 * i);
      return y;
    });
    if (weighed) {
      PointErrors errors;
      errors.y = {ErrorKind::Percent, 2};
      series.SetErrors(errors);
    }
    const PeakTable table = MakePeakTable(graph, series, {.times_noise = 20});
    series.Fit().SetSettings(PeakModel(table.peaks, PeakShape::Gauss, {}), MarkModified::Yes);
    NoProgress progress;
    const PeakGroupsFit fit =
        FitPeakGroups(PrepareFit(series, {.points = FitPointChoice::All}), progress);
    Lines told = {fit.told, fit.verdict.summary,
                  Text(fit.model.parameters[0].Value) + " " + Text(fit.model.parameters[1].Value)};
    for (const FittedPeak& peak : fit.peaks) told.push_back(Told(peak));
    testing::ExpectTold("results/stories.txt",
                        weighed ? "peaks in groups, by errors" : "peaks in groups", told);
  }
}

TEST(ResultsStory, OfMarksAtPeaks) {
  Lines told;
  for (const double x : {0.0, 12.3456, -0.00001234567, 1e-7, 123456.0, 1.5e300}) {
    std::string line = Text(x) + ":";
    for (const PeakCaptions captions :
         {PeakCaptions{}, PeakCaptions{0, 4}, PeakCaptions{1, 2}, PeakCaptions{4, 17},
          PeakCaptions{9, 1}, PeakCaptions{-3, 3}})
      line += " " + PeakCaption(x, captions);
    told.push_back(line);
  }
  TxyGraph graph;
  TSeries& series = AddPeaks(graph);
  Mark mark;
  mark.id = 2;
  graph.Marks().SetMark(mark);
  Appearance look = graph.GetAppearance();
  look.marks_are_shown = false;
  graph.SetAppearance(look);
  for (const double noise : {0.0, 0.2, 0.5, 90.0})
    told.push_back(Text(noise) + " %: " +
                   std::to_string(PeaksOn(graph, series, {.noise_percent = noise}).size()));
  for (const std::int32_t id : MarkPeaks(graph, PeaksOn(graph, series, {.noise_percent = 0.2}), {}))
    told.push_back(std::to_string(id) + " " + graph.Marks().FindMark(id)->caption);
  told.push_back(std::to_string(graph.Marks().CurrentId()) + " shown " +
                 std::to_string(graph.GetAppearance().marks_are_shown));
  for (const bool log : {true, false}) {
    TAxis& axis = graph.Axis(AxisId::Y);
    AxisState state = axis.State();
    state.AutoSizing = false;
    state.LogScale = log;
    state.ShowAsTime = !log;
    for (const double min : {-1.0, 0.0, 0.5, 1.0}) {
      state.Min = min, state.Max = 30;
      axis.SetState(state);
      told.push_back((log ? "log " : "time ") + Text(min) + ": " +
                     Refused([&] { PeaksOn(graph, series, {}); }));
    }
  }
  testing::ExpectTold("results/stories.txt", "marks at peaks", told);
}

TEST(ResultsStory, OfTwoSamples) {
  TxyGraph graph;
  const TSeries& first =
      Add(graph, "A", 40, 1, [](double x) { return x == 7 ? 30 : std::fmod(x * x, 11); });
  const TSeries& second = Add(graph, "B", 25, 1, [](double x) { return 4 + std::fmod(3 * x, 7); });
  const TSeries& flat = Add(graph, "C", 3, 1, [](double) { return 5.0; });
  const TSeries& gap = Add(graph, "D", 4, 1, [](double x) { return x == 2 ? kUndefined : x; });
  const TSeries* const pairs[][2] = {{&first, &second}, {&second, &first}, {&first, &flat},
                                     {&flat, &flat},    {&gap, &first},    {&gap, &gap}};
  Lines told;
  for (const auto& pair : pairs) {
    const SampleReport report = CompareSeries(*pair[0], *pair[1]);
    std::string rows = pair[0]->SeriesName() + pair[1]->SeriesName();
    for (const SampleRow& row : report.rows)
      rows += std::string(" ") + row.name + " " + Text(row.first) + " " + Text(row.second);
    told.push_back(rows);
    told.insert(told.end(), report.sentences.begin(), report.sentences.end());
  }
  TxyGraph picture;
  DrawSamples(picture, first, second);
  for (std::size_t i = 0; i < picture.SeriesCount(); ++i)
    told.push_back(Told(picture.Series(i), i % 3 == 2 ? 3 : 1));
  testing::ExpectTold("results/stories.txt", "two samples", told);
}

FitSettings Line(const std::string& expression) {
  FitSettings model;
  model.Expression = expression;
  for (const char* name : {"a", "b"}) {
    ParameterSettings& one = model.parameters.emplace_back();
    one.Name = name;
    one.Value = 1;
    one.Vary = true;
  }
  return model;
}

TEST(ResultsStory, OfAFitOverSeveral) {
  TxyGraph graph;
  for (int k = 0; k < 3; ++k) {
    TSeries& series = Add(graph, std::string(1, static_cast<char>('p' + k)), 12, 1,
                          [=](double x) { return (k + 1) * x + 3 + 0.01 * std::cos(100 * x + k); });
    series.Fit().SetSettings(Line("a*x+b"), MarkModified::Yes);
  }
  NoProgress progress;
  const std::vector<std::size_t> chosen = {0, 2};
  const std::vector<std::string> shared = {"b"};
  JointFit fit = RunJointFit(PrepareJointFit(graph, chosen, {}), shared, progress);
  ApplyJointFit(graph, chosen, shared, fit);
  Lines told;
  const auto changed = [&](const std::string& deed) {
    told.push_back(deed + ": " + FitChangedText(graph, graph.Series(0)) + " | " +
                   FitChangedText(graph, graph.Series(graph.SeriesCount() - 1)));
  };
  for (const std::size_t i : chosen) {
    const FitResult& result = *graph.Series(i).Fit().Result();
    told.push_back(result.verdict.summary);
    told.insert(told.end(), result.verdict.notes.begin(), result.verdict.notes.end());
    for (std::size_t k = 0; k < result.names.size(); ++k)
      told.push_back(result.names[k] + " " + Text(result.values[k]) + "±" +
                     Text(result.statistics.standard_errors[k]));
    for (const FitOfSeveral::Member& one : result.together->members)
      told.push_back(one.data_set + " " + std::to_string(one.points) + " " +
                     Text(one.sum_of_squares) + " " + Text(one.r_squared) + " " +
                     std::to_string(one.verdict.notes.size()));
  }
  changed("fitted");
  graph.Series(1).AddPoint(50, 1);
  changed("another changed");
  const GraphState kept = graph.State();
  graph.Series(2).AddPoint(50, 1);
  changed("one changed");
  graph.SetState(kept);
  graph.DeleteSeries(0);
  changed("one deleted");
  testing::ExpectTold("results/stories.txt", "a fit over several", told);
}

TEST(ResultsStory, OfColoursOfFitsAndNewDataSets) {
  Lines told;
  TxyGraph graph;
  const Color colors[] = {Color::FromRgb(200, 100, 40), Color::FromRgb(32, 32, 32),
                          Color::FromRgb(32, 32, 33), Color::FromRgb(0, 0, 255),
                          Color::FromRgb(1, 2, 3)};
  const auto curves = [&](const std::string& deed) {
    ColourFitsByDataSet(graph);
    std::string line = deed + ":";
    for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
      const Color c = graph.Series(i).ModelCurveColor();
      line += " " + std::to_string(c.Red()) + "," + std::to_string(c.Green()) + "," +
              std::to_string(c.Blue());
    }
    told.push_back(line);
  };
  for (int i = 0; i < 5; ++i) {
    TSeries& series = Add(graph, std::to_string(i), 5, 1, [](double x) { return x; });
    SeriesStyle style = series.Style();
    style.line_color = colors[i];
    style.symbol_color = Color::FromRgb(100, 200, 100);
    style.show_symbols = i == 3;
    style.visible = i != 4;
    series.SetStyle(style);
    if (i == 2) continue;  // without a model
    FitSettings model = Line("a*x+b");
    if (i == 1) model.CurveColor = FitSettings().CurveColor;
    series.Fit().SetSettings(model, MarkModified::Yes);
    NoProgress progress;
    ApplyFit(series, RunFit(PrepareFit(series, {}), progress));
    series.Fit().SetStatus(FitStatus::cf_FinResult);
    curves(std::to_string(i));
  }
  for (const std::string name : {"", "  ", "0", "new"})
    told.push_back("'" + name + "': " + NameRefusal(graph, name));
  for (const AxisId axis : {AxisId::Y, AxisId::Y2}) {
    SetLook(graph.Axis(AxisId::Y2), &AxisLook::ShowAxis, false);
    SeriesStyle style = graph.Series(0).Style();
    style.symbol_size = 11, style.line_width = 3, style.connect_points = axis == AxisId::Y;
    graph.Series(0).SetStyle(style);
    auto computed = std::make_unique<TSeries>();
    computed->AddPoint(1, 2);
    const TSeries& added = AddNewSeries(graph, std::move(computed), graph.Series(0),
                                        {axis == AxisId::Y ? "on Y" : "on Y2", axis});
    told.push_back(Told(added, 1) + " size " + std::to_string(added.Style().symbol_size) +
                   " Y2 shown " + std::to_string(graph.Axis(AxisId::Y2).Look().ShowAxis));
  }
  told.push_back("live " + std::to_string(HasLiveSource(graph)) + LiveSourceText(graph.Series(1)));
  graph.Series(1).Source().DataSource = DataSourceKind::Dde;
  told.push_back("live " + std::to_string(HasLiveSource(graph)) + " " +
                 LiveSourceText(graph.Series(1)));
  testing::ExpectTold("results/stories.txt", "colours and new DataSets", told);
}

TEST(ResultsStory, OfRoundedValues) {
  Lines told;
  for (const double value : {0.0, 1.0, -12.3456, 99.96, 123456.0, 1.23456e-5, 9.9996e8, 4e-300}) {
    std::string line = Text(value) + ":";
    for (const double error :
         {0.0, 0.05, 0.0996, 0.94, 0.95, 0.96, 1.0, 9.5, 99.5, 123.4, 3e-9, 2e12, kUndefined}) {
      const RoundedValue rounded = Rounded(value, error);
      line += " " + rounded.value + "(" + rounded.error + ")" +
              (rounded.exponent == 0 ? "" : "e" + std::to_string(rounded.exponent)) + "|" +
              PlusMinusText(value, error, "");
    }
    told.push_back(line);
  }
  told.push_back(PlusMinusText(1.5, 0.1, "mV") + "; " + PlusMinusText(1.5e9, 1e7, "mV"));
  testing::ExpectTold("results/stories.txt", "rounded values", told);
}

}  // namespace
}  // namespace tarnwick
