// An expression over DataSets.
#include <string>
#include <vector>

#include "analysis/arithmetic.h"
#include "base/error.h"
#include "base/number_text.h"
#include "base/undefined.h"
#include "base/word_list.h"
#include "results/tools/tool_table.h"

namespace tarnwick {
namespace {

const ToolSetting kSettings[] = {
    {"expression", "Expression", control::kExpression, std::string("A - B"),
     "What is computed at each X of A, of A to D and X"},
};

constexpr OtherInput kOthers[] = {
    {"b", "B", "DataSet B", OtherInput::Need::MayLack},
    {"c", "C", "DataSet C", OtherInput::Need::MayLack},
    {"d", "D", "DataSet D", OtherInput::Need::MayLack},
};

/// "A - B, A: Rate, B: Dark".
std::string TitleText(const std::string& expression, const std::vector<TSeries*>& series) {
  std::string title = expression;
  for (std::size_t i = 0; i < series.size(); ++i)
    title += std::string(", ") + static_cast<char>('A' + i) + ": " + series[i]->SeriesName();
  return title;
}

void SetErrors(TSeries& series, const std::vector<double>& errors) {
  PointErrors made;
  made.y.kind = ErrorKind::Column;
  made.y_values = ColumnAlong(series.Points(), errors);
  series.SetErrors(std::move(made));
}

std::string Told(const ArithmeticResult& result, const ToolInput& input) {
  const auto counted = [](std::size_t count) {
    return Counted(static_cast<std::int64_t>(count), "point");
  };
  std::string told;
  if (result.beyond > 0)
    told = counted(result.beyond) + " of A left out: another DataSet has no value there.";
  if (result.without_value > 0)
    AddSentence(told, counted(result.without_value) + " of A left out: no value comes out there.");
  if (!result.error.empty())
    AddSentence(told, "Errors of Y go on as those of values independent of each other.");
  bool x_errors = false;
  for (const TSeries* series : input.series) x_errors = x_errors || HasXErrors(series->Errors());
  if (x_errors) AddSentence(told, "Errors of X are left out.");
  return told;
}

Computed Compute(const ToolInput& input) {
  const std::string& expression = input.settings.Text("expression");
  const std::vector<const TDataSeries*> operands(input.series.begin(), input.series.end());
  if (input.Source().Points().Empty())
    throw Error("No Data Found in DataSet " + input.Source().SeriesName() + "!");
  const ArithmeticResult result = Calculate(expression, operands);
  if (result.x.empty()) throw Error("The expression has a value at no X of A.");
  Computed computed{
      SeriesLike(input.Source(), result.x, result.y, {}, TitleText(expression, input.series)),
      Told(result, input)};
  if (!result.error.empty()) SetErrors(*computed.series, result.error);
  return computed;
}

}  // namespace

constinit const Tool kComputeTool = {
    .name = "compute",
    .caption = "Compute by Expression",
    .purpose = "An expression over DataSets, at the X of the first",
    .suffix = "_CAL",
    .settings = kSettings,
    .others = kOthers,
    .along = Always<AlongLine::Branches>,
    .compute = Compute};

}  // namespace tarnwick
