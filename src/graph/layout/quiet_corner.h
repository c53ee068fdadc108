// The quietest of some places in a picture: where a box laid over it hides least. Legend, printed parameters and inserted
// graphs are all placed by it. Knows layouts and points; changes nothing.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <cstddef>
#include <functional>
#include <span>
#include <tuple>
#include <vector>

namespace tarnwick {

class TxyGraph;
struct PlotLayout;

/// What of a picture counts when something is laid over it.
struct PictureContents {
  std::vector<QRectF> boxes;  ///< to be read: captions, the legend, inserted graphs
  std::function<std::size_t(const QRectF&)> points_in;  ///< none: points do not count
};

/// What a box hides; boxes that are to be read weigh more than any number of points.
struct HiddenContents {
  std::size_t boxes = 0;
  std::size_t points = 0;
  bool operator<(const HiddenContents& other) const {
    return std::tie(boxes, points) < std::tie(other.boxes, other.points);
  }
};

struct QuietPlace {
  std::size_t index = 0;  ///< among the places
  HiddenContents hidden;
};

/// The first of the places (at least one) that hides least.
QuietPlace FindQuietPlace(std::span<const QRectF> places, const PictureContents& contents);

/// Places of a box of this size in `area`, the most usual first: its corners, then rows and columns all over it, those near an
/// edge before the others. The left top corner alone where it does not fit.
std::vector<QRectF> PlacesIn(const QRectF& area, QSizeF box);

/// Boxes of the captions that marks have.
std::vector<QRectF> CaptionBoxes(const PlotLayout& layout);
/// Frames of the inserted graphs.
std::vector<QRectF> ChildBoxes(const PlotLayout& layout);
/// Both, and the labels of the axes, which stand within the plot where an axis crosses it or is flipped: what is to be read
/// beside the legend.
std::vector<QRectF> BoxesToRead(const PlotLayout& layout);

/// Where points, their errors, lines, and the curves of models and regressions of the drawn DataSets lie in the picture, a sample
/// of each.
std::vector<QPointF> SampledPixels(const TxyGraph& graph, const PlotLayout& layout);

}  // namespace tarnwick
