#include "app/fit/fit_feature.h"

#include <QFontMetrics>
#include <memory>
#include <optional>

#include "app/fit/equation_editor.h"
#include "app/fit/fit_bar.h"
#include "app/fit/fit_outcome.h"
#include "app/fit/fit_panel.h"
#include "app/fit/fit_work.h"
#include "app/fit/function_files.h"
#include "app/fit/live_fit.h"
#include "base/error.h"
#include "desk/commands/kept_state.h"
#include "desk/document/document.h"
#include "desk/document/open_edit.h"
#include "desk/settings/program_paths.h"
#include "desk/widgets/text.h"
#include "fit/model/typed_model.h"
#include "results/fitted_model.h"

namespace tarnwick {
namespace {

constexpr PanelRow kFitResult = {
    .name = "FitResult", .caption = "Fit Result", .side = DockSide::Right, .make = MakeFitPanel};

Document& DocumentWithDataSet(const CommandContext& context) {
  if (!HasDataSet(context)) throw Error("No DataSet Found!");
  return *context.document;
}

template <FitStatus kStatus>
void Show(CommandContext& context) {
  ShowFit(DocumentWithDataSet(context), kStatus, context.prompt);
  if (IsFitted(kStatus)) context.panels.Show(kFitResult);
}

/// The choice follows the current DataSet.
template <FitStatus kStatus>
bool Shows(const CommandContext& context) {
  return HasDataSet(context) &&
         context.document->Graph().CurrentSeries()->Fit().Status() == kStatus;
}

CalcSubject SubjectOf(CommandContext& context, Document& document) {
  const TxyGraph& graph = document.Graph();
  const TSeries& series = CurrentDataSet(document);
  CalcSubject subject{.model = series.Fit().Settings(),
                      .points = series.Points().Size(),
                      .current = graph.CurrentSeriesIndex(),
                      .x_name = WordOf(series.Source().XDataColumn),
                      .functions = FitFunctions(context.paths),
                      .files = {context.chooser, context.prompt, MakeFunctionFolder(context.paths),
                                context.kept.Of<FunctionFile>()},
                      .draw = [&document](const PictureOptions& options) {
                        return RenderImage(document.Graph(), options);
                      }};
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i)
    subject.data_sets.append(ToQt(graph.Series(i).SeriesName()));
  subject.guess = [&document] { return GuessStartOf(document); };
  subject.compare = [&document](std::vector<NamedModel> models, const FitRunOptions& options) {
    return CompareFitsOf(document, std::move(models), options);
  };
  return subject;
}

/// False where the fit could not begin, which is told.
bool FitAsWanted(CommandContext& context, Document& document, const FitRequest& request) {
  try {
    return FitAgain(document, request, context.prompt);
  } catch (const Error& error) {
    context.prompt.Tell(error.what());
    return false;
  }
}

template <CalcPage kPage>
void EditModel(CommandContext& context) {
  Document& document = DocumentWithDataSet(context);
  std::optional<OpenEdit> step;  // what is not applied is taken back in the end
  TfrmCalc editor(SubjectOf(context, document), kPage, context.dialog_parent);
  QObject::connect(&editor, &TfrmCalc::changed, &editor, [&](const FitSettings& model) {
    if (!step) step.emplace(document, "Fit Settings");
    TakeFitSettings(CurrentDataSet(document), model);
  });
  QObject::connect(&editor, &TfrmCalc::applied, &editor, [&] {
    if (step) step->Finish();
    step.reset();
  });
  // What could not be fitted is gone on with where it was typed.
  for (;;) {
    editor.exec();
    const std::optional<FitRequest> wanted = editor.TakeFitWanted();
    if (!wanted) return;
    if (FitAsWanted(context, document, *wanted)) break;
  }
  context.panels.Show(kFitResult);
}

void Print(CommandContext& context) {
  PrintFitOnGraph(DocumentWithDataSet(context));
}

bool CanFollow(const CommandContext& context) {
  return HasDocument(context) && context.document->Live().HasSources();
}

bool Follows(const CommandContext& context) {
  return HasDocument(context) && LiveFit::Of(*context.document) != nullptr;
}

void FollowOrNot(CommandContext& context) {
  Document& document = *context.document;
  if (LiveFit* const following = LiveFit::Of(document)) {
    const std::unique_ptr<LiveFit> ended(following);
  } else {
    new LiveFit(document);  // its child
  }
  emit document.stateChanged();
}

void ToggleResult(CommandContext& context) {
  Toggle(context.panels, kFitResult);
}

bool ResultIsShown(const CommandContext& context) {
  return context.panels.IsShown(kFitResult);
}

/// The ready-made functions and the user's own.
std::vector<MenuItem> FunctionItems(const CommandContext& context, const QFontMetrics&) {
  std::vector<MenuItem> items;
  int number = 0;
  for (const auto& file : FitFunctions(context.paths)) {
    MenuItem item;
    item.caption =
        QStringLiteral("&%1 %2").arg(++number).arg(PathText(file.stem()).replace("&", "&&"));
    item.enabled = HasDocument(context);
    item.hint = QObject::tr("Use the function of %1 for the current DataSet").arg(PathText(file));
    item.run = [file](CommandContext& c) { ApplyFitFunction(DocumentWithDataSet(c), file); };
    items.push_back(std::move(item));
  }
  return items;
}

}  // namespace

Feature FitFeature() {
  static constexpr Command kCommands[] = {
      {.name = "editFunction1",
       .caption = "&Edit",
       .hint = "Curve Fitting Settings|Edit Curve Fitting Properties",
       .icon = "fit-edit",
       .menu = Menu::CurveFitting,
       .enabled = HasDocument,
       .run = EditModel<CalcPage::Function>},
      {.name = "FitNone1",
       .caption = "&None",
       .hint = "No Curve|Neither Draw Nor Fit the Model of the Current DataSet",
       .icon = "fit-none",
       .menu = Menu::CurveFitting,
       .enabled = HasDocument,
       .run = Show<FitStatus::cf_None>,
       .checked = Shows<FitStatus::cf_None>},
      {.name = "FitFunction1",
       .caption = "Draw &Function",
       .hint = "Draw Function|Draw the Model with Its Present Parameter Values",
       .icon = "fit-function",
       .menu = Menu::CurveFitting,
       .enabled = HasDocument,
       .run = Show<FitStatus::cf_Function>,
       .checked = Shows<FitStatus::cf_Function>},
      {.name = "FitCurve1",
       .caption = "Show Final &Curve",
       .hint = "Show Final Curve|Fit the Model to the Current DataSet and Show the Result",
       .icon = "fit-curve",
       .menu = Menu::CurveFitting,
       .enabled = HasDocument,
       .run = Show<FitStatus::cf_FinResult>,
       .checked = Shows<FitStatus::cf_FinResult>},
      {.name = "FitEveryStep1",
       .caption = "Show Every &Step",
       .hint = "Show Every Step|Fit the Model and Show the Curve at Every Step",
       .icon = "fit-steps",
       .menu = Menu::CurveFitting,
       .enabled = HasDocument,
       .run = Show<FitStatus::cf_EveryStep>,
       .checked = Shows<FitStatus::cf_EveryStep>},
      {.name = "FitSettings1",
       .caption = "Se&ttings",
       .hint = "Fit Settings|Margins, Method and Limits of the Current DataSet's Fit",
       .icon = "fit-settings",
       .menu = Menu::CurveFitting,
       .group = 1,
       .enabled = HasDocument,
       .run = EditModel<CalcPage::Settings>},
      {.name = "FitPrint1",
       .caption = "&Print on Graph",
       .hint = "Print on Graph|Print the Fitted Parameters on the Graph",
       .icon = "fit-print",
       .menu = Menu::CurveFitting,
       .group = 1,
       .enabled = HasDocument,
       .run = Print},
      {.name = "FitLive1",
       .caption = "Fit &Live Data",
       .hint = "Fit Live Data|Fit Models Whose Result Is Shown Anew While Data Come",
       .icon = "fit-live",
       .menu = Menu::CurveFitting,
       .group = 1,
       .enabled = CanFollow,
       .run = FollowOrNot,
       .checked = Follows},
      {.name = "ViewFitResult1",
       .caption = "&Fit Result",
       .hint = "Fit Result|Show or Hide What the Fit of the Current DataSet Found",
       .icon = "fit-result",
       .menu = Menu::View,
       .run = ToggleResult,
       .checked = ResultIsShown},
  };
  static constexpr PanelRow kPanels[] = {kFitResult};
  static constexpr TakenFile kFiles[] = {
      {.holds = FileHolds::FitFunction,
       .without_document = "is a fitting function: open the data to fit first.",
       .take = ApplyFitFunction}};
  static constexpr BarMaker kBars[] = {
      [](Document& document, Prompt& prompt, QWidget* parent) -> QWidget* {
        return new FitBar(document, prompt, parent);
      }};
  return {.name = "fit",
          .commands = {kCommands},
          .panels = kPanels,
          .bars = kBars,
          .lists = {{Menu::CurveFitting, FunctionItems}},
          .files = kFiles};
}

}  // namespace tarnwick
