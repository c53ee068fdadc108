// The look that the program gives a graph that came from data alone: arranged for the size of its picture. Knows documents.
#pragma once

#include <QSizeF>

namespace tarnwick {

class Document;

/// Arranges a graph that came from data alone for a picture of this size; does nothing when it was arranged for that
/// size already, nor once a file or an edit has decided the look: then a legend that nobody placed is all that is looked after.
void FinishLook(Document& document, QSizeF size);

/// Arranges the graph worked on for the size that it has.
void ArrangeInsertedGraph(Document& document);

}  // namespace tarnwick
