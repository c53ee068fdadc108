// What the clipboard may bring into a document. Knows documents and the forms that data come in; reads them as hostile.
#pragma once

#include <cstddef>

class QMimeData;

namespace tarnwick {

class Document;

/// More bytes than this are not read.
inline constexpr std::size_t kLargestPaste = std::size_t{512} << 20;

/// Brings a graph, its DataSets, or the columns of a text into the graph worked on, as one step; a graph that was inserted
/// into another one becomes that again. False when the user cancelled. Throws Error when there is nothing to paste or it is
/// damaged; the document is then as it was.
bool Paste(Document& document, const QMimeData& data);

}  // namespace tarnwick
