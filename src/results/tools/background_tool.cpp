// A DataSet less the base line that its points suggest, or that line.
#include <array>
#include <limits>
#include <string>

#include "analysis/background.h"
#include "analysis/smoothing.h"
#include "results/tools/tool_table.h"

namespace tarnwick {
namespace {

enum class Method { RubberBand, Asymmetric };
constexpr std::array kMethods = {
    FieldChoice{Method::RubberBand, "Rubber band"},
    FieldChoice{Method::Asymmetric, "arPLS, asymmetric least squares"}};
constexpr double kEvenEnough = 0.01;  // share of a step that a base line does not feel

bool IsAsymmetric(const ToolSettings& settings) {
  return settings.Chosen<Method>("method") == Method::Asymmetric;
}

const ToolSetting kSettings[] = {
    {"method", "Method", control::ChoiceOf(kMethods), static_cast<std::int32_t>(Method::Asymmetric),
     "How the base line is found"},
    {"smoothness", "Smoothness",
     control::RealWithin(1e-300, std::numeric_limits<double>::infinity()), ArPls().smoothness,
     "Of arpls: the greater, the stiffer; 1e2 to 1e9", IsAsymmetric},
    {"line", "Make the base line itself", control::kCheckBox, false, "Make the base line itself"},
};

Computed Compute(const ToolInput& input) {
  const TSeries& source = input.Source();
  ToolColumns columns = ColumnsOf(source);
  const bool asymmetric = IsAsymmetric(input.settings);
  const std::vector<double> line =
      asymmetric
          ? AsymmetricBaseLine(columns.y, {.smoothness = input.settings.Number("smoothness")})
          : RubberBand(columns.x, columns.y);
  std::string told;
  if (asymmetric && columns.x.size() > 2 && !IsEvenlySpaced(columns.x, kEvenEnough)) {
    told = "X is not evenly spaced; the base line takes the points as if it were.";
  }
  for (std::size_t i = 0; i < line.size(); ++i)
    columns.y[i] = input.settings.Is("line") ? line[i] : columns.y[i] - line[i];
  AddSentence(told, LeftOutText(source, columns));
  return {SeriesLike(source, columns.x, columns.y), told};
}

}  // namespace

constinit const Tool kBackgroundTool = {.name = "background",
                                        .caption = "Base Line",
                                        .purpose = "A DataSet less the base line under its peaks",
                                        .suffix = "_BLC",
                                        .settings = kSettings,
                                        .compute = Compute};

}  // namespace tarnwick
