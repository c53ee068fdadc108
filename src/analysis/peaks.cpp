#include "analysis/peaks.h"

#include <span>
#include <utility>

#include "analysis/settled_regression.h"
#include "base/error.h"

namespace tarnwick {
namespace {

/// A point with its value less the base line.
struct Detrended {
  double x = 0;
  double y = 0;
  double above_line = 0;
};

/// Follows points one by one and keeps those that exceed both neighbours.
class Walk {
 public:
  Walk(const BaseLine& line, const PeakSearch& search) : line_(line), search_(search) {}

  /// Takes a run of neighbours. False once the right margin is reached.
  bool Take(std::span<const double> x, std::span<const double> y) {
    const double noise = search_.noise;
    const bool bounded = search_.right.has_value();
    const double right = search_.right.value_or(0);
    Detrended before = before_;
    Detrended middle = middle_;
    for (std::size_t i = 0; i < x.size(); ++i) {
      const Detrended last{x[i], y[i], line_.CorrectedY(x[i], y[i])};
      if (++taken_ > 2) {
        if (bounded && before.x >= right) return false;
        const bool peak = before.above_line + noise < middle.above_line &&
                          middle.above_line - noise > last.above_line;
        if (peak) peaks_.push_back({middle.x, middle.y});
      }
      before = std::exchange(middle, last);
    }
    before_ = before;
    middle_ = middle;
    return true;
  }

  std::vector<Peak> Peaks() && { return std::move(peaks_); }

 private:
  BaseLine line_;
  PeakSearch search_;
  Detrended before_;
  Detrended middle_;
  std::size_t taken_ = 0;
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

  Walk walk(source.GetBaseLine(), search);
  std::vector<double> zeros;
  for (std::size_t i = points.ChunkOfIndex(first); i < points.ChunkCount(); ++i) {
    const ChunkView chunk = points.Chunk(i);
    const std::size_t skipped = first > chunk.first_index ? first - chunk.first_index : 0;
    if (!walk.Take(chunk.x.subspan(skipped), ValuesOf(chunk, type, zeros).subspan(skipped))) break;
  }
  return std::move(walk).Peaks();
}

}  // namespace tarnwick
