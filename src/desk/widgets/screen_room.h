// Dialogs that are no larger than the screen they stand on. Knows layouts and screens; no dialog in particular.
#pragma once

class QDialog;

namespace tarnwick {

/// Makes a dialog that is about to be shown fit the room that its screen has. Where it asks for more at least, all but its last
/// row, which holds the buttons, scrolls from then on.
void FitScreen(QDialog& dialog);

}  // namespace tarnwick
