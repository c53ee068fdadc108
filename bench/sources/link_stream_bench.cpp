// Hot links: how many values a second arrive, how late, and whether any is lost. Needs a session bus: dbus-run-session.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

#include "data/series/data_series.h"
#include "link_publisher.h"
#include "sources/stream_kinds.h"

namespace tarnwick {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

double SecondsNow() {
  return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
}

/// Publishes the moment of publishing at that rate, in a thread of its own.
class Laboratory {
 public:
  Laboratory(double rate, double seconds)
      : thread_([this, rate, seconds] {
          tarnwick_links::LinkPublisher lab("bench", "lab");
          there_ = lab.IsPublishing();
          ready_ = true;
          while (!go_) std::this_thread::sleep_for(1ms);
          const double start = SecondsNow();
          for (; static_cast<double>(published_) < rate * seconds; ++published_) {
            const double due = start + static_cast<double>(published_) / rate;
            if (due > SecondsNow()) std::this_thread::sleep_for(1ms);
            lab.Publish("moment", SecondsNow());
          }
          done_ = true;
          while (go_) std::this_thread::sleep_for(1ms);
        }) {
    while (!ready_) std::this_thread::sleep_for(1ms);
  }
  ~Laboratory() {
    go_ = false;
    thread_.join();
  }
  bool IsThere() const { return there_; }
  void Begin() { go_ = true; }
  bool IsDone() const { return done_; }
  std::int64_t Published() const { return published_; }

 private:
  std::atomic<bool> there_ = false, ready_ = false, go_ = false, done_ = false;
  std::atomic<std::int64_t> published_ = 0;
  std::thread thread_;  // last: it uses the others
};

/// Rate a second, and seconds.
void ValuesOfOneLink(benchmark::State& state) {
  int count = 1;
  char name[] = "link_stream_bench";
  char* arguments[] = {name, nullptr};
  const QCoreApplication application(count, arguments);
  Laboratory lab(static_cast<double>(state.range(0)), static_cast<double>(state.range(1)));
  if (!lab.IsThere()) return state.SkipWithError("there is no session bus: use dbus-run-session");
  TDataSeries series;
  series.SetDuplicatesAllowed(true);
  TDSInfo& info = series.Source();
  info.DataSource = DataSourceKind::Dde;
  info.DatasourceInfo = "bench|lab!moment";
  info.Follow = true;
  info.XDataColumn = "Date and time";
  info.YDataColumn = "moment";
  const StreamKind& kind = *StreamOf(info);
  const std::unique_ptr<RowStream> stream = kind.open(series);
  stream->Start();
  while (!stream->Told().starts_with("Hears")) std::this_thread::sleep_for(1ms);
  double latest = 0;
  std::int64_t lost = 0;
  for ([[maybe_unused]] const auto _ : state) {
    lab.Begin();
    const auto all_there = [&] { return lab.IsDone() && series.PointCount() == lab.Published(); };
    const double give_up = SecondsNow() + 3 * static_cast<double>(state.range(1)) + 5;
    while (!all_there() && SecondsNow() < give_up) {
      std::this_thread::sleep_for(16ms);
      const double now = SecondsNow();
      const StreamRows rows = stream->Take();
      if (!rows.y.empty() && !rows.y[0].empty()) latest = std::max(latest, now - rows.y[0].front());
      lost += rows.lost + rows.unreadable;
      AppendRows(series, rows, kind.columns(info));
    }
  }
  state.counters["points"] = static_cast<double>(series.PointCount());
  state.counters["missing"] = static_cast<double>(lab.Published() - series.PointCount() + lost);
  state.counters["latest_ms"] = 1000 * latest;
}
BENCHMARK(ValuesOfOneLink)
    ->Args({10'000, 60})
    ->Args({20'000, 10})
    ->Iterations(1)
    ->UseRealTime()
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarnwick
