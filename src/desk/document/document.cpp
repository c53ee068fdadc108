#include "desk/document/document.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

#include "desk/document/open_edit.h"
#include "graph/graph_update.h"
#include "graph/layout/finished_look.h"

namespace tarnwick {
namespace {

std::int32_t MostPoints(const TxyGraph& graph) {
  std::int32_t most = 0;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i)
    most = std::max(most, graph.Series(i).PointCount());
  return most;
}

}  // namespace

Document::Document(std::string name, LongWork& work, Prompt& prompt, QObject* parent)
    : QObject(parent), name_(std::move(name)), work_(work), prompt_(prompt) {
  DefaultAppearance(graph_, name_);
  graph_.SetListener([this](GraphChange change) { TellChange(change); });
  // What was said of the data read may hold no more.
  connect(&history_, &EditHistory::aboutToMove, this, [this] { files_.ForgetNote(); });
  connect(&history_, &EditHistory::moved, this, &Document::HistoryMoved);
  HistoryMoved();
}

void Document::TellChange(GraphChange change) {
  zooms_.FollowChildren(graph_.Children().size());
  selected_child_ = SelectedChild();
  emit graphChanged(change);
}

std::optional<std::size_t> Document::SelectedChild() const {
  const bool there = selected_child_ && *selected_child_ < graph_.Children().size();
  return there ? selected_child_ : std::nullopt;
}

void Document::SelectChild(std::optional<std::size_t> child) {
  if (child == SelectedChild() || (child && *child >= graph_.Children().size())) return;
  selected_child_ = child;
  TellChange(GraphChange::CurrentSeries);
}

const TxyGraph& Document::Graph() const {
  const std::optional<std::size_t> child = SelectedChild();
  if (!child) return graph_;
  return *graph_.Children()[*child];
}

TxyGraph& Document::Graph() {
  return const_cast<TxyGraph&>(std::as_const(*this).Graph());
}

void Document::Pick(const std::optional<PickedPoint>& point) {
  const auto told = [](const std::optional<PickedPoint>& picked) {
    return picked ? std::optional(std::tuple(picked->number, picked->x, picked->y)) : std::nullopt;
  };
  const bool same = told(picked_) == told(point);
  picked_ = point;
  if (!same) emit pointPicked();
}

bool Document::Edit(const std::string& name, const std::function<void(TxyGraph&)>& change,
                    Merging merging) {
  OpenEdit step(*this, name, merging);
  {
    const GraphUpdate whole(graph_);
    TxyGraph& graph = Graph();
    std::optional<GraphUpdate> part;
    if (&graph != &graph_) part.emplace(graph);
    change(graph);
  }
  files_.ForgetNote();
  return step.Finish();
}

void Document::TakeComing(const std::function<void(TxyGraph&)>& change) {
  const std::int32_t before = MostPoints(graph_);
  {
    const GraphUpdate whole(graph_);
    change(graph_);
  }
  if (!history_.Changed()) history_.SetChanged(true);
  // What the user has zoomed into is not disturbed.
  if (!LooksOtherwise(before, MostPoints(graph_)) || !zooms_.Of(std::nullopt).IsEmpty()) return;
  look_.arranged_for = {};
  emit stateChanged();
}

void Document::HistoryMoved() {
  graph_.SetChanged(history_.Changed());
  files_.FollowHistory();
  emit stateChanged();
  TellFailedRegressions();
}

/// Each once, until it has gone well again.
void Document::TellFailedRegressions() {
  const std::vector<RegressionFailure> before =
      std::exchange(failed_regressions_, RegressionFailures(graph_));
  std::set<std::string> texts;
  for (const RegressionFailure& failure : failed_regressions_) {
    if (std::find(before.begin(), before.end(), failure) == before.end()) texts.insert(failure.why);
  }
  for (const std::string& text : texts) prompt_.Tell(text);
}

}  // namespace tarnwick
