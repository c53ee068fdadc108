#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <span>

#include "graph/axes/axis_labels.h"
#include "graph/axes/nice_step.h"
#include "graph/axes/tick_label.h"
#include "graph/layout/plot_layout_parts.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr int kLongestTick = 40;
constexpr int kLargestOffset = 200;
constexpr double kClosestTicks = 4;  // pixels between ticks that can still be told apart
constexpr double kClosestMinorTicks = 5;
constexpr double kClosestGridLines = 16;  // lines without a label that are closer hide the data
constexpr double kMinorShare = 0.6;       // of a major tick's length
constexpr std::size_t kFewestLabels = 3;  // below that another direction is worth trying

/// Where the line of another axis goes through an axis.
struct Crossing {
  double along = 0;
  double beside =
      -1;  ///< the side on which a label that it would strike is free of that axis' own labels
};

/// The place of one axis: where its line stands and to which side its labels go.
struct AxisPlace {
  bool across = true;  ///< the X axis
  double line = 0;     ///< y of the X axis' line, x of a Y axis' line
  double side = 1;     ///< direction of ticks and labels: +1 down or right, -1 up or left
  double tick = 0;     ///< length
  double labels = 0;   ///< coordinate at which labels begin
  std::vector<Crossing> crossings;  ///< with lines of other axes within the plot

  QPointF At(double along, double away) const {
    return across ? QPointF(along, line + side * away) : QPointF(line + side * away, along);
  }
};

/// A way of writing the labels: which form, how many, how turned.
struct LabelChoice {
  std::size_t set = 0;
  int stride = 1;
  double angle = 0;
  std::size_t count = 0;
};

AxisPlace PlaceOf(const TxyGraph& graph, AxisId id, const PlotLayout& layout) {
  const AxisState& axis = graph.Axis(id).State();
  const Dimensions& dimensions = graph.GetDimensions();
  AxisPlace place;
  place.across = id == AxisId::X;
  const AxisId other = place.across ? AxisId::Y : AxisId::X;
  const double crossing =
      layout.Axis(other).scale.Position(CrossingValue(axis, graph.Axis(other).State()));
  const QRectF& plot = layout.plot;
  const double first = place.across ? plot.top() : plot.left();
  const double last = place.across ? plot.bottom() : plot.right();
  const double start = place.across ? plot.bottom() : plot.left();
  place.line = std::isnan(crossing) ? start : std::clamp(crossing, first, last);
  place.side = (place.across != axis.Reversed) ? 1 : -1;
  const bool ticks = graph.GetAppearance().ticks_are_shown;
  place.tick = ticks ? std::clamp(dimensions.tick_length, 0, kLongestTick) : 0;
  const int offset = place.across ? dimensions.x_axis_label_offset : dimensions.y_axis_label_offset;
  place.labels = place.tick + std::clamp(offset, 0, kLargestOffset);
  return place;
}

/// Where shown axes of the other direction cross this one; those at the plot's edges, too, where its labels stand within the
/// plot.
std::vector<Crossing> CrossingsOf(const TxyGraph& graph, AxisId id, const AxisPlace& place,
                                  const PlotLayout& layout) {
  std::vector<Crossing> crossings;
  const double first = id == AxisId::X ? layout.plot.left() : layout.plot.top();
  const double last = id == AxisId::X ? layout.plot.right() : layout.plot.bottom();
  const bool within = layout.plot.contains(place.At((first + last) / 2, place.labels));
  for (const AxisId other : {AxisId::X, AxisId::Y, AxisId::Y2}) {
    if ((other == AxisId::X) == (id == AxisId::X) || !IsAxisShown(graph, other)) continue;
    const AxisPlace crossed = PlaceOf(graph, other, layout);
    const bool at_edge = crossed.line <= first + 1 || crossed.line >= last - 1;
    if (!at_edge || within) crossings.push_back({crossed.line, at_edge ? -crossed.side : -1});
  }
  return crossings;
}

/// Chooses and places the labels of one axis.
class LabelPlacer {
 public:
  LabelPlacer(const LayoutContext& context, const AxisState& axis, const AxisPlace& place,
              const std::vector<Tick>& ticks, const AxisScale& scale)
      : context_(context),
        axis_(axis),
        font_(context.graph.GetAppearance().font_for_labels),
        place_(place),
        ticks_(ticks),
        scale_(scale),
        sets_(LabelSets(axis_, ticks)),
        height_(context.metrics.LineHeight(font_)) {}

  /// Places the labels into `layout` and answers the ticks that were chosen to have one.
  std::vector<std::size_t> Place(AxisLayout& layout);

 private:
  double RoomAway() const;
  bool HasRoom(std::size_t set, double angle, double extra) const;
  bool Fits(std::size_t set, int stride, double angle) const;
  LabelChoice Best(double angle, double extra) const;
  LabelChoice Choose() const;
  PlacedText TextAt(std::size_t set, std::size_t tick, double angle) const;
  bool IsStruck(std::size_t set, std::size_t tick) const;
  void ShiftInside(PlacedText& text) const;
  void ShiftBesideCrossing(PlacedText& text) const;
  void PlaceInOrder(const LabelChoice& choice, const std::vector<std::size_t>& ticks,
                    AxisLayout& layout);
  bool TryTake(PlacedText text, double gap, AxisLayout& layout);

  const LayoutContext& context_;
  const AxisState& axis_;
  const Font& font_;
  const AxisPlace& place_;
  const std::vector<Tick>& ticks_;
  const AxisScale& scale_;
  std::vector<LabelSet> sets_;
  double height_;
};

double LabelPlacer::RoomAway() const {
  const QRectF& picture = context_.room.Picture();
  const double edge = place_.across ? (place_.side > 0 ? picture.bottom() : picture.top())
                                    : (place_.side > 0 ? picture.right() : picture.left());
  return std::abs(edge - place_.line) - place_.labels;
}

PlacedText LabelPlacer::TextAt(std::size_t set, std::size_t tick, double angle) const {
  PlacedText text = MakeText(sets_[set].texts[tick], font_, context_.metrics);
  text.angle = angle;
  const double along = scale_.Position(ticks_[tick].value);
  const double turn = angle * std::numbers::pi / 180;
  if (!place_.across) {
    text.center = place_.At(along, place_.labels + text.size.width() / 2);
    return text;
  }
  const double half_height =
      (text.size.width() * std::sin(turn) + text.size.height() * std::cos(turn)) / 2;
  text.center = place_.At(along, place_.labels + half_height);
  // A slanted label ends (below the axis) or begins (above it) at its tick.
  if (angle > 0 && angle < 90) {
    text.center.rx() -= place_.side * text.size.width() * std::cos(turn) / 2;
  }
  return text;
}

bool LabelPlacer::HasRoom(std::size_t set, double angle, double extra) const {
  const double turn = angle * std::numbers::pi / 180;
  double needed = 0;
  for (const RichText& text : sets_[set].texts) {
    const QSizeF size = context_.metrics.SizeOf(text, font_);
    needed = std::max(needed, place_.across
                                  ? size.width() * std::sin(turn) + size.height() * std::cos(turn)
                                  : size.width());
  }
  return needed + extra <= RoomAway() + 0.5;
}

bool LabelPlacer::Fits(std::size_t set, int stride, double angle) const {
  const double gap = place_.across && angle == 0 ? height_ * 0.5 : 1;
  const PlacedText* before = nullptr;
  PlacedText last;
  for (const std::size_t tick : KeptTicks(axis_, ticks_, stride)) {
    PlacedText text = TextAt(set, tick, angle);
    PlacedText wider = text;
    wider.size += place_.across ? QSizeF(angle == 0 ? 2 * gap : 0, angle == 0 ? 0 : 2 * gap)
                                : QSizeF(0, 2 * gap);
    if (before != nullptr && Overlap(wider.Outline(), before->Outline())) return false;
    last = text;
    before = &last;
  }
  return true;
}

LabelChoice LabelPlacer::Best(double angle, double extra) const {
  LabelChoice best;
  for (std::size_t set = 0; set < sets_.size(); ++set) {
    if (!HasRoom(set, angle, extra)) continue;
    for (const int stride : LabelStrides(axis_, ticks_)) {
      if (best.count > 0 && stride >= best.stride) break;
      const std::size_t count = KeptTicks(axis_, ticks_, stride).size();
      if (count == 0 || !Fits(set, stride, angle)) continue;
      best = {set, stride, angle, count};
      break;
    }
  }
  return best;
}

LabelChoice LabelPlacer::Choose() const {
  const LabelChoice level = Best(0, 0);
  const std::size_t all = KeptTicks(axis_, ticks_, 1).size();
  if (!place_.across || level.count >= std::min(all, kFewestLabels)) return level;
  const Appearance& appearance = context_.graph.GetAppearance();
  const double title = context_.metrics.LineHeight(appearance.font_for_axes_titles);
  for (const double angle : {45.0, 90.0}) {
    const LabelChoice turned = Best(angle, title);
    if (turned.count > level.count) return turned;
  }
  return level;
}

void LabelPlacer::ShiftInside(PlacedText& text) const {
  // The last label of an axis may hang over the picture's edge by a little: it moves, but stays at its tick.
  constexpr double kFarthestShare = 0.25;
  const QRectF box = text.Box();
  const QRectF& picture = context_.room.Picture();
  const double reach = kFarthestShare * (place_.across ? box.width() : box.height());
  double shift = 0;
  if (place_.across) {
    shift =
        std::max(0.0, picture.left() - box.left()) - std::max(0.0, box.right() - picture.right());
  } else {
    shift =
        std::max(0.0, picture.top() - box.top()) - std::max(0.0, box.bottom() - picture.bottom());
  }
  if (std::abs(shift) > reach) return;
  text.center += place_.across ? QPointF(shift, 0) : QPointF(0, shift);
}

/// A label through which the line of another axis would go stands left of it or above it; in a corner of the plot, where that
/// axis has its labels there, on the other side.
void LabelPlacer::ShiftBesideCrossing(PlacedText& text) const {
  constexpr double kBeside = 3;
  const QRectF box = text.Box();
  for (const Crossing& crossing : place_.crossings) {
    const double at = crossing.along;
    if (place_.across && box.left() < at && at < box.right()) {
      text.center.rx() = at + crossing.beside * (kBeside + box.width() / 2);
    } else if (!place_.across && box.top() < at && at < box.bottom()) {
      text.center.ry() = at + crossing.beside * box.height() / 2;
    }
  }
}

/// Whether the line of another axis would go through the label at its tick.
bool LabelPlacer::IsStruck(std::size_t set, std::size_t tick) const {
  const QRectF box = TextAt(set, tick, 0).Box();
  return std::ranges::any_of(place_.crossings, [&](const Crossing& crossing) {
    return place_.across ? box.left() < crossing.along && crossing.along < box.right()
                         : box.top() < crossing.along && crossing.along < box.bottom();
  });
}

bool LabelPlacer::TryTake(PlacedText text, double gap, AxisLayout& layout) {
  if (text.angle == 0) {
    ShiftBesideCrossing(text);
    ShiftInside(text);
  }
  if (!context_.room.IsInside(text)) return false;
  PlacedText wider = text;
  wider.size += QSizeF(2 * gap, 0);
  const QPolygonF outline = wider.Ink();
  const bool clear = std::none_of(layout.labels.begin(), layout.labels.end(),
                                  [&](const auto& other) { return Overlap(outline, other.Ink()); });
  if (!clear || !context_.room.TryTake(text)) return false;
  layout.labels.push_back(std::move(text));
  return true;
}

/// Labels that have to leave their ticks come after the others, and keep off them: "−2" beside "0" is not "−20".
void LabelPlacer::PlaceInOrder(const LabelChoice& choice, const std::vector<std::size_t>& ticks,
                               AxisLayout& layout) {
  std::vector<std::size_t> order = ticks;
  const auto first_struck = std::stable_partition(
      order.begin(), order.end(),
      [&](std::size_t tick) { return choice.angle != 0 || !IsStruck(choice.set, tick); });
  std::map<std::size_t, PlacedText> placed;
  for (auto tick = order.begin(); tick != order.end(); ++tick) {
    const double gap = tick < first_struck || !place_.across ? 0 : height_ * 0.25;
    if (TryTake(TextAt(choice.set, *tick, choice.angle), gap, layout))
      placed.emplace(*tick, layout.labels.back());
  }
  layout.labels.clear();
  for (auto& [tick, text] : placed) layout.labels.push_back(std::move(text));
}

std::vector<std::size_t> LabelPlacer::Place(AxisLayout& layout) {
  const LabelChoice choice = Choose();
  const double gap = place_.across ? height_ * 0.25 : 0;
  // Labels of a logarithmic axis stand unevenly: decades first, the divisions between them where they find room.
  if (axis_.LogScale && HasRoom(choice.set, 0, 0)) {
    std::vector<std::size_t> chosen =
        KeptTicks(axis_, ticks_, WantsPowerLabels(axis_) ? choice.stride : 1);
    std::vector<std::size_t> all = chosen;
    std::stable_partition(all.begin(), all.end(), [&](std::size_t tick) {
      return SplitDecimal(ticks_[tick].value).mantissa == 1;
    });
    for (const std::size_t tick : all) TryTake(TextAt(choice.set, tick, 0), gap, layout);
    return chosen;
  }
  if (choice.count == 0) return {};
  std::vector<std::size_t> chosen = KeptTicks(axis_, ticks_, choice.stride);
  PlaceInOrder(choice, chosen, layout);
  if (!layout.labels.empty()) layout.common = sets_[choice.set].common;
  return chosen;
}

/// Smallest distance in pixels between neighbours.
double ClosestOf(const std::vector<double>& along) {
  double closest = HUGE_VAL;
  for (std::size_t i = 1; i < along.size(); ++i) {
    closest = std::min(closest, std::abs(along[i] - along[i - 1]));
  }
  return closest;
}

void AddTick(const AxisPlace& place, double along, double share, AxisLayout& layout) {
  layout.ticks.push_back({{place.At(along, 0), place.At(along, place.tick * share)}, share == 1});
}

/// Ticks between the major ones of a linear axis, where there is room for them.
void AddMinorTicks(const AxisState& axis, const AxisPlace& place, const std::vector<double>& values,
                   AxisLayout& layout) {
  if (axis.LogScale || axis.ShowAsTime || values.size() < 2) return;
  const double step = values[1] - values[0];
  const double distance =
      std::abs(layout.scale.Position(values[1]) - layout.scale.Position(values[0]));
  const int parts = MinorParts(step, static_cast<int>(distance / kClosestMinorTicks));
  if (parts < 2) return;
  for (double base = values.front() - step; base < axis.Max; base += step) {
    for (int part = 1; part < parts; ++part) {
      const double value = base + step * part / parts;
      if (value < axis.Min || value > axis.Max) continue;
      AddTick(place, layout.scale.Position(value), kMinorShare, layout);
    }
    if (base + step <= base) return;
  }
}

/// What is drawn across at the ticks of an axis: through the plot, and through the panel at those of X.
void AddGrid(const AxisPlace& place, double position, const QRectF& plot, AxisLayout& result) {
  result.grid.push_back(place.across ? QLineF(position, plot.top(), position, plot.bottom())
                                     : QLineF(plot.left(), position, plot.right(), position));
}

/// Ticks, grid and labels of an axis whose line and scale stand.
void LayoutTicks(const LayoutContext& context, const AxisState& axis,
                 const std::vector<Tick>& ticks, const AxisPlace& place,
                 std::span<const QRectF> plots, AxisLayout& result) {
  std::vector<std::size_t> labelled;
  if (result.shown && context.graph.GetAppearance().grid_labels_shown) {
    LabelPlacer placer(context, axis, place, ticks, result.scale);
    labelled = placer.Place(result);
  }
  std::vector<double> along;
  std::vector<double> values;
  for (const Tick& tick : ticks) {
    if (!tick.major) continue;
    values.push_back(tick.value);
    along.push_back(result.scale.Position(tick.value));
  }
  const double closest = ClosestOf(along);
  const bool crowded = closest < kClosestTicks;
  for (std::size_t i = 0; i < ticks.size(); ++i) {
    const double position = result.scale.Position(ticks[i].value);
    const bool kept = std::binary_search(labelled.begin(), labelled.end(), i);
    if (crowded && !kept) continue;
    const bool major = ticks[i].major && (kept || labelled.empty());
    if (place.tick > 0) AddTick(place, position, major ? 1 : kMinorShare, result);
    if (!axis.Gridlines || !(major || (ticks[i].major && closest >= kClosestGridLines))) continue;
    for (const QRectF& plot : plots) AddGrid(place, position, plot, result);
  }
  if (place.tick > 0 && !crowded) AddMinorTicks(axis, place, values, result);
}

}  // namespace

void LayoutAxis(const LayoutContext& context, AxisId id, PlotLayout& layout) {
  const TAxis& axis = context.graph.Axis(id);
  AxisPlace place = PlaceOf(context.graph, id, layout);
  place.crossings = CrossingsOf(context.graph, id, place, layout);
  AxisLayout& result = layout.axes[static_cast<std::size_t>(id)];
  result.shown = IsAxisShown(context.graph, id);
  const QRectF& plot = layout.plot;
  std::vector<QRectF> plots = {plot};
  if (layout.panel && place.across) {
    plots.push_back(layout.panel->plot);
    if (place.side > 0 && place.line > plot.bottom() - 0.5) {
      layout.panel->plot_edge = QLineF(plot.left(), place.line, plot.right(), place.line);
      place.line = layout.panel->plot.bottom();
    }
  }
  result.line = place.across ? QLineF(plot.left(), place.line, plot.right(), place.line)
                             : QLineF(place.line, plot.bottom(), place.line, plot.top());
  result.labels_side = place.side;
  AxisState state = axis.State();
  state.Gridlines = HasGrid(context.graph, id);
  LayoutTicks(context, state, axis.Ticks(), place, plots, result);
}

void LayoutPanelAxis(const LayoutContext& context, PlotLayout& layout) {
  PanelLayout& panel = *layout.panel;
  AxisPlace place = PlaceOf(context.graph, AxisId::Y, layout);
  place.line = panel.plot.left();
  place.side = -1;
  panel.y.shown = true;
  panel.y.labels_side = place.side;
  panel.y.line = QLineF(place.line, panel.plot.bottom(), place.line, panel.plot.top());
  AxisState axis = context.graph.PanelAxis();
  axis.Gridlines = context.graph.Axis(AxisId::Y).Look().Gridlines;
  const double zero = panel.y.scale.Position(0);
  panel.zero = QLineF(panel.plot.left(), zero, panel.plot.right(), zero);
  LayoutTicks(context, axis, MakeTicks(axis, {}), place, std::span(&panel.plot, 1), panel.y);
}

}  // namespace tarnwick
