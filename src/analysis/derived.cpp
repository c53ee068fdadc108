#include "analysis/derived.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "analysis/along_line.h"
#include "analysis/interpolation.h"
#include "analysis/settled_regression.h"
#include "analysis/variance_of_area.h"
#include "base/undefined.h"
#include "data/column_caption.h"
#include "data/series/point_errors.h"

namespace tarnwick {

namespace {

// What the axes of a result are called.
struct Titles {
  std::string x_column;
  std::string y_column;
  bool duplicates_allowed = false;
};

// Puts the points of a result into its target, some at a time: they stay in the processor's cache. What is read meanwhile must be
// a copy where the target may be the source.
class Writer {
 public:
  /// `y_errors` are in the order of the points to come, empty where none are known.
  Writer(const Titles& titles, std::vector<double> y_errors, TDataSeries& target)
      : target_(target), y_errors_(std::move(y_errors)) {
    target.BeginUpdate();
    target.Clear();
    target.SetDuplicatesAllowed(titles.duplicates_allowed);
    target.Source().XDataColumn = titles.x_column;
    target.Source().YDataColumn = titles.y_column;
    PointErrors errors;
    if (!y_errors_.empty()) errors.y.kind = ErrorKind::Column;
    target.SetErrors(errors);
  }
  ~Writer() {
    Flush();
    target_.EndUpdate();
  }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  void Add(double x, double y) {
    x_[filled_] = x;
    y_[filled_] = y;
    if (++filled_ == kBatch) Flush();
  }

 private:
  static constexpr std::size_t kBatch = 8192;

  void Flush() {
    std::span<const double> errors = y_errors_;
    if (!errors.empty()) errors = errors.subspan(written_, filled_);
    target_.AddPoints({x_.data(), filled_}, {y_.data(), filled_}, {errors, {}});
    written_ += filled_;
    filled_ = 0;
  }

  TDataSeries& target_;
  std::vector<double> y_errors_;
  std::vector<double> x_ = std::vector<double>(kBatch);
  std::vector<double> y_ = std::vector<double>(kBatch);
  std::size_t filled_ = 0;
  std::size_t written_ = 0;
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

Titles TitlesOf(const TDataSeries& source, const std::string& prefix) {
  return {CaptionOfX(source.Source()), prefix + CaptionOfY(source.Source()),
          source.DuplicatesAllowed()};
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

// Sums in extended precision, carried in registers through each chunk: storing one for every point costs more than the sum. In a
// function of its own the compiler leaves them there.

/// The last point that went into an area.
struct Corner {
  double x = 0;
  double y = 0;
};

/// Goes on with the area from the corner through columns, and leaves the corner at their last point.
template <class Visit>
[[gnu::noinline]] long double AreaThrough(std::span<const double> x, std::span<const double> y,
                                          BaseLine line, Corner& corner, long double area,
                                          Visit& visit) {
  const long double zero = 2 * static_cast<long double>(line.offset);
  const long double slope = line.slope;
  Corner left = corner;
  for (std::size_t i = 0; i < x.size(); ++i) {
    const Corner right{x[i], y[i]};
    const long double width = static_cast<long double>(right.x) - left.x;
    const long double sum_x = static_cast<long double>(left.x) + right.x;
    const long double sum_y = static_cast<long double>(left.y) + right.y;
    area += 0.5L * width * (sum_y - zero - slope * sum_x);
    visit(right.x, area);
    left = right;
  }
  corner = left;
  return area;
}

/// Calls visit(x, area): the trapezoid area between points and base line up to each point but the first. Answers the whole.
template <class Visit>
long double ForEachArea(const PointChain& points, const BaseLine& line, Visit visit) {
  if (points.Empty()) return 0;
  Corner corner{points.Front().x, points.Front().y};
  long double area = 0;
  points.ForEachChunk([&](const ChunkView& chunk) {
    const std::size_t first = chunk.first_index == 0 ? 1 : 0;
    area = AreaThrough(chunk.x.subspan(first), chunk.y.subspan(first), line, corner, area, visit);
  });
  return area;
}

/// Goes on with the sum through a chunk.
template <class Visit>
[[gnu::noinline]] long double SumThrough(std::span<const double> x, std::span<const double> y,
                                         BaseLine line, long double sum, Visit& visit) {
  for (std::size_t i = 0; i < x.size(); ++i) {
    sum += line.CorrectedY(x[i], y[i]);
    visit(x[i], sum);
  }
  return sum;
}

/// Calls visit(x, sum): the sum of corrected Y up to each point. Answers the whole.
template <class Visit>
long double ForEachSum(const PointChain& points, const BaseLine& line, Visit visit) {
  long double sum = 0;
  points.ForEachChunk(
      [&](const ChunkView& chunk) { sum = SumThrough(chunk.x, chunk.y, line, sum, visit); });
  return sum;
}

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

std::vector<double> ErrorsOfDerivative(const TDataSeries& source) {
  std::vector<double> errors;
  const SquaredErrors squared(source);
  if (!squared.Known()) return errors;
  ForEachPair(source.Points(), [&](const Point& left, const Point& right) {
    if (!(right.x > left.x)) return;
    errors.push_back(std::sqrt(squared.Of(left) + squared.Of(right)) / (right.x - left.x));
  });
  return errors;
}

/// Calls visit(middle, slope) for all neighbours with rising X.
template <class Visit>
void ForEachSlope(const PointChain& points, PointValue value, Visit visit) {
  double left_x = kUndefined;  // which nothing rises above
  double left_y = 0;
  std::vector<double> zeros;
  points.ForEachChunk([&](const ChunkView& chunk) {
    std::span<const double> y = value == PointValue::Y ? chunk.y : chunk.regression;
    if (y.empty()) {  // every regression value is 0
      zeros.assign(chunk.x.size(), 0);
      y = zeros;
    }
    for (std::size_t i = 0; i < y.size(); ++i) {
      const double x = chunk.x[i];
      if (x > left_x) visit((left_x + x) * 0.5, (y[i] - left_y) / (x - left_x));
      left_x = x;
      left_y = y[i];
    }
  });
}

LineColumns ColumnsAlong(const TDataSeries& source, const LineWay& way) {
  LineColumns columns;
  const BaseLine line = source.GetBaseLine();
  const SquaredErrors squared(source);
  for (const Point& point : PointsAlong(source.Points(), way)) {
    columns.x.push_back(point.x);
    columns.y.push_back(line.CorrectedY(point.x, point.y));
    if (squared.Known()) columns.variance.push_back(squared.Of(point));
  }
  return columns;
}

/// Writes what was computed along a line, in its order.
void WriteAlong(const TDataSeries& source, const std::string& prefix, const LineResult& result,
                TDataSeries& target) {
  Titles titles = TitlesOf(source, prefix);
  titles.duplicates_allowed = true;  // branches go over the same X
  Writer writer(titles, result.y_error, target);
  for (std::size_t i = 0; i < result.x.size(); ++i) writer.Add(result.x[i], result.y[i]);
}

}  // namespace

double AreaOf(const TDataSeries& source, const LineWay& way) {
  if (!way.order.empty()) return AreaEnclosed(ColumnsAlong(source, way));
  const auto nothing = [](double, long double) {};
  return static_cast<double>(ForEachArea(source.Points(), source.GetBaseLine(), nothing));
}

double AreaBelow(std::span<const double> x, std::span<const double> y) {
  if (x.empty()) return 0;
  const auto nothing = [](double, long double) {};
  Corner corner{x.front(), y.front()};
  return static_cast<double>(AreaThrough(x.subspan(1), y.subspan(1), {}, corner, 0, nothing));
}

double SumOf(const TDataSeries& source) {
  const auto nothing = [](double, long double) {};
  return static_cast<double>(ForEachSum(source.Points(), source.GetBaseLine(), nothing));
}

void Integral(const TDataSeries& source, TDataSeries& target, const LineWay& way) {
  if (!way.order.empty())
    return WriteAlong(source, "INT of ", IntegralAlong(ColumnsAlong(source, way)), target);
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the target may be the source
  const PointChain points = source.Points();
  const BaseLine line = source.GetBaseLine();
  Writer writer(TitlesOf(source, "INT of "), ErrorsOfArea(source), target);
  ForEachArea(points, line,
              [&](double x, long double area) { writer.Add(x, static_cast<double>(area)); });
}

void RunningSum(const TDataSeries& source, TDataSeries& target, const LineWay& way) {
  if (!way.order.empty())
    return WriteAlong(source, "SUM of ", SumAlong(ColumnsAlong(source, way)), target);
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the target may be the source
  const PointChain points = source.Points();
  const BaseLine line = source.GetBaseLine();
  Writer writer(TitlesOf(source, "SUM of "), ErrorsOfSum(source), target);
  ForEachSum(points, line,
             [&](double x, long double sum) { writer.Add(x, static_cast<double>(sum)); });
}

void ProbabilityDensity(const TDataSeries& source, TDataSeries& target, std::int32_t bins) {
  if (bins < 3) {
    target.Clear();
    return;
  }
  const Titles titles = {CaptionOfY(source.Source()), "Probability Density"};
  std::vector<double> middles;
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
      for (std::int32_t bin = 1; bin <= bins; ++bin) middles.push_back(min + (bin - 0.5) * width);
    }
  }
  target.BeginUpdate();
  {
    Writer writer(titles, {}, target);
    for (const double middle : middles) writer.Add(middle, 0);
  }
  for (std::size_t bin = 0; bin < density.size(); ++bin) {
    target.SetY(static_cast<std::int32_t>(bin + 1), density[bin]);
  }
  target.EndUpdate();
}

void Derivative(TDataSeries& source, TDataSeries& target, const LineWay& way) {
  const RegressionType type = source.RegressionType();
  if (!way.order.empty() && type == RegressionType::None)
    return WriteAlong(source, "DIF of ", SlopesAlong(ColumnsAlong(source, way)), target);
  SettleRegression(source);
  const PointChain walked = HasRegressionCurve(type) ? source.Regression().curve : source.Points();
  const double base_line = source.BaseLineSlope();
  std::vector<double> errors;
  if (type == RegressionType::None) errors = ErrorsOfDerivative(source);
  Writer writer(TitlesOf(source, "DIF of "), std::move(errors), target);
  ForEachSlope(walked, type == RegressionType::None ? PointValue::Y : PointValue::Regression,
               [&](double middle, double slope) { writer.Add(middle, slope - base_line); });
}

}  // namespace tarnwick
