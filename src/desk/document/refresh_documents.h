// Reading the outside sources of several documents again, at once. Knows documents; no window.
#pragma once

#include <span>

namespace tarnwick {

class Document;

/// Tells of DataSets whose points were edited since they were read from a source, which reading them again takes back. False:
/// the user keeps them.
bool MayReadAgain(std::span<Document* const> documents);

/// Each source is read once for all documents; what became of each document is a step of its own. Sources that cannot be read,
/// have not their columns any more or no row that gives a point, are told together at the end, and the points of before stay.
/// False: cancelled, nothing was read. The documents share their work and prompt; there is at least one.
bool ReadDocumentsAgain(std::span<Document* const> documents);

/// The same if MayReadAgain().
void RefreshDocuments(std::span<Document* const> documents);

}  // namespace tarnwick
