// Where a graph window stands in the workspace, as fractions of it: kept in the graph's dimensions, so that a graph comes
// back where it was saved.
#pragma once

namespace tarnwick {

class TGraphWindow;

/// Stores the window's present place in its graph; a maximised window fills the workspace. Not a change of the graph.
void StorePlacement(TGraphWindow& window);

/// What a window whose graph keeps no place does.
enum class Otherwise { FillWorkspace, OwnPlace };

/// Shows the window, which is in its workspace already, at the place that its graph keeps.
void ShowPlaced(TGraphWindow& window, Otherwise otherwise);

}  // namespace tarnwick
