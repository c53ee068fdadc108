// Arbitrary bytes as what the clipboard brings, graph or text by the first byte, into an empty graph or one with a DataSet.
// A refusal leaves the graph as it was; what is taken can be drawn, and stored so that it reads again.
#include <QGuiApplication>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "base/error.h"
#include "graph/edit/paste_edit.h"
#include "graph/files/graph_file.h"
#include "graph/files/graph_file_reader.h"
#include "graph/files/import_into_graph.h"
#include "graph/graph_state_compare.h"
#include "graph/pictures/picture_export.h"
#include "graph/xy_graph.h"

namespace {

using namespace tarnwick;

constexpr int kAsText = 1;
constexpr int kIntoData = 2;
constexpr int kAsChild = 4;

void Require(bool holds) {
  if (!holds) std::abort();
}

void Take(TxyGraph& graph, int how, std::string_view bytes) {
  if (how & kAsText) {
    LoadOptions load;
    load.threads = 1;
    ImportTextIntoGraph(graph, std::string(bytes), "clipboard", load);
  } else if (how & kAsChild) {
    PasteChild(graph, ReadGraphState(bytes, "clipboard"));
  } else {
    PasteGraph(graph, ReadGraphState(bytes, "clipboard"));
  }
}

void CheckUsable(const TxyGraph& graph) {
  RenderImage(graph, {160, 120, 96});
  const GraphState again =
      ReadGraphState(EncodeGraph(graph, {WithPoints::Yes, WriterMode::Typed}), "again");
  Require(again.series.size() == graph.SeriesCount() &&
          again.children.size() == graph.Children().size());
}

}  // namespace

/// The fonts that fontconfig keeps to the program's end are no leak of this project.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libfontconfig";
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static int count = 1;
  static char name[] = "paste_fuzz";
  static char* arguments[] = {name, nullptr};
  static const QGuiApplication application(count, arguments);  // drawing needs its fonts
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const int how = data[0];
  TxyGraph graph;
  if (how & kIntoData) {
    auto series = std::make_unique<TSeries>();
    for (int i = 0; i < 3; ++i) series->AddPoint(i, i * i);
    graph.AddSeries(std::move(series));
  }
  const GraphState before = graph.State();
  try {
    Take(graph, how, {reinterpret_cast<const char*>(data) + 1, size - 1});
  } catch (const Error&) {
    Require(SameState(graph.State(), before));
    return 0;
  }
  CheckUsable(graph);
  return 0;
}
