// From the command that opens an editor to its painted page, and a step of scrolling: the graph editor (limit 100 ms), the points
// of 1e7 rows (200 ms to open, a step within a frame, 16 ms), the first lines of a file of a gigabyte (200 ms).
#include <benchmark/benchmark.h>

#include <QAction>
#include <QApplication>
#include <QScrollBar>
#include <QSettings>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <cmath>
#include <fstream>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/window/features.h"
#include "app/window/graph_window.h"
#include "app/window/main_form.h"
#include "desk/commands/command_actions.h"
#include "graph/series.h"

namespace {

using namespace tarnwick;

QApplication& Application() {
  static int argc = 1;
  static char name[] = "editor_bench";
  static char* argv[] = {name, nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static QApplication application(argc, argv);
  return application;
}

/// A window on one graph, as large as usual.
class Desktop {
 public:
  Desktop() {
    Application();
    ShellParts parts;
    parts.settings =
        std::make_unique<QSettings>(folder_.filePath("settings.ini"), QSettings::IniFormat);
    parts.paths.libraries = {TARNWICK_BIN_DIR};
    parts.features = Features();
    form_ = std::make_unique<T_MainForm>(std::move(parts));
    form_->resize(1400, 900);
    form_->show();
    Run("FileNew1");
    Settle();
  }
  ~Desktop() { GetDocument().History().SetChanged(false); }
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

  Document& GetDocument() { return form_->ActiveGraphWindow()->GetDocument(); }
  void Run(const char* command) { form_->Actions().ActionOf(command)->trigger(); }
  QWidget* Find(const char* name) { return form_->findChild<QWidget*>(name); }
  /// Until everything is painted.
  static void Settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
  }
  /// A DataSet of `points` points, with `source` as its description.
  void Fill(std::size_t points, const TDSInfo& source = {}) {
    std::vector<double> x(points), y(points);
    std::iota(x.begin(), x.end(), 0.0);
    for (std::size_t i = 0; i < points; ++i) y[i] = std::sin(1e-4 * x[i]);
    GetDocument().Edit("Fill", [&](TxyGraph& graph) {
      TSeries& series = graph.AddSeries(std::make_unique<TSeries>());
      series.Source() = source;
      series.AddPoints(x, y);
    });
    Settle();
  }

 private:
  QTemporaryDir folder_;
  std::unique_ptr<T_MainForm> form_;
};

/// The editor's first opening in a program just started, its library included.
void OpenEditor(benchmark::State& state, const char* command, const char* page, std::size_t points,
                int data_page) {
  for (auto _ : state) {
    state.PauseTiming();
    Desktop desktop;
    desktop.Fill(points);
    state.ResumeTiming();
    desktop.Run(command);
    if (auto* pages = qobject_cast<QTabWidget*>(desktop.Find("DataPages"))) {
      pages->setCurrentIndex(data_page);
    }
    Desktop::Settle();
    benchmark::DoNotOptimize(desktop.Find(page)->grab());
    state.PauseTiming();
    if (!desktop.Find(page)->isVisible()) throw std::runtime_error("the editor is not seen");
    state.ResumeTiming();
  }
}

void GraphEditorOpens(benchmark::State& state) {
  OpenEditor(state, "EditGraph1", "GraphEditorPages", 1000, 0);
}
BENCHMARK(GraphEditorOpens)->Unit(benchmark::kMillisecond)->Iterations(5);

void PointsOpen(benchmark::State& state) {
  OpenEditor(state, "EditData1", "Points", 10'000'000, 1);
}
BENCHMARK(PointsOpen)->Unit(benchmark::kMillisecond)->Iterations(3);

void PointsScroll(benchmark::State& state) {
  Desktop desktop;
  desktop.Fill(10'000'000);
  desktop.Run("EditData1");
  qobject_cast<QTabWidget*>(desktop.Find("DataPages"))->setCurrentIndex(1);
  Desktop::Settle();
  auto* bar = qobject_cast<QScrollBar*>(desktop.Find("PointsBar"));
  for (auto _ : state) {
    bar->setValue((bar->value() + 1'234'567) % bar->maximum());
    Desktop::Settle();
    benchmark::DoNotOptimize(desktop.Find("Points")->grab());
  }
}
BENCHMARK(PointsScroll)->Unit(benchmark::kMillisecond);

/// A table of rows of 64 bytes, one gigabyte of them.
void WriteGigabyte(const std::string& file) {
  std::string rows;
  for (int i = 0; i < 16384; ++i) {
    std::string row = std::to_string(i) + "\t" + std::to_string(0.5 * i) + "\t";
    row.append(63 - row.size(), '1');
    rows += row + "\n";
  }
  std::ofstream out(file, std::ios::binary);
  out << "time\tvoltage\tcurrent\n";
  for (int i = 0; i < 1024; ++i) out << rows;
}

void SourceOpens(benchmark::State& state) {
  const QTemporaryDir folder;
  const std::string file = folder.filePath("large.txt").toStdString();
  WriteGigabyte(file);
  TDSInfo source;
  source.DataSource = DataSourceKind::Text;
  source.DatasourceInfo = file;
  source.TextSeparators = "\t";
  source.XDataColumn = "time";
  source.YDataColumn = "voltage";
  for (auto _ : state) {
    state.PauseTiming();
    Desktop desktop;
    desktop.Fill(1000, source);
    state.ResumeTiming();
    desktop.Run("EditData1");
    Desktop::Settle();
    auto* preview = qobject_cast<QTableWidget*>(desktop.Find("Preview"));
    benchmark::DoNotOptimize(preview->grab());
    state.PauseTiming();
    if (preview->rowCount() < 10 || preview->columnCount() != 3) {
      throw std::runtime_error("the preview does not show the file");
    }
    state.ResumeTiming();
  }
}
BENCHMARK(SourceOpens)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace
