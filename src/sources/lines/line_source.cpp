#include "sources/lines/line_source.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <utility>

#include "base/error.h"
#include "data/series/data_series.h"
#include "sources/lines/line_channel.h"
#include "sources/lines/line_place.h"
#include "sources/lines/line_rows.h"
#include "sources/streams/threaded_stream.h"

namespace tarnwick {
namespace {

using Clock = std::chrono::steady_clock;
constexpr int kShortMs = 20;
constexpr int kFirstWaitMs = 250;
constexpr int kLongestWaitMs = 10'000;
constexpr int kLookMs = 1000;
constexpr std::int64_t kMostLinesPerSecond = 100'000;
constexpr const char* kLineSeparators = "\t,; ";

/// What X is belongs to the place (LinesEdit asks for it there).
constexpr SourceSetting kSettings[] = {
    {"YDataColumn"},     {"XFormat"},      {"YFormat"},       {"TextSeparators"}, {"TextMarkers"},
    {"MergeSeparators"}, {"CommentMarks"}, {"MissingValues"}, {"KeepPoints"},
};

class LineReader final : public RowProducer {
 public:
  explicit LineReader(const TDSInfo& info)
      : info_(info), place_(ParseLinePlace(info.DatasourceInfo)), channel_(place_) {
    const LineRows refused_if_wrong(info);
  }

  void Run(RowQueue& queue) override {
    rows_ = std::make_unique<LineRows>(info_);
    second_ = Clock::now();
    lines_before_ = 0;
    breaks_ = true;  // what was there before was of another reading
    int wait = kFirstWaitMs;
    while (!queue.Stopped()) {
      std::string reason;
      if (Open(queue, reason) && ReadToEnd(queue)) {
        wait = kFirstWaitMs;
        breaks_ = true;
      }
      if (queue.Stopped()) break;
      queue.Say(StreamState::Away, reason.empty() ? place_.Text() + " has ended; it is looked for"
                                                  : reason + "; it is tried again");
      queue.Sleep(wait);
      wait = std::min(wait * 2, kLongestWaitMs);
    }
    channel_.Close();
  }

 private:
  bool Open(const RowQueue& queue, std::string& reason) {
    try {
      channel_.Open(queue.WakeHandle());
      return true;
    } catch (const Error& error) {
      reason = error.what();
      return false;
    }
  }

  /// False when nobody wrote.
  bool ReadToEnd(RowQueue& queue) {
    bool wrote = false;
    std::string bytes;
    rows_->DropUnended();
    while (!queue.Stopped()) {
      Say(queue);
      const ChannelEvent event = channel_.Read(bytes, queue.WakeHandle(), kLookMs);
      if (event == ChannelEvent::Gone) return wrote;
      if (event == ChannelEvent::Nothing) {
        queue.Sleep(0);
        continue;
      }
      wrote = true;
      Hand(bytes, queue);
      bytes.clear();
      KeepRate(queue);
    }
    return wrote;
  }

  /// Who writes faster waits; so does he while nobody takes rows.
  void KeepRate(RowQueue& queue) {
    const auto second = [this] { return Clock::now() - second_ >= std::chrono::seconds(1); };
    while (!second() && rows_->Lines() - lines_before_ >= kMostLinesPerSecond && !queue.Stopped())
      queue.Sleep(kShortMs);
    while (!queue.HasRoom() && !queue.Paused() && !queue.Stopped()) queue.Sleep(kShortMs);
    if (!second()) return;
    second_ = Clock::now();
    lines_before_ = rows_->Lines();
  }

  void Say(RowQueue& queue) const {
    if (channel_.HasWriter()) {
      queue.Say(StreamState::Running, "Reading " + place_.Text());
    } else {
      queue.Say(StreamState::Away, place_.Text() + " waits for somebody who writes");
    }
  }

  void Hand(const std::string& bytes, RowQueue& queue) {
    StreamRows rows;
    rows_->Take(bytes, rows);
    if (queue.Paused()) {
      breaks_ = true;
      return;
    }
    if (!rows.x.empty() && std::exchange(breaks_, false)) rows.breaks = {0};
    queue.Add(rows);
  }

  TDSInfo info_;
  LinePlace place_;
  LineChannel channel_;
  std::unique_ptr<LineRows> rows_;
  Clock::time_point second_;       // that lines are counted in
  std::int64_t lines_before_ = 0;  // until it began
  bool breaks_ = false;            // something was missed before the next row
};

TDSInfo BeginLines(const TDSInfo& place) {
  TDSInfo info = LineSourceInfo(place.DatasourceInfo);
  if (place.XDataColumn != TDSInfo().XDataColumn) info.XDataColumn = place.XDataColumn;
  LineColumns(info);
  return info;
}

}  // namespace

SourceKind LinesKind() {
  return {.kind = DataSourceKind::Lines, .name = "Lines of numbers", .settings = kSettings};
}

StreamKind LineStreamKind() {
  return {.kind = DataSourceKind::Lines,
          .goes_on = [](const TDSInfo&) { return true; },
          .begin = &BeginLines,
          .shares = &SameLines,
          .open = [](const TDataSeries& series) -> std::unique_ptr<RowStream> {
            return std::make_unique<ThreadedStream>(std::make_unique<LineReader>(series.Source()));
          },
          .y_name = &NameOfY,
          .x_is_moment = [](const TDSInfo& info) { return info.XDataColumn == kLineClock; },
          .columns = &LineColumns};
}

TDSInfo LineSourceInfo(std::string_view place) {
  TDSInfo info;
  info.DataSource = DataSourceKind::Lines;
  info.DatasourceInfo = ParseLinePlace(place).Text();
  info.XDataColumn = kLineX;
  info.YDataColumn = NameOfY(0);
  info.TextSeparators = kLineSeparators;
  info.AllRows = true;
  return info;
}

}  // namespace tarnwick
