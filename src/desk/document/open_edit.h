// An edit of a document that is still being made: a drag, a dialog that shows its changes at once. Knows nothing of what
// is edited.
#pragma once

#include <memory>
#include <string>

#include "desk/document/edit_history.h"

namespace tarnwick {

class Document;

/// Everything done to the document's graph between construction and Finish() is one step that can be undone. Without
/// Finish() the destructor takes it all back. Edits made meanwhile belong to this one.
class OpenEdit {
 public:
  /// `name` as it is read after "Undo": "Move Legend". The document outlives the edit.
  OpenEdit(Document& document, std::string name, Merging merging = Merging::No);
  ~OpenEdit();
  OpenEdit(const OpenEdit&) = delete;
  OpenEdit& operator=(const OpenEdit&) = delete;

  /// Remembers the step. False when nothing changed. Called once.
  bool Finish();

 private:
  Document& document_;
  std::string name_;
  Merging merging_;
  std::shared_ptr<const EditState> before_;
  bool open_ = true;
};

}  // namespace tarnwick
