// Room for what a computation draws against the second Y axis. Knows graphs and their margins.
#pragma once

namespace tarnwick {

class TxyGraph;

/// Shows the second Y axis, with a margin as wide as its labels need, before something is drawn against it. One that nothing
/// was drawn against, and that nobody saw, then sizes and titles itself.
void ShowSecondAxis(TxyGraph& graph);

}  // namespace tarnwick
