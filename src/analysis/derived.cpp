#include "analysis/derived.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "analysis/settled_regression.h"
#include "base/undefined.h"
#include "data/series/point_errors.h"

namespace tarnwick {

namespace {

// The points of a result and what its axes are called. Complete before the target is touched, which may be the source.
struct Result {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<double> y_error;  // empty: none are known
  std::string x_column;
  std::string y_column;
  bool duplicates_allowed = false;

  void Add(double x_value, double y_value) {
    x.push_back(x_value);
    y.push_back(y_value);
  }
};

// What errors of Y contribute to a variance: nothing but an error above 0 tells how sure a point is.
class SquaredErrors {
 public:
  explicit SquaredErrors(const TDataSeries& source) : errors_(source.Errors()) {}

  bool Known() const { return HasYErrors(errors_); }
  double Of(const Point& point) const {
    const double error = YErrorOf(errors_, point);
    return error > 0 ? error * error : kUndefined;
  }

 private:
  PointErrors errors_;
};

Result Prepare(const TDataSeries& source, const std::string& prefix) {
  Result result;
  result.x_column = source.Source().XDataColumn;
  result.y_column = prefix + source.Source().YDataColumn;
  result.duplicates_allowed = source.DuplicatesAllowed();
  return result;
}

void Store(const Result& result, TDataSeries& target) {
  target.BeginUpdate();
  target.Clear();
  target.SetDuplicatesAllowed(result.duplicates_allowed);
  target.Source().XDataColumn = result.x_column;
  target.Source().YDataColumn = result.y_column;
  PointErrors errors;
  if (!result.y_error.empty()) errors.y.kind = ErrorKind::Column;
  target.SetErrors(errors);
  target.AddPoints(result.x, result.y, {result.y_error, {}});
  target.EndUpdate();
}

// Calls visit(left, right) for every pair of neighbours.
template <class Visit>
void ForEachPair(const PointChain& points, Visit visit) {
  bool first = true;
  Point left;
  points.ForEachChunk([&](const ChunkView& chunk) {
    for (std::size_t i = 0; i < chunk.x.size(); ++i) {
      const Point right{chunk.chunk->Id(i), chunk.x[i], chunk.y[i],
                        chunk.regression.empty() ? 0 : chunk.regression[i]};
      if (!first) visit(left, right);
      first = false;
      left = right;
    }
  });
}

// Defined, finite corrected Y of all points.
std::vector<double> CorrectedValues(const TDataSeries& source) {
  std::vector<double> values;
  values.reserve(source.Points().Size());
  const BaseLine line = source.GetBaseLine();
  source.Points().ForEachPoint([&](double x, double y) {
    const double value = line.CorrectedY(x, y);
    if (std::isfinite(value)) values.push_back(value);
  });
  return values;
}

/// Calls visit(right, area): the trapezoid area between points and base line up to each point but the first.
template <class Visit>
void ForEachArea(const TDataSeries& source, Visit visit) {
  const BaseLine line = source.GetBaseLine();
  const long double zero = line.offset;
  const long double slope = line.slope;
  long double area = 0;
  ForEachPair(source.Points(), [&](const Point& left, const Point& right) {
    const long double width = static_cast<long double>(right.x) - left.x;
    const long double sum_x = static_cast<long double>(left.x) + right.x;
    const long double sum_y = static_cast<long double>(left.y) + right.y;
    area += 0.5L * width * (sum_y - 2 * zero - slope * sum_x);
    visit(right, static_cast<double>(area));
  });
}

/// Calls visit(x, sum): the sum of corrected Y up to each point.
template <class Visit>
void ForEachSum(const TDataSeries& source, Visit visit) {
  const BaseLine line = source.GetBaseLine();
  long double sum = 0;
  source.Points().ForEachPoint([&](double x, double y) {
    sum += line.CorrectedY(x, y);
    visit(x, static_cast<double>(sum));
  });
}

/// Of a trapezoid integral that has gone over the points before.
class VarianceOfArea {
 public:
  /// That up to the right point.
  double Take(double width, double left, double right) {
    settled_ += Square((last_width_ + width) / 2) * left;
    last_width_ = width;
    return settled_ + Square(width / 2) * right;
  }

 private:
  static double Square(double value) { return value * value; }

  double settled_ = 0;  // what no further point changes
  double last_width_ = 0;
};

std::vector<double> ErrorsOfArea(const TDataSeries& source) {
  std::vector<double> errors;
  const SquaredErrors squared(source);
  if (!squared.Known()) return errors;
  VarianceOfArea variance;
  ForEachPair(source.Points(), [&](const Point& left, const Point& right) {
    errors.push_back(
        std::sqrt(variance.Take(right.x - left.x, squared.Of(left), squared.Of(right))));
  });
  return errors;
}

std::vector<double> ErrorsOfSum(const TDataSeries& source) {
  std::vector<double> errors;
  const SquaredErrors squared(source);
  if (!squared.Known()) return errors;
  double variance = 0;
  source.Points().ForEachChunk([&](const ChunkView& chunk) {
    for (std::size_t i = 0; i < chunk.x.size(); ++i) {
      variance += squared.Of({chunk.chunk->Id(i), chunk.x[i], chunk.y[i]});
      errors.push_back(std::sqrt(variance));
    }
  });
  return errors;
}

}  // namespace

double AreaOf(const TDataSeries& source) {
  double area = 0;
  ForEachArea(source, [&](const Point&, double up_to_here) { area = up_to_here; });
  return area;
}

double SumOf(const TDataSeries& source) {
  double sum = 0;
  ForEachSum(source, [&](double, double up_to_here) { sum = up_to_here; });
  return sum;
}

void Integral(const TDataSeries& source, TDataSeries& target) {
  Result result = Prepare(source, "INT of ");
  ForEachArea(source, [&](const Point& point, double area) { result.Add(point.x, area); });
  result.y_error = ErrorsOfArea(source);
  Store(result, target);
}

void RunningSum(const TDataSeries& source, TDataSeries& target) {
  Result result = Prepare(source, "SUM of ");
  ForEachSum(source, [&](double x, double sum) { result.Add(x, sum); });
  result.y_error = ErrorsOfSum(source);
  Store(result, target);
}

void ProbabilityDensity(const TDataSeries& source, TDataSeries& target, std::int32_t bins) {
  if (bins < 3) {
    target.Clear();
    return;
  }
  Result result;
  result.x_column = source.Source().YDataColumn;
  result.y_column = "Probability Density";
  const std::vector<double> values = CorrectedValues(source);
  std::vector<double> density;
  if (!values.empty()) {
    const auto [least, greatest] = std::minmax_element(values.begin(), values.end());
    const double min = *least;
    const double width = (*greatest - min) / (bins - 1);
    if (width > 0 && std::isfinite(width)) {
      density.assign(static_cast<std::size_t>(bins), 0);
      const double share = 1 / (static_cast<double>(values.size()) * width);
      for (const double value : values) {
        density[static_cast<std::size_t>((value - min) / width)] += share;
      }
      for (std::int32_t bin = 1; bin <= bins; ++bin) result.Add(min + (bin - 0.5) * width, 0);
    }
  }
  target.BeginUpdate();
  Store(result, target);
  for (std::size_t bin = 0; bin < density.size(); ++bin) {
    target.SetY(static_cast<std::int32_t>(bin + 1), density[bin]);
  }
  target.EndUpdate();
}

void Derivative(TDataSeries& source, TDataSeries& target) {
  const RegressionType type = source.RegressionType();
  SettleRegression(source);
  Result result = Prepare(source, "DIF of ");
  const PointChain& walked = HasRegressionCurve(type) ? source.Regression().curve : source.Points();
  const double base_line = source.BaseLineSlope();
  const SquaredErrors squared(source);
  const bool with_errors = type == RegressionType::None && squared.Known();
  ForEachPair(walked, [&](const Point& left, const Point& right) {
    if (!(right.x > left.x)) return;
    const double rise =
        type == RegressionType::None ? right.y - left.y : right.regression - left.regression;
    const double run = right.x - left.x;
    result.Add((left.x + right.x) * 0.5, rise / run - base_line);
    if (with_errors)
      result.y_error.push_back(std::sqrt(squared.Of(left) + squared.Of(right)) / run);
  });
  Store(result, target);
}

}  // namespace tarnwick
