// A stream of a test's own DataSet, whose rows end in that DataSet as they do in every face. Knows streams; waits for what shall
// come, never for a time alone.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "data/series/data_series.h"
#include "sources/stream_kinds.h"
#include "sources/streams/append_rows.h"

namespace tarnwick::testing {

class StreamWatcher {
 public:
  explicit StreamWatcher(const TDSInfo& info) {
    series.Source() = info;
    series.SetDuplicatesAllowed(true);
    kind_ = StreamOf(info);
    stream = kind_->open(series);
  }

  /// True when `wanted` holds within ten seconds, while rows are taken.
  bool Wait(const std::function<bool()>& wanted) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (std::chrono::steady_clock::now() < end) {
      TakeRows();
      if (wanted()) return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return false;
  }
  bool WaitForPoints(std::int32_t count) {
    return Wait([this, count] { return series.PointCount() == count; });
  }
  bool WaitFor(StreamState state) {
    return Wait([this, state] { return stream->State() == state; });
  }

  void TakeRows() {
    const StreamRows rows = stream->Take();
    lost += rows.lost;
    unreadable += rows.unreadable;
    begun += static_cast<int>(rows.begins.size());
    if (BeginAnew(rows)) ForgetPoints(series);
    AppendRows(series, rows, kind_->columns(series.Source()));
  }

  /// "0:1 1:2" of X and Y in their order, a "|" before a point where the line breaks.
  std::string Points() const {
    std::string text;
    std::int32_t before = 0;
    for (std::size_t i = 0; i < series.Points().Size(); ++i) {
      const Point point = series.Points().At(i);
      if (i > 0) text += series.Gaps().Between(before, point.id) ? " | " : " ";
      std::string number = std::to_string(point.x);
      text += number.substr(0, number.find('.')) + ':';
      number = std::to_string(point.y);
      text += number.substr(0, number.find('.'));
      before = point.id;
    }
    return text;
  }

  TDataSeries series;
  std::unique_ptr<RowStream> stream;
  std::int64_t lost = 0;
  std::int64_t unreadable = 0;
  int begun = 0;

 private:
  const StreamKind* kind_ = nullptr;
};

}  // namespace tarnwick::testing
