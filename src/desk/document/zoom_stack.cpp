#include "desk/document/zoom_stack.h"

#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr std::array kAxes = {AxisId::X, AxisId::Y, AxisId::Y2};

bool SameScale(const AxisState& left, const AxisState& right) {
  return left.Min == right.Min && left.Max == right.Max && left.StepSize == right.StepSize &&
         left.AutoSizing == right.AutoSizing && left.AutoStepping == right.AutoStepping &&
         left.LogScale == right.LogScale;
}

}  // namespace

void ZoomStack::Remember(const TxyGraph& graph) {
  Scales scales;
  bool changed = kept_.empty();
  for (std::size_t i = 0; i < kAxes.size(); ++i) {
    scales[i] = graph.Axis(kAxes[i]).State();
    changed = changed || !SameScale(scales[i], kept_.back()[i]);
  }
  if (changed) kept_.push_back(scales);
}

void ZoomStack::GoBack(TxyGraph& graph) {
  if (kept_.empty()) return;
  const Scales scales = kept_.back();
  kept_.pop_back();
  graph.BeginUpdate();
  for (std::size_t i = 0; i < kAxes.size(); ++i) {
    // Only the scale goes back: a title or format given since then stays.
    AxisState state = graph.Axis(kAxes[i]).State();
    TakeScale(state, scales[i]);
    graph.Axis(kAxes[i]).SetState(state);
  }
  graph.EndUpdate();
}

ZoomStack& ZoomStacks::Of(std::optional<std::size_t> child) {
  return stacks_.at(child && *child + 1 < stacks_.size() ? *child + 1 : 0);
}

void ZoomStacks::Clear() {
  for (ZoomStack& stack : stacks_) stack.Clear();
}

void ZoomStacks::FollowChildren(std::size_t count) {
  if (stacks_.size() == count + 1) return;
  stacks_.resize(1);
  stacks_.resize(count + 1);
}

}  // namespace tarnwick
