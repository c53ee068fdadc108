#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

#include "analysis/fits/errors_between.h"
#include "analysis/fits/fit_run.h"
#include "analysis/fits/start_values.h"
#include "base/error.h"
#include "base/number_text.h"
#include "base/whole_file.h"
#include "cli/commands/commands.h"
#include "cli/commands/fit_several.h"
#include "cli/commands/fit_text.h"
#include "cli/options/fit_model.h"
#include "cli/options/input_graph.h"
#include "cli/options/number_check.h"
#include "cli/options/save_output.h"
#include "cli/options/size_option.h"
#include "cli/output/terminal_progress.h"
#include "data/import/load_report.h"
#include "expr/words/parser_exception.h"
#include "fit/model/curve_fit_file.h"
#include "fit/model/fit_function_file.h"
#include "fit/model/typed_model.h"
#include "graph/files/file_kinds.h"
#include "results/fitted_model.h"

namespace tarnwick::cli {
namespace {

bool SameFile(const std::filesystem::path& one, const std::filesystem::path& other) {
  std::error_code ignored;  // what cannot be followed is compared as it stands
  return std::filesystem::weakly_canonical(std::filesystem::absolute(one, ignored), ignored) ==
         std::filesystem::weakly_canonical(std::filesystem::absolute(other, ignored), ignored);
}

bool IsDataSetFile(const std::filesystem::path& file) {
  return KindOf(file).holds == FileHolds::DataSet;
}

/// What goes into the graph beside the model needs a file that keeps it.
void CheckAdditions(const FitOptions& options) {
  const auto refuse = [&](const char* option) {
    if (!options.save.Wanted())
      throw UsageError(std::string(option) + " needs -o: what it adds is saved with the graph");
    if (IsDataSetFile(options.save.file))
      throw UsageError(std::string(option) +
                       " needs -o with a graph: a DataSet file holds one DataSet");
  };
  if (!options.residuals.empty()) refuse("--residuals");
  if (options.band_curves) refuse("--band-curves");
  if (options.print) refuse("--print");
}

/// Several DataSets or functions leave no single model to say more of.
void CheckSeveral(const FitOptions& options) {
  const bool comparison = options.model.functions.size() > 1;
  const bool joint = options.datasets.size() > 1;
  if (!options.shared.empty() && !joint)
    throw UsageError(
        "--shared needs --dataset twice or more: what is shared is shared between them");
  if (comparison && joint) throw UsageError("several --function are compared over one DataSet");
  if (!comparison && !joint) return;
  if (options.bands > 0 || !options.save_function.empty())
    throw UsageError("--bands and --save-function need one --dataset and one --function");
  if (comparison && options.save.Wanted())
    throw UsageError("several --function are compared, which saves nothing: leave -o to the best");
}

/// Everything that can be refused before the work.
void Check(const FitOptions& options, Output& output) {
  CheckSeveral(options);
  if (options.save.Wanted()) CheckSave(options.save);
  CheckAdditions(options);
  if (options.save_function.empty()) return;
  SaveArguments function;
  function.file = FitFunctionPath(options.save_function).string();
  if (options.save.Wanted() && SameFile(function.file, options.save.file))
    throw UsageError("-o and --save-function name the same file");
  function.overwrite = options.save.overwrite;
  CheckOverwrite(function);
  if (function.file != options.save_function)
    output.Remarks() << "tarnwick-cli: fitting functions end in .tfn: the model goes to "
                     << function.file << '\n';
}

InputGraph ReadFitInput(const FitOptions& options, const std::optional<PictureSize>& size,
                        Output& output) {
  InputArguments input = options.input;
  // Sampling at import would leave points out, too.
  if (options.all_points && input.import.every.empty()) input.import.every = "1";
  return ReadInput(input, options.save, output, size.value_or(PictureSize()));
}

/// A column that nothing was measured against is no Y: it may well be the X of rows whose Y is missing.
void RequireY(const InputGraph& input, const TSeries& series) {
  const bool lone = std::ranges::any_of(input.reports, &LoadReport::lone_column);
  if (lone)
    throw Error("The rows hold numbers in one column only, \"" + series.SeriesName() +
                "\": there is no Y to fit. --y " + series.SeriesName() +
                " fits it against the numbers of the rows");
}

/// Where names of the expression are no parameters yet, how they become some.
std::string WayOut(const FitResult& result, FitSettings settings) {
  const bool compiled = result.outcome.why == StopReason::UndefinedAtStart;
  if (!compiled || MakeParameters(settings).empty()) return {};
  return " --guess makes parameters of such names and finds where they start, --parameter "
         "NAME=VALUE says it.";
}

FitResult Fit(const FitJob& job) {
  TerminalProgress progress;
  try {
    FitResult result = RunFit(job, progress);
    if (Failed(result.outcome.why))
      throw Error(result.verdict.summary + WayOut(result, job.settings));
    return result;
  } catch (const EParserException& error) {
    RefuseExpression(error, job.settings);
  }
}

/// `count` X from the first fitted point to the last, evenly spaced.
std::vector<double> BandPlaces(const FitJob& job, int count) {
  std::vector<double> x(static_cast<std::size_t>(count), job.x.back());
  const double step = (job.x.back() - job.x.front()) / (count - 1);
  for (std::size_t i = 0; i + 1 < x.size(); ++i)
    x[i] = job.x.front() + step * static_cast<double>(i);
  return x;
}

FitAnswer Answer(const FitOptions& options, const FitJob& job, TDataSeries& series,
                 FitResult result) {
  FitAnswer answer;
  answer.model = series.Fit().Settings();
  answer.level = options.level;
  if (options.bands > 0) {
    answer.band_x = BandPlaces(job, options.bands);
    series.Fit().Prepare();
    answer.bands = ComputeFitBands(series.Fit(), result.statistics, answer.band_x, options.level,
                                   ErrorsBetween(job, answer.band_x));
  }
  answer.result = std::move(result);
  return answer;
}

/// What never reached the fit, and the options that would change it.
void NoteOptions(const InputGraph& input, std::size_t series, const FitJob& job,
                 FitResult& result) {
  FitVerdict& verdict = result.verdict;
  if (result.points_used < result.points_in_range)
    verdict.notes.emplace_back("--all-points lets every point enter.");
  const bool unasked = job.settings.weighting.weights == FitWeights::Automatic &&
                       result.statistics.weighting.weights == FitWeights::Errors;
  if (unasked) verdict.notes.emplace_back("--weights none lets all points weigh alike.");
  if (series >= input.reports.size()) return;
  const LoadReport& report = input.reports[series];
  const std::int64_t merged = report.rows_read - report.Skipped() - report.points;
  if (merged > 0) {
    verdict.notes.push_back(std::to_string(merged) +
                            " rows of the file have the X of another and took its place; "
                            "--duplicates keeps them all.");
  }
  if (const std::int64_t without = report.y_missing + report.y_not_number; without > 0) {
    verdict.notes.push_back(Counted(without, "row") +
                            " of the file left out: no number for Y stands there.");
  }
  if (report.sampled_every > 1) verdict.notes.emplace_back("--all-points reads every row.");
}

/// Both files or none: the function's is complete before the graph is written and gets its name afterwards.
void Save(const FitOptions& options, const InputGraph& input, std::size_t index,
          const FitAnswer& answer, Output& output) {
  std::optional<WholeFile> function;
  if (!options.save_function.empty())
    function.emplace(FitFunctionPath(options.save_function))
        .Write(StoredModel(answer.model, WriterMode::Typed));
  if (options.save.Wanted()) {
    AddToGraph(options, input.graph->Series(index), *input.graph);
    SaveOutput(*input.graph, index, options.save, output);
  }
  if (function) function->Commit();
}

/// Starts from the data instead of from the model's own values.
void TakeGuess(FitJob& job, TSeries& series) {
  const auto guess = GuessStart(job);
  if (!guess) {
    throw Error(
        "The data tell no starting values of this model; --parameter NAME=VALUE gives some.");
  }
  job.settings.parameters = *guess;
  TakeFitSettings(series, job.settings);
}

void Run(const FitOptions& options, Output& output) {
  Check(options, output);
  std::optional<PictureSize> size;
  if (!options.size.empty()) size = ParseSize(options.size);
  const InputGraph input = ReadFitInput(options, size, output);
  if (size) input.graph->Resize(size->width, size->height);
  if (options.datasets.size() > 1) return RunJoint(options, input, output);
  const std::size_t index = ChooseToldSeries(
      *input.graph, options.datasets.empty() ? std::string() : options.datasets.front(), output);
  if (options.model.functions.size() > 1)
    return RunComparison(options, input.graph->Series(index), output);
  TSeries& series = input.graph->Series(index);
  RequireY(input, series);
  const std::vector<std::string> made = GiveModel(options, series, output);
  FitJob job = PrepareFit(series, RunOptionsOf(options));
  if (options.guess) TakeGuess(job, series);
  FitResult result = Fit(job);
  if (!made.empty()) result.verdict.notes.push_back(TakenAsParameters(made));
  ApplyFit(series, result);
  if (!IsFitted(series.Fit().Status())) series.Fit().SetStatus(FitStatus::cf_FinResult);
  NoteOptions(input, index, job, result);
  const FitAnswer answer = Answer(options, job, series, std::move(result));
  Save(options, input, index, answer, output);
  if (options.save.file != "-") PrintFit(answer, output);
}

}  // namespace

void DeclareFit(Command& command, Action& action) {
  auto options = std::make_shared<FitOptions>();
  AddInput(command, options->input);
  // --tolerance is the fit's; the distance of points, which rarely matters here, gets a longer name.
  command.Remove("--tolerance");
  command
      .Add("--x-tolerance", options->input.import.tolerance,
           "X distance within which two points are one")
      .Group("Reading a text file")
      .Check(kNonNegativeNumber);
  command
      .Add("--dataset", options->datasets,
           "DataSet by name, or by number from 1; repeat for one fit over several")
      .NotEmpty()
      .Repeated()
      .OneValueEach();
  command
      .Add("--shared", options->shared,
           "Parameter with one value in all DataSets of one fit; repeat")
      .Repeated()
      .OneValueEach()
      .ValueName("NAME");
  AddFitModel(command, options->model);
  command.AddFlag("--all-points", options->all_points,
                  "Every point between the margins enters, and every row of a text");
  command.AddFlag("--guess", options->guess,
                  "Starts from values that the points suggest, not from the model's");
  command.AddFlag("--finish", options->finish,
                  "A Newton-type run goes on from what another method found");
  command.Add("--level", options->level, "Level of intervals and bands (0.95)")
      .Check(kProperFraction);
  command.Add("--bands", options->bands, "Confidence and prediction bands at this many X")
      .Between(2, 1000000);
  command
      .Add("--residuals", options->residuals,
           "Adds the residuals to the saved graph, as a DataSet of this name")
      .MayStandAlone(kNamedAfterSource)
      .ValueName("NAME");
  command.AddFlag("--band-curves", options->band_curves,
                  "Adds the bands to the saved graph, as DataSets");
  command.AddFlag("--print", options->print,
                  "Prints the parameters on the saved graph, with their errors");
  command.Add("--size", options->size,
              "Size of the picture that scales and printed parameters are for, WxH");
  command.Add("--save-function", options->save_function,
              "Writes the model with the values found; its ending becomes .tfn");
  AddSave(command, options->save);
  OnCommand(command, action, options, &Run);
}

}  // namespace tarnwick::cli
