#include "data/series/points_mark.h"

#include <bit>
#include <cstdint>

#include "base/split_mix.h"
#include "base/undefined.h"
#include "data/regression/regression_type.h"

namespace tarnwick {
namespace {

class Hash {
 public:
  void Add(double value) {
    // One zero and one NaN: texts keep no more.
    Add(std::bit_cast<std::uint64_t>(IsUndefined(value) ? kUndefined : value + 0.0));
  }
  void Add(std::uint64_t bits) { state_ = std::rotl(state_ ^ bits, 29) * 0x9E3779B97F4A7C15U; }
  std::uint64_t Value() const { return MixBits(state_); }

 private:
  std::uint64_t state_ = 1;  // of 0 nothing would be left but 0
};

}  // namespace

PointsMark MarkOf(const TDataSeries& series) {
  Hash hash;
  Hash of_x, of_y;  // side by side: neither waits for the other
  const BaseLine line = series.GetBaseLine();
  hash.Add(line.offset);
  hash.Add(line.slope);
  if (const DataSettings& settings = series.Settings();
      HasRegressionCurve(settings.regression_type)) {
    hash.Add(static_cast<std::uint64_t>(settings.regression_type));
    hash.Add(static_cast<std::uint64_t>(settings.regression_steps));
    hash.Add(settings.regression_alpha);
  }
  series.Points().ForEachPoint([&](double x, double y) {
    of_x.Add(x);
    of_y.Add(y);
  });
  hash.Add(of_x.Value());
  hash.Add(of_y.Value());
  if (HasYErrors(series.Errors())) {
    series.Points().ForEachChunk([&](const ChunkView& chunk) {
      for (std::size_t i = 0; i < chunk.x.size(); ++i)
        hash.Add(YErrorOf(series.Errors(), chunk.chunk->At(i)));
    });
  }
  return {series.PointCount(), hash.Value()};
}

}  // namespace tarnwick
