// A library with the table of another release, and nothing behind it.
#include "desk/editors/editor_table.h"

extern "C" {
extern const tarnwick::EditorTable tgredtTable;
const tarnwick::EditorTable tgredtTable = {tarnwick::kEditorTableVersion, "another release", {}, {}, {}};
}
