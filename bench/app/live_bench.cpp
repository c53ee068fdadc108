// What data that come by themselves cost a window: 10 000 points a second through a pipe into a DataSet of a million points,
// drawn as they come. Told are the points lost, how long the window's thread was held up at once, and the memory.
#include <fcntl.h>
#include <malloc.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <QApplication>
#include <QEvent>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

#include "app/canvas/graph_canvas.h"
#include "app/modes/rest_mode.h"
#include "base/descriptor.h"
#include "desk/document/document.h"
#include "graph/files/waiting_series.h"
#include "sources/lines/line_source.h"

namespace {

using namespace tarnwick;
using Clock = std::chrono::steady_clock;

class NoWork final : public LongWork {
  void DoRun(const WorkTitle&, const std::function<void(Progress&)>&) override {}
};

class NoPrompt final : public Prompt {
  Answer Ask(const Question& question) override { return question.answers.back(); }
  void Tell(std::string_view) override {}
};

constexpr int kBefore = 1'000'000;

void Fill(TSeries& series) {
  std::vector<double> x, y;
  for (int i = -kBefore; i < 0; ++i) {
    x.push_back(i);
    y.push_back(static_cast<double>(i * 7919LL % 1000));
  }
  series.AddPoints(x, y);
}

/// Writes that many rows a second into the pipe.
void Write(const std::string& pipe, int rows_per_second, int seconds) {
  const Descriptor out(::open(pipe.c_str(), O_WRONLY));
  constexpr int kParts = 100;
  auto next = Clock::now();
  for (int i = 0, row = 0; i < seconds * kParts; ++i) {
    std::string text;
    for (int n = 0; n < rows_per_second / kParts; ++n, ++row) {
      text += std::to_string(row) + "," + std::to_string(row * 31 % 1000) + "\n";
    }
    WriteAll(out.Value(), text);
    std::this_thread::sleep_until(next += std::chrono::milliseconds(1000 / kParts));
  }
}

double Milliseconds(Clock::duration time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

/// The times between two looks of the thread at its events: by the clock, which other programs lengthen, and its own work.
class Watch {
 public:
  Watch() {
    QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.start(0);
  }
  /// The longest but for that share of them.
  static double Longest(std::vector<double> times, double but) {
    std::ranges::sort(times);
    return times[static_cast<std::size_t>((1 - but) * static_cast<double>(times.size() - 1))];
  }
  std::vector<double> by_clock, of_work;

 private:
  void Look() {
    const auto now = Clock::now();
    const double worked = Worked();
    by_clock.push_back(Milliseconds(now - last_));
    of_work.push_back(worked - worked_);
    std::this_thread::sleep_for(std::chrono::microseconds(200));
    last_ = Clock::now();
    worked_ = Worked();
  }
  static double Worked() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
  }

  QTimer timer_;
  Clock::time_point last_ = Clock::now();
  double worked_ = Worked();
};

class PaintCounter final : public QObject {
 public:
  int count = 0;

 private:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count;
    return false;
  }
};

void TenThousandASecond(benchmark::State& state) {
  int argc = 1;
  char name[] = "live_bench";
  char* argv[] = {name, nullptr};
  const QApplication application(argc, argv);
  const auto seconds = static_cast<int>(state.range(0));
  const int rows = 10'000 * seconds;
  const QTemporaryDir folder;
  const std::string pipe = folder.filePath("p").toStdString();
  ::mkfifo(pipe.c_str(), 0600);
  NoWork work;
  NoPrompt prompt;
  Document document("Graph_1", work, prompt);
  TSeries& series =
      AddWaitingSeries(document.Graph(), LineSourceInfo("pipe:" + pipe), "live", XMeaning::Numbers);
  Fill(series);
  GraphCanvas canvas(document, prompt, MakeMode<RestMode>, nullptr);
  canvas.resize(1600, 1000);
  canvas.show();
  PaintCounter paints;
  canvas.installEventFilter(&paints);
  for (auto _ : state) {
    QCoreApplication::processEvents();
    const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
    paints.count = 0;
    Watch watch;
    document.Live().Start();
    std::thread writer(Write, pipe, 10'000, seconds);
    const auto begin = Clock::now();
    while (series.PointCount() < kBefore + rows &&
           Clock::now() - begin < std::chrono::seconds(seconds + 5)) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    writer.join();
    const std::size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - begin).count());
    state.counters["lost"] = kBefore + rows - series.PointCount();
    state.counters["frames/s"] = paints.count / static_cast<double>(seconds);
    state.counters["longest ms"] = Watch::Longest(watch.by_clock, 0);
    state.counters["longest work ms"] = Watch::Longest(watch.of_work, 0);
    state.counters["0.1 % work ms"] = Watch::Longest(watch.of_work, 0.001);
    state.counters["bytes/point"] = static_cast<double>(after - before) / rows;
  }
}

BENCHMARK(TenThousandASecond)->Arg(60)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

}  // namespace
