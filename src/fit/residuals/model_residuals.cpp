#include "fit/residuals/model_residuals.h"

#include <Eigen/Cholesky>
#include <algorithm>
#include <atomic>
#include <cmath>
#include <exception>
#include <optional>
#include <thread>
#include <utility>

#include "base/undefined.h"
#include "fit/residuals/block_reduction.h"
#include "fit/residuals/model_blocks.h"
#include "fit/residuals/sums_of_y.h"

namespace tarnwick {
namespace {

/// Points that are summed as one part, whoever does it: the sums do not depend on the number of threads.
constexpr std::size_t kTaskLength = 32 * kBlockLength;
/// Below this a thread costs more than it brings.
constexpr std::size_t kTasksPerThread = 3;
/// A column's squared sine with those before it, below which J'J has lost half the digits.
constexpr double kLeastPivot = 1e-8;

/// One thread's memory.
struct Worker {
  std::unique_ptr<ModelBlocks> blocks;
  BlockReducer reducer;
};

struct OwnPoints {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<double> weights;
};

/// Every nth point, `most` at most.
OwnPoints EveryNth(FitPoints points, std::size_t most) {
  OwnPoints some;
  const std::size_t step = points.x.empty() ? 1 : (points.x.size() - 1) / most + 1;
  for (std::size_t i = 0; i < points.x.size(); i += step) {
    some.x.push_back(points.x[i]);
    some.y.push_back(points.y[i]);
    if (!points.weights.empty()) some.weights.push_back(points.weights[i]);
  }
  return some;
}

ParameterRange RangeOf(const ParameterSettings& parameter) {
  const bool default_width = parameter.StartDev == ParameterSettings().StartDev;
  return {parameter.Low, parameter.High, default_width ? 0 : std::abs(parameter.StartDev)};
}

Eigen::Map<const Eigen::MatrixXd> Square(const std::vector<double>& numbers, Eigen::Index width) {
  return {numbers.data(), width, width};
}

/// R from J'J by Cholesky's decomposition, columns scaled to length 1. Nothing when that would lose digits.
std::optional<ReducedJacobian> FromProducts(const PartialReduction& sum, Eigen::Index k) {
  std::vector<double> numbers(sum.products.size());
  std::ranges::transform(sum.products, numbers.begin(), &CompensatedSum::Value);
  Eigen::MatrixXd gram = Square(numbers, k + 1);
  if (!gram.diagonal().allFinite() || (gram.diagonal().head(k).array() <= 0).any())
    return std::nullopt;

  const Eigen::VectorXd lengths = gram.diagonal().head(k).cwiseSqrt();
  Eigen::MatrixXd scaled = gram.topLeftCorner(k, k).transpose();
  scaled = lengths.cwiseInverse().asDiagonal() * scaled * lengths.cwiseInverse().asDiagonal();
  const Eigen::LLT<Eigen::Ref<Eigen::MatrixXd>, Eigen::Lower> cholesky(scaled);
  if (cholesky.info() != Eigen::Success ||
      !(scaled.diagonal().array().square() > kLeastPivot).all())
    return std::nullopt;

  ReducedJacobian reduced;
  const auto lower = scaled.triangularView<Eigen::Lower>();
  reduced.qtr = lower.solve(gram.col(k).head(k).cwiseQuotient(lengths));
  reduced.rest = std::sqrt(std::max(sum.sum_of_squares.Value() - reduced.qtr.squaredNorm(), 0.0));
  reduced.r = Eigen::MatrixXd(lower).transpose() * lengths.asDiagonal();
  reduced.how = Reduction::NormalEquations;
  return reduced;
}

ReducedJacobian FromTriangle(const PartialReduction& sum, Eigen::Index k) {
  const auto triangle = Square(sum.triangle, k + 1);
  ReducedJacobian reduced;
  reduced.r = triangle.topLeftCorner(k, k).triangularView<Eigen::Upper>();
  reduced.qtr = triangle.col(k).head(k);
  reduced.rest = std::abs(triangle(k, k));
  return reduced;
}

}  // namespace

struct ModelResiduals::Impl {
  Impl(TCurFit& fitted, FitPoints given, int threads) : model(fitted), points(given) {
    Prepare(threads);
  }
  Impl(TCurFit& fitted, OwnPoints given)
      : model(fitted), own(std::move(given)), points{own.x, own.y, own.weights} {
    Prepare(1);
  }

  void Prepare(int threads) {
    for (std::int32_t i = 1; i <= model.NParams(); ++i) {
      if (!model.Param(i).Vary()) continue;
      places.push_back(model.Param(i).ValuePtr());
      ranges.push_back(RangeOf(model.Param(i).Settings()));
    }
    MeasureY();
    parts.resize((points.x.size() + kTaskLength - 1) / kTaskLength);
    MakeWorkers(threads > 0 ? static_cast<std::size_t>(threads)
                            : std::max(std::thread::hardware_concurrency(), 1U));
  }

  void MeasureY() { sums_of_y = SumUpY(points.y, points.weights); }

  void MakeWorkers(std::size_t most) {
    const std::vector<const double*> variables(places.begin(), places.end());
    const std::unique_ptr<BlockEvaluator> evaluator =
        BlockEvaluator::Make(model, model.XValue(), variables);
    exact_derivatives = evaluator != nullptr;
    if (!evaluator) {
      workers.push_back(
          {std::make_unique<RecordBlocks>(model, places), BlockReducer(places.size())});
      return;
    }
    const std::size_t useful = std::max<std::size_t>(parts.size() / kTasksPerThread, 1);
    for (std::size_t i = 0; i < std::min(most, useful); ++i)
      workers.push_back(
          {std::make_unique<EvaluatorBlocks>(*evaluator), BlockReducer(places.size())});
  }

  std::vector<double> ValuesAt(std::span<const double> x, std::span<const double> p);
  /// One pass over all points; its result.
  PartialReduction& Pass(std::span<const double> p, PassKind kind);
  void RunTasks(Worker& worker, std::span<const double> p, PassKind kind);
  void RunTask(Worker& worker, std::size_t task, PassKind kind);

  TCurFit& model;
  OwnPoints own;  // when thinned
  FitPoints points;
  std::vector<double*> places;  // of the varied parameters' values
  std::vector<ParameterRange> ranges;
  SumsOfY sums_of_y;
  bool exact_derivatives = false;
  std::vector<Worker> workers;
  std::vector<PartialReduction> parts;  // one per task
  PartialReduction whole;
  std::atomic<std::size_t> next_task = 0;
};

void ModelResiduals::Impl::RunTask(Worker& worker, std::size_t task, PassKind kind) {
  PartialReduction& part = parts[task];
  part.Clear(kind, places.size() + 1);
  const std::size_t begin = task * kTaskLength;
  const std::size_t end = std::min(begin + kTaskLength, points.x.size());
  for (std::size_t from = begin; from < end; from += kBlockLength) {
    const std::size_t count = std::min(kBlockLength, end - from);
    FitPoints block{points.x.subspan(from, count), points.y.subspan(from, count)};
    if (!points.weights.empty()) block.weights = points.weights.subspan(from, count);
    worker.reducer.Add(*worker.blocks, block, kind, part);
  }
}

void ModelResiduals::Impl::RunTasks(Worker& worker, std::span<const double> p, PassKind kind) {
  worker.blocks->Load(p);
  for (std::size_t task = next_task++; task < parts.size(); task = next_task++)
    RunTask(worker, task, kind);
}

PartialReduction& ModelResiduals::Impl::Pass(std::span<const double> p, PassKind kind) {
  next_task = 0;
  std::vector<std::exception_ptr> errors(workers.size());
  const auto run = [&](std::size_t number) noexcept {
    try {
      RunTasks(workers[number], p, kind);
    } catch (...) {
      errors[number] = std::current_exception();
    }
  };
  {
    std::vector<std::jthread> others;
    for (std::size_t i = 1; i < workers.size(); ++i) others.emplace_back(run, i);
    run(0);
  }
  for (const std::exception_ptr& error : errors) {
    if (error) std::rethrow_exception(error);
  }
  whole.Clear(kind, places.size() + 1);
  for (PartialReduction& part : parts) workers.front().reducer.Append(part, kind, whole);
  return whole;
}

std::vector<double> ModelResiduals::Impl::ValuesAt(std::span<const double> x,
                                                   std::span<const double> p) {
  ModelBlocks& blocks = *workers.front().blocks;
  blocks.Load(p);
  std::vector<double> values(x.size());
  for (std::size_t from = 0; from < x.size(); from += kBlockLength) {
    const std::size_t count = std::min(kBlockLength, x.size() - from);
    std::copy_n(blocks.Values(x.subspan(from, count)).values, count, values.data() + from);
  }
  return values;
}

ModelResiduals::ModelResiduals(TCurFit& model, FitPoints points, int threads)
    : impl_(std::make_unique<Impl>(model, points, threads)) {}

ModelResiduals::ModelResiduals(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}

ModelResiduals::~ModelResiduals() = default;

void ModelResiduals::SetWeights(std::span<const double> weights) {
  impl_->points.weights = weights;
  impl_->MeasureY();
}

std::unique_ptr<LeastSquaresProblem> ModelResiduals::Thinned(std::size_t most) const {
  auto impl = std::make_unique<Impl>(impl_->model, EveryNth(impl_->points, most));
  return std::unique_ptr<LeastSquaresProblem>(new ModelResiduals(std::move(impl)));
}

std::span<const ParameterRange> ModelResiduals::Ranges() const {
  return impl_->ranges;
}

std::pair<double, double> ModelResiduals::RangeOfX() const {
  if (impl_->points.x.empty()) return {0, 0};
  const auto [low, high] = std::ranges::minmax(impl_->points.x);
  return {low, high};
}

double ModelResiduals::SumAboutMean() const {
  return impl_->sums_of_y.about_mean;
}

std::size_t ModelResiduals::ParameterCount() const {
  return impl_->places.size();
}

std::size_t ModelResiduals::PointCount() const {
  return impl_->points.x.size();
}

double ModelResiduals::NormOfY() const {
  return std::sqrt(impl_->sums_of_y.squares);
}

bool ModelResiduals::HasExactDerivatives() const {
  return impl_->exact_derivatives;
}

std::vector<double> ModelResiduals::Start() const {
  std::vector<double> values;
  for (const double* place : impl_->places) values.push_back(*place);
  return values;
}

// An undefined parameter makes undefined whatever depends on it: so it shows which derivatives change with it.
std::vector<bool> ModelResiduals::LinearParameters(std::span<const double> p) {
  const std::size_t k = ParameterCount();
  std::vector<bool> linear(k, false);
  if (!HasExactDerivatives() || PointCount() == 0) return linear;
  const std::span<const double> x =
      impl_->points.x.first(std::min(impl_->points.x.size(), kBlockLength));
  ModelBlocks& blocks = *impl_->workers.front().blocks;
  const auto undefined_columns = [&] {
    std::vector<bool> undefined(k);
    const BlockResult block = blocks.Derivatives(x);
    for (std::size_t i = 0; i < k; ++i)
      undefined[i] =
          std::any_of(block.derivatives[i], block.derivatives[i] + x.size(), IsUndefined);
    return undefined;
  };

  std::vector<std::vector<bool>> depends(k);  // [j][i]: the derivative by i on parameter j
  std::vector<double> poisoned(p.begin(), p.end());
  for (std::size_t j = 0; j < k; ++j) {
    poisoned[j] = kUndefined;
    blocks.Load(poisoned);
    depends[j] = undefined_columns();
    poisoned[j] = p[j];
  }
  for (std::size_t j = 0; j < k; ++j) {
    linear[j] = !depends[j][j];
    for (std::size_t i = 0; i < j; ++i) {
      if (linear[i] && (depends[i][j] || depends[j][i])) linear[j] = false;
    }
  }
  return linear;
}

double ModelResiduals::SumOfSquares(std::span<const double> p) {
  const PartialReduction& sum = impl_->Pass(p, PassKind::SumOfSquares);
  return sum.undefined_residuals > 0 ? kUndefined : sum.sum_of_squares.Value();
}

ReducedJacobian ModelResiduals::Reduce(std::span<const double> p, Reduction how) {
  const auto k = static_cast<Eigen::Index>(ParameterCount());
  std::optional<ReducedJacobian> reduced;
  if (how == Reduction::NormalEquations)
    reduced = FromProducts(impl_->Pass(p, PassKind::NormalEquations), k);
  if (!reduced) reduced = FromTriangle(impl_->Pass(p, PassKind::Orthogonal), k);
  reduced->sum_of_squares = impl_->whole.sum_of_squares.Value();
  reduced->undefined = std::max(impl_->whole.undefined, impl_->whole.undefined_residuals);
  return *std::move(reduced);
}

std::vector<double> ModelResiduals::Curve(std::span<const double> p, std::span<const double> x) {
  return impl_->ValuesAt(x, p);
}

ResidualSample ModelResiduals::Sample(std::span<const double> p, std::size_t most) {
  const OwnPoints some = EveryNth(impl_->points, most);
  ModelBlocks& blocks = *impl_->workers.front().blocks;
  blocks.Load(p);
  ResidualSample sample;
  const auto k = static_cast<Eigen::Index>(ParameterCount());
  sample.jacobian.resize(static_cast<Eigen::Index>(some.x.size()), k);
  for (std::size_t from = 0; from < some.x.size(); from += kBlockLength) {
    const std::size_t count = std::min(kBlockLength, some.x.size() - from);
    const BlockResult block = blocks.Derivatives(std::span(some.x).subspan(from, count));
    for (std::size_t i = 0; i < count; ++i) {
      const auto row = static_cast<Eigen::Index>(sample.x.size());
      for (Eigen::Index j = 0; j < k; ++j)
        sample.jacobian(row, j) = block.derivatives[static_cast<std::size_t>(j)][i];
      const double weight = some.weights.empty() ? 1 : some.weights[from + i];
      sample.jacobian.row(row) *= weight;
      const double residual = (some.y[from + i] - block.values[i]) * weight;
      if (!std::isfinite(residual) || !sample.jacobian.row(row).allFinite()) continue;
      sample.x.push_back(some.x[from + i]);
      sample.curve.push_back(block.values[i]);
      sample.weights.push_back(weight);
      sample.residuals.push_back(residual);
    }
  }
  sample.jacobian.conservativeResize(static_cast<Eigen::Index>(sample.x.size()), k);
  return sample;
}

std::vector<double> ModelResiduals::Values(std::span<const double> p) {
  return impl_->ValuesAt(impl_->points.x, p);
}

std::vector<double> ModelResiduals::Residuals(std::span<const double> p, std::size_t most) {
  const OwnPoints some = EveryNth(impl_->points, most);
  std::vector<double> residuals = impl_->ValuesAt(some.x, p);
  for (std::size_t i = 0; i < residuals.size(); ++i) {
    residuals[i] = some.y[i] - residuals[i];
    if (!some.weights.empty()) residuals[i] *= some.weights[i];
  }
  return residuals;
}

}  // namespace tarnwick
