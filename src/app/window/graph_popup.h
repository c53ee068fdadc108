// The popup menu of a graph window: its DataSets, marks and inserted graphs, and the commands wanted most where the mouse
// is. Knows the document and the actions.
#pragma once

class QMenu;

namespace tarnwick {

class CommandActions;
class Document;

/// Fills an empty menu. The document outlives the menu.
void FillGraphPopup(QMenu& menu, Document& document, const CommandActions& actions);

}  // namespace tarnwick
