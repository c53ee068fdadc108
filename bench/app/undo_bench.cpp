// What a step of a document costs: editing one point of many, undoing it, making it again, the memory that it keeps, and the
// copy that is kept for a program that is ended.
#include <malloc.h>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <random>
#include <thread>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "desk/document/document.h"
#include "desk/recovery/recovery_keeper.h"
#include "graph/edit/point_edit.h"
#include "graph/xy_graph.h"

namespace {

using namespace tarnwick;

class NoWork final : public LongWork {
  void DoRun(const WorkTitle&, const std::function<void(Progress&)>&) override {}
};

class NoPrompt final : public Prompt {
  Answer Ask(const Question& question) override { return question.answers.back(); }
  void Tell(std::string_view) override {}
};

/// A document with one DataSet.
class Subject {
 public:
  explicit Subject(std::size_t points) {
    std::mt19937_64 random(7);
    std::normal_distribution<double> normal(0, 1);
    std::vector<double> x, y;
    for (std::size_t i = 0; i < points; ++i) {
      x.push_back(static_cast<double>(i));
      y.push_back(normal(random));
    }
    auto series = std::make_unique<TSeries>();
    series->AddPoints(x, y);
    document_.Graph().AddSeries(std::move(series));
  }

  Document& Get() { return document_; }

  /// Another point each time, far from the last one.
  void MoveSomePoint() {
    document_.Edit("Move Point", [this](TxyGraph& graph) {
      TSeries& series = *graph.CurrentSeries();
      const std::size_t index = random_() % series.Points().Size();
      const Point point = series.Points().At(index);
      MovePoint(graph, series, point.id, {point.x + 0.25, point.y / 2});
    });
  }

 private:
  NoWork work_;
  NoPrompt prompt_;
  Document document_{"Graph_1", work_, prompt_};
  std::mt19937_64 random_{3};
};

void State(benchmark::State& state) {
  Subject subject(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(subject.Get().Graph().State());
}

void MovePointStep(benchmark::State& state) {
  Subject subject(static_cast<std::size_t>(state.range(0)));
  const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
  for (auto _ : state) subject.MoveSomePoint();
  const std::size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
  state.counters["bytes/step"] =
      static_cast<double>(after - before) / static_cast<double>(state.iterations());
}

void UndoThenRedo(benchmark::State& state) {
  Subject subject(static_cast<std::size_t>(state.range(0)));
  constexpr int kSteps = 20;
  for (int i = 0; i < kSteps; ++i) subject.MoveSomePoint();
  for (auto _ : state) {
    for (int i = 0; i < kSteps; ++i) subject.Get().History().Undo();
    for (int i = 0; i < kSteps; ++i) subject.Get().History().Redo();
  }
  state.SetItemsProcessed(state.iterations() * 2 * kSteps);
}

std::chrono::duration<double> TimeOf(const auto& what) {
  const auto begin = std::chrono::steady_clock::now();
  what();
  return std::chrono::steady_clock::now() - begin;
}

/// The longest time that the window's thread is held up from a step until its copy lies on the disk; at most 5 ms.
void StallByCopying(benchmark::State& state) {
  int no_words = 0;
  const QCoreApplication application(no_words, nullptr);
  const QTemporaryDir folder;
  Subject subject(static_cast<std::size_t>(state.range(0)));
  RecoveryKeeper keeper(folder.path().toStdString(), std::chrono::milliseconds(1));
  std::filesystem::file_time_type written;
  const auto newly_written = [&] {
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(folder.path().toStdString()))
      if (NumberOfCopy(entry.path()))
        return std::exchange(written, entry.last_write_time()) != written;
    return false;
  };
  keeper.Follow(subject.Get());
  for (auto _ : state) {
    std::chrono::duration<double> longest = TimeOf([&] { subject.MoveSomePoint(); });
    while (!newly_written()) {
      std::this_thread::sleep_for(std::chrono::microseconds(100));
      longest = std::max(longest, TimeOf([] { QCoreApplication::processEvents(); }));
    }
    state.SetIterationTime(longest.count());
  }
}

constexpr int kMany = 10'000'000;
BENCHMARK(State)->Arg(1000)->Arg(kMany)->Unit(benchmark::kMicrosecond);
BENCHMARK(MovePointStep)->Arg(1000)->Arg(kMany)->Iterations(200)->Unit(benchmark::kMicrosecond);
BENCHMARK(UndoThenRedo)->Arg(1000)->Arg(kMany)->Unit(benchmark::kMicrosecond);
BENCHMARK(StallByCopying)
    ->Arg(kMany)
    ->Iterations(10)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

}  // namespace
