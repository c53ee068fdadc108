// The popup menu of a graph window: its DataSets, marks and inserted graphs, and the commands wanted most where the mouse
// is. Knows the document and the actions.
#pragma once

class QMenu;

namespace tarnwick {

class CommandActions;
struct CommandContext;

/// Fills an empty menu for the context's document.
void FillGraphPopup(QMenu& menu, const CommandContext& context, CommandActions& actions);

}  // namespace tarnwick
