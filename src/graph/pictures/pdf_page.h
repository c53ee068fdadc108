// One graph as a PDF document of one page. Knows Qt's PDF writer; what stands on the page is the caller's.
#pragma once

#include <QPageLayout>
#include <functional>
#include <string>

class QPainter;

namespace tarnwick {

class TxyGraph;

/// The bytes of a document titled like the graph. `paint` draws on the page in dots, the origin at the corner inside its
/// margins. Throws Error when the page has no room to paint on.
std::string PdfOfOnePage(const TxyGraph& graph, const QPageLayout& page, int dpi,
                         const std::function<void(QPainter&)>& paint);

}  // namespace tarnwick
