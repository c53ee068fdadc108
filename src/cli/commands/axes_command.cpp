#include <array>
#include <cmath>
#include <memory>
#include <vector>

#include "base/error.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "cli/commands/commands.h"
#include "cli/options/input_graph.h"
#include "cli/options/size_option.h"

namespace tarnwick::cli {
namespace {

struct AxesOptions {
  InputArguments input;
  std::string size = "800x600";
  std::vector<std::string> log_axes;
  std::vector<std::string> time_axes;  // AXIS=TYPE
  std::optional<int> min_steps;
  std::optional<int> max_steps;
  std::vector<std::string> pixels;
};

struct AxisName {
  std::string_view option;
  std::string_view shown;
  AxisId id;
};
constexpr std::array<AxisName, 3> kAxes = {
    {{"x", "X", AxisId::X}, {"y", "Y", AxisId::Y}, {"y2", "Y2", AxisId::Y2}}};

AxisId AxisNamed(const std::string& text) {
  const std::string lower = LowerAscii(text);
  for (const AxisName& axis : kAxes) {
    if (axis.option == lower) return axis.id;
  }
  throw UsageError("\"" + text + "\" is no axis; x, y and y2 are");
}

void ApplyTime(TxyGraph& graph, const std::string& text) {
  const std::size_t equals = text.find('=');
  const std::optional<std::int32_t> type =
      equals == std::string::npos ? std::nullopt : ParseInteger(text.substr(equals + 1));
  if (!type || *type < 0 || *type > static_cast<int>(DateTickType::Automatic)) {
    throw UsageError("--time takes AXIS=TYPE, TYPE 0 to 12");
  }
  TAxis& axis = graph.Axis(AxisNamed(text.substr(0, equals)));
  axis.SetShowAsTime(true);
  axis.SetDateTickType(static_cast<DateTickType>(*type));
}

void ApplySteps(TxyGraph& graph, const AxesOptions& options) {
  Appearance appearance = graph.GetAppearance();
  // The two rules refer to each other: whichever order lets both pass is the one that was meant.
  for (int round = 0; round < 2; ++round) {
    if (options.min_steps) appearance.min_steps = *options.min_steps;
    graph.SetAppearance(appearance);
    appearance = graph.GetAppearance();
    if (options.max_steps) appearance.max_steps = *options.max_steps;
    graph.SetAppearance(appearance);
    appearance = graph.GetAppearance();
  }
}

Json AxisJson(const AxisName& name, const TAxis& axis) {
  Json ticks = Json::Array();
  for (const Tick& tick : axis.Ticks()) {
    if (!tick.major) continue;
    ticks.Append({{"value", JsonNumber(tick.value)},
                  {"pixel", axis.Scale().PixelOf(tick.value)},
                  {"label", tick.label}});
  }
  return {{"name", name.shown},
          {"min", JsonNumber(axis.Min())},
          {"max", JsonNumber(axis.Max())},
          {"step", JsonNumber(axis.StepSize())},
          {"decimals", axis.Look().LabelDecimals},
          {"log", axis.LogScale()},
          {"log_divisions", axis.LogCycleDivisions()},
          {"narrow_log", axis.State().NarrowLogRange},
          {"division_labels", axis.State().DivisionLabels},
          {"pixels_per_unit", JsonNumber(axis.PixelsPerUnit())},
          {"ticks", std::move(ticks)}};
}

Json PixelJson(const TxyGraph& graph, const std::string& text) {
  const auto [x, y] = ParsePair(text);
  return {{"x", JsonNumber(x)},
          {"y", JsonNumber(y)},
          {"px", graph.Axis(AxisId::X).Scale().PixelOf(x)},
          {"py", graph.Axis(AxisId::Y).Scale().PixelOf(y)}};
}

void PrintAxesText(const TxyGraph& graph, const AxesOptions& options, std::ostream& out) {
  for (const AxisName& name : kAxes) {
    const TAxis& axis = graph.Axis(name.id);
    out << name.shown << ": " << ShortestText(axis.Min()) << " to " << ShortestText(axis.Max())
        << ", step " << ShortestText(axis.StepSize()) << (axis.LogScale() ? ", logarithmic" : "")
        << '\n';
    for (const Tick& tick : axis.Ticks()) {
      if (!tick.major) continue;
      out << "  " << ShortestText(tick.value) << " at " << axis.Scale().PixelOf(tick.value);
      if (!tick.label.empty()) out << " \"" << tick.label << '"';
      out << '\n';
    }
  }
  for (const std::string& text : options.pixels) {
    const auto [x, y] = ParsePair(text);
    out << text << " at " << graph.Axis(AxisId::X).Scale().PixelOf(x) << ','
        << graph.Axis(AxisId::Y).Scale().PixelOf(y) << '\n';
  }
}

void RunAxes(const AxesOptions& options, Output& output) {
  const PictureSize size = ParseSize(options.size);
  // Refused before anything is printed.
  for (const std::string& text : options.pixels) static_cast<void>(ParsePair(text));
  const InputGraph input = ReadInput(options.input, output);
  TxyGraph& graph = *input.graph;
  ApplySteps(graph, options);
  for (const std::string& axis : options.log_axes) graph.Axis(AxisNamed(axis)).SetLogScale(true);
  for (const std::string& axis : options.time_axes) ApplyTime(graph, axis);
  graph.Resize(size.width, size.height);
  graph.UpdateScales();
  if (!graph.ScaleError().empty()) throw Error(graph.ScaleError());
  if (!output.IsJson()) {
    PrintAxesText(graph, options, output.Text());
    return;
  }
  Json axes = Json::Array();
  for (const AxisName& name : kAxes) axes.Append(AxisJson(name, graph.Axis(name.id)));
  Json pixels = Json::Array();
  for (const std::string& text : options.pixels) pixels.Append(PixelJson(graph, text));
  output.Document({{"axes", std::move(axes)}, {"pixels", std::move(pixels)}});
}

}  // namespace

void DeclareAxes(Command& command, Action& action) {
  auto options = std::make_shared<AxesOptions>();
  AddInput(command, options->input);
  command.Add("--size", options->size, "Client size in pixels, WxH");
  command.Add("--log", options->log_axes, "Make an axis logarithmic: x, y or y2").Repeated();
  command.Add("--time", options->time_axes, "Make an axis a time axis: AXIS=TYPE, TYPE 0 to 12")
      .Repeated();
  command.Add("--min-steps", options->min_steps, "Fewest steps shown");
  command.Add("--max-steps", options->max_steps, "Most steps shown");
  command.Add("--pixel", options->pixels, "Data values X,Y to answer in pixels").Repeated();
  OnCommand(command, action, options, &RunAxes);
}

}  // namespace tarnwick::cli
