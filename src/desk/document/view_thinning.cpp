#include "desk/document/view_thinning.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "base/error.h"
#include "data/packed/unpack.h"
#include "desk/document/document.h"
#include "desk/document/thinned_points.h"
#include "desk/document/whole_reading.h"
#include "desk/work/latest_work.h"
#include "graph/graph_update.h"
#include "graph/series_of_whole.h"
#include "sources/database/database_source.h"
#include "sources/database/session_passwords.h"

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
      whole_(new WholeReading(
          document, [this](std::size_t place) { return StretchShown(place); },
          [this](std::size_t place) { KeepShown(place); }, this)),
      passwords_(document.GetPrompt()) {
  wait_.setSingleShot(true);
  wait_.setInterval(kStillMs);
  connect(&wait_, &QTimer::timeout, this, &ViewThinning::Ask);
  noting_edits_.setSingleShot(true);
  connect(&noting_edits_, &QTimer::timeout, this, [this] { RememberEdits(document_); });
  noting_edits_.start();
  connect(&document_, &Document::graphChanged, this, [this] {
    noting_edits_.start();  // once what was read is known as that
    if (IsAnythingWanted()) wait_.start();
  });
  if (IsAnythingWanted()) wait_.start();
}

bool ViewThinning::IsSettled() const {
  return !wait_.isActive() && !asking_->IsRunning() && !whole_->IsRunning();
}

bool ViewThinning::IsAnythingWanted() {
  return !WhatIsWanted().empty() || whole_->IsWanted();
}

Stretch ViewThinning::StretchShown(std::size_t place) const {
  const std::vector<TSeries*> whole = SeriesOfWhole(document_.WholeGraph());
  const bool is_shown = place < shown_.size() && place < whole.size() &&
                        shown_[place].points.SharesAllWith(whole[place]->Points());
  return is_shown ? Stretch{shown_[place].x_min, shown_[place].x_max} : Stretch{};
}

/// The points of a view that was asked for are among the new ones.
void ViewThinning::KeepShown(std::size_t place) {
  if (place < shown_.size()) {
    shown_[place].points = SeriesOfWhole(document_.WholeGraph())[place]->Points();
  }
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
    if (!ShowsRowsAsTheyAre(series.Source()) || WasEdited(document_, series)) continue;
    const auto range = RangeOf(*graphs[place]);
    if (!range || IsShown(place, series, range->first, range->second)) continue;
    const TDSInfo& info = series.Source();
    const double beside = kBeside * (range->second - range->first);
    ThinnedView view = WholeViewOf(info);
    view.x_min = range->first - beside;
    view.x_max = range->second + beside;
    view.columns = static_cast<int>(kColumnsOfView * (1 + 2 * kBeside));
    wanted.push_back({place, std::move(view), series.Points()});
  }
  return wanted;
}

void ViewThinning::Ask() {
  const std::vector<Wanted> wanted = WhatIsWanted();
  if (wanted.empty()) return whole_->GoOn();
  whole_->GiveUp();
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
        ReplacePoints(series, WithView(before, answers[i].rows, {view.x_min, view.x_max}));
        points.push_back({series.Source().DatasourceInfo, series.Points()});
        say(ShownRows(series, static_cast<std::int64_t>(answers[i].rows.x.size()),
                      answers[i].rows.rows));
      } else {
        say("the view of \"" + series.SeriesName() + "\" stays as it was: " + answers[i].trouble);
      }
      shown_[place] = {view.x_min, view.x_max, series.Points()};
    }
  }
  if (!told.empty()) document_.Files().TakeView(points, told);
  if (whole_->IsWanted()) wait_.start();
}

}  // namespace tarnwick
