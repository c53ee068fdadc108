// Reading the outside sources of several documents again, at once. Knows documents; no window.
#pragma once

#include <span>

namespace tarnwick {

class Document;

/// Tells of DataSets whose points were edited since they were read from a source, which reading them again takes back. False:
/// the user keeps them.
bool MayReadAgain(std::span<Document* const> documents);

/// Nothing happens unless MayReadAgain(). Each source is read once for all documents; what became of each document is a step of
/// its own. Sources that cannot be read are told together at the end. The documents share their work and prompt; there is at
/// least one.
void RefreshDocuments(std::span<Document* const> documents);

}  // namespace tarnwick
