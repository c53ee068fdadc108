#include "data/points/point_chain.h"
#include "data/points/point_columns.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <thread>
#include <vector>

#include "base/undefined.h"

namespace tarnwick {
namespace {

// The same points in a plain vector, to compare with.
using Model = std::vector<Point>;

Model PointsOf(const PointChain& chain) {
  Model points;
  const std::vector<std::int32_t> ids = Ids(chain);
  chain.ForEachChunk([&](const ChunkView& chunk) {
    EXPECT_EQ(chunk.first_index, points.size());
    EXPECT_FALSE(chunk.x.empty());
    for (std::size_t i = 0; i < chunk.x.size(); ++i) {
      points.push_back({ids[points.size()], chunk.x[i], chunk.y[i],
                        chunk.regression.empty() ? 0 : chunk.regression[i]});
    }
  });
  return points;
}

void ExpectSame(const PointChain& chain, const Model& model) {
  const Model points = PointsOf(chain);
  ASSERT_EQ(chain.Size(), model.size());
  ASSERT_EQ(points.size(), model.size());
  for (std::size_t i = 0; i < model.size(); ++i) {
    ASSERT_EQ(points[i].id, model[i].id) << i;
    ASSERT_EQ(points[i].x, model[i].x) << i;
    ASSERT_EQ(points[i].y, model[i].y) << i;
    ASSERT_EQ(points[i].regression, model[i].regression) << i;
  }
  if (!model.empty()) {
    EXPECT_EQ(chain.LastX(), model.back().x);
  }
}

// Every way of asking agrees with the vector.
void ExpectAnswersMatch(const PointChain& chain, const Model& model, std::mt19937& random) {
  const auto x_below = [](const Point& point, double x) { return point.x < x; };
  const auto x_above = [](double x, const Point& point) { return x < point.x; };
  for (int i = 0; i < 200 && !model.empty(); ++i) {
    const std::size_t index = random() % model.size();
    EXPECT_EQ(chain.At(index).id, model[index].id);
    EXPECT_EQ(IndexOfId(chain, model[index].id), index);
    EXPECT_EQ(chain.IndexOf(chain.PlaceOf(index)), index);
    const ChunkView chunk = chain.Chunk(chain.ChunkOfIndex(index));
    EXPECT_EQ(chunk.x[index - chunk.first_index], model[index].x);
    for (const double x : {model[index].x, model[index].x + 0.25}) {
      EXPECT_EQ(chain.LowerBound(x),
                std::lower_bound(model.begin(), model.end(), x, x_below) - model.begin());
      EXPECT_EQ(chain.UpperBound(x),
                std::upper_bound(model.begin(), model.end(), x, x_above) - model.begin());
    }
  }
  EXPECT_EQ(chain.LowerBound(std::numeric_limits<double>::infinity()), model.size());
  EXPECT_EQ(IndexOfId(chain, std::numeric_limits<std::int32_t>::max()), std::nullopt);
  for (std::size_t number = 0; number < chain.ChunkCount(); ++number) {
    const ChunkView chunk = chain.Chunk(number);
    const YExtremes extremes = chain.ChunkExtremes(number);
    EXPECT_EQ(extremes.min, *std::min_element(chunk.y.begin(), chunk.y.end()));
    EXPECT_EQ(extremes.max, *std::max_element(chunk.y.begin(), chunk.y.end()));
  }
}

TEST(PointChain, AgreesWithAVectorThroughRandomEdits) {
  std::mt19937 random(7);
  PointChain chain;
  Model model;
  std::int32_t next_id = 1;
  const auto place = [](std::size_t i) { return static_cast<Model::difference_type>(i); };
  for (int step = 0; step < 60000; ++step) {
    const auto choice = static_cast<int>(random() % 100);
    const auto x = static_cast<double>(random() % 100000);
    if (choice < 70 || model.empty()) {
      const std::size_t index = chain.LowerBound(x);
      const Point point{next_id++, x, x / 3, step % 50 == 0 ? 1.5 : 0};
      chain.Insert(chain.LowerPlace(x), point);
      model.insert(model.begin() + place(index), point);
    } else if (choice < 80) {
      chain.Append(next_id, chain.LastX(), -x);
      model.push_back({next_id++, model.back().x, -x, 0});
    } else if (choice < 90) {
      const std::size_t index = random() % model.size();
      chain.Set(chain.PlaceOf(index), model[index].x, x);
      model[index].y = x;
    } else {
      const std::size_t index = random() % model.size();
      chain.Erase(chain.PlaceOf(index));
      model.erase(model.begin() + place(index));
    }
  }
  ExpectSame(chain, model);
  ExpectAnswersMatch(chain, model, random);
  while (!chain.Empty()) chain.Erase(chain.PlaceOf(random() % chain.Size()));
  EXPECT_EQ(chain.ChunkCount(), 0u);
}

TEST(PointChain, AppendedRunsAreStoredTight) {
  std::vector<double> x(200000);
  for (std::size_t i = 0; i < x.size(); ++i) x[i] = static_cast<double>(i);
  PointChain chain;
  chain.AppendRun(1, std::span(x).first(1000), std::span(x).first(1000));
  chain.Append(1001, 1000, 1000);
  chain.AppendRun(1002, std::span(x).subspan(1001), std::span(x).subspan(1001));
  Model model;
  for (const double value : x) {
    model.push_back({static_cast<std::int32_t>(value) + 1, value, value, 0});
  }
  ExpectSame(chain, model);
  EXPECT_EQ(chain.ChunkCount(), (x.size() + PointChunk::kCapacity - 1) / PointChunk::kCapacity);
  std::mt19937 random(3);
  ExpectAnswersMatch(chain, model, random);
}

TEST(PointChain, CopiesKeepTheirPointsWhileTheOriginalIsEdited) {
  PointChain chain;
  for (std::int32_t i = 0; i < 5000; ++i) chain.Append(i + 1, i, i);
  const PointChain copy = chain;
  EXPECT_TRUE(copy.SharesAllWith(chain));
  const Model before = PointsOf(copy);
  double seen = 0;
  std::thread reader([&copy, &seen] {
    for (int pass = 0; pass < 20; ++pass) {
      copy.ForEachPoint([&seen](double, double y) { seen += y; });
      for (std::size_t i = 0; i < copy.ChunkCount(); ++i) seen += copy.ChunkExtremes(i).max;
    }
  });
  for (std::int32_t i = 0; i < 5000; i += 7) {
    chain.Set(chain.PlaceOf(static_cast<std::size_t>(i)), i, -1);
  }
  for (std::int32_t i = 0; i < 300; ++i)
    chain.Insert(chain.LowerPlace(i), {6000 + i, i - 0.5, 0, 0});
  chain.ShiftX(10);
  chain.FillRegression([](const ChunkView&, std::span<double> values) {
    std::fill(values.begin(), values.end(), 2);
  });
  reader.join();
  EXPECT_FALSE(copy.SharesAllWith(chain));
  ExpectSame(copy, before);
  EXPECT_GT(seen, 0);
  EXPECT_EQ(chain.Front().x, 9.5);
  EXPECT_EQ(chain.At(5).regression, 2);
  chain.ClearRegression();
  EXPECT_TRUE(chain.Chunk(0).regression.empty());
}

TEST(PointChain, ExtremesFollowEditsAndLeaveUndefinedOut) {
  PointChain chain;
  const double values[] = {kUndefined, 3, kUndefined, -2, 5};
  for (std::int32_t i = 0; i < 5; ++i) chain.Append(i + 1, i, values[i]);
  EXPECT_EQ(chain.ChunkExtremes(0).min, -2);
  EXPECT_EQ(chain.ChunkExtremes(0).max, 5);
  chain.Set(chain.PlaceOf(3), 3, 4);
  EXPECT_EQ(chain.ChunkExtremes(0).min, 3);
  chain.Erase(chain.PlaceOf(4));
  EXPECT_EQ(chain.ChunkExtremes(0).max, 4);
  chain.Erase(chain.PlaceOf(3));
  chain.Erase(chain.PlaceOf(1));
  EXPECT_GT(chain.ChunkExtremes(0).min, chain.ChunkExtremes(0).max);
}

TEST(PointChain, ExtremesOfAnyPartOfAChunk) {
  std::mt19937 random(9);
  PointChain chain;
  std::vector<double> values;
  for (std::int32_t i = 0; i < 500; ++i) {
    values.push_back(static_cast<double>(random() % 100000));
    chain.Append(i + 1, i, values.back());
  }
  for (const bool gap : {false, true}) {
    if (gap) chain.Set(chain.PlaceOf(77), 77, values[77] = kUndefined);
    const ChunkView chunk = chain.Chunk(0);
    for (std::size_t begin = 0; begin < values.size(); begin += 1 + random() % 9) {
      for (std::size_t end = begin + 1; end <= values.size(); end += 1 + random() % 9) {
        YExtremes expected{1e300, -1e300, false};
        for (std::size_t i = begin; i < end; ++i) {
          expected.min = std::fmin(expected.min, values[i]);
          expected.max = std::fmax(expected.max, values[i]);
          expected.gaps |= std::isnan(values[i]);
        }
        const YExtremes found = chunk.Extremes(begin, end);
        ASSERT_EQ(found.gaps, expected.gaps) << begin << ' ' << end;
        if (found.min > found.max && expected.min > expected.max) continue;
        ASSERT_EQ(found.min, expected.min) << begin << ' ' << end;
        ASSERT_EQ(found.max, expected.max) << begin << ' ' << end;
      }
    }
  }
}

}  // namespace
}  // namespace tarnwick
