// The commands of the submenu Curve Fitting, and the panel that shows what a fit found.
#include "app/fit/fit_outcome.h"
#include "app/fit/fit_work.h"
#include "app/window/command_table.h"
#include "app/window/workspace.h"
#include "base/error.h"
#include "desk/commands/command.h"
#include "desk/document/document.h"
#include "results/fitted_model.h"

namespace tarnwick {
namespace {

Document& DocumentWithDataSet(const CommandContext& context) {
  if (!HasDataSet(context)) throw Error("No DataSet Found!");
  return *context.document;
}

template <FitStatus kStatus>
void Show(CommandContext& context) {
  ShowFit(DocumentWithDataSet(context), kStatus, context.prompt);
  if (IsFitted(kStatus)) context.workspace.ShowFitResult(true);
}

/// The choice follows the current DataSet.
template <FitStatus kStatus>
bool Shows(const CommandContext& context) {
  return HasDataSet(context) &&
         context.document->Graph().CurrentSeries()->Fit().Status() == kStatus;
}

template <FitPage kPage>
void EditModel(CommandContext& context) {
  context.workspace.EditFitModel(DocumentWithDataSet(context), kPage);
}

void Print(CommandContext& context) {
  PrintFitOnGraph(DocumentWithDataSet(context));
}

void ToggleResult(CommandContext& context) {
  context.workspace.ShowFitResult(!context.workspace.FitResultIsShown());
}

bool ResultIsShown(const CommandContext& context) {
  return context.workspace.FitResultIsShown();
}

}  // namespace

std::span<const Command> FitCommands() {
  static constexpr Command kRows[] = {
      {"editFunction1", "&Edit", "", "Curve Fitting Settings|Edit Curve Fitting Properties",
       "fit-edit", Menu::CurveFitting, 0, ToolGroup::None, nullptr, EditModel<FitPage::Function>},
      {"FitNone1", "&None", "", "No Curve|Neither Draw Nor Fit the Model of the Current DataSet",
       "fit-none", Menu::CurveFitting, 0, ToolGroup::None, nullptr, Show<FitStatus::cf_None>,
       nullptr, Shows<FitStatus::cf_None>},
      {"FitFunction1", "Draw &Function", "",
       "Draw Function|Draw the Model with Its Present Parameter Values", "fit-function",
       Menu::CurveFitting, 0, ToolGroup::None, nullptr, Show<FitStatus::cf_Function>, nullptr,
       Shows<FitStatus::cf_Function>},
      {"FitCurve1", "Show Final &Curve", "",
       "Show Final Curve|Fit the Model to the Current DataSet and Show the Result", "fit-curve",
       Menu::CurveFitting, 0, ToolGroup::None, nullptr, Show<FitStatus::cf_FinResult>, nullptr,
       Shows<FitStatus::cf_FinResult>},
      {"FitEveryStep1", "Show Every &Step", "",
       "Show Every Step|Fit the Model and Show the Curve at Every Step", "fit-steps",
       Menu::CurveFitting, 0, ToolGroup::None, nullptr, Show<FitStatus::cf_EveryStep>, nullptr,
       Shows<FitStatus::cf_EveryStep>},
      {"FitSettings1", "Se&ttings", "",
       "Fit Settings|Margins, Method and Limits of the Current DataSet's Fit", "fit-settings",
       Menu::CurveFitting, 1, ToolGroup::None, nullptr, EditModel<FitPage::Settings>},
      {"FitPrint1", "&Print on Graph", "",
       "Print on Graph|Print the Fitted Parameters on the Graph", "fit-print", Menu::CurveFitting,
       1, ToolGroup::None, nullptr, Print},
      {"ViewFitResult1", "&Fit Result", "",
       "Fit Result|Show or Hide What the Fit of the Current DataSet Found", "fit-result",
       Menu::View, 0, ToolGroup::None, nullptr, ToggleResult, nullptr, ResultIsShown},
  };
  return kRows;
}

}  // namespace tarnwick
