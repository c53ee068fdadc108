#include "graph/pictures/pdf_page.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

#include "base/error.h"
#include "graph/xy_graph.h"

namespace tarnwick {

std::string PdfOfOnePage(const TxyGraph& graph, const QPageLayout& page, int dpi,
                         const std::function<void(QPainter&)>& paint) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setCreator("Tarnwick");
  writer.setTitle(QString::fromStdString(graph.GetAppearance().title_of_graph));
  writer.setResolution(dpi);
  writer.setPageLayout(page);
  QPainter painter;
  if (!painter.begin(&writer)) throw Error("The graph can not be printed on this page");
  paint(painter);
  painter.end();
  return bytes.toStdString();
}

}  // namespace tarnwick
