#include <cmath>
#include <random>

#include "analysis/fits/fit_run.h"
#include "base/day_number.h"
#include "base/error.h"
#include "base/undefined.h"
#include "graph/files/import_into_graph.h"
#include "scene.h"

namespace tarnwick::gallery {
namespace {

using Path = std::filesystem::path;

struct Start {
  const char* name;
  double value;
};

/// Draws the formula as fitted to the DataSet from there.
void ShowFit(TSeries& series, const char* formula, std::initializer_list<Start> starts) {
  FitSettings model;
  model.Expression = formula;
  for (const Start& start : starts) {
    ParameterSettings parameter;
    parameter.Name = start.name;
    parameter.Value = start.value;
    parameter.Vary = true;
    model.parameters.push_back(parameter);
  }
  model.ProcType = FitProcType::cfp_Newton;
  model.Status = FitStatus::cf_FinResult;
  model.CurveColor = Color::FromRgb(0xC0, 0x20, 0x20);
  model.CurveWidth = 2;
  series.Fit().SetSettings(model, true);
  NoProgress progress;
  const FitResult result = RunFit(PrepareFit(series), progress);
  if (Failed(result.outcome.why)) throw Error(result.verdict.summary);
  ApplyFit(series, result);
}

/// Counts of a decaying source with the curve fitted to them.
void BuildFit(TxyGraph& graph, const Path& examples) {
  ImportIntoGraph(graph, examples / "decay.dat");
  TSeries& series = graph.Series(0);
  ShowFit(series, "a*exp(-x/tau)+b", {{"a", 400}, {"tau", 200}, {"b", 10}});
  Finish(graph, "Decay of Ba-137m");
  ShowSymbols(series, 5);
  Legend legend = graph.GetLegend();
  legend.visible = true;
  legend.left = -24;
  legend.top = 50;
  graph.SetLegend(legend);
}

void BuildOne(TxyGraph& graph, const Path& examples) {
  ImportIntoGraph(graph, examples / "pendulum.csv");
  Finish(graph, "pendulum");
}

void BuildThree(TxyGraph& graph, const Path& examples) {
  ImportIntoGraph(graph, examples / "reactor_log.tsv");
  Finish(graph, "reactor_log");
}

void BuildTwelve(TxyGraph& graph, const Path&) {
  for (int order = 0; order < 12; ++order) {
    AddFunction(graph, "J" + std::to_string(order) + "(x)", 0, 20, 201,
                [=](double x) { return std::cyl_bessel_j(order, x); });
  }
  SetTitles(graph, "x", "J(x)");
  Finish(graph, "Bessel functions of the first kind");
}

void BuildLongNames(TxyGraph& graph, const Path&) {
  AddFunction(graph, "Specific heat capacity of the sample as received, first heating", 20, 180, 41,
              [](double t) { return 1.2 + 0.004 * t; });
  AddFunction(
      graph, "Specific heat capacity after annealing for 24 h at 150 degrees under argon", 20, 180,
      41, [](double t) { return 1.1 + 0.0045 * t + 0.6 * std::exp(-std::pow((t - 95) / 9, 2)); });
  SetTitles(graph, "Temperature of the sample holder, corrected for the thermocouple's delay (°C)",
            "Specific heat capacity at constant pressure, baseline subtracted (J/(g·K))");
  Finish(graph,
         "Differential scanning calorimetry of poly(ethylene terephthalate), second series, "
         "instrument 3");
}

void BuildTiny(TxyGraph& graph, const Path&) {
  AddFunction(graph, "charge", 0, 2.4e-9, 61,
              [](double t) { return 1.602e-19 * (1 - std::exp(-t / 5e-10)); });
  SetTitles(graph, "Time (s)", "Charge (C)");
  Finish(graph, "Tiny values");
}

void BuildHuge(TxyGraph& graph, const Path&) {
  AddFunction(graph, "mass", 0, 4e20, 61,
              [](double r) { return 1.989e30 * std::pow(r / 4e20, 2) - 4e29; });
  SetTitles(graph, "Radius (m)", "Mass (kg)");
  Finish(graph, "Huge values");
}

void BuildOffset(TxyGraph& graph, const Path&) {
  std::mt19937 random(3);
  std::normal_distribution<double> normal(0, 0.0004);
  AddFunction(graph, "frequency", 100000, 100060, 61,
              [&](double t) { return 9192631770.0 + 0.002 * std::sin(t / 6) + normal(random); });
  SetTitles(graph, "Second of the run", "Frequency (Hz)");
  Finish(graph, "A small change of a large value");
}

void BuildLogarithmic(TxyGraph& graph, const Path& examples) {
  ImportIntoGraph(graph, examples / "diode.txt");
  graph.Axis(AxisId::Y).SetLogScale(true);
  Finish(graph, "Silicon diode");
}

void BuildLogLog(TxyGraph& graph, const Path&) {
  std::mt19937 random(5);
  std::normal_distribution<double> normal(0, 0.25);
  std::vector<double> x;
  std::vector<double> y;
  for (double decade = 0; decade <= 5; decade += 0.01) {
    x.push_back(std::pow(10, decade));
    const double f = x.back();
    y.push_back(std::exp(normal(random)) * (3e-9 / f + 2e-12 / (1 + std::pow(f / 2e4, 2))));
  }
  AddData(graph, "noise", x, y);
  SetTitles(graph, "Frequency (Hz)", "Power density (V²/Hz)");
  graph.Axis(AxisId::X).SetLogScale(true);
  graph.Axis(AxisId::Y).SetLogScale(true);
  SetLook(graph.Axis(AxisId::X), &AxisLook::Gridlines, true);
  SetLook(graph.Axis(AxisId::Y), &AxisLook::Gridlines, true);
  Finish(graph, "Noise of an amplifier");
}

void BuildNarrowLog(TxyGraph& graph, const Path&) {
  AddFunction(graph, "viscosity", 20, 90, 36, [](double t) { return 1.8 * std::exp(-t / 45); });
  graph.Axis(AxisId::Y).SetLogScale(true);
  SetTitles(graph, "Temperature (°C)", "Viscosity (mPa·s)");
  Finish(graph, "Logarithmic axis of less than a decade");
}

void BuildDates(TxyGraph& graph, const Path& examples) {
  ImportIntoGraph(graph, examples / "river_temperature.csv");
  Finish(graph, "river_temperature");
}

void BuildClock(TxyGraph& graph, const Path&) {
  constexpr double kDay = 45000.25;  // 15 March 2023, six o'clock
  AddFunction(graph, "power", kDay, kDay + 0.5, 145, [](double day) {
    const double hour = (day - kDay) * 24;
    return std::max(0.0, 620 * std::sin((hour - 0.5) / 11 * 3.14159)) *
           (1 - 0.35 * std::exp(-std::pow((hour - 7) / 0.6, 2)));
  });
  graph.Axis(AxisId::X).SetShowAsTime(true);
  SetTitles(graph, "Time of day", "Irradiance (W/m²)");
  Finish(graph, "Hours of a day");
}

void BuildSecondAxis(TxyGraph& graph, const Path&) {
  AddFunction(graph, "Temperature", 0, 60, 61,
              [](double t) { return 20 + 62 * (1 - std::exp(-t / 14)); });
  TSeries& pressure = AddFunction(graph, "Pressure", 0, 60, 31,
                                  [](double t) { return 101325 + 2600 * t * std::exp(-t / 25); });
  SeriesStyle style = pressure.Style();
  style.first_axis = false;
  pressure.SetStyle(style);
  SetTitles(graph, "Time (min)", "Temperature (°C)");
  pressure.SetSeriesName("Pressure (Pa)");
  Finish(graph, "Two quantities");
}

void BuildNoise(TxyGraph& graph, const Path&) {
  std::mt19937 random(7);
  std::normal_distribution<double> normal(0, 1);
  double walk = 0;
  AddFunction(graph, "signal", 0, 1000, 200000, [&](double) { return normal(random); });
  AddFunction(graph, "sum", 0, 1000, 200000, [&](double) { return walk += normal(random) / 60; });
  SetTitles(graph, "Time (s)", "Signal (mV)");
  Finish(graph, "200000 points each");
}

void BuildGaps(TxyGraph& graph, const Path&) {
  AddFunction(graph, "tan x", -5, 5, 501, [](double x) {
    const double y = std::tan(x);
    return std::abs(y) > 8 ? kUndefined : y;
  });
  AddFunction(graph, "sensor with failures", -5, 5, 51, [](double x) {
    return (x > -2.5 && x < -1.5) || (x > 2 && x < 3) ? kUndefined : 3 * std::cos(x) - 2;
  });
  SetTitles(graph, "x", "y");
  Finish(graph, "Values that do not exist");
}

void BuildRegression(TxyGraph& graph, const Path&) {
  std::mt19937 random(11);
  std::normal_distribution<double> normal(0, 0.5);
  TSeries& series = AddFunction(graph, "calibration", 0, 10, 41,
                                [&](double x) { return 1.3 + 0.82 * x + normal(random); });
  SetTitles(graph, "Concentration (mmol/l)", "Absorbance");
  Finish(graph, "Regression line and limits");
  ShowSymbols(series, 6);
  SeriesStyle style = series.Style();
  style.bound_line_mode = BoundLineMode::Both;
  style.bounds_mode = BoundsMode::StandardDeviations;
  style.upper_bound = style.lower_bound = 1;
  style.line_width = 2;
  series.SetStyle(style);
  series.SetRegressionType(RegressionType::Line);
}

/// Pearson's line with York's weights (Canadian Journal of Physics 44, 1966).
void BuildErrorsOfBoth(TxyGraph& graph, const Path&) {
  constexpr double kX[] = {0, 0.9, 1.8, 2.6, 3.3, 4.4, 5.2, 6.1, 6.5, 7.4};
  constexpr double kY[] = {5.9, 5.4, 4.4, 4.6, 3.5, 3.7, 2.8, 2.8, 2.4, 1.5};
  constexpr double kWeightsOfX[] = {1000, 1000, 500, 800, 200, 80, 60, 20, 1.8, 1};
  constexpr double kWeightsOfY[] = {1, 1.8, 4, 8, 20, 20, 70, 70, 100, 500};
  TSeries& series = AddData(graph, "y", kX, kY);
  PointErrors errors{{ErrorKind::Column, 0}, {ErrorKind::Column, 0}, {}, {}};
  for (std::int32_t i = 0; i < 10; ++i) {
    errors.x_values.Set(i + 1, 1 / std::sqrt(kWeightsOfX[i]));
    errors.y_values.Set(i + 1, 1 / std::sqrt(kWeightsOfY[i]));
  }
  series.SetErrors(errors);
  ShowFit(series, "a+b*x", {{"a", 5}, {"b", 0}});
  SetTitles(graph, "x", "y");
  Finish(graph, "Errors of both coordinates");
  ShowSymbols(series, 6);
}

/// Some bars reach below 0, where a logarithmic axis has no place.
void BuildCounts(TxyGraph& graph, const Path&) {
  std::mt19937 random(2);
  TSeries& series = AddFunction(graph, "counts", 0, 60, 61, [&](double t) {
    return std::poisson_distribution<int>(800 * std::exp(-t / 7) + 1.5)(random);
  });
  series.SetErrors({{ErrorKind::Counts, 0}, {}, {}, {}});
  graph.Axis(AxisId::Y).SetLogScale(true);
  SetTitles(graph, "Time (min)", "Counts in 10 s");
  Finish(graph, "Counts with their square roots");
  ShowSymbols(series, 5);
}

}  // namespace

std::vector<Scene> DataScenes() {
  return {
      {"scale-100", "Fit, at 1 device pixel a pixel", BuildFit},
      {"scale-150", "The same at 1.5", BuildFit, 1.5},
      {"scale-200", "The same at 2", BuildFit, 2},
      {"one-dataset", "1 DataSet", BuildOne},
      {"three-datasets", "3 DataSets", BuildThree},
      {"twelve-datasets", "12 DataSets", BuildTwelve},
      {"long-names", "Long names", BuildLongNames},
      {"tiny-values", "Tiny values", BuildTiny},
      {"huge-values", "Huge values", BuildHuge},
      {"large-offset", "Many equal digits", BuildOffset},
      {"logarithmic", "Logarithmic Y", BuildLogarithmic},
      {"double-logarithmic", "Logarithmic X and Y, grid", BuildLogLog},
      {"narrow-logarithmic", "Less than a decade", BuildNarrowLog},
      {"dates", "Dates", BuildDates},
      {"time-of-day", "Time of day", BuildClock},
      {"second-axis", "Second Y axis", BuildSecondAxis},
      {"dense", "Dense data", BuildNoise},
      {"gaps", "Undefined values", BuildGaps},
      {"regression", "Regression and bound lines", BuildRegression},
      {"errors", "Errors of X and Y", BuildErrorsOfBoth},
      {"errors-logarithmic", "Errors on a logarithmic axis", BuildCounts},
  };
}

}  // namespace tarnwick::gallery
