#include <algorithm>
#include <cstdint>

#include "graph/all_series.h"
#include "graph/auto_title.h"
#include "graph/layout/plot_layout_parts.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr double kEdge = 2;            // pixels kept free at the picture's edges
constexpr double kGap = 4;             // between texts of one line
constexpr double kShortestTitle = 24;  // an elided title narrower than this says nothing
constexpr double kTallestCut =
    120;  // a plot this high has room for what is left of a Y title that is cut
constexpr std::int32_t kSmallestTitleFont = 6;  // points; nobody reads less
constexpr int kLargestOffset = 200;

/// The box around an axis' line, ticks and labels.
QRectF Extent(const AxisLayout& axis) {
  QRectF box(axis.line.p1(), axis.line.p2());
  box = box.normalized();
  for (const AxisTick& tick : axis.ticks) {
    box =
        box.united(QRectF(tick.line.p1(), tick.line.p2()).normalized().adjusted(0, 0, 0.01, 0.01));
  }
  for (const PlacedText& label : axis.labels) box = box.united(label.Box());
  return box;
}

/// Of the DataSet in the panel, or what the names of several begin with in common.
QString PanelName(const TxyGraph& graph) {
  std::optional<QString> name;
  for (const TSeries& series : AllSeries(graph)) {
    if (!IsInPanel(series) || !IsDrawn(graph, series) || series.PointCount() == 0) continue;
    const QString own = QString::fromStdString(series.SeriesName()).simplified();
    const bool same_word = name && name->section(u' ', 0, 0) == own.section(u' ', 0, 0);
    name = !name ? own : same_word ? own.section(u' ', 0, 0) : QString();
  }
  return name.value_or(QString());
}

/// Where both Y axes have data, the title of one that a single DataSet is drawn against has that DataSet's colour.
Font FontOfYTitle(const TxyGraph& graph, AxisId id) {
  Font font = graph.GetAppearance().font_for_axes_titles;
  const bool both = AxisInUse(graph, AxisId::Y) && AxisInUse(graph, AxisId::Y2);
  if (!both || !graph.Axis(AxisId::Y2).Look().ShowAxis) return font;
  const TSeries* only = nullptr;
  for (const TSeries& series : AllSeries(graph)) {
    if (!IsDrawn(graph, series) || YAxisOf(series) != id || IsInPanel(series)) continue;
    if (only != nullptr) return font;
    only = &series;
  }
  if (only == nullptr) return font;
  const SeriesStyle& style = only->Style();
  font.color = style.connect_points ? style.line_color : style.symbol_color;
  return font;
}

std::int32_t SmallestOf(const Font& font) {
  return std::min(font.size, std::max(2 * font.size / 3, kSmallestTitleFont));
}

/// The font of a title that has this much room: smaller than its own where the whole title fits so.
Font FontWithin(const QString& whole, const Font& own, double room, const TextMetrics& metrics) {
  for (Font font = own; font.size >= SmallestOf(own); --font.size) {
    if (metrics.SizeOf({whole, {}}, font).width() <= room) return font;
  }
  return own;
}

/// The title, cut where it is longer than the room; empty when less than a word would be left.
RichText TitleWithin(const QString& whole, const Font& font, double room,
                     const TextMetrics& metrics) {
  RichText title{metrics.Elided(whole, font, std::max(room, 0.0)), {}};
  const double width = metrics.SizeOf(title, font).width();
  if (width > room || (title.text != whole && width < kShortestTitle)) return {};
  return title;
}

class TitlePlacer {
 public:
  TitlePlacer(const LayoutContext& context, PlotLayout& layout)
      : context_(context), layout_(layout), appearance_(context.graph.GetAppearance()) {}

  void PlaceAll() {
    for (const AxisId id : {AxisId::Y, AxisId::Y2}) PlaceBesideY(id);
    if (layout_.panel) PlaceBesidePanel();
    PlaceGraphTitle();
    PlaceX();
    for (const AxisId id : {AxisId::Y, AxisId::Y2}) PlaceAboveY(id);
  }

 private:
  AxisLayout& Axis(AxisId id) { return layout_.axes[static_cast<std::size_t>(id)]; }
  QString TitleOf(AxisId id) const {
    return QString::fromStdString(context_.graph.Axis(id).Look().Title).simplified();
  }
  bool HasTitle(AxisId id) const { return layout_.Axis(id).shown && !TitleOf(id).isEmpty(); }
  bool NeedsLineAbove(AxisId id) const {
    const AxisLayout& axis = layout_.Axis(id);
    if (id == AxisId::X && axis.labels_side > 0) return false;
    return axis.shown && (!axis.common.IsEmpty() || (HasTitle(id) && !axis.title));
  }
  void PlaceX();
  bool NamesSeveral(AxisId id) const;
  QString TitleFor(AxisId id, const Font& own, double room) const;
  void PlaceBesideY(AxisId id);
  void PlaceBesidePanel();
  void PlaceAboveY(AxisId id);
  void PlaceGraphTitle();
  bool TryGraphTitle(const QString& whole, const Font& font);
  /// The plot with the labels of all axes: titles stand outside it, also where an axis crosses the plot.
  QRectF ExtentOfAll() const;
  double TopOfPlot() const;
  std::optional<PlacedText> InLine(const RichText& text, const Font& font, double& from, double to,
                                   double bottom, double side);
  void PlaceFactorWithin(const QRectF& plot, AxisLayout& axis);

  const LayoutContext& context_;
  PlotLayout& layout_;
  const Appearance& appearance_;
};

void TitlePlacer::PlaceX() {
  AxisLayout& axis = Axis(AxisId::X);
  if (!axis.shown) return;
  const QRectF extent = ExtentOfAll();
  const double gap =
      std::clamp(context_.graph.GetDimensions().x_axis_title_offset, 0, kLargestOffset);
  // The factor stands at the axis' end, in the line of its title.
  double reserved = 0;
  const auto line_center = [&](const PlacedText& text, double offset, double side) {
    return side > 0 ? extent.bottom() + offset + text.size.height() / 2
                    : extent.top() - offset - text.size.height() / 2;
  };
  if (!axis.common.IsEmpty()) {
    PlacedText factor = MakeText(axis.common, appearance_.font_for_labels, context_.metrics);
    for (const double offset : {gap, 0.0}) {
      factor.center = {
          std::min(layout_.plot.right(), layout_.size.width() - kEdge) - factor.size.width() / 2,
          line_center(factor, offset, axis.labels_side)};
      if (!context_.room.TryTake(factor)) continue;
      axis.factor = factor;
      reserved = factor.size.width() + kGap;
      break;
    }
    if (!axis.factor) PlaceFactorWithin(layout_.plot, axis);
  }
  if (!HasTitle(AxisId::X)) return;
  const double width = layout_.plot.width() - reserved;
  const QString whole = TitleOf(AxisId::X);
  const Font font = FontWithin(whole, appearance_.font_for_axes_titles, width, context_.metrics);
  const RichText fitted = TitleWithin(whole, font, width, context_.metrics);
  if (fitted.IsEmpty()) return;
  PlacedText title = MakeText(fitted, font, context_.metrics);
  const double half = title.size.width() / 2;
  const double middle = std::min(layout_.plot.center().x(), layout_.plot.right() - reserved - half);
  // Where the graph's title takes the room above the plot, there is some below it.
  for (const double side : {axis.labels_side, 1.0}) {
    for (const double offset : {gap, gap / 2, 0.0}) {
      title.center = {middle, line_center(title, offset, side)};
      if (!context_.room.TryTake(title)) continue;
      axis.title = title;
      return;
    }
  }
}

/// True where the title joins names of several columns, which the legend tells as well.
bool TitlePlacer::NamesSeveral(AxisId id) const {
  return context_.graph.Axis(id).Look().EnableAutoTitle &&
         NamesOnAxis(context_.graph, id).size() > 1;
}

/// Such a title that is longer than `room`, however small, gives way.
QString TitlePlacer::TitleFor(AxisId id, const Font& own, double room) const {
  QString whole = TitleOf(id);
  const Font font = FontWithin(whole, own, room, context_.metrics);
  if (!NamesSeveral(id) || context_.metrics.SizeOf({whole, {}}, font).width() <= room) return whole;
  return QString::fromStdString(std::string(kManyNamesTitle));
}

void TitlePlacer::PlaceBesideY(AxisId id) {
  AxisLayout& axis = Axis(id);
  if (!HasTitle(id)) return;
  const double gap =
      std::clamp(context_.graph.GetDimensions().y_axis_title_offset, 0, kLargestOffset);
  const Font own = FontOfYTitle(context_.graph, id);
  const QString whole = TitleFor(id, own, layout_.plot.height());
  const bool names = NamesSeveral(id) && whole == TitleOf(id);
  const double most = names ? layout_.plot.height() : layout_.size.height() - 2 * kEdge;
  const Font font = FontWithin(whole, own, most, context_.metrics);
  const bool cut = context_.metrics.SizeOf({whole, {}}, font).width() > most;
  const double height =
      cut ? std::clamp(layout_.plot.height(), std::min(kTallestCut, most), most) : most;
  const RichText fitted = TitleWithin(whole, font, height, context_.metrics);
  if (fitted.IsEmpty()) return;
  PlacedText title = MakeText(fitted, font, context_.metrics);
  const double length = title.size.width();
  title.angle = 90;
  const QRectF extent = ExtentOfAll();
  // A title longer than the plot is high goes as far beyond it as the picture's edges let it.
  const double middle = std::clamp(layout_.plot.center().y(), kEdge + length / 2,
                                   layout_.size.height() - kEdge - length / 2);
  for (const double offset : {gap, gap / 2, 0.0}) {
    const double away = offset + title.size.height() / 2;
    title.center = {axis.labels_side > 0 ? extent.right() + away : extent.left() - away, middle};
    if (!context_.room.TryTake(title)) continue;
    axis.title = title;
    return;
  }
}

/// The name of what is drawn there, or, where that is longer than the panel is high, its first word.
void TitlePlacer::PlaceBesidePanel() {
  PanelLayout& panel = *layout_.panel;
  if (!panel.y.common.IsEmpty()) PlaceFactorWithin(panel.plot, panel.y);
  const Font& font = appearance_.font_for_axes_titles;
  const double height = panel.plot.height();
  const QString name = PanelName(context_.graph);
  for (const QString& text : {name, name.section(u' ', 0, 0)}) {
    PlacedText title = MakeText({text, {}}, font, context_.metrics);
    if (text.isEmpty() || title.size.width() > height) continue;
    title.angle = 90;
    // In line with the title of the Y axis above it.
    const double beside =
        ExtentOfAll().left() -
        std::clamp(context_.graph.GetDimensions().y_axis_title_offset, 0, kLargestOffset) -
        title.size.height() / 2;
    const auto& above = layout_.Axis(AxisId::Y).title;
    const bool left = above && above->angle != 0 && above->center.x() < panel.plot.left();
    title.center = {left ? above->center.x() : beside, panel.plot.center().y()};
    if (!context_.room.TryTake(title)) continue;
    panel.y.title = title;
    return;
  }
}

QRectF TitlePlacer::ExtentOfAll() const {
  QRectF box = layout_.panel ? layout_.plot.united(layout_.panel->plot) : layout_.plot;
  for (const AxisLayout* axis : layout_.ShownAxes()) box = box.united(Extent(*axis));
  return box;
}

/// The lowest line above all labels.
double TitlePlacer::TopOfPlot() const {
  return ExtentOfAll().top() - 1;
}

/// Smaller than its own font where labels above the plot leave little room.
void TitlePlacer::PlaceGraphTitle() {
  const QString whole = QString::fromStdString(appearance_.title_of_graph).simplified();
  if (whole.isEmpty()) return;
  const Font& own = appearance_.font_for_title;
  Font font = FontWithin(whole, own, layout_.size.width() - 2 * kEdge, context_.metrics);
  for (; font.size >= SmallestOf(own); --font.size) {
    if (TryGraphTitle(whole, font)) return;
  }
}

bool TitlePlacer::TryGraphTitle(const QString& whole, const Font& font) {
  const double left = kEdge;
  const double right = layout_.size.width() - kEdge;
  PlacedText title =
      MakeText({context_.metrics.Elided(whole, font, right - left), {}}, font, context_.metrics);
  if (title.size.width() > right - left) return false;
  const double half_width = title.size.width() / 2;
  const double half_height = title.size.height() / 2;
  const double across = std::clamp(layout_.plot.center().x(), left + half_width,
                                   std::max(left + half_width, right - half_width));
  const double offset =
      std::clamp(context_.graph.GetDimensions().graph_title_offset, 0, kLargestOffset);
  double bottom = TopOfPlot();
  if (NeedsLineAbove(AxisId::X) || NeedsLineAbove(AxisId::Y) || NeedsLineAbove(AxisId::Y2)) {
    const double line = context_.metrics.LineHeight(appearance_.font_for_axes_titles);
    if (bottom - line - 2 * half_height >= 0) bottom -= line;
  }
  double middle = layout_.plot.top() - offset;
  middle = std::max(std::min(middle, bottom - half_height), half_height);
  title.center = {across, middle};
  if (!context_.room.TryTake(title)) return false;
  layout_.title = title;
  return true;
}

/// Places a text in the line above the plot between `from` and `to`, on the side of its axis, and moves `from` behind it.
std::optional<PlacedText> TitlePlacer::InLine(const RichText& text, const Font& font, double& from,
                                              double to, double bottom, double side) {
  PlacedText placed = MakeText(text, font, context_.metrics);
  const double width = placed.size.width();
  if (width > std::abs(to - from)) return std::nullopt;
  placed.center = {side > 0 ? from - width / 2 : from + width / 2,
                   bottom - placed.size.height() / 2};
  if (!context_.room.TryTake(placed)) return std::nullopt;
  from += side > 0 ? -(width + kGap) : width + kGap;
  return placed;
}

void TitlePlacer::PlaceAboveY(AxisId id) {
  AxisLayout& axis = Axis(id);
  if (!NeedsLineAbove(id)) return;
  const double side = axis.line.x1() > layout_.plot.center().x() ? 1 : -1;
  const QRectF extent = Extent(axis);
  const double bottom = std::min(extent.top(), layout_.plot.top()) - 1;
  double from = side > 0 ? std::min(extent.right(), layout_.size.width() - kEdge)
                         : std::max(extent.left(), kEdge);
  double to = layout_.plot.center().x() - side * kGap;
  if (layout_.title) {
    const QRectF title = layout_.title->Box();
    const double line = context_.metrics.LineHeight(appearance_.font_for_axes_titles);
    if (title.bottom() > bottom - line)
      to = side > 0 ? std::max(to, title.right() + kGap) : std::min(to, title.left() - kGap);
  }
  double factor_room = 0;
  const RichText& factor = axis.common;
  if (!axis.common.IsEmpty()) {
    factor_room = context_.metrics.SizeOf(factor, appearance_.font_for_labels).width() + kGap;
  }
  if (HasTitle(id) && !axis.title) {
    const Font font = FontOfYTitle(context_.graph, id);
    const double end = to + side * factor_room;
    const double room = side * (from - end);
    const RichText title = TitleWithin(TitleFor(id, font, room), font, room, context_.metrics);
    if (!title.IsEmpty()) axis.title = InLine(title, font, from, end, bottom, side);
  }
  if (!axis.common.IsEmpty()) {
    if (side * (from - to) > 0)
      axis.factor = InLine(factor, appearance_.font_for_labels, from, to, bottom, side);
    if (!axis.factor) PlaceFactorWithin(layout_.plot, axis);
  }
}

/// At the axis' end within the plot, where there is no room outside: labels say nothing without it.
void TitlePlacer::PlaceFactorWithin(const QRectF& plot, AxisLayout& axis) {
  PlacedText factor = MakeText(axis.common, appearance_.font_for_labels, context_.metrics);
  const bool across = axis.line.dy() == 0;
  const QSizeF half = factor.size / 2;
  const bool right = across || axis.line.x1() > plot.center().x();
  const bool top = !across || axis.labels_side < 0;
  factor.center = {right ? plot.right() - kGap - half.width() : plot.left() + kGap + half.width(),
                   top ? plot.top() + half.height() : plot.bottom() - half.height()};
  if (plot.contains(factor.Box()) && context_.room.TryTake(factor)) axis.factor = factor;
}

}  // namespace

void LayoutTitles(const LayoutContext& context, PlotLayout& layout) {
  TitlePlacer(context, layout).PlaceAll();
}

}  // namespace tarnwick
