// The list of files in the toolkit's own file dialog. Knows its widgets; a desktop's dialog is left as it is.
#pragma once

class QFileDialog;

namespace tarnwick {

/// Shows sizes, types and dates whole; what room is left is the names'.
void ShowWholeColumns(QFileDialog& dialog);

}  // namespace tarnwick
