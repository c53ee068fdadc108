#include "desk/document/view_thinning.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "data/packed/unpack.h"
#include "data/points/point_columns.h"
#include "desk/document/document.h"
#include "desk/work/latest_work.h"
#include "graph/graph_update.h"
#include "graph/series_of_whole.h"
#include "sources/database/database_source.h"
#include "sources/database/session_passwords.h"
#include "sources/database/thinned_columns.h"

namespace tarnwick {
namespace {

constexpr int kStillMs = 150;      // a view that moves is waited for
constexpr double kBeside = 0.25;   // of the view's width, asked for on both sides
constexpr double kNarrower = 0.5;  // than what was asked for: worth asking again

std::optional<std::pair<double, double>> RangeOf(const TxyGraph& graph) {
  const TAxis& axis = graph.Axis(AxisId::X);
  if (!std::isfinite(axis.Min()) || !std::isfinite(axis.Max()) || !(axis.Min() < axis.Max())) {
    return std::nullopt;
  }
  return {{axis.Min(), axis.Max()}};
}

/// The graph of each of SeriesOfWhole.
void AddGraphs(const TxyGraph& graph, std::vector<const TxyGraph*>& graphs) {
  graphs.insert(graphs.end(), graph.SeriesCount(), &graph);
  for (const auto& child : graph.Children()) AddGraphs(*child, graphs);
}

/// Column expressions change what a row says, so that a view cannot be asked for by X.
bool FollowsViews(const TSeries& series) {
  const TDSInfo& info = series.Source();
  const auto is_raw = [](const std::string& expression, const char* name) {
    return expression.empty() || expression == name;
  };
  return IsThinned(info) && is_raw(info.XColExpr, "X") && is_raw(info.YColExpr, "Y");
}

/// What a view gave in place of the points that lie in it; those beside it stay, so many as the whole shows.
ThinnedRows Merged(const PointChain& points, const ThinnedRows& rows, double x_min, double x_max) {
  const std::vector<double> x = XValues(points), y = YValues(points);
  ThinnedRows merged{.x = {}, .y = {{}}};
  if (!x.empty()) {
    ThinnedColumns beside(x.front(), x.back(), kColumnsOfWhole, 1);
    for (std::size_t i = 0; i < x.size(); ++i) {
      const double row[] = {x[i], y[i]};
      if (x[i] < x_min || x[i] > x_max) beside.Add(row);
    }
    merged = beside.Rows();
  }
  merged.x.insert(merged.x.end(), rows.x.begin(), rows.x.end());
  merged.y[0].insert(merged.y[0].end(), rows.y[0].begin(), rows.y[0].end());
  return merged;
}

void Replace(TSeries& series, const ThinnedRows& rows) {
  std::vector<double> x, y;
  for (std::size_t i = 0; i < rows.x.size(); ++i) {
    if (std::isnan(rows.y[0][i])) continue;
    x.push_back(rows.x[i]);
    y.push_back(rows.y[0][i]);
  }
  // Looking elsewhere takes nothing back of what was fitted.
  const LastFit fitted = series.Fit().Last();
  series.BeginUpdate();
  series.Clear();
  series.AddPoints(x, y);
  series.Fit().SetLast(fitted);
  series.EndUpdate();
}

}  // namespace

struct ViewThinning::Answer {
  ThinnedRows rows;
  std::string trouble;
  std::optional<PasswordWanted> closed;  ///< the trouble
};

ViewThinning::ViewThinning(Document& document, QObject* parent)
    : QObject(parent),
      document_(document),
      asking_(new LatestWork(this)),
      passwords_(document.GetPrompt()) {
  wait_.setSingleShot(true);
  wait_.setInterval(kStillMs);
  connect(&wait_, &QTimer::timeout, this, &ViewThinning::Ask);
  connect(&document_, &Document::graphChanged, this, [this] {
    if (!WhatIsWanted().empty()) wait_.start();
  });
  if (!WhatIsWanted().empty()) wait_.start();
}

bool ViewThinning::IsSettled() const {
  return !wait_.isActive() && !asking_->IsRunning();
}

bool ViewThinning::IsShown(std::size_t place, const TSeries& series, double x_min,
                           double x_max) const {
  const PointChain& points = series.Points();
  if (points.Empty()) return true;
  // The whole is there from the beginning, in columns as narrow as those of a wide view.
  const double whole = points.LastX() - points.ChunkFirstX(0);
  if (x_max - x_min >= whole * kColumnsOfView / kColumnsOfWhole) return true;
  if (place >= shown_.size() || !shown_[place].points.SharesAllWith(points)) return false;
  const Shown& shown = shown_[place];
  return x_min >= shown.x_min && x_max <= shown.x_max &&
         x_max - x_min >= kNarrower * (shown.x_max - shown.x_min) / (1 + 2 * kBeside);
}

std::vector<ViewThinning::Wanted> ViewThinning::WhatIsWanted() {
  std::vector<Wanted> wanted;
  std::vector<const TxyGraph*> graphs;
  AddGraphs(document_.WholeGraph(), graphs);
  const std::vector<TSeries*> whole = SeriesOfWhole(document_.WholeGraph());
  for (std::size_t place = 0; place < whole.size(); ++place) {
    const TSeries& series = *whole[place];
    if (!FollowsViews(series)) continue;
    // Another view would take back what was edited.
    const SeriesAsRead* const read = document_.Files().AsRead().Of(series);
    if (read != nullptr && !read->points.SharesAllWith(series.Points())) continue;
    const auto range = RangeOf(*graphs[place]);
    if (!range || IsShown(place, series, range->first, range->second)) continue;
    const TDSInfo& info = series.Source();
    const double beside = kBeside * (range->second - range->first);
    ThinnedView view{.place = ParsePlace(info.DatasourceInfo),
                     .x = {info.XDataColumn, info.XFormat},
                     .y = {{info.YDataColumn, info.YFormat}}};
    view.x_min = range->first - beside;
    view.x_max = range->second + beside;
    view.columns = static_cast<int>(kColumnsOfView * (1 + 2 * kBeside));
    wanted.push_back({place, std::move(view), series.Points()});
  }
  return wanted;
}

void ViewThinning::Ask() {
  const std::vector<Wanted> wanted = WhatIsWanted();
  if (wanted.empty()) return;
  asking_->Begin([this, wanted](Progress& progress) -> LatestWork::Answer {
    std::vector<Answer> answers;
    for (const Wanted& one : wanted) {
      Answer answer;
      try {
        answer.rows = FetchThinned(one.view, progress);
      } catch (const UnpackingCancelled&) {
        return [] {};
      } catch (const PasswordWanted& closed) {
        answer.trouble = closed.what();
        answer.closed = closed;
      } catch (const Error& error) {
        answer.trouble = error.what();
      }
      answers.push_back(std::move(answer));
    }
    return [this, wanted, answers = std::move(answers)] { Take(wanted, answers); };
  });
}

void ViewThinning::Take(const std::vector<Wanted>& wanted, const std::vector<Answer>& answers) {
  for (const Answer& answer : answers) {
    if (answer.closed && passwords_.Ask(*answer.closed)) return Ask();
  }
  const std::vector<TSeries*> whole = SeriesOfWhole(document_.WholeGraph());
  shown_.resize(whole.size());
  std::vector<PointsOfFile> points;
  std::string told;
  {
    const GraphUpdate update(document_.WholeGraph());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      const auto& [place, view, before] = wanted[i];
      // What was edited or read anew meanwhile is asked for again by its own change.
      if (place >= whole.size() || !whole[place]->Points().SharesAllWith(before)) continue;
      TSeries& series = *whole[place];
      const auto say = [&](const std::string& text) { told += (told.empty() ? "" : "; ") + text; };
      if (answers[i].trouble.empty()) {
        Replace(series, Merged(before, answers[i].rows, view.x_min, view.x_max));
        points.push_back({series.Source().DatasourceInfo, series.Points()});
        const auto picked = static_cast<std::int64_t>(answers[i].rows.x.size());
        const std::string of = std::to_string(answers[i].rows.rows);
        say(picked < answers[i].rows.rows
                ? "thinned by the data base: " + std::to_string(picked) + " of " + of +
                      " rows in view of \"" + series.SeriesName() + "\", zooming shows more"
                : "all " + of + " rows in view of \"" + series.SeriesName() + "\" are shown");
      } else {
        say("the view of \"" + series.SeriesName() + "\" stays as it was: " + answers[i].trouble);
      }
      shown_[place] = {view.x_min, view.x_max, series.Points()};
    }
  }
  if (!told.empty()) document_.Files().TakeView(points, told);
}

}  // namespace tarnwick
