// What X of data that come into a graph is, beside what stands there. Knows the graph; knows no source.
#pragma once

#include <string>

namespace tarnwick {

class TxyGraph;

enum class XMeaning { Numbers, Moments };

/// What there is to tell, as a clause, where points are there whose X the axis takes for the other thing. Empty for nothing.
std::string NoteOfMixedX(const TxyGraph& graph, XMeaning coming);

}  // namespace tarnwick
