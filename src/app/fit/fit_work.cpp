#include "app/fit/fit_work.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>
#include <chrono>
#include <functional>
#include <span>
#include <thread>
#include <utility>
#include <vector>

#include "analysis/fits/fit_run.h"
#include "analysis/fits/start_values.h"
#include "app/fit/function_files.h"
#include "base/error.h"
#include "base/prompt.h"
#include "desk/document/document.h"
#include "desk/document/open_edit.h"
#include "desk/work/mailbox.h"
#include "fit/model/typed_model.h"
#include "graph/shown_series.h"
#include "results/fit_colours.h"
#include "results/fit_leftovers.h"
#include "results/fitted_model.h"
#include "results/joint_fit.h"

namespace tarnwick {
namespace {

using EveryStep = std::function<void(std::span<const double>)>;

/// How long a step of a fit is seen before the next one is made.
constexpr std::chrono::milliseconds kStepSeen{20};
/// Between two steps that are told by their values alone.
constexpr std::chrono::milliseconds kStepTold{100};

void PutVariedValues(TCurFit& model, std::span<const double> values) {
  std::size_t next = 0;
  for (std::int32_t i = 1; i <= model.NParams() && next < values.size(); ++i) {
    if (model.Param(i).Vary()) model.Param(i).SetValue(values[next++]);
  }
  model.UpdateTies();
}

/// Draws the model with these values, now.
void DrawStep(Document& document, std::size_t series, const std::vector<double>& values) {
  if (series >= document.Graph().SeriesCount()) return;
  PutVariedValues(document.Graph().Series(series).Fit(), values);
  // Waiting for the event loop would let steps go by unseen.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
}

/// Shows the steps of a fit that runs on another thread, which waits for that.
EveryStep StepShower(Document& document, std::size_t series, const MailAddress& window) {
  return [&document, series, window](std::span<const double> p) {
    const std::vector<double> values(p.begin(), p.end());
    const auto draw = [&] { DrawStep(document, series, values); };
    if (QThread::currentThread() == document.thread()) {
      draw();
      return;
    }
    window.PostAndWait(draw);
    std::this_thread::sleep_for(kStepSeen);
  };
}

/// All parameters of a model where the varied ones have these values.
std::vector<double> ValuesAt(const FitSettings& settings, std::span<const double> varied) {
  TCurFit model;
  model.SetSettings(settings, MarkModified::No);
  model.Prepare();
  PutVariedValues(model, varied);
  std::vector<double> values;
  for (std::int32_t i = 1; i <= model.NParams(); ++i) values.push_back(model.Param(i).Value());
  return values;
}

/// A DataSet's model as a fit starts from it.
struct ToldModel {
  std::size_t series = 0;
  FitSettings settings = {};
};

/// Tells the values of a fit that runs on another thread, which does not wait for that: the varied ones of each model.
EveryJointStep StepTeller(Document& document, std::vector<ToldModel> models,
                          const MailAddress& window) {
  return [&document, models = std::move(models), window,
          told = std::chrono::steady_clock::time_point()](
             std::span<const std::vector<double>> varied) mutable {
    const auto now = std::chrono::steady_clock::now();
    if (now - told < kStepTold) return;
    told = now;
    window.Post([&document, models, values = std::vector(varied.begin(), varied.end())] {
      try {
        for (std::size_t i = 0; i < models.size(); ++i)
          emit document.fitStepped(&document, models[i].series,
                                   ValuesAt(models[i].settings, values[i]));
      } catch (const Error&) {
        // Ties without a value here: the fit itself judges the step and tells.
      }
    });
  };
}

void TellFailure(const FitResult& result, Prompt& prompt) {
  prompt.Tell(result.outcome.why == StopReason::TooManyParameters
                  ? std::string(kTooManyParametersText)
                  : result.verdict.summary);
}

/// The fit itself: the values go into the model only at the end, unless every step is to be seen.
FitResult RunFitOf(Document& document, TSeries& series, const FitRunOptions& options) {
  const FitJob job = PrepareFit(series, options);
  const bool every_step = series.Fit().Status() == FitStatus::cf_EveryStep;
  const auto index = static_cast<std::size_t>(document.Graph().CurrentSeriesIndex());
  const Mailbox steps;  // those that come when the fit has ended are told to nobody
  EveryStep step;
  if (every_step) {
    step = StepShower(document, index, steps.Address());
  } else if (!document.SelectedChild()) {
    step = [tell = StepTeller(document, {{index, job.settings}}, steps.Address())](
               std::span<const double> p) {
      const std::vector<double> values(p.begin(), p.end());
      tell({&values, 1});
    };
  }
  FitResult result;
  const ProgressPlace place = every_step ? ProgressPlace::Aside : ProgressPlace::Centre;
  document.Work().Run({"Fitting Data....", Cancellable::Yes, "Processing...", place},
                      [&](Progress& progress) { result = RunFit(job, progress, step); });
  // Steps that were shown are no state to go on from.
  TakeFitSettings(series, job.settings);
  return result;
}

/// What the names of a formula became without being asked for.
void NoteMade(const FitRequest& request, FitVerdict& verdict) {
  if (!request.variable.empty()) verdict.notes.push_back(TakenAsVariable(request.variable));
  if (request.made.empty()) return;
  verdict.notes.push_back(TakenAsParameters(request.made));
  verdict.notes.emplace_back(
      "The fit started from values that the points suggest; the table of the editor takes others.");
}

bool Fit(Document& document, FitStatus status, const FitRequest& request, Prompt& prompt) {
  TSeries& series = CurrentDataSet(document);
  OpenEdit step(document, "Curve Fit");
  series.Fit().SetStatus(status);
  FitResult result = RunFitOf(document, series, request.run);
  NoteMade(request, result.verdict);
  ApplyFit(series, result);
  RenewLeftovers(document.Graph(), series);
  ColourFitsByDataSet(document.Graph());
  step.Finish();
  const bool failed = Failed(result.outcome.why);
  if (failed) TellFailure(result, prompt);
  return !failed;
}

void CheckHasExpression(const TSeries& series) {
  if (!series.Fit().Expression().empty()) return;
  throw Error("DataSet \"" + series.SeriesName() +
              "\" has no fitting function yet: choose one in the menu Curve Fitting, or write one "
              "under Edit.");
}

void CheckHasPoints(const TSeries& series) {
  if (series.PointCount() > 0) return;
  throw Error("DataSet \"" + series.SeriesName() + "\" has no points to fit.");
}

/// By address: what is made anew moves the DataSets.
std::vector<TSeries*> SeriesOf(TxyGraph& graph, const std::vector<std::size_t>& chosen) {
  std::vector<TSeries*> series;
  series.reserve(chosen.size());
  for (const std::size_t index : chosen) series.push_back(&graph.Series(index));
  return series;
}

void FitTogether(Document& document, const FitRequest& request) {
  TxyGraph& graph = document.Graph();
  FitSettings model = CurrentDataSet(document).Fit().Settings();
  std::vector<std::size_t> chosen = {static_cast<std::size_t>(graph.CurrentSeriesIndex())};
  chosen.insert(chosen.end(), request.beside.begin(), request.beside.end());
  OpenEdit step(document, "Fit Together");
  for (const std::size_t index : chosen) {
    TSeries& series = graph.Series(index);
    if (index != chosen.front() && request.models == JointModels::OfCurrent) {
      model.CurveColor = series.Fit().CurveColor();
      TakeFitFunction(series, model);
    }
    CheckHasExpression(series);
    CheckHasPoints(series);
  }
  std::vector<FitJob> jobs = PrepareJointFit(graph, chosen, request.run);
  EveryJointStep tell;
  const Mailbox steps;
  if (!document.SelectedChild()) {
    std::vector<ToldModel> models;
    for (std::size_t i = 0; i < jobs.size(); ++i) models.push_back({chosen[i], jobs[i].settings});
    tell = StepTeller(document, std::move(models), steps.Address());
  }
  const bool guesses = !request.made.empty() && request.models == JointModels::OfCurrent;
  JointFit fit;
  document.Work().Run({"Fitting Data....", Cancellable::Yes, "Processing..."},
                      [&](Progress& progress) {
                        // Nobody chose a value of what became a parameter by the wish to fit.
                        if (guesses) GuessJointStart(jobs, request.shared);
                        fit = RunJointFit(jobs, request.shared, progress, tell);
                      });
  if (Failed(fit.whole.outcome.why)) throw Error(fit.whole.verdict.summary);
  NoteMade(request, fit.parts.front().verdict);
  ApplyJointFit(graph, chosen, request.shared, fit);
  for (TSeries* const series : SeriesOf(graph, chosen)) RenewLeftovers(graph, *series);
  ColourFitsByDataSet(graph);
  step.Finish();
}

}  // namespace

TSeries& CurrentDataSet(Document& document) {
  TSeries* series = document.Graph().CurrentSeries();
  if (series == nullptr) throw Error("No DataSet Found!");
  return *series;
}

void ShowFit(Document& document, FitStatus status, Prompt& prompt) {
  TSeries& series = CurrentDataSet(document);
  if (status != FitStatus::cf_None) CheckHasExpression(series);
  if (IsFitted(status)) CheckHasPoints(series);
  if (IsFitted(status) && series.Fit().Modified()) {
    Fit(document, status, {}, prompt);
    return;
  }
  document.Edit(status == FitStatus::cf_None ? "Hide Curve" : "Show Curve",
                [&](TxyGraph&) { series.Fit().SetStatus(status); });
  const std::string error = FitError(document.Graph());
  if (status != FitStatus::cf_None && !error.empty()) prompt.Tell(error);
}

bool FitAgain(Document& document, const FitRequest& request, Prompt& prompt) {
  if (!request.beside.empty()) {
    FitTogether(document, request);
    return true;
  }
  TSeries& series = CurrentDataSet(document);
  CheckHasExpression(series);
  CheckHasPoints(series);
  const FitStatus status = series.Fit().Status();
  return Fit(document, IsFitted(status) ? status : FitStatus::cf_FinResult, request, prompt);
}

FitRunOptions OptionsOfLast(const TSeries& series) {
  FitRunOptions options;
  const LastFit& last = series.Fit().Last();
  const FitResult* const result = last.record ? last.record->result.get() : nullptr;
  if (result != nullptr && result->points_used == result->points_in_range)
    options.points = FitPointChoice::All;
  return options;
}

std::optional<ModelComparison> CompareFitsOf(Document& document, std::vector<NamedModel> models,
                                             const FitRunOptions& options) {
  const TSeries& series = CurrentDataSet(document);
  CheckHasPoints(series);
  std::optional<ModelComparison> compared;
  document.Work().Run({"Fitting Data....", Cancellable::Yes, "Processing..."},
                      [&, data = series.State()](Progress& progress) {
                        compared = CompareModels(data, std::move(models), options, progress);
                      });
  return compared;
}

std::optional<std::vector<ParameterSettings>> GuessStartOf(Document& document) {
  const FitJob job = PrepareFit(CurrentDataSet(document), {.points = FitPointChoice::All});
  std::optional<std::vector<ParameterSettings>> guess;
  document.Work().Run({"Fitting Data....", Cancellable::No, "Processing..."},
                      [&](Progress&) { guess = GuessStart(job); });
  return guess;
}

void ApplyFitFunction(Document& document, const std::filesystem::path& file) {
  TSeries& series = CurrentDataSet(document);
  const FitSettings function = ReadFunction(file);
  document.Edit("Choose Function", [&](TxyGraph&) { TakeFitFunction(series, function); });
}

}  // namespace tarnwick
