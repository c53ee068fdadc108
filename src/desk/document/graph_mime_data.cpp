#include "desk/document/graph_mime_data.h"

#include <QImage>
#include <algorithm>
#include <array>

#include "base/error.h"
#include "desk/widgets/text.h"
#include "graph/files/data_text_file.h"
#include "graph/files/graph_file.h"
#include "graph/pictures/picture_export.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr const char* kImage = "application/x-qt-image";  // Qt offers it in all its image formats
constexpr const char* kText = "text/plain";
constexpr int kScreenDpi = 96;
constexpr int kSharpness = 2;

struct PictureForm {
  const char* format;
  std::string (*bytes)(const TxyGraph&, const PictureOptions&);
};

constexpr std::array kPictures = {PictureForm{"image/svg+xml", &SvgBytes},
                                  PictureForm{"application/pdf", &PdfBytes},
                                  PictureForm{"image/x-wmf", &WmfBytes}};

const SeriesState* CurrentSeries(const GraphState& state) {
  const auto index = static_cast<std::size_t>(state.appearance.current_series_index);
  return index < state.series.size() ? &state.series[index] : nullptr;
}

bool HasText(const GraphState& state) {
  const SeriesState* series = CurrentSeries(state);
  if (!series) return false;
  const std::size_t points = series->data.points.Size();
  return points > 0 && points <= kMostPointsAsText;
}

PictureOptions PictureOf(const TxyGraph& graph, int sharpness) {
  PictureOptions options;
  options.width = std::max(graph.ClientWidth(), 1) * sharpness;
  options.height = std::max(graph.ClientHeight(), 1) * sharpness;
  options.dpi = kScreenDpi * sharpness;
  return options;
}

QByteArray Bytes(const std::string& bytes) {
  return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

QString PointsAsText(const TxyGraph& graph) {
  DataTextOptions options;
  const std::string& title = graph.Axis(AxisId::X).Look().Title;
  if (!title.empty()) options.x_heading = title;
  return ToQt(DataText({graph.CurrentSeries()}, options));
}

}  // namespace

GraphMimeData::GraphMimeData(GraphState state, QSize size, CopiedGraph kind)
    : state_(std::move(state)), size_(size), kind_(kind) {}

QStringList GraphMimeData::formats() const {
  QStringList formats = {kGraphFormat};
  if (kind_ == CopiedGraph::Child) formats.append(kChildGraphFormat);
  for (const PictureForm& picture : kPictures) formats.append(picture.format);
  formats.append(kImage);
  if (HasText(state_)) formats.append(kText);
  return formats;
}

bool GraphMimeData::hasFormat(const QString& format) const {
  return formats().contains(format);
}

QVariant GraphMimeData::retrieveData(const QString& format, QMetaType) const {
  if (!hasFormat(format)) return {};
  try {
    return Make(format);
  } catch (const Error&) {
    // Another program asks, whenever it likes: it gets nothing, as if this were not offered.
    return {};
  }
}

QVariant GraphMimeData::Make(const QString& format) const {
  if (format == kChildGraphFormat) return QByteArray("1");
  TxyGraph graph;
  graph.Resize(size_.width(), size_.height());
  graph.SetState(state_);
  if (format == kGraphFormat) return Bytes(EncodeGraph(graph));
  if (format == kText) return PointsAsText(graph);
  if (format == kImage) return RenderImage(graph, PictureOf(graph, kSharpness));
  for (const PictureForm& picture : kPictures) {
    if (format != picture.format) continue;
    return Bytes(picture.bytes(graph, PictureOf(graph, 1)));
  }
  return {};
}

}  // namespace tarnwick
