#include <algorithm>
#include <array>
#include <cmath>

#include "graph/layout/legend_names.h"
#include "graph/layout/plot_layout_parts.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr double kLargestShareOfWidth = 0.45;
constexpr double kNarrowestLegend = 120;  // where the plot is that wide
constexpr double kLargestShareOfHeight = 0.6;
constexpr double kNarrowestName = 16;
constexpr double kColumnGap = 10;
constexpr double kSampleGap = 5;
constexpr double kLineGap = 2;
constexpr int kLargestMargin = 60;
constexpr int kLargestSample = 200;
constexpr int kDefaultWidthInset = 20;
constexpr double kPlotInset = 8;  // of a legend that gives way into the plot
constexpr double kBesideGap =
    6;  // between a legend beside the plot and what stands there, and the picture's edge

/// Room that the legend may take, by its layout mode.
struct Limits {
  double width = 0;
  double height = 0;
};

struct Entry {
  LegendEntry kind = LegendEntry::DataSet;
  std::size_t series = 0;
};

/// "Rate", "Fit: Rate", "Model: Rate"
QString NameOf(const Entry& entry, const TSeries& series) {
  QString name = QString::fromStdString(ShownName(series)).simplified();
  if (entry.kind == LegendEntry::DataSet) return name;
  const bool function = series.Fit().Status() == FitStatus::cf_Function;
  return (function ? QStringLiteral("Model: %1") : QStringLiteral("Fit: %1")).arg(name);
}

/// A legend under construction, in coordinates of its own: entries flow down (vertical, free) or across (horizontal).
class LegendFlow {
 public:
  LegendFlow(const LayoutContext& context, const PlotLayout& layout)
      : context_(context),
        legend_(context.graph.GetLegend()),
        layout_(layout),
        margin_x_(std::clamp(legend_.x_margin, 0, kLargestMargin)),
        margin_y_(std::clamp(legend_.y_margin, 0, kLargestMargin)),
        sample_(std::clamp(legend_.space_for_symbols, 0, kLargestSample)),
        row_(context.metrics.LineHeight(legend_.font) + kLineGap),
        limits_(Bounds()),
        entries_(Entries()),
        names_(NamesOf(entries_)) {}

  /// Nothing when there is no entry or no room for one: "+3 more" alone would hide data and tell nothing.
  std::optional<LegendBox> Build();

 private:
  std::vector<Entry> Entries() const;
  std::vector<QString> NamesOf(const std::vector<Entry>& entries) const;
  Limits Bounds() const;
  std::optional<Limits> BoundsBeside() const;
  bool Across() const { return legend_.layout_mode == LegendLayout::Horizontal; }
  double Inner() const { return limits_.width - 2 * margin_x_; }
  int MostLines() const { return static_cast<int>((limits_.height - 2 * margin_y_) / row_); }
  double Top(int line) const { return margin_y_ + line * row_; }
  /// Takes a place `width` wide behind what is placed; false when the lines are used up.
  bool Advance(double width);
  bool AddRow(const Entry& entry, LegendBox& box);
  void AddMore(std::size_t hidden, LegendBox& box);
  void RemoveLastRow(LegendBox& box);
  QPointF Corner(QSizeF size) const;

  const LayoutContext& context_;
  const Legend& legend_;
  const PlotLayout& layout_;
  double margin_x_;
  double margin_y_;
  double sample_;
  double row_;
  Limits limits_;
  std::vector<Entry> entries_;
  LegendNames names_;
  double x_ = 0;   // where the next entry begins
  int line_ = -1;  // of the last entry
};

std::vector<Entry> LegendFlow::Entries() const {
  std::vector<Entry> entries;
  for (std::size_t i = 0; i < context_.graph.SeriesCount(); ++i) {
    const TSeries& series = context_.graph.Series(i);
    if (series.Style().show_in_legend == 0 || !IsDrawn(context_.graph, series)) continue;
    entries.push_back({LegendEntry::DataSet, i});
    if (!series.Curve().Points().Empty()) entries.push_back({LegendEntry::ModelCurve, i});
  }
  return entries;
}

std::vector<QString> LegendFlow::NamesOf(const std::vector<Entry>& entries) const {
  std::vector<QString> names;
  names.reserve(entries.size());
  for (const Entry& entry : entries)
    names.push_back(NameOf(entry, context_.graph.Series(entry.series)));
  return names;
}

/// The room right of the plot and of all that belongs to its axes, where a legend was put there and has some.
std::optional<Limits> LegendFlow::BoundsBeside() const {
  const QSizeF picture = layout_.size;
  const bool from_right = legend_.left < 0;
  double content = layout_.plot.right();
  for (const AxisLayout* axis : layout_.ShownAxes()) {
    for (const PlacedText& label : axis->labels) content = std::max(content, label.Box().right());
    if (axis->title) content = std::max(content, axis->title->Box().right());
  }
  const double left = from_right ? content + kBesideGap : legend_.left;
  const double right = from_right ? picture.width() + legend_.left : picture.width() - kBesideGap;
  if (left < content || right - left < 2 * margin_x_ + sample_ + kSampleGap + kNarrowestName)
    return std::nullopt;
  const double top = legend_.top < 0 ? kBesideGap : legend_.top;
  const double bottom = picture.height() - (legend_.top < 0 ? -legend_.top : kBesideGap);
  return Limits{right - left, bottom - top};
}

Limits LegendFlow::Bounds() const {
  const QSizeF picture = layout_.size;
  const double stored = legend_.width > 0 ? legend_.width : picture.width() - kDefaultWidthInset;
  switch (legend_.layout_mode) {
    case LegendLayout::Horizontal:
      return {std::min(stored, picture.width()), layout_.plot.height() * kLargestShareOfHeight};
    case LegendLayout::Free:
      return {std::min(stored, picture.width()),
              std::min(static_cast<double>(legend_.height), picture.height())};
    case LegendLayout::Vertical:
      break;
  }
  if (const std::optional<Limits> beside = BoundsBeside()) return *beside;
  return {std::max(layout_.plot.width() * kLargestShareOfWidth,
                   std::min(kNarrowestLegend, layout_.plot.width())),
          layout_.plot.height() * kLargestShareOfHeight};
}

bool LegendFlow::Advance(double width) {
  const bool fits = Across() && line_ >= 0 && x_ + width <= Inner();
  if (!fits) {
    if (line_ + 1 >= MostLines()) return false;
    ++line_;
    x_ = 0;
  }
  return true;
}

bool LegendFlow::AddRow(const Entry& entry, LegendBox& box) {
  const double room = Inner() - sample_ - kSampleGap;
  if (room < kNarrowestName) return false;
  const QString whole = NameOf(entry, context_.graph.Series(entry.series));
  const auto fits = [&](const QString& text) {
    return context_.metrics.SizeOf({text, {}}, legend_.font).width() <= room;
  };
  QString name = names_.Shortened(whole, fits);
  if (name.isEmpty()) name = context_.metrics.Elided(whole, legend_.font, room, Qt::ElideMiddle);
  PlacedText text = MakeText({name, {}}, legend_.font, context_.metrics);
  const double width = sample_ + kSampleGap + text.size.width();
  if (!Advance(width)) return false;
  const double left = margin_x_ + x_;
  text.center = {left + width - text.size.width() / 2, Top(line_) + row_ / 2};
  box.rows.push_back({entry.kind, entry.series, QRectF(left, Top(line_), sample_, row_), text});
  x_ += width + kColumnGap;
  return true;
}

void LegendFlow::RemoveLastRow(LegendBox& box) {
  x_ = box.rows.back().sample.left() - margin_x_;
  line_ = static_cast<int>(std::lround((box.rows.back().sample.top() - margin_y_) / row_));
  if (x_ == 0) {
    // It began its line: that is free again, and the one before it stays as full as it was.
    --line_;
    x_ = limits_.width;
  }
  box.rows.pop_back();
}

void LegendFlow::AddMore(std::size_t hidden, LegendBox& box) {
  while (hidden > 0) {
    PlacedText more =
        MakeText({QStringLiteral("+%1 more").arg(hidden), {}}, legend_.font, context_.metrics);
    if (more.size.width() <= Inner() && Advance(more.size.width())) {
      more.center = {margin_x_ + x_ + more.size.width() / 2, Top(line_) + row_ / 2};
      box.more = more;
      return;
    }
    if (box.rows.empty()) return;
    RemoveLastRow(box);
    ++hidden;
  }
}

/// The stored corner (negative: measured from the far edges), moved as far as the picture's edges ask.
QPointF LegendFlow::Corner(QSizeF size) const {
  const double right = std::max(layout_.size.width() - size.width(), 0.0);
  const double bottom = std::max(layout_.size.height() - size.height(), 0.0);
  const double left = legend_.left < 0 ? right + legend_.left : legend_.left;
  const double top = legend_.top < 0 ? bottom + legend_.top : legend_.top;
  return {std::clamp(left, 0.0, right), std::clamp(top, 0.0, bottom)};
}

void MoveBy(QPointF shift, LegendBox& box) {
  box.frame.translate(shift);
  for (LegendRow& row : box.rows) {
    row.sample.translate(shift);
    row.name.center += shift;
  }
  if (box.more) box.more->center += shift;
}

std::optional<LegendBox> LegendFlow::Build() {
  LegendBox box;
  std::size_t shown = 0;
  while (shown < entries_.size() && AddRow(entries_[shown], box)) ++shown;
  AddMore(entries_.size() - shown, box);
  if (box.rows.empty()) return std::nullopt;
  double right = box.more ? box.more->Box().right() : 0;
  for (const LegendRow& row : box.rows) right = std::max(right, row.name.Box().right());
  QSizeF size(right + margin_x_, Top(line_ + 1) + margin_y_);
  if (legend_.layout_mode == LegendLayout::Free) size = {limits_.width, limits_.height};
  box.frame = QRectF(QPointF(0, 0), size);
  MoveBy(Corner(size), box);
  return box;
}

/// A legend that would cover labels or titles stands in a free corner of the plot instead, the upper left one before the
/// others and where none is free, nearer to the picture's edge when it is too wide for that; a freely placed one stays.
void GiveWay(const LayoutContext& context, const PlotLayout& layout, LegendBox& box) {
  if (context.graph.GetLegend().layout_mode == LegendLayout::Free) return;
  if (context.room.IsFree(box.frame)) return;
  const QRectF inner = layout.plot.adjusted(kPlotInset, kPlotInset, -kPlotInset, -kPlotInset);
  const QSizeF size = box.frame.size();
  const double right = inner.right() - size.width();
  const double bottom = inner.bottom() - size.height();
  std::array<QPointF, 4> corners = {inner.topLeft(), QPointF(right, inner.top()),
                                    QPointF(inner.left(), bottom), QPointF(right, bottom)};
  for (QPointF& corner : corners) {
    corner = {std::max(0.0, std::min(corner.x(), layout.size.width() - size.width())),
              std::max(0.0, std::min(corner.y(), layout.size.height() - size.height()))};
  }
  const auto* free = std::find_if(corners.begin(), corners.end(), [&](QPointF corner) {
    return context.room.IsFree(QRectF(corner, size));
  });
  MoveBy((free == corners.end() ? corners.front() : *free) - box.frame.topLeft(), box);
}

}  // namespace

void LayoutLegend(const LayoutContext& context, PlotLayout& layout) {
  if (!context.graph.GetLegend().visible) return;
  layout.legend = LegendFlow(context, layout).Build();
  if (!layout.legend) return;
  GiveWay(context, layout, *layout.legend);
  context.room.Take(layout.legend->frame);
}

}  // namespace tarnwick
