#include "app/print/print_graph.h"

#include <QMarginsF>
#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <QStringList>

#include "base/error.h"
#include "base/whole_file.h"
#include "desk/settings/settings.h"
#include "graph/pictures/print_layout.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr const char* kSection = "Paper";
const Setting<QString> kSize = {.section = kSection, .key = "Size", .label = "Paper"};
constexpr Setting<double> kWidth = {
    .section = kSection, .key = "Width", .label = "Width of portrait paper, mm"};
constexpr Setting<double> kHeight = {
    .section = kSection, .key = "Height", .label = "Height of portrait paper, mm"};
constexpr Setting<bool> kLandscape = {
    .section = kSection, .key = "Landscape", .label = "Print in landscape"};
const Setting<QStringList> kMargins = {
    .section = kSection, .key = "Margins", .label = "Margins: left, top, right, bottom, mm"};
constexpr double kLargestPaper = 5000;

QPageSize StoredSize(const Settings& settings) {
  const QSizeF size(settings.Read(kWidth), settings.Read(kHeight));
  const bool usable = size.width() >= 1 && size.height() >= 1 && size.width() <= kLargestPaper &&
                      size.height() <= kLargestPaper;
  if (!usable) return QPageSize();
  return QPageSize(size, QPageSize::Millimeter, settings.Read(kSize));
}

QMarginsF StoredMargins(const Settings& settings) {
  const QStringList sides = settings.Read(kMargins);
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

std::span<const SettingRow> PaperSettings() {
  static const SettingRow kRows[] = {&kSize, &kWidth, &kHeight, &kLandscape, &kMargins};
  return kRows;
}

void RestorePaper(const Settings& settings, QPrinter& printer) {
  const QPageSize size = StoredSize(settings);
  if (!size.isValid()) return;
  const bool landscape = settings.Read(kLandscape);
  SetPaper(printer, QPageLayout(size, landscape ? QPageLayout::Landscape : QPageLayout::Portrait,
                                StoredMargins(settings), QPageLayout::Millimeter));
}

void StorePaper(const QPrinter& printer, Settings& settings) {
  const QPageLayout page = printer.pageLayout();
  const QSizeF size = page.pageSize().size(QPageSize::Millimeter);
  settings.Write(kSize, page.pageSize().name());
  settings.Write(kWidth, size.width());
  settings.Write(kHeight, size.height());
  settings.Write(kLandscape, page.orientation() == QPageLayout::Landscape);
  const QMarginsF margins = page.margins(QPageLayout::Millimeter);
  QStringList sides;
  for (const double side : {margins.left(), margins.top(), margins.right(), margins.bottom()}) {
    sides.append(QString::number(side));
  }
  settings.Write(kMargins, sides);
}

}  // namespace tarnwick
