// What a dialog would make of a graph, shown while it is open: pale, and gone without a trace when the dialog changes its mind
// or is left. Knows documents, no dialog.
#pragma once

#include <functional>
#include <optional>

#include "desk/document/open_edit.h"

namespace tarnwick {

class Document;
class TxyGraph;

class PreviewEdit {
 public:
  /// The document outlives the preview.
  explicit PreviewEdit(Document& document) : document_(document) {}

  /// Shows what `change` does in place of what was shown before; the DataSets that it adds are drawn pale. What it throws comes
  /// through, and nothing is shown then.
  void Show(const std::function<void(TxyGraph&)>& change);
  void Clear() { edit_.reset(); }

 private:
  Document& document_;
  std::optional<OpenEdit> edit_;
};

}  // namespace tarnwick
