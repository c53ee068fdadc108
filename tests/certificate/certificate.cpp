// Fits every certified problem with every method from both starts and writes what came out as a page of documentation:
//   certificate FOLDER-OF-PROBLEMS PAGE
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "analysis/fits/fit_run.h"
#include "base/number_text.h"
#include "base/whole_file.h"
#include "certified_problem.h"
#include "fit/judge/fit_bands.h"
#include "weighted_problems.h"

namespace tarnwick {
namespace {

constexpr double kParameterDigits = 6;
constexpr double kDeviationDigits = 4;
constexpr int kTimings = 5;

struct Method {
  const char* name;
  FitProcType type;
  FinishingStep finish;
};

constexpr std::array kMethods{
    Method{"Newton-type", FitProcType::cfp_Newton, FinishingStep::No},
    Method{"Powell", FitProcType::cfp_Powell, FinishingStep::No},
    Method{"Powell, finished", FitProcType::cfp_Powell, FinishingStep::Yes},
    Method{"Simplex", FitProcType::cfp_Simplex, FinishingStep::No},
    Method{"Simplex, finished", FitProcType::cfp_Simplex, FinishingStep::Yes},
    Method{"Conjugate gradient", FitProcType::cfp_ConjGrad, FinishingStep::No},
    Method{"Conjugate gradient, finished", FitProcType::cfp_ConjGrad, FinishingStep::Yes},
    Method{"Simplex then Powell", FitProcType::cfp_SimplexPowell, FinishingStep::No},
    Method{"Simplex then Powell, finished", FitProcType::cfp_SimplexPowell, FinishingStep::Yes},
};

struct Score {
  const CertifiedProblem* problem = nullptr;
  int start = 0;
  double parameter_digits = 0;  ///< the fewest of all parameters
  double deviation_digits = 0;
  FitResult result;
  double milliseconds = 0;

  bool Reached() const {
    return parameter_digits >= kParameterDigits && deviation_digits >= kDeviationDigits;
  }
  /// Within half a hundredth of the certified sum of squares, where one far below the squares of y keeps few digits.
  bool AtMinimum() const { return result.outcome.value <= 1.005 * problem->sum_of_squares; }
  /// Terms of the same form have exchanged their parameters.
  bool Exchanged() const { return AtMinimum() && parameter_digits < 0.5; }
  /// What must not happen: wrong values with a verdict that calls them good.
  bool Misleading() const {
    return result.verdict.trustworthy && parameter_digits < 1 && !AtMinimum();
  }
  const char* Remark() const {
    if (Reached()) return "";
    if (Misleading()) return "short, and trusted";
    return Exchanged() ? "terms exchanged" : "short";
  }
};

FitJob MakeJob(const CertifiedProblem& problem, int start, const Method& method) {
  FitJob job;
  job.settings.Expression = problem.expression;
  job.settings.ProcType = method.type;
  for (const CertifiedParameter& parameter : problem.parameters) {
    ParameterSettings settings;
    settings.Name = parameter.name;
    settings.Value = parameter.starts[start];
    settings.Vary = true;
    job.settings.parameters.push_back(settings);
  }
  job.x = problem.x;
  job.y = problem.y;
  job.points_in_range = job.points_chosen = static_cast<std::int64_t>(problem.x.size());
  job.options.finish = method.finish;
  return job;
}

Score Run(const CertifiedProblem& problem, int start, const Method& method) {
  using Clock = std::chrono::steady_clock;
  Score score;
  score.problem = &problem;
  score.start = start;
  const FitJob job = MakeJob(problem, start, method);
  NoProgress progress;
  for (int i = 0; i < kTimings; ++i) {
    const Clock::time_point began = Clock::now();
    score.result = RunFit(job, progress);
    const std::chrono::duration<double, std::milli> took = Clock::now() - began;
    score.milliseconds = i == 0 ? took.count() : std::min(score.milliseconds, took.count());
  }
  score.parameter_digits = score.deviation_digits = 99;
  const std::vector<double>& errors = score.result.statistics.standard_errors;
  for (std::size_t i = 0; i < problem.parameters.size(); ++i) {
    const CertifiedParameter& certified = problem.parameters[i];
    score.parameter_digits =
        std::min(score.parameter_digits, AgreeingDigits(score.result.values[i], certified.value));
    const double error = i < errors.size() ? errors[i] : 0;
    score.deviation_digits =
        std::min(score.deviation_digits, AgreeingDigits(error, certified.deviation));
  }
  return score;
}

std::vector<Score> RunAll(const std::vector<CertifiedProblem>& problems, const Method& method) {
  std::vector<Score> scores;
  for (const CertifiedProblem& problem : problems) {
    for (int start = 0; start < 2; ++start) scores.push_back(Run(problem, start, method));
  }
  return scores;
}

void WriteSummary(const std::vector<std::vector<Score>>& all, std::ostream& page) {
  page << "| method | runs that reach it | with terms exchanged | trusted but wrong | all runs, ms "
          "|\n"
          "|---|---|---|---|---|\n";
  for (std::size_t i = 0; i < all.size(); ++i) {
    const auto reached = std::ranges::count_if(all[i], &Score::Reached);
    const auto exchanged = std::ranges::count_if(all[i], &Score::Exchanged);
    const auto misleading = std::ranges::count_if(all[i], &Score::Misleading);
    double milliseconds = 0;
    for (const Score& score : all[i]) milliseconds += score.milliseconds;
    page << "| " << kMethods[i].name << " | " << reached << " of " << all[i].size() << " | "
         << exchanged << " | " << misleading << " | " << FixedText(milliseconds, 1) << " |\n";
  }
}

void WriteMethod(const Method& method, const std::vector<Score>& scores, std::ostream& page) {
  page << "\n## " << method.name
       << "\n\n| problem | start | parameters | deviations | sum of squares | iterations | "
          "evaluations | ms | |\n|---|---|---|---|---|---|---|---|---|\n";
  for (const Score& score : scores) {
    const FitResult& result = score.result;
    page << "| " << score.problem->name << " | " << score.start + 1 << " | "
         << FixedText(score.parameter_digits, 1) << " | " << FixedText(score.deviation_digits, 1)
         << " | "
         << FixedText(AgreeingDigits(result.outcome.value, score.problem->sum_of_squares), 1)
         << " | " << result.outcome.iterations << " | " << result.outcome.evaluations << " | "
         << FixedText(score.milliseconds, 3) << " | " << score.Remark() << " |\n";
  }
}

/// York's line by every method, and how often intervals of simulated counts hold what was put in.
void WriteWeighted(std::ostream& page) {
  page << "\n## Weighted\n\nYork's line (Can. J. Phys. 44 (1966), 1079), weighted by the errors of "
          "Y, "
          "beside its closed form (a = 6.1001, b = -0.6108):\n\n| method | parameters | deviations "
          "| "
          "evaluations |\n|---|---|---|---|\n";
  NoProgress progress;
  for (const Method& method : kMethods) {
    FitJob job = York(method.type);
    job.options.finish = method.finish;
    const WeightedLine line(job);
    const FitResult fit = RunFit(job, progress);
    double parameters = 99;
    double deviations = 99;
    for (std::size_t i = 0; i < 2; ++i) {
      parameters = std::min(parameters, AgreeingDigits(fit.values[i], line.values[i]));
      deviations =
          std::min(deviations, AgreeingDigits(fit.statistics.standard_errors[i], line.errors[i]));
    }
    page << "| " << method.name << " | " << FixedText(parameters, 1) << " | "
         << FixedText(deviations, 1) << " | " << fit.outcome.evaluations << " |\n";
  }
  page << "\nCounts of 50 exp(-x/3) + 4 at 60 X, simulated " << kSimulatedDecays
       << " times and fitted with weights of counts: how often the 95 % interval of a parameter "
          "holds\nwhat was put in. Chance alone lets this waver by 1.3 %.\n\n| parameter | held "
          "|\n|---|---|\n";
  std::vector<int> held(3, 0);
  for (int number = 0; number < kSimulatedDecays; ++number) {
    const FitResult fit = RunFit(CountedDecay(number), progress);
    const double quantile = IntervalQuantile(fit.statistics, 0.95);
    for (std::size_t i = 0; i < 3; ++i) {
      const double off = std::abs(fit.values[i] - DecayTruth()[i]);
      held[i] += off <= quantile * fit.statistics.standard_errors[i];
    }
  }
  for (std::size_t i = 0; i < 3; ++i)
    page << "| "
         << "abc"[i] << " | " << FixedText(100.0 * held[i] / kSimulatedDecays, 1) << " % |\n";
}

std::string Page(const std::vector<CertifiedProblem>& problems) {
  std::vector<std::vector<Score>> all;
  for (const Method& method : kMethods) all.push_back(RunAll(problems, method));
  std::ostringstream page;
  page << "# Accuracy\n\n"
          "Written by `./dev certificate`. Every problem of `tests/fit/certified` is fitted with "
          "every method from both of its\n"
          "starts (1 far off, 2 near), with a new model's settings: tolerance 3E-8, at most 200 "
          "iterations. Digits are the decimal\n"
          "digits that agree with the certified values, at most 11, the worst parameter counting. "
          "A run reaches it with "
       << kParameterDigits << " digits in\nevery parameter and " << kDeviationDigits
       << " in every standard deviation; \"finished\" runs go on with the Newton-type method. "
          "Terms exchanged: the\n"
          "minimum itself, where terms of the same form have taken each other's parameters. "
          "Trusted but wrong: no digit is right,\n"
          "it is another minimum, and the verdict calls the fit good nevertheless. Times are the "
          "best of "
       << kTimings
       << " and hold statistics and\nverdict.\n\n"
          "The certified sum of squares of Lanczos1, 1.4E-25, lies below what doubles resolve "
          "beside its data; its standard deviations\n"
          "lose their digits with it.\n\n";
  WriteSummary(all, page);
  WriteWeighted(page);
  for (std::size_t i = 0; i < all.size(); ++i) WriteMethod(kMethods[i], all[i], page);
  return page.str();
}

}  // namespace
}  // namespace tarnwick

int main(int argc, char** argv) try {
  if (argc != 3) {
    std::cerr << "usage: certificate FOLDER-OF-PROBLEMS PAGE\n";
    return 2;
  }
  tarnwick::WriteWholeFile(argv[2], tarnwick::Page(tarnwick::LoadCertifiedProblems(argv[1])));
  return 0;
} catch (const std::exception& error) {
  std::cerr << "certificate: " << error.what() << '\n';
  return 1;
}
