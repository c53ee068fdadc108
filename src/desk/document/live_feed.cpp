#include "desk/document/live_feed.h"

#include <QElapsedTimer>
#include <algorithm>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "desk/document/document.h"
#include "graph/files/waiting_series.h"
#include "graph/series_of_whole.h"

namespace tarnwick {
namespace {

constexpr int kFrameMs = 16;
constexpr int kIdleMs = 100;
constexpr int kPollsUntilIdle = 30;
constexpr int kRestPerWork = 2;

/// A piece of the rows lies over those before: by X its line and theirs would be one scribble.
bool BeginsWithin(const PointChain& points, const StreamRows& rows) {
  return !points.Empty() && std::ranges::any_of(rows.breaks, [&](std::size_t row) {
    return row < rows.x.size() && rows.x[row] < points.LastX();
  });
}

}  // namespace

LiveFeed::LiveFeed(Document& document, const StreamKind& kind, const TSeries& first)
    : document_(document), kind_(kind), source_(first.Source()), stream_(kind.open(first)) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, &LiveFeed::Poll);
}

bool LiveFeed::Feeds(const TDSInfo& info) const {
  return info.DataSource == kind_.kind && kind_.goes_on(info) && kind_.shares(source_, info);
}

void LiveFeed::Start() {
  if (State() != StreamState::Paused) came_ = {};
  trouble_.clear();
  const std::vector<TSeries*> fed = Fed();
  const bool fresh =
      std::ranges::all_of(fed, [](const TSeries* s) { return s->PointCount() == 0; });
  if (fresh && kind_.y_name != nullptr) columns_ = fed.size();
  stream_->Start();
  Restart(0);
}

void LiveFeed::Pause() {
  stream_->Pause();
  Restart(0);
}

void LiveFeed::Stop() {
  stream_->Stop();
  TakeRows();
  timer_.stop();
  emit told();
}

void LiveFeed::FollowReading() {
  const StreamState state = State();
  if (!kind_.rereads || (state != StreamState::Running && state != StreamState::Away)) return;
  stream_->Stop();
  Start();
}

std::string LiveFeed::Text() const {
  std::string text = trouble_.empty() ? stream_->Told() : trouble_;
  if (came_ != CameRows()) text += ", " + came_.Text(kind_.piece);
  return text + WayBack();
}

std::string LiveFeed::WayBack() const {
  const EditHistory& history = document_.History();
  if (taken_by_ == 0 || came_.rows >= taken_away_ || history.LastStep() != taken_by_) return {};
  return "; Undo gives back " + Counted(taken_away_, "point") + " of before";
}

void LiveFeed::Restart(int wait_ms) {
  polls_without_rows_ = 0;
  timer_.start(wait_ms);
}

void LiveFeed::Poll() {
  QElapsedTimer spent;
  spent.start();
  const bool came = TakeRows();
  polls_without_rows_ = came ? 0 : polls_without_rows_ + 1;
  if (std::string text = Text(); text != last_told_) {
    last_told_ = std::move(text);
    emit told();
  }
  const StreamState state = State();
  const bool ended =
      state == StreamState::Stopped || state == StreamState::Failed || state == StreamState::Paused;
  if (ended && !came) return;
  if (!came) {
    timer_.start(polls_without_rows_ > kPollsUntilIdle ? kIdleMs : kFrameMs);
    return;
  }
  // The picture is drawn before this comes.
  QTimer::singleShot(0, this, [this, spent] {
    const auto work = static_cast<int>(spent.elapsed());
    timer_.start(std::max(kFrameMs - work, kRestPerWork * work));
  });
}

bool LiveFeed::TakeRows() {
  // What is being edited or read must not change meanwhile: the stream keeps its rows.
  if (document_.History().IsOpen() || document_.Work().IsRunning()) return false;
  const StreamRows rows = stream_->Take();
  if (BeginAnew(rows)) came_.rows = 0;
  came_.Count(rows);
  if (rows.x.empty() && rows.begins.empty()) return false;
  try {
    Give(rows);
  } catch (const Error& error) {
    stream_->Stop();
    trouble_ = error.what();
  }
  return true;
}

std::vector<TSeries*> LiveFeed::Fed() const {
  std::vector<TSeries*> fed = SeriesOfWhole(document_.WholeGraph());
  std::erase_if(fed, [this](const TSeries* series) { return !Feeds(series->Source()); });
  return fed;
}

void LiveFeed::AddDataSets(std::size_t columns) {
  if (columns_ == 0 || columns <= columns_) return;
  const std::size_t known = std::exchange(columns_, columns);
  document_.Edit("Add Live DataSets", [&](TxyGraph&) {
    TxyGraph& graph = document_.WholeGraph();
    for (std::size_t place = known; place < columns; ++place) {
      TDSInfo info = source_;
      info.YDataColumn = kind_.y_name(place);
      AddWaitingSeries(graph, info, info.YDataColumn,
                       kind_.x_is_moment(info) ? XMeaning::Moments : XMeaning::Numbers);
    }
  });
}

/// A step, so that the points of before can be had back.
void LiveFeed::TakeAway() {
  taken_away_ = 0;
  for (const TSeries* const series : Fed())
    taken_away_ = std::max<std::int64_t>(taken_away_, series->PointCount());
  const bool gone = document_.Edit("Live Data Began Anew", [this](TxyGraph&) {
    for (TSeries* const series : Fed()) ForgetPoints(*series);
  });
  taken_by_ = gone ? document_.History().LastStep() : 0;
}

void LiveFeed::Give(const StreamRows& rows) {
  if (Fed().empty()) throw Error("Stopped: no DataSet takes it any more");
  AddDataSets(rows.y.size());
  if (BeginAnew(rows)) TakeAway();
  document_.TakeComing([&](TxyGraph&) {
    for (TSeries* const series : Fed()) {
      if (BeginsWithin(series->Points(), rows)) {
        SeriesStyle style = series->Style();
        style.line_order = LineOrder::AsTheyCame;
        series->SetStyle(style);
      }
      PointsAsRead& as_read = document_.Files().AsRead();
      const bool unedited = BeginAnew(rows) || as_read.Holds(*series);
      AppendRows(*series, rows, kind_.columns(series->Source()));
      if (unedited) as_read.Came(*series);
    }
  });
}

}  // namespace tarnwick
