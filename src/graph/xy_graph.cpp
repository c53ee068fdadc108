#include "graph/xy_graph.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/error.h"
#include "base/prompt.h"
#include "graph/axes/nice_step.h"
#include "graph/background_image.h"
#include "graph/palette.h"
#include "graph/panel_axis.h"
#include "graph/shown_series.h"

namespace tarnwick {
namespace {

constexpr std::array kAxisIds = {AxisId::X, AxisId::Y, AxisId::Y2};

/// What is left of `whole` pixels without the rest, for any stored margins.
int Remaining(int whole, std::int64_t taken) {
  return static_cast<int>(std::clamp<std::int64_t>(whole - taken, -1'000'000, 1'000'000));
}

std::int32_t ValidIndex(std::int32_t index, std::size_t count) {
  if (index < 0 || count == 0) return -1;
  return static_cast<std::size_t>(index) < count ? index : 0;
}

/// Where an index points after the element `deleted` is gone.
std::int32_t IndexAfterDelete(std::int32_t index, std::size_t deleted, std::size_t left) {
  if (index > static_cast<std::int32_t>(deleted)) --index;
  return std::min(index, static_cast<std::int32_t>(left) - 1);
}

}  // namespace

TxyGraph::TxyGraph() : background_(std::make_unique<BackgroundImage>()) {
  for (const AxisId id : kAxisIds) {
    axes_[static_cast<std::size_t>(id)] = std::make_unique<TAxis>(*this, id);
    Axis(id).SetState(DefaultAxisState(id));
  }
}

TxyGraph::~TxyGraph() {
  for (const auto& series : series_) series->graph_ = nullptr;
}

void TxyGraph::SetAppearance(Appearance appearance) {
  StepLimits limits = {appearance_.min_steps, appearance_.max_steps};
  // Twice, because either limit may stand in the way of the other.
  for (int round = 0; round < 2; ++round) {
    limits = WithMaxSteps(WithMinSteps(limits, appearance.min_steps), appearance.max_steps);
  }
  appearance.min_steps = limits.min_steps;
  appearance.max_steps = limits.max_steps;
  appearance_ = std::move(appearance);
  TakeIndices(appearance_);
  UpdateScales();
  Tell(GraphChange::Redraw);
}

const BackgroundImage& TxyGraph::Background() const {
  // An empty directory leaves the name as it is, and so does an absolute name.
  background_->Update(appearance_.background_image_file.empty()
                          ? std::filesystem::path()
                          : std::filesystem::path(appearance_.data_directory) /
                                appearance_.background_image_file);
  return *background_;
}

void TxyGraph::TakeIndices(const Appearance& from) {
  appearance_.current_series_index = ValidIndex(from.current_series_index, series_.size());
  appearance_.x_axis_series_index = ValidIndex(from.x_axis_series_index, series_.size());
}

void TxyGraph::SetDimensions(const Dimensions& dimensions) {
  dimensions_ = dimensions;
  UpdateScales();
  Tell(GraphChange::Scales);
}

void TxyGraph::SetLegend(const Legend& legend) {
  legend_ = legend;
  Tell(GraphChange::Redraw);
}

void TxyGraph::Adopt(TSeries& series) {
  if (!series.has_own_style_) {
    const std::size_t position = series_.size();
    series.style_.line_color = PaletteColor(position);
    series.style_.symbol_color = series.style_.line_color;
    series.style_.symbol = PaletteSymbol(position);
    series.has_own_style_ = true;
  }
  series.graph_ = this;
}

TSeries& TxyGraph::AddSeries(std::unique_ptr<TSeries> series) {
  Adopt(*series);
  series_.push_back(std::move(series));
  TSeries& added = *series_.back();
  if (series_.size() == 1) {
    appearance_.current_series_index = 0;
    appearance_.x_axis_series_index = 0;
  }
  if (appearance_.current_series_index < 0) appearance_.current_series_index = 0;
  RefreshRegression(added);
  UpdateScales();
  Tell(GraphChange::SeriesList);
  return added;
}

void TxyGraph::DeleteSeries(std::size_t index) {
  if (index >= series_.size()) return;
  series_[index]->graph_ = nullptr;
  series_.erase(series_.begin() + static_cast<std::ptrdiff_t>(index));
  appearance_.current_series_index =
      IndexAfterDelete(appearance_.current_series_index, index, series_.size());
  appearance_.x_axis_series_index =
      IndexAfterDelete(appearance_.x_axis_series_index, index, series_.size());
  UpdateScales();
  Tell(GraphChange::SeriesList);
}

const TSeries* TxyGraph::CurrentSeries() const {
  const std::int32_t index = appearance_.current_series_index;
  if (index < 0 || static_cast<std::size_t>(index) >= series_.size()) return nullptr;
  return series_[static_cast<std::size_t>(index)].get();
}

TSeries* TxyGraph::CurrentSeries() {
  return const_cast<TSeries*>(std::as_const(*this).CurrentSeries());
}

void TxyGraph::SetCurrentSeriesIndex(std::int32_t index) {
  if (index < -1 || index >= static_cast<std::int32_t>(series_.size())) return;
  appearance_.current_series_index = index;
  Tell(GraphChange::CurrentSeries);
}

void TxyGraph::SetPlotsAgainstXSource(bool on) {
  plots_against_x_source_ = on;
  UpdateScales();
  Tell(GraphChange::Scales);
}

void TxyGraph::MarksChanged() {
  Tell(GraphChange::Marks);
}

TxyChildGr& TxyGraph::AddChild() {
  auto child = std::make_unique<TxyChildGr>();
  Dimensions place = child->GetDimensions();
  place.hor_position = 0.55;
  place.ver_position = 0.1;
  place.hor_size = 0.35;
  place.ver_size = 0.35;
  child->SetDimensions(place);
  Legend legend = child->GetLegend();
  legend.visible = false;
  child->SetLegend(legend);
  child->SetListener([this](GraphChange) { Tell(GraphChange::Children); });
  children_.push_back(std::move(child));
  PlaceChild(*children_.back());
  Tell(GraphChange::Children);
  return *children_.back();
}

void TxyGraph::DeleteChild(std::size_t index) {
  if (index >= children_.size()) return;
  children_.erase(children_.begin() + static_cast<std::ptrdiff_t>(index));
  Tell(GraphChange::Children);
}

void TxyGraph::Resize(int width, int height) {
  width_ = std::clamp(width, 0, 1'000'000);
  height_ = std::clamp(height, 0, 1'000'000);
  PlaceChildren();
  UpdateScales();
  Tell(GraphChange::Scales);
}

void TxyGraph::PlaceChild(TxyChildGr& child) const {
  const TxyChildGr::Place place = child.PlaceIn(width_, height_);
  child.Resize(place.width, place.height);
}

void TxyGraph::PlaceChildren() {
  for (const auto& child : children_) PlaceChild(*child);
}

void TxyGraph::SettleTooManyPoints(Prompt& prompt, const std::function<void(TSeries&)>& reload) {
  SettleTooManyPoints(prompt, reload, ask_before_thinning_);
}

void TxyGraph::SettleTooManyPoints(Prompt& prompt, const std::function<void(TSeries&)>& reload,
                                   bool& ask) {
  for (const auto& series : series_) {
    if (!IsDrawn(*this, *series) || series->PointCount() <= kMaxPlottedPoints) continue;
    if (series->thinning_settled_ || series->Source().AllRows || series->Source().Follow) continue;
    if (ask) {
      const Question question = {
          "Maximum number of plotted points = " + std::to_string(kMaxPlottedPoints) +
              "  was exceeded for dataSet \"" + series->SeriesName() +
              "\".\nTo fix, change Hit Frequency to the automatic mode?",
          {Answer::Yes, Answer::No, Answer::YesToAll}};
      const Answer answer = prompt.Ask(question);
      if (answer == Answer::YesToAll) ask = false;
      if (answer != Answer::Yes && answer != Answer::YesToAll) {
        series->thinning_settled_ = true;
        continue;
      }
    }
    series->Source().AutoRowHitFreq = true;
    if (reload) reload(*series);
    series->thinning_settled_ = true;
  }
  for (const auto& child : children_) child->SettleTooManyPoints(prompt, reload, ask);
}

void TxyGraph::SetListener(std::function<void(GraphChange)> listener) {
  listener_ = std::move(listener);
}

void TxyGraph::BeginUpdate() {
  ++updates_;
}

void TxyGraph::EndUpdate() {
  if (updates_ == 0 || --updates_ > 0) return;
  for (const auto& series : series_) RefreshRegression(*series);
  UpdateScales();
  Tell(GraphChange::Everything);
}

void TxyGraph::Tell(GraphChange change) {
  if (updates_ == 0 && !scaling_ && listener_) listener_(change);
}

void TxyGraph::SeriesChanged(TSeries& series, ChangeCode code) {
  if (code == ChangeCode::Destroyed) return;
  if (series.PointCount() <= kMaxPlottedPoints) series.thinning_settled_ = false;
  if (updates_ > 0) return;
  RefreshRegression(series);
  if (code == ChangeCode::Fit) UpdateModelCurve(series);
  if (code == ChangeCode::Regression || code == ChangeCode::Fit) {
    Tell(GraphChange::Redraw);
    return;
  }
  UpdateScales();
  Tell(GraphChange::Scales);
}

void TxyGraph::StyleChanged() {
  UpdateScales();
  Tell(GraphChange::Scales);
}

void TxyGraph::RefreshRegression(TSeries& series) {
  // Painting may not compute, so the line is brought up to date as soon as its points change.
  if (series.RegressionType() == RegressionType::None || series.PointCount() == 0) return;
  try {
    series.UpdateRegression();
  } catch (const Error&) {
    // The DataSet keeps why, for who looks after the graph to tell.
  }
}

void TxyGraph::AxisChanged() {
  Tell(GraphChange::Redraw);
}

void TxyGraph::AxisRangeChanged() {
  if (scaling_) return;
  UpdateScales();
  Tell(GraphChange::Scales);
}

bool TxyGraph::AxisInUse(AxisId axis) const {
  return tarnwick::AxisInUse(*this, axis);
}

int TxyGraph::PixelLength(AxisId axis) const {
  if (axis == AxisId::X) {
    return Remaining(width_, std::int64_t{dimensions_.left_margin} + dimensions_.right_margin +
                                 2 * std::int64_t{FrameOffset()});
  }
  const int height = HeightWithPanel();
  return has_panel_ ? static_cast<int>(PlaceOfPanel(height).plot_end) : height;
}

int TxyGraph::HeightWithPanel() const {
  return Remaining(height_, std::int64_t{dimensions_.top_margin} + dimensions_.bottom_margin +
                                2 * std::int64_t{FrameOffset()});
}

AxisScale TxyGraph::PanelScale() const {
  const int height = HeightWithPanel();
  const double begin = PlaceOfPanel(height).panel_begin;
  return ScaleOf(panel_axis_, AxisId::Y, PixelOrigin(AxisId::Y) + begin,
                 PixelsPerUnit(panel_axis_, std::max(height - begin, 1.0)));
}

int TxyGraph::PixelOrigin(AxisId axis) const {
  const std::int32_t margin = axis == AxisId::X ? dimensions_.left_margin : dimensions_.top_margin;
  return Remaining(FrameOffset(), -std::int64_t{margin});
}

TxyChildGr::Place TxyChildGr::PlaceIn(int parent_width, int parent_height) const {
  const auto part = [](double fraction, int whole, double fallback) {
    const double used = std::isfinite(fraction) ? fraction : fallback;
    return static_cast<int>(std::lround(std::clamp(used, -10.0, 10.0) * whole));
  };
  const Dimensions& place = GetDimensions();
  return {part(place.hor_position, parent_width, 0), part(place.ver_position, parent_height, 0),
          std::max(part(place.hor_size, parent_width, 0.35), 0),
          std::max(part(place.ver_size, parent_height, 0.35), 0)};
}

}  // namespace tarnwick
