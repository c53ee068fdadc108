#include "graph/edit/child_edit.h"

#include <QRectF>
#include <QSizeF>
#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "graph/axes/plot_metrics.h"
#include "graph/layout/finished_look.h"
#include "graph/layout/plot_layout.h"
#include "graph/layout/quiet_corner.h"

namespace tarnwick {
namespace {

/// Graphs inserted one after the other do not hide each other: each stands this share of the parent further on.
constexpr double kCascadeStep = 0.05;
constexpr std::size_t kCascade = 8;

/// Where a side of that length may begin so that enough of it can be seen.
int WithinReach(int begin, int length, int whole) {
  const int seen = std::min(kSmallestChild, whole);
  return std::clamp(begin, seen - length, whole - seen);
}

/// Where a new graph may begin, as shares of the parent; the first is the usual place.
struct Corner {
  double left;
  double top;
};

/// The child's own corner, or the one that hides least of what was written into the graph laid out without it.
Corner QuietCorner(const PlotLayout& layout, const Dimensions& child) {
  const Corner usual{child.hor_position, child.ver_position};
  constexpr double kLeft = 0.12;
  constexpr double kTop = 0.5;
  const std::array<Corner, 4> corners = {
      {usual, {usual.left, kTop}, {kLeft, kTop}, {kLeft, usual.top}}};
  const QSizeF& whole = layout.size;
  std::array<QRectF, corners.size()> frames;
  std::transform(corners.begin(), corners.end(), frames.begin(), [&](const Corner& corner) {
    return QRectF(corner.left * whole.width(), corner.top * whole.height(),
                  child.hor_size * whole.width(), child.ver_size * whole.height());
  });
  PictureContents contents{CaptionBoxes(layout), {}};
  for (const QRectF& other : ChildBoxes(layout)) contents.boxes.push_back(other);
  return corners.at(FindQuietPlace(frames, contents).index);
}

}  // namespace

std::size_t InsertChild(TxyGraph& graph, const std::string& title) {
  std::optional<PlotLayout> layout;
  if (!graph.Marks().All().empty()) {
    layout = LayoutPlot(graph, QSizeF(graph.ClientWidth(), graph.ClientHeight()), TextMetrics());
  }
  graph.BeginUpdate();
  TxyChildGr& child = graph.AddChild();
  Dimensions dimensions = child.GetDimensions();
  if (layout) {
    const Corner corner = QuietCorner(*layout, dimensions);
    dimensions.hor_position = corner.left;
    dimensions.ver_position = corner.top;
  }
  const std::size_t step = (graph.Children().size() - 1) % kCascade;
  dimensions.hor_position -= kCascadeStep * static_cast<double>(step);
  dimensions.ver_position += kCascadeStep * static_cast<double>(step);
  DefaultAppearance(child, title);
  child.SetDimensions(dimensions);  // its narrower margins leave room for a plot
  graph.EndUpdate();
  return graph.Children().size() - 1;
}

void SetChildPlace(TxyGraph& graph, std::size_t index, TxyChildGr::Place place) {
  const int width = graph.ClientWidth();
  const int height = graph.ClientHeight();
  if (index >= graph.Children().size() || width <= 0 || height <= 0) return;
  TxyChildGr& child = *graph.Children()[index];
  place.width = std::clamp(place.width, kSmallestChild, std::max(width, kSmallestChild));
  place.height = std::clamp(place.height, kSmallestChild, std::max(height, kSmallestChild));
  place.left = WithinReach(place.left, place.width, width);
  place.top = WithinReach(place.top, place.height, height);
  Dimensions dimensions = child.GetDimensions();
  dimensions.hor_position = static_cast<double>(place.left) / width;
  dimensions.ver_position = static_cast<double>(place.top) / height;
  dimensions.hor_size = static_cast<double>(place.width) / width;
  dimensions.ver_size = static_cast<double>(place.height) / height;
  child.BeginUpdate();
  child.SetDimensions(dimensions);
  child.Resize(place.width, place.height);
  child.EndUpdate();
}

void MoveChild(TxyGraph& graph, std::size_t index, int right, int down) {
  if (index >= graph.Children().size()) return;
  TxyChildGr::Place place =
      graph.Children()[index]->PlaceIn(graph.ClientWidth(), graph.ClientHeight());
  place.left += right;
  place.top += down;
  SetChildPlace(graph, index, place);
}

void ClearChildren(TxyGraph& graph) {
  graph.BeginUpdate();
  while (!graph.Children().empty()) graph.DeleteChild(graph.Children().size() - 1);
  graph.EndUpdate();
}

}  // namespace tarnwick
