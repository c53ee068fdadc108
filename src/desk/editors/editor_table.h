// What a library with an editor shows the program that loads it at run time: one table of C functions. Program and library
// share the engine, so they fit only when they were built as one release. Nothing is thrown across: a function that fails
// tells why and answers null or nothing.
#pragma once

#include <cstdint>

class QWidget;

namespace tarnwick {

class Document;
struct PanelChange;
struct PanelParts;

/// Counted up with every change of what follows.
inline constexpr std::uint32_t kEditorTableVersion = 1;

extern "C" {

/// Takes what went wrong, as one sentence in UTF-8.
struct EditorTrouble {
  void* receiver;
  void (*tell)(void* receiver, const char* text);
};

/// The one name that the library NAME exports is NAMETable: "tgredtTable".
struct EditorTable {
  std::uint32_t version;  ///< kEditorTableVersion
  const char* program;    ///< kVersion of the program that the library belongs to
  /// A new editor, deleted by who asked for it; `parts` outlive it.
  QWidget* (*edit)(const PanelParts* parts, const EditorTrouble* trouble);
  /// Shows what now holds of the active document; null without one.
  void (*follow)(QWidget* editor, Document* document, const PanelChange* change,
                 const EditorTrouble* trouble);
  /// The program ends, or does without editors from now on: all of them are gone.
  void (*delete_editor)();
};

}  // extern "C"

}  // namespace tarnwick
