#include "app/analysis/analysis_feature.h"

#include "analysis/derived.h"
#include "app/analysis/average_dialog.h"
#include "app/analysis/integr_dialog.h"
#include "app/analysis/peaks_dialog.h"
#include "base/number_text.h"
#include "base/prompt.h"
#include "desk/document/document.h"

namespace tarnwick {
namespace {

/// "Graph_1.Rate" of the current DataSet.
std::string NameInWindow(const Document& document) {
  return "\"" + document.Name() + "." + document.Graph().CurrentSeries()->SeriesName() + "\"";
}

void TellArea(CommandContext& context) {
  const TSeries& series = *context.document->Graph().CurrentSeries();
  context.prompt.Tell("Area for DataSet   " + NameInWindow(*context.document) + " :  " +
                      GeneralText(AreaOf(series)));
}

void TellSum(CommandContext& context) {
  const TSeries& series = *context.document->Graph().CurrentSeries();
  context.prompt.Tell("Sum of " + std::to_string(series.PointCount()) + " data points for " +
                      NameInWindow(*context.document) + " :  " + GeneralText(SumOf(series)));
}

template <DerivedKind kMode>
void Integrate(CommandContext& context) {
  Txy_Integr(*context.document, kMode, context.prompt, context.dialog_parent).exec();
}

void Differentiate(CommandContext& context) {
  Txy_Differ(*context.document, context.prompt, context.dialog_parent).exec();
}

void Average(CommandContext& context) {
  Txy_Average(*context.document, context.prompt, context.dialog_parent).exec();
}

void FindPeaks(CommandContext& context) {
  Txy_Peaks(*context.document, context.prompt, context.dialog_parent).exec();
}

}  // namespace

Feature AnalysisFeature() {
  static constexpr Command kCommands[] = {
      {.name = "FindArea1",
       .caption = "&Integrate",
       .menu_caption = "&Area",
       .hint = "Find Area|Calculate Area for Current DataSet",
       .icon = "find-area",
       .menu = Menu::Analysis,
       .tool = ToolGroup::Data,
       .enabled = HasDataSet,
       .run = TellArea},
      {.name = "AnalysisIntegrate1",
       .caption = "&Integrate",
       .icon = "integrate",
       .menu = Menu::Analysis,
       .enabled = HasDataSet,
       .run = Integrate<DerivedKind::Integral>},
      {.name = "findSum1",
       .caption = "&Sum of data points",
       .hint = "Find Sum|Calculate Sum of data points for Current DataSet",
       .icon = "find-sum",
       .menu = Menu::Analysis,
       .enabled = HasDataSet,
       .run = TellSum},
      {.name = "findRunSum1",
       .caption = "&Running Sum",
       .hint = "Find Running Sum|Calculate Running Sum of data points for Current DataSet",
       .icon = "running-sum",
       .menu = Menu::Analysis,
       .enabled = HasDataSet,
       .run = Integrate<DerivedKind::RunningSum>},
      {.name = "fndHistogram1",
       .caption = "&Histogram",
       .hint = "Calculate histogram",
       .icon = "histogram",
       .menu = Menu::Analysis,
       .enabled = HasDataSet,
       .run = Integrate<DerivedKind::Histogram>},
      {.name = "AnalysisDifferentiate1",
       .caption = "&Differentiate",
       .icon = "differentiate",
       .menu = Menu::Analysis,
       .enabled = HasDataSet,
       .run = Differentiate},
      {.name = "FindPeaks1",
       .caption = "Peek &Peaks",
       .hint = "Define Peaks|Define Peaks in DataSet",
       .icon = "find-peaks",
       .menu = Menu::Analysis,
       .enabled = HasDataSet,
       .run = FindPeaks},
      {.name = "AnalysisAverage1",
       .caption = "&Average DataSets",
       .icon = "average",
       .menu = Menu::Analysis,
       .enabled = HasDataSet,
       .run = Average},
  };
  return {.name = "analysis", .commands = {kCommands}};
}

}  // namespace tarnwick
