// Whole fits beside their limit: a hand-written Levenberg-Marquardt method with analytic derivatives that accumulates its
// normal equations in one pass, one thread; and beside cminpack and GSL on hand-written residuals and derivatives. Figures to
// compare, time by Limit: Newton/0/1 at most 1.5 and Newton/0/2 (two threads) at most 0.8, Newton/1/1 at most 2, Newton/2/1 at
// most 4. Beside Newton: Weighted at most 1.2, Bounded at most 1.1, Joint/1 at most 1.2 of Newton/0/1, Judged/0/1
// at most 1.15 of it, by the least of interleaved repetitions (--benchmark_enable_random_interleaving=true
// --benchmark_repetitions=9): one after the other they differ by more than that. Each reports its evaluations.
#include <benchmark/benchmark.h>
#include <cminpack-1/cminpack.h>
#include <gsl/gsl_multifit_nlinear.h>

#include <Eigen/Dense>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "analysis/fits/fit_run.h"
#include "fit/judge/fit_findings.h"
#include "fit/minimise/newton_fit.h"
#include "fit/model/curve_fit.h"
#include "fit/residuals/joint_residuals.h"
#include "fit/residuals/model_residuals.h"

namespace {

using namespace tarnwick;

/// Gaussian peaks (height, place, width each) on a line (slope, offset).
double Peaks(double x, const double* p, int peaks, double* derivatives) {
  double value = 0;
  for (int k = 0; k < peaks; ++k, p += 3, derivatives += 3) {
    const double t = (x - p[1]) / p[2];
    const double g = std::exp(-t * t);
    value += p[0] * g;
    derivatives[0] = g;
    derivatives[1] = 2 * p[0] * g * t / p[2];
    derivatives[2] = derivatives[1] * t;
  }
  derivatives[0] = x;
  derivatives[1] = 1;
  return value + p[0] * x + p[1];
}

struct Problem {
  int peaks;
  int parameters;
  std::vector<double> start;
  std::vector<double> x;
  std::vector<double> y;
  std::string expression;
};

Problem MakeProblem(int peaks, std::size_t points) {
  Problem problem;
  problem.peaks = peaks;
  problem.parameters = 3 * peaks + 2;
  std::vector<double> truth;
  for (int k = 0; k < peaks; ++k) {
    const double place = (k + 0.5) * 10 / peaks;
    const double width = 2.5 / peaks;
    truth.insert(truth.end(), {3.0 + k, place, width});
    problem.start.insert(problem.start.end(), {3.5 + 0.8 * k, place + 0.2 * width, 1.2 * width});
    const std::string n = std::to_string(k);
    problem.expression += "a" + n + "*exp(0-((x-b" + n + ")/c" + n + ")^2)+";
  }
  truth.insert(truth.end(), {0.3, 1});
  problem.start.insert(problem.start.end(), {0.1, 0.5});
  problem.expression += "d*x+e";

  std::vector<double> unused(truth.size());
  unsigned state = 1;
  for (std::size_t i = 0; i < points; ++i) {
    state = state * 1664525U + 1013904223U;
    const double x = 10 * static_cast<double>(i) / static_cast<double>(points);
    problem.x.push_back(x);
    problem.y.push_back(Peaks(x, truth.data(), peaks, unused.data()) +
                        0.2 * (static_cast<double>(state) / 4294967296.0 - 0.5));
  }
  return problem;
}

const Problem& ProblemNumber(std::int64_t number) {
  static const Problem problems[] = {MakeProblem(1, 1'000'000), MakeProblem(5, 100'000),
                                     MakeProblem(1, 1'000)};
  return problems[number];
}

// --- the limit

template <int kPeaks>
struct Sums {
  static constexpr int kCount = 3 * kPeaks + 2;
  double jj[kCount * kCount] = {};
  double jr[kCount] = {};
  double rr = 0;

  void Accumulate(const Problem& problem, const double* p) {
    double j[kCount];
    *this = {};
    for (std::size_t i = 0; i < problem.x.size(); ++i) {
      const double r = Peaks(problem.x[i], p, kPeaks, j) - problem.y[i];
      rr += r * r;
      for (int a = 0; a < kCount; ++a) {
        jr[a] += j[a] * r;
        for (int b = 0; b <= a; ++b) jj[a * kCount + b] += j[a] * j[b];
      }
    }
  }
};

template <int kPeaks>
int FitByHand(const Problem& problem, std::vector<double>& p) {
  constexpr int kCount = Sums<kPeaks>::kCount;
  using Square = Eigen::Matrix<double, kCount, kCount, Eigen::RowMajor>;
  using Vector = Eigen::Matrix<double, kCount, 1>;
  auto here = std::make_unique<Sums<kPeaks>>();
  auto there = std::make_unique<Sums<kPeaks>>();
  here->Accumulate(problem, p.data());
  int evaluations = 1;
  double damping = 1e-3;
  for (int i = 0; i < 100; ++i) {
    Square matrix = Eigen::Map<const Square>(here->jj);
    matrix.diagonal() *= 1 + damping;
    const Vector step =
        matrix.template selfadjointView<Eigen::Lower>().llt().solve(Eigen::Map<Vector>(here->jr));
    std::vector<double> q = p;
    for (int k = 0; k < kCount; ++k) q[static_cast<std::size_t>(k)] -= step[k];
    there->Accumulate(problem, q.data());
    ++evaluations;
    if (!(there->rr < here->rr)) {
      if (std::abs(there->rr - here->rr) <= 1e-10 * here->rr) break;
      damping *= 10;
      continue;
    }
    const bool done = here->rr - there->rr <= 1.5e-8 * here->rr;
    p = q;
    std::swap(here, there);
    damping /= 10;
    if (done) break;
  }
  return evaluations;
}

void Limit(benchmark::State& state) {
  const Problem& problem = ProblemNumber(state.range(0));
  int evaluations = 0;
  for (auto _ : state) {
    std::vector<double> p = problem.start;
    evaluations = problem.peaks == 1 ? FitByHand<1>(problem, p) : FitByHand<5>(problem, p);
    benchmark::DoNotOptimize(p.data());
  }
  state.counters["evaluations"] = evaluations;
}
BENCHMARK(Limit)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond)->UseRealTime();

// --- ours, everything included: a model made, compiled, fitted and given its values

void AddParameters(const Problem& problem, double low, double high, TCurFit& model) {
  for (std::size_t j = 0; j < problem.start.size(); ++j) {
    ParameterSettings parameter;
    const bool of_line = j + 2 >= problem.start.size();
    parameter.Name = of_line ? (j + 1 == problem.start.size() ? "e" : "d")
                             : std::string(1, "abc"[j % 3]) + std::to_string(j / 3);
    parameter.Value = problem.start[j];
    parameter.Vary = true;
    parameter.Low = low;
    parameter.High = high;
    model.AddParameter(std::make_unique<TDBLParameter>(parameter));
  }
  model.SetExpression(problem.expression);
  model.Prepare();
}

/// A fit with these weights and bounds, the values put back into the model.
void FitProblem(benchmark::State& state, std::span<const double> weights, double bound) {
  const Problem& problem = ProblemNumber(state.range(0));
  double evaluations = 0;
  for (auto _ : state) {
    TCurFit model;
    AddParameters(problem, -bound, bound, model);
    ModelResiduals residuals(model, {problem.x, problem.y, weights},
                             static_cast<int>(state.range(1)));
    NoProgress progress;
    const NewtonOutcome fit = FitByNewton(residuals, residuals.Start(), {}, progress);
    for (std::size_t j = 0; j < fit.outcome.p.size(); ++j) {
      model.Param(static_cast<std::int32_t>(j + 1)).SetValue(fit.outcome.p[j]);
    }
    if (fit.outcome.why != StopReason::Converged) state.SkipWithError("not converged");
    evaluations = static_cast<double>(fit.outcome.evaluations);
  }
  state.counters["evaluations"] = evaluations;
}

constexpr double kNoBound = std::numeric_limits<double>::infinity();

void Newton(benchmark::State& state) {
  FitProblem(state, {}, kNoBound);
}
BENCHMARK(Newton)->ArgsProduct({{0, 1, 2}, {1, 2}})->Unit(benchmark::kMicrosecond)->UseRealTime();

/// Weights of 1 leave the way as it is: what they cost shows.
void Weighted(benchmark::State& state) {
  const std::vector<double> ones(ProblemNumber(state.range(0)).x.size(), 1.0);
  FitProblem(state, ones, kNoBound);
}
BENCHMARK(Weighted)->ArgsProduct({{0, 1, 2}, {1}})->Unit(benchmark::kMicrosecond)->UseRealTime();

/// Bounds that are never reached.
void Bounded(benchmark::State& state) {
  FitProblem(state, {}, 1e6);
}
BENCHMARK(Bounded)->ArgsProduct({{0, 1, 2}, {1}})->Unit(benchmark::kMicrosecond)->UseRealTime();

/// The whole run, with statistics, tests of the residuals and the verdict; the points copied into it are not timed.
void Judged(benchmark::State& state) {
  const Problem& problem = ProblemNumber(state.range(0));
  TCurFit model;
  AddParameters(problem, -kNoBound, kNoBound, model);
  FitJob job;
  job.settings = model.Settings();
  job.settings.ProcType = FitProcType::cfp_Newton;
  job.x = problem.x;
  job.y = problem.y;
  job.points_in_range = job.points_chosen = static_cast<std::int64_t>(problem.x.size());
  job.options.threads = static_cast<int>(state.range(1));
  double evaluations = 0;
  for (auto _ : state) {
    NoProgress progress;
    const FitResult result = RunFit(job, progress);
    if (!HasConverged(result)) state.SkipWithError("not converged");
    evaluations = static_cast<double>(result.outcome.evaluations);
  }
  state.counters["evaluations"] = evaluations;
}
BENCHMARK(Judged)->ArgsProduct({{0, 1, 2}, {1}})->Unit(benchmark::kMicrosecond)->UseRealTime();

/// The points of problem 0 as ten DataSets that share place and width, a line of its own each.
void Joint(benchmark::State& state) {
  const Problem& problem = ProblemNumber(0);
  constexpr std::size_t kSets = 10;
  constexpr std::size_t kOwn = 3;  // height, slope, offset
  std::vector<std::vector<double>> x(kSets);
  std::vector<std::vector<double>> y(kSets);
  for (std::size_t i = 0; i < problem.x.size(); ++i) {
    x[i % kSets].push_back(problem.x[i]);
    y[i % kSets].push_back(problem.y[i]);
  }
  double evaluations = 0;
  for (auto _ : state) {
    std::vector<std::unique_ptr<TCurFit>> models;
    std::vector<std::unique_ptr<ModelResiduals>> residuals;
    std::vector<JointResiduals::Part> parts;
    std::vector<double> start = {problem.start[1], problem.start[2]};
    for (std::size_t set = 0; set < kSets; ++set) {
      models.push_back(std::make_unique<TCurFit>());
      AddParameters(problem, -kNoBound, kNoBound, *models.back());
      residuals.push_back(std::make_unique<ModelResiduals>(
          *models.back(), FitPoints{x[set], y[set]}, static_cast<int>(state.range(0))));
      const std::size_t own = 2 + kOwn * set;
      parts.push_back({residuals.back().get(), {own, 0, 1, own + 1, own + 2}});
      start.insert(start.end(), {problem.start[0], problem.start[3], problem.start[4]});
    }
    JointResiduals joint(std::move(parts), start.size());
    NoProgress progress;
    const NewtonOutcome fit = FitByNewton(joint, start, {}, progress);
    if (fit.outcome.why != StopReason::Converged) state.SkipWithError("not converged");
    evaluations = static_cast<double>(fit.outcome.evaluations);
  }
  state.counters["evaluations"] = evaluations;
}
BENCHMARK(Joint)->Arg(1)->Unit(benchmark::kMicrosecond)->UseRealTime();

// --- peers

struct Counted {
  const Problem& problem;
  int evaluations = 0;
};

int MinpackFunction(void* data, int m, int n, const double* p, double* r, double* jacobian, int ld,
                    int flag) {
  auto& counted = *static_cast<Counted*>(data);
  const Problem& problem = counted.problem;
  double j[32];
  if (flag == 1) ++counted.evaluations;
  for (int i = 0; i < m; ++i) {
    const auto at = static_cast<std::size_t>(i);
    const double value = Peaks(problem.x[at], p, problem.peaks, j);
    if (flag == 1) {
      r[i] = value - problem.y[at];
    } else {
      for (int k = 0; k < n; ++k) jacobian[i + k * ld] = j[k];
    }
  }
  return 0;
}

void Cminpack(benchmark::State& state) {
  const Problem& problem = ProblemNumber(state.range(0));
  const auto m = static_cast<int>(problem.x.size());
  const int n = problem.parameters;
  Counted counted{problem};
  for (auto _ : state) {
    counted.evaluations = 0;
    std::vector<double> p = problem.start;
    std::vector<double> r(problem.x.size());
    std::vector<double> jacobian(problem.x.size() * p.size());
    std::vector<int> pivots(p.size());
    std::vector<double> work(5 * p.size() + problem.x.size());
    const int info = lmder1(&MinpackFunction, &counted, m, n, p.data(), r.data(), jacobian.data(),
                            m, 1.5e-8, pivots.data(), work.data(), static_cast<int>(work.size()));
    if (info < 1 || info > 3) state.SkipWithError("not converged");
  }
  state.counters["evaluations"] = counted.evaluations;
}
BENCHMARK(Cminpack)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond)->UseRealTime();

int GslResiduals(const gsl_vector* p, void* data, gsl_vector* r) {
  auto& counted = *static_cast<Counted*>(data);
  double j[32];
  ++counted.evaluations;
  for (std::size_t i = 0; i < counted.problem.x.size(); ++i)
    gsl_vector_set(
        r, i,
        Peaks(counted.problem.x[i], p->data, counted.problem.peaks, j) - counted.problem.y[i]);
  return GSL_SUCCESS;
}

int GslJacobian(const gsl_vector* p, void* data, gsl_matrix* jacobian) {
  const auto& counted = *static_cast<Counted*>(data);
  for (std::size_t i = 0; i < counted.problem.x.size(); ++i)
    Peaks(counted.problem.x[i], p->data, counted.problem.peaks, gsl_matrix_ptr(jacobian, i, 0));
  return GSL_SUCCESS;
}

void Gsl(benchmark::State& state) {
  const Problem& problem = ProblemNumber(state.range(0));
  Counted counted{problem};
  for (auto _ : state) {
    counted.evaluations = 0;
    gsl_multifit_nlinear_fdf fdf = {};
    fdf.f = &GslResiduals;
    fdf.df = &GslJacobian;
    fdf.n = problem.x.size();
    fdf.p = problem.start.size();
    fdf.params = &counted;
    const gsl_multifit_nlinear_parameters parameters = gsl_multifit_nlinear_default_parameters();
    gsl_multifit_nlinear_workspace* const work =
        gsl_multifit_nlinear_alloc(gsl_multifit_nlinear_trust, &parameters, fdf.n, fdf.p);
    const gsl_vector_const_view start =
        gsl_vector_const_view_array(problem.start.data(), problem.start.size());
    gsl_multifit_nlinear_init(&start.vector, &fdf, work);
    int info = 0;
    if (gsl_multifit_nlinear_driver(100, 1e-8, 1e-8, 1e-8, nullptr, nullptr, &info, work) !=
        GSL_SUCCESS)
      state.SkipWithError("not converged");
    gsl_multifit_nlinear_free(work);
  }
  state.counters["evaluations"] = counted.evaluations;
}
BENCHMARK(Gsl)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace
