#include "desk/document/points_come_since.h"

#include <algorithm>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace tarnwick {
namespace {

const SeriesState* Matching(const GraphState& state, const GraphState& of, std::size_t place) {
  if (state.series.size() == of.series.size()) return &state.series[place];
  const DataSettings& wanted = of.series[place].data.settings;
  const auto found = std::ranges::find_if(state.series, [&wanted](const SeriesState& series) {
    const DataSettings& settings = series.data.settings;
    return settings.SeriesName == wanted.SeriesName && settings.source == wanted.source;
  });
  return found == state.series.end() ? nullptr : &*found;
}

void AddInOrder(PointChain& points, const Point& point) {
  if (points.Empty() || point.x >= points.LastX()) {
    points.Append(point);
  } else {
    points.Insert(points.PlaceOf(points.UpperBound(point.x)), point);
  }
}

/// The pieces of `target`, and of `present` those that begin behind the id `last`, `shift` further on.
PointGaps JoinedGaps(const PointGaps& target, const PointGaps& present, std::int32_t last,
                     std::int32_t shift) {
  std::vector<std::int32_t> begins(target.Begins().begin(), target.Begins().end());
  std::erase_if(begins, [&](std::int32_t begin) { return begin > last + shift; });
  for (const std::int32_t begin : present.Begins())
    if (begin > last) begins.push_back(begin + shift);
  if (begins.empty()) return {};
  return {begins, std::max(target.Last(), present.Last() + shift)};
}

bool HoldsPointsUpTo(const PointChain& points, std::int32_t last) {
  for (std::size_t number = 0; number < points.ChunkCount(); ++number) {
    const ChunkView view = points.Chunk(number);
    for (std::size_t i = 0; i < view.x.size(); ++i)
      if (view.chunk->Id(i) <= last) return true;
  }
  return false;
}

void TakePoints(DataState& target, const DataState& present) {
  target.points = present.points;
  target.gaps = present.gaps;
  target.errors.y_values = present.errors.y_values;
  target.errors.x_values = present.errors.x_values;
  target.id_counter = present.id_counter;
}

void AddPointsBehind(std::int32_t last, DataState& target, const DataState& present) {
  const std::int32_t shift = std::max(target.id_counter - last, 0);
  present.points.ForEachChunk([&](const ChunkView& view) {
    for (std::size_t i = 0; i < view.x.size(); ++i) {
      Point point = view.chunk->At(i);
      if (point.id <= last) continue;
      const std::int32_t id = std::exchange(point.id, point.id + shift);
      AddInOrder(target.points, point);
      target.errors.y_values.Set(point.id, present.errors.y_values.Of(id));
      target.errors.x_values.Set(point.id, present.errors.x_values.Of(id));
    }
  });
  target.gaps = JoinedGaps(target.gaps, present.gaps, last, shift);
  target.id_counter = present.id_counter + shift;
}

/// Runs that lie within what came before are joined as they came, and not to each other.
void TakeLine(SeriesState& target, const SeriesState& present) {
  if (present.data.settings.BreakAtGaps) target.data.settings.BreakAtGaps = true;
  if (present.style.line_order == LineOrder::AsTheyCame)
    target.style.line_order = LineOrder::AsTheyCame;
}

void KeepComeSince(SeriesState& target_series, const SeriesState& present_series,
                   const DataState& left) {
  DataState& target = target_series.data;
  const DataState& present = present_series.data;
  if (present.id_counter <= left.id_counter) return;
  const bool began_anew =
      left.points.Empty() && !target.points.Empty() && left.id_counter == target.id_counter;
  if (began_anew) return;
  if (!left.points.Empty() && !HoldsPointsUpTo(present.points, left.id_counter)) {
    TakePoints(target, present);
  } else {
    AddPointsBehind(left.id_counter, target, present);
  }
  TakeLine(target_series, present_series);
  PointsEdited(target);
}

}  // namespace

bool TakePointsThatCame(GraphState& state, const GraphState& present) {
  bool came = false;
  for (std::size_t i = 0; i < state.series.size(); ++i) {
    DataState& data = state.series[i].data;
    const SeriesState* const now = Matching(present, state, i);
    if (now == nullptr || now->data.id_counter <= data.id_counter) continue;
    TakePoints(data, now->data);
    TakeLine(state.series[i], *now);
    PointsEdited(data);
    came = true;
  }
  for (std::size_t i = 0; i < std::min(state.children.size(), present.children.size()); ++i) {
    auto child = std::make_shared<GraphState>(*state.children[i]);
    if (!TakePointsThatCame(*child, *present.children[i])) continue;
    state.children[i] = std::move(child);
    came = true;
  }
  return came;
}

void KeepPointsComeSince(GraphState& target, const GraphState& present, const GraphState& left) {
  for (std::size_t i = 0; i < target.series.size(); ++i) {
    const SeriesState* const now = Matching(present, target, i);
    const SeriesState* const then = Matching(left, target, i);
    if (now != nullptr && then != nullptr) KeepComeSince(target.series[i], *now, then->data);
  }
  const std::size_t count = target.children.size();
  if (present.children.size() != count || left.children.size() != count) return;
  for (std::size_t i = 0; i < count; ++i) {
    auto child = std::make_shared<GraphState>(*target.children[i]);
    KeepPointsComeSince(*child, *present.children[i], *left.children[i]);
    target.children[i] = std::move(child);
  }
}

}  // namespace tarnwick
