#include "app/analysis/analysis_feature.h"

namespace tarnwick {

Feature AnalysisFeature() {
  static constexpr Command kCommands[] = {
      {.name = "FindArea1",
       .caption = "&Integrate",
       .menu_caption = "&Area",
       .hint = "Find Area|Calculate Area for Current DataSet",
       .icon = "find-area",
       .menu = Menu::Analysis,
       .tool = ToolGroup::Data,
       .enabled = HasDataSet},
      {.name = "AnalysisIntegrate1",
       .caption = "&Integrate",
       .icon = "integrate",
       .menu = Menu::Analysis,
       .enabled = HasDataSet},
      {.name = "findSum1",
       .caption = "&Sum of data points",
       .hint = "Find Sum|Calculate Sum of data points for Current DataSet",
       .icon = "find-sum",
       .menu = Menu::Analysis,
       .enabled = HasDataSet},
      {.name = "findRunSum1",
       .caption = "&Running Sum",
       .hint = "Find Running Sum|Calculate Running Sum of data points for Current DataSet",
       .icon = "running-sum",
       .menu = Menu::Analysis,
       .enabled = HasDataSet},
      {.name = "fndHistogram1",
       .caption = "&Histogram",
       .hint = "Calculate histogram",
       .icon = "histogram",
       .menu = Menu::Analysis,
       .enabled = HasDataSet},
      {.name = "AnalysisDifferentiate1",
       .caption = "&Differentiate",
       .icon = "differentiate",
       .menu = Menu::Analysis,
       .enabled = HasDataSet},
      {.name = "FindPeaks1",
       .caption = "Peek &Peaks",
       .hint = "Define Peaks|Define Peaks in DataSet",
       .icon = "find-peaks",
       .menu = Menu::Analysis,
       .enabled = HasDataSet},
      {.name = "AnalysisAverage1",
       .caption = "&Average DataSets",
       .icon = "average",
       .menu = Menu::Analysis,
       .enabled = HasDataSet},
  };
  return {.name = "analysis", .commands = {kCommands}};
}

}  // namespace tarnwick
