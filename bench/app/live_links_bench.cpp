// Hot links into a graph on the screen: whether any value is lost, how long frames and other events take, and what the
// points cost of memory. Needs a session bus, and a display or QT_QPA_PLATFORM=offscreen: dbus-run-session.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <QApplication>
#include <QEvent>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <thread>
#include <vector>

#include "app/canvas/graph_canvas.h"
#include "app/modes/rest_mode.h"
#include "desk/document/document.h"
#include "graph/files/waiting_series.h"
#include "graph/xy_graph.h"
#include "link_publisher.h"

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

TDSInfo LinkInfo() {
  TDSInfo info;
  info.DataSource = DataSourceKind::Dde;
  info.DatasourceInfo = "bench|lab!moment";
  info.Follow = true;
  info.XDataColumn = "Date and time";
  info.YDataColumn = "moment";
  return info;
}

/// Tells how long each event took that the program has answered.
class TimedApplication final : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    if (depth_ > 0) return QApplication::notify(receiver, event);
    ++depth_;
    const QEvent::Type type = event->type();
    const double begin = SecondsNow();
    const bool answer = QApplication::notify(receiver, event);
    const double took = SecondsNow() - begin;
    if (type == QEvent::UpdateRequest) frames_.push_back(took);
    longest_ = std::max(longest_, took);
    --depth_;
    return answer;
  }
  void Forget() {
    frames_.clear();
    longest_ = 0;
  }
  std::size_t Frames() const { return frames_.size(); }
  /// What this part of the frames did not take longer than.
  double FrameOf(double part) {
    if (frames_.empty()) return 0;
    std::ranges::sort(frames_);
    return frames_[static_cast<std::size_t>(part * static_cast<double>(frames_.size() - 1))];
  }
  double Longest() const { return longest_; }

 private:
  int depth_ = 0;
  std::vector<double> frames_;
  double longest_ = 0;
};

class NoWork final : public LongWork {
  void DoRun(const WorkTitle&, const std::function<void(Progress&)>&) override {}
};

class NoPrompt final : public Prompt {
  Answer Ask(const Question& question) override { return question.answers.back(); }
  void Tell(std::string_view) override {}
};

double MebibytesInUse() {
  return static_cast<double>(mallinfo2().uordblks + mallinfo2().hblkhd) / (1 << 20);
}

/// Rate a second, and seconds: a link into a graph on the screen.
void ValuesOfOneLink(benchmark::State& state) {
  int count = 1;
  char name[] = "live_links_bench";
  char* arguments[] = {name, nullptr};
  TimedApplication application(count, arguments);
  Laboratory lab(static_cast<double>(state.range(0)), static_cast<double>(state.range(1)));
  if (!lab.IsThere()) return state.SkipWithError("there is no session bus: use dbus-run-session");
  NoWork work;
  NoPrompt prompt;
  Document document("Graph_1", work, prompt);
  TSeries& series = AddWaitingSeries(document.Graph(), LinkInfo(), "moment", XMeaning::Moments);
  GraphCanvas canvas(document, prompt, MakeMode<RestMode>);
  canvas.resize(800, 600);
  canvas.show();
  document.Live().Start();
  const auto pump = [] { QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20); };
  while (!document.Live().Texts().front().starts_with("Hears")) pump();
  const double memory_before = MebibytesInUse();
  application.Forget();
  for ([[maybe_unused]] const auto _ : state) {
    lab.Begin();
    const double give_up = SecondsNow() + 3 * static_cast<double>(state.range(1)) + 5;
    while (!(lab.IsDone() && series.PointCount() == lab.Published()) && SecondsNow() < give_up) {
      pump();
    }
  }
  state.counters["points"] = static_cast<double>(series.PointCount());
  state.counters["missing"] = static_cast<double>(lab.Published() - series.PointCount());
  state.counters["frames"] = static_cast<double>(application.Frames());
  state.counters["frame_ms_99%"] = 1000 * application.FrameOf(0.99);
  state.counters["frame_ms_max"] = 1000 * application.FrameOf(1);
  state.counters["event_ms_max"] = 1000 * application.Longest();
  state.counters["MiB"] = MebibytesInUse() - memory_before;
  document.Live().Stop();
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
