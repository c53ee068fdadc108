// What data that come by themselves cost a window: 10 000 points a second through a pipe into a DataSet of a million points,
// drawn as they come. Told are the points lost, how long the window's thread was held up at once, and the memory. A machine that
// shares its processors with others counts the time that those take as the work of the thread: stretches in which they took some
// are told apart.
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
#include <fstream>
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

/// Ticks of the processors that other machines took so far; 0 where nobody counts them.
long long TakenAway() {
  std::ifstream processors("/proc/stat");
  std::string word;
  for (int i = 0; i < 8; ++i) processors >> word;  // "cpu", and what this machine did
  long long ticks = 0;
  processors >> ticks;
  return ticks;
}
constexpr auto kUntilCounted = std::chrono::milliseconds(20);

/// The times between two looks of the thread at its events: by the clock, which other programs lengthen, and its own work.
class Watch {
 public:
  Watch() {
    QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
    stretches_.reserve(1 << 20);  // no memory of its own later
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.start(0);
  }
  /// The longest but for that share of them.
  static double Longest(std::vector<double> times, double but) {
    std::ranges::sort(times);
    return times[static_cast<std::size_t>((1 - but) * static_cast<double>(times.size() - 1))];
  }
  std::vector<double> ByClock() const {
    std::vector<double> times;
    for (const Stretch& one : stretches_) times.push_back(Milliseconds(one.end - one.begin));
    return times;
  }
  std::vector<double> OfWork() const {
    std::vector<double> times;
    for (const Stretch& one : stretches_) times.push_back(one.work);
    return times;
  }
  /// Of the work, where nobody took a processor away.
  std::vector<double> Undisturbed() const {
    std::vector<double> times;
    std::size_t after = 0;
    for (const Stretch& one : stretches_) {
      while (after + 1 < stretches_.size() && stretches_[after].begin < one.end + kUntilCounted)
        ++after;
      if (stretches_[after].taken_before == one.taken_before) times.push_back(one.work);
    }
    return times;
  }

 private:
  struct Stretch {
    Clock::time_point begin, end;
    double work = 0;
    long long taken_before = 0;
  };

  void Look() {
    now_.work = Worked() - worked_;
    now_.end = Clock::now();
    stretches_.push_back(now_);
    std::this_thread::sleep_for(std::chrono::microseconds(200));
    now_ = {.begin = Clock::now(), .end = {}, .taken_before = TakenAway()};
    worked_ = Worked();
  }
  static double Worked() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
  }

  QTimer timer_;
  std::vector<Stretch> stretches_;
  Stretch now_ = {.begin = Clock::now(), .end = {}, .taken_before = TakenAway()};
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
    Watch watch;
    const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
    paints.count = 0;
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
    state.counters["longest ms"] = Watch::Longest(watch.ByClock(), 0);
    state.counters["longest work ms"] = Watch::Longest(watch.OfWork(), 0);
    state.counters["longest undisturbed ms"] = Watch::Longest(watch.Undisturbed(), 0);
    state.counters["disturbed"] =
        static_cast<double>(watch.OfWork().size() - watch.Undisturbed().size());
    state.counters["0.1 % work ms"] = Watch::Longest(watch.OfWork(), 0.001);
    state.counters["bytes/point"] = static_cast<double>(after - before) / rows;
  }
}

BENCHMARK(TenThousandASecond)->Arg(60)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

}  // namespace
