// Where a graph's picture goes on a sheet of paper, and the picture there. Knows the graph's print placement; knows no
// printer.
#pragma once

#include <string>

#include <QPageLayout>
#include <QRectF>
#include <QSizeF>

#include "graph/appearance.h"

class QPainter;

namespace tarnwick {

class TxyGraph;

/// Bounds of the print placement in percent; what a graph file says beyond them counts as the bound.
inline constexpr int kLargestPrintOffset = 90;
inline constexpr int kSmallestPrintScale = 10;
inline constexpr int kLargestPrintScale = 100;

/// The place of a picture of that size on a sheet: PrintXOffsetPct of the sheet's width from its left edge, PrintYOffsetPct
/// of its height from the top, and as large as PrintScalePct of width and height allow without changing its shape nor
/// leaving the sheet. Empty when sheet or picture are.
QRectF PrintPlace(const QRectF& sheet, QSizeF picture, const Dimensions& dimensions);

/// Draws the graph as it looks at its present size onto the sheet, which is the part of the page within its margins, in the
/// painter's units.
void PaintOnPaper(QPainter& painter, const TxyGraph& graph, const QRectF& sheet);

/// The graph printed on one such page, as a PDF file's bytes. Needs a QGuiApplication.
std::string PrintedPdf(const TxyGraph& graph, const QPageLayout& page);

}  // namespace tarnwick
