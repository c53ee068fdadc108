#include "analysis/peaks.h"

#include <algorithm>
#include <span>
#include <utility>

#include "analysis/settled_regression.h"
#include "base/error.h"
#include "base/undefined.h"

namespace tarnwick {
namespace {

/// Follows points one by one and keeps those that exceed both neighbours.
class Walk {
 public:
  Walk(const BaseLine& line, double noise) : line_(line), noise_(noise) {}

  /// Takes a run of neighbours.
  void Take(std::span<const double> x, std::span<const double> y) {
    if (x.empty()) return;
    // Behind the last two of the run before. All less the base line first: beside the comparisons it would be done one by one.
    above_.resize(x.size() + 2);
    for (std::size_t i = 0; i < x.size(); ++i) above_[i + 2] = line_.CorrectedY(x[i], y[i]);
    const double noise = noise_;
    const double* const above = above_.data();
    for (std::size_t i = 0; i < x.size(); ++i) {
      if (above[i] + noise < above[i + 1] && above[i + 1] - noise > above[i + 2])
        peaks_.push_back(i > 0 ? Peak{x[i - 1], y[i - 1]} : last_);
    }
    above_[0] = above_[x.size()];
    above_[1] = above_[x.size() + 1];
    last_ = {x.back(), y.back()};
  }

  std::vector<Peak> Peaks() && { return std::move(peaks_); }

 private:
  BaseLine line_;
  double noise_;
  std::vector<double> above_{kUndefined, kUndefined};  // nothing exceeds what is not there
  Peak last_;
  std::vector<Peak> peaks_;
};

/// What is looked at of a chunk. Its regression values are all 0 where none are kept.
std::span<const double> ValuesOf(const ChunkView& chunk, RegressionType type,
                                 std::vector<double>& zeros) {
  if (type == RegressionType::None) return chunk.y;
  if (!chunk.regression.empty()) return chunk.regression;
  zeros.assign(chunk.x.size(), 0);
  return zeros;
}

}  // namespace

std::vector<Peak> FindPeaks(TDataSeries& source, const PeakSearch& search) {
  SettleRegression(source);
  const RegressionType type = source.RegressionType();
  const PointChain& points = HasRegressionCurve(type) ? source.Regression().curve : source.Points();
  const std::string named = "DataSet " + source.SeriesName() + "!";
  if (points.Empty()) throw Error("No Data Found in " + named);
  const std::size_t first = search.left ? points.LowerBound(*search.left) : 0;
  if (points.Size() - first < 3) throw Error("No Data Found in the Margins for " + named);

  // The last triple begins before the right margin.
  const std::size_t end =
      search.right ? std::min(points.LowerBound(*search.right) + 2, points.Size()) : points.Size();
  Walk walk(source.GetBaseLine(), search.noise);
  std::vector<double> zeros;
  for (std::size_t i = points.ChunkOfIndex(first); i < points.ChunkCount(); ++i) {
    const ChunkView chunk = points.Chunk(i);
    const std::size_t from = std::max(first, chunk.first_index) - chunk.first_index;
    if (chunk.first_index + from >= end) break;
    const std::size_t count = std::min(end - chunk.first_index, chunk.x.size()) - from;
    walk.Take(chunk.x.subspan(from, count), ValuesOf(chunk, type, zeros).subspan(from, count));
  }
  return std::move(walk).Peaks();
}

}  // namespace tarnwick
