#include "desk/document/points_come_since.h"

#include <algorithm>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace tarnwick {
namespace {

const DataState* Matching(const GraphState& state, const GraphState& of, std::size_t place) {
  if (state.series.size() == of.series.size()) return &state.series[place].data;
  const DataSettings& wanted = of.series[place].data.settings;
  const auto found = std::ranges::find_if(state.series, [&wanted](const SeriesState& series) {
    const DataSettings& settings = series.data.settings;
    return settings.SeriesName == wanted.SeriesName && settings.source == wanted.source;
  });
  return found == state.series.end() ? nullptr : &found->data;
}

void AddInOrder(PointChain& points, const Point& point) {
  if (points.Empty() || point.x >= points.LastX()) {
    points.Append(point);
  } else {
    points.Insert(points.PlaceOf(points.UpperBound(point.x)), point);
  }
}

/// The pieces of `target` up to the id `last`, and of `present` those behind it.
PointGaps JoinedGaps(const PointGaps& target, const PointGaps& present, std::int32_t last) {
  std::vector<std::int32_t> begins;
  for (const std::int32_t begin : target.Begins())
    if (begin <= last) begins.push_back(begin);
  for (const std::int32_t begin : present.Begins())
    if (begin > last) begins.push_back(begin);
  return begins.empty() ? PointGaps() : PointGaps(begins, std::max(target.Last(), present.Last()));
}

void KeepComeSince(DataState& target, const DataState& present, std::int32_t last) {
  if (present.id_counter <= last) return;
  present.points.ForEachChunk([&](const ChunkView& view) {
    for (std::size_t i = 0; i < view.x.size(); ++i) {
      const Point point = view.chunk->At(i);
      if (point.id <= last) continue;
      AddInOrder(target.points, point);
      target.errors.y_values.Set(point.id, present.errors.y_values.Of(point.id));
      target.errors.x_values.Set(point.id, present.errors.x_values.Of(point.id));
    }
  });
  target.gaps = JoinedGaps(target.gaps, present.gaps, last);
  target.id_counter = present.id_counter;
  PointsEdited(target);
}

}  // namespace

void KeepPointsComeSince(GraphState& target, const GraphState& present, const StateChange& edit) {
  for (std::size_t i = 0; i < target.series.size(); ++i) {
    const DataState* const now = Matching(present, target, i);
    if (now == nullptr) continue;
    std::int32_t last = 0;
    for (const GraphState* const known : {&edit.before, &edit.after}) {
      if (const DataState* const data = Matching(*known, target, i))
        last = std::max(last, data->id_counter);
    }
    KeepComeSince(target.series[i].data, *now, last);
  }
  const std::size_t count = target.children.size();
  if (present.children.size() != count || edit.before.children.size() != count ||
      edit.after.children.size() != count) {
    return;
  }
  for (std::size_t i = 0; i < count; ++i) {
    auto child = std::make_shared<GraphState>(*target.children[i]);
    KeepPointsComeSince(*child, *present.children[i],
                        {*edit.before.children[i], *edit.after.children[i]});
    target.children[i] = std::move(child);
  }
}

}  // namespace tarnwick
