#include "app/analysis/analysis_feature.h"

#include <utility>

#include "analysis/derived.h"
#include "app/analysis/average_dialog.h"
#include "app/analysis/compare_dialog.h"
#include "app/analysis/evaluate_panel.h"
#include "app/analysis/integr_dialog.h"
#include "app/analysis/peak_panel.h"
#include "app/analysis/peaks_dialog.h"
#include "app/analysis/tool_dialog.h"
#include "base/number_text.h"
#include "base/prompt.h"
#include "base/word_list.h"
#include "desk/document/document.h"
#include "results/area_figure.h"
#include "results/made_series.h"
#include "results/tools/tool_table.h"

namespace tarnwick {
namespace {

constexpr PanelRow kPanels[] = {{.name = "EvaluateAtX",
                                 .caption = "Evaluate at X",
                                 .side = DockSide::Right,
                                 .make = MakeEvaluatePanel},
                                {.name = "PeakTable",
                                 .caption = "Peak Table",
                                 .side = DockSide::Bottom,
                                 .make = MakePeakPanel}};

template <std::size_t kPanel>
void TogglePanel(CommandContext& context) {
  Toggle(context.panels, kPanels[kPanel]);
}

template <std::size_t kPanel>
bool ShowsPanel(const CommandContext& context) {
  return context.panels.IsShown(kPanels[kPanel]);
}

/// "Graph_1.Rate" of the current DataSet.
std::string NameInWindow(const Document& document) {
  return "\"" + document.Name() + "." + document.Graph().CurrentSeries()->SeriesName() + "\"";
}

void Inform(Prompt& prompt, std::string text) {
  prompt.Ask({std::move(text), {Answer::Ok}, Question::Kind::Information});
}

void TellArea(CommandContext& context) {
  const TSeries& series = *context.document->Graph().CurrentSeries();
  const AreaFigure figure = FindArea(series);
  Inform(context.prompt, "Area for DataSet   " + NameInWindow(*context.document) + " :  " +
                             GeneralText(figure.area) +
                             (figure.told.empty() ? "" : "\n\n" + figure.told));
}

void TellSum(CommandContext& context) {
  const TSeries& series = *context.document->Graph().CurrentSeries();
  Inform(context.prompt, "Sum of " + std::to_string(series.PointCount()) + " data points for " +
                             NameInWindow(*context.document) + " :  " + GeneralText(SumOf(series)));
}

template <DerivedKind kMode>
void Integrate(CommandContext& context) {
  Txy_Integr(*context.document, kMode, context.prompt, context.dialog_parent).exec();
}

void Differentiate(CommandContext& context) {
  Txy_Differ(*context.document, context.prompt, context.dialog_parent).exec();
}

template <const Tool& kTool>
void UseTool(CommandContext& context) {
  ToolDialog(*context.document, kTool, context.prompt, context.dialog_parent).exec();
}

void Compare(CommandContext& context) {
  CompareDialog(*context.document, context.dialog_parent).exec();
}

bool CanRecompute(const CommandContext& context) {
  return context.document && HasMadeSeries(context.document->Graph());
}

void Recompute(CommandContext& context) {
  Recomputed made;
  Document& document = *context.document;
  document.Edit("Recompute", [&](TxyGraph& graph) {
    made = RecomputeAll(graph);
    document.History().SetResultsOutdated(false);
  });
  std::string told = Counted(static_cast<std::int64_t>(made.count), "DataSet") + " computed anew.";
  if (made.told.empty()) return Inform(context.prompt, told);
  AddSentence(told, made.told);
  context.prompt.Tell(told);
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
      {.name = "AnalysisSmooth1",
       .caption = "Smoothin&g",
       .hint = "Smoothing|Make the current DataSet smoother, or its smooth derivative",
       .icon = "smooth",
       .menu = Menu::Analysis,
       .group = 1,
       .enabled = HasDataSet,
       .run = UseTool<kSmoothTool>},
      {.name = "AnalysisBaseLine1",
       .caption = "&Base Line",
       .hint = "Base Line|Take the base line under its peaks off the current DataSet",
       .icon = "take-base-line",
       .menu = Menu::Analysis,
       .group = 1,
       .enabled = HasDataSet,
       .run = UseTool<kBackgroundTool>},
      {.name = "AnalysisSpectrum1",
       .caption = "Sp&ectrum",
       .hint = "Spectrum|What the current DataSet is made of by frequency",
       .icon = "spectrum",
       .menu = Menu::Analysis,
       .group = 1,
       .enabled = HasDataSet,
       .run = UseTool<kSpectrumTool>},
      {.name = "AnalysisCorrelation1",
       .caption = "C&orrelation",
       .hint = "Correlation|How alike the current DataSet is to another, one moved along X",
       .icon = "correlate",
       .menu = Menu::Analysis,
       .group = 1,
       .enabled = HasDataSet,
       .run = UseTool<kCorrelateTool>},
      {.name = "AnalysisCompute1",
       .caption = "Compute by E&xpression",
       .hint = "Compute by Expression|Compute a DataSet from others by an expression",
       .icon = "compute-series",
       .menu = Menu::Analysis,
       .group = 1,
       .enabled = HasDataSet,
       .run = UseTool<kComputeTool>},
      {.name = "AnalysisResample1",
       .caption = "Resamp&le",
       .hint = "Resample|The current DataSet at even steps of X",
       .icon = "resample",
       .menu = Menu::Analysis,
       .group = 1,
       .enabled = HasDataSet,
       .run = UseTool<kResampleTool>},
      {.name = "AnalysisClip1",
       .caption = "&Clip",
       .hint = "Clip|The current DataSet within limits of X and Y",
       .icon = "clip",
       .menu = Menu::Analysis,
       .group = 1,
       .enabled = HasDataSet,
       .run = UseTool<kClipTool>},
      {.name = "AnalysisNormalise1",
       .caption = "&Normalise",
       .hint = "Normalise|The current DataSet on a scale of its own size",
       .icon = "normalise",
       .menu = Menu::Analysis,
       .group = 1,
       .enabled = HasDataSet,
       .run = UseTool<kNormaliseTool>},
      {.name = "AnalysisOutliers1",
       .caption = "Remove O&utliers",
       .hint = "Remove Outliers|The current DataSet without the points that do not belong",
       .icon = "outliers",
       .menu = Menu::Analysis,
       .group = 1,
       .enabled = HasDataSet,
       .run = UseTool<kOutliersTool>},
      {.name = "AnalysisCompare1",
       .caption = "Co&mpare DataSets",
       .hint = "Compare DataSets|How two DataSets differ: figures, tests, boxes, histograms",
       .icon = "compare-series",
       .menu = Menu::Analysis,
       .group = 2,
       .enabled = HasDataSet,
       .run = Compare},
      {.name = "AnalysisRecompute1",
       .caption = "Recompu&te",
       .hint = "Recompute|Compute every DataSet anew that was computed from others of the graph",
       .icon = "recompute",
       .menu = Menu::Analysis,
       .group = 2,
       .enabled = CanRecompute,
       .run = Recompute},
      {.name = "AnalysisEvaluate1",
       .caption = "E&valuate at X",
       .hint = "Evaluate at X|Tell what the current DataSet has at an X, or where it has a Y",
       .icon = "evaluate",
       .menu = Menu::Analysis,
       .group = 3,
       .run = TogglePanel<0>,
       .checked = ShowsPanel<0>},
      {.name = "AnalysisPeakTable1",
       .caption = "Pea&k Table",
       .hint = "Peak Table|Find, measure and fit the peaks of the current DataSet",
       .icon = "peak-table",
       .menu = Menu::Analysis,
       .group = 3,
       .run = TogglePanel<1>,
       .checked = ShowsPanel<1>},
  };
  return {.name = "analysis", .commands = {kCommands}, .panels = kPanels};
}

}  // namespace tarnwick
