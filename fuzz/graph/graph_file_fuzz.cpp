// Reads arbitrary bytes as a graph file. What is read must be written so that it reads again, with nothing lost but points
// that a tolerance joins.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "base/error.h"
#include "graph/files/graph_file.h"
#include "graph/files/graph_file_reader.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

void CheckSettles(const TxyGraph& graph, WriterMode mode) {
  const GraphFileOptions options = {WithPoints::Yes, mode};
  const std::string written = EncodeGraph(graph, options);
  const GraphState again = ReadGraphState(written, "again");
  if (again.series.size() != graph.SeriesCount() ||
      again.children.size() != graph.Children().size() ||
      again.marks.All().size() != graph.Marks().All().size()) {
    std::abort();
  }
  for (std::size_t i = 0; i < again.series.size(); ++i) {
    const TSeries& series = graph.Series(i);
    if (again.series[i].style.line_color != series.Style().line_color ||
        again.series[i].data.points.Size() > series.Points().Size()) {
      std::abort();
    }
  }
}

}  // namespace
}  // namespace tarnwick

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tarnwick;
  std::unique_ptr<TxyGraph> graph;
  try {
    graph = DecodeGraph({reinterpret_cast<const char*>(data), size}, "fuzz");
  } catch (const FileError&) {
    return 0;
  }
  CheckSettles(*graph, WriterMode::Typed);
  CheckSettles(*graph, WriterMode::Text);
  return 0;
}
