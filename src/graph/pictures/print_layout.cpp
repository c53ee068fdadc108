#include "graph/pictures/print_layout.h"

#include <QPainter>
#include <algorithm>

#include "graph/axes/plot_metrics.h"
#include "graph/layout/plot_layout.h"
#include "graph/paint/paint_plot.h"
#include "graph/pictures/pdf_page.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr double kPercent = 100;
constexpr int kPdfDpi = 1200;
constexpr QSizeF kPictureWithoutWindow(640, 480);

/// One side of the picture's room: it begins at the offset and never reaches beyond the sheet.
struct Side {
  double begin;
  double length;
};

Side SideOf(double whole, int offset_percent, int scale_percent) {
  const int offset = std::clamp(offset_percent, 0, kLargestPrintOffset);
  const int scale = std::clamp(scale_percent, kSmallestPrintScale, kLargestPrintScale);
  return {whole * offset / kPercent, whole * std::min<double>(scale, kPercent - offset) / kPercent};
}

}  // namespace

QRectF PrintPlace(const QRectF& sheet, QSizeF picture, const Dimensions& dimensions) {
  if (sheet.isEmpty() || picture.isEmpty()) return {};
  const int scale = dimensions.print_scale_pct;
  const Side across = SideOf(sheet.width(), dimensions.print_x_offset_pct, scale);
  const Side down = SideOf(sheet.height(), dimensions.print_y_offset_pct, scale);
  const QSizeF size = picture.scaled(across.length, down.length, Qt::KeepAspectRatio);
  return {sheet.topLeft() + QPointF(across.begin, down.begin), size};
}

void PaintOnPaper(QPainter& painter, const TxyGraph& graph, const QRectF& sheet) {
  QSizeF picture(graph.ClientWidth(), graph.ClientHeight());
  if (picture.isEmpty()) picture = kPictureWithoutWindow;
  const QRectF place = PrintPlace(sheet, picture, graph.GetDimensions());
  if (place.isEmpty()) return;
  painter.save();
  painter.translate(place.topLeft());
  painter.scale(place.width() / picture.width(), place.height() / picture.height());
  painter.setClipRect(QRectF(QPointF(0, 0), picture), Qt::IntersectClip);
  PaintPlot(painter, graph, LayoutPlot(graph, picture, TextMetrics()), PaintTarget::Paper);
  painter.restore();
}

std::string PrintedPdf(const TxyGraph& graph, const QPageLayout& page) {
  return PdfOfOnePage(graph, page, kPdfDpi, [&](QPainter& painter) {
    PaintOnPaper(painter, graph, QRectF(QPointF(0, 0), page.paintRectPixels(kPdfDpi).size()));
  });
}

}  // namespace tarnwick
