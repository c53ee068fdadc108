#include "app/print/print_graph.h"

#include <QMarginsF>
#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <QSettings>
#include <QStringList>

#include "base/error.h"
#include "base/whole_file.h"
#include "graph/pictures/print_layout.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr const char* kSizeKey = "Paper/Size";
constexpr const char* kWidthKey = "Paper/Width";  // of portrait paper, millimetres
constexpr const char* kHeightKey = "Paper/Height";
constexpr const char* kLandscapeKey = "Paper/Landscape";
constexpr const char* kMarginsKey = "Paper/Margins";  // left, top, right, bottom, millimetres
constexpr double kLargestPaper = 5000;

QPageSize StoredSize(const QSettings& settings) {
  const QSizeF size(settings.value(kWidthKey).toDouble(), settings.value(kHeightKey).toDouble());
  const bool usable = size.width() >= 1 && size.height() >= 1 && size.width() <= kLargestPaper &&
                      size.height() <= kLargestPaper;
  if (!usable) return QPageSize();
  return QPageSize(size, QPageSize::Millimeter, settings.value(kSizeKey).toString());
}

QMarginsF StoredMargins(const QSettings& settings) {
  const QStringList sides = settings.value(kMarginsKey).toStringList();
  if (sides.size() != 4) return {};
  return {sides[0].toDouble(), sides[1].toDouble(), sides[2].toDouble(), sides[3].toDouble()};
}

}  // namespace

QRectF SheetOf(const QPrinter& printer) {
  return {QPointF(0, 0), printer.pageLayout().paintRectPixels(printer.resolution()).size()};
}

void SetPaper(QPrinter& printer, const QPageLayout& page) {
  printer.setPageSize(page.pageSize());
  printer.setPageOrientation(page.orientation());
  printer.setPageMargins(page.margins(QPageLayout::Millimeter), QPageLayout::Millimeter);
}

void PrintOn(QPrinter& printer, const QString& name, const TxyGraph& graph) {
  const QPageLayout page = printer.pageLayout();
  printer.setPrinterName(name);
  SetPaper(printer, page);
  printer.setDocName(QString::fromStdString(graph.GetAppearance().title_of_graph));
  QPainter painter;
  bool printed = painter.begin(&printer);
  if (printed) {
    PaintOnPaper(painter, graph, SheetOf(printer));
    printed = painter.end() && printer.printerState() != QPrinter::Error;
  }
  if (!printed) throw Error("The printer \"" + name.toStdString() + "\" can not print the graph");
}

void PrintIntoFile(const std::filesystem::path& path, const QPageLayout& page,
                   const TxyGraph& graph) {
  WriteWholeFile(path, PrintedPdf(graph, page));
}

void RestorePaper(const QSettings& settings, QPrinter& printer) {
  const QPageSize size = StoredSize(settings);
  if (!size.isValid()) return;
  const bool landscape = settings.value(kLandscapeKey).toBool();
  SetPaper(printer, QPageLayout(size, landscape ? QPageLayout::Landscape : QPageLayout::Portrait,
                                StoredMargins(settings), QPageLayout::Millimeter));
}

void StorePaper(const QPrinter& printer, QSettings& settings) {
  const QPageLayout page = printer.pageLayout();
  const QSizeF size = page.pageSize().size(QPageSize::Millimeter);
  settings.setValue(kSizeKey, page.pageSize().name());
  settings.setValue(kWidthKey, size.width());
  settings.setValue(kHeightKey, size.height());
  settings.setValue(kLandscapeKey, page.orientation() == QPageLayout::Landscape);
  const QMarginsF margins = page.margins(QPageLayout::Millimeter);
  QStringList sides;
  for (const double side : {margins.left(), margins.top(), margins.right(), margins.bottom()}) {
    sides.append(QString::number(side));
  }
  settings.setValue(kMarginsKey, sides);
}

}  // namespace tarnwick
