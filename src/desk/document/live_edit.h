// Changes that each show at once and are one step together, while everything else stays possible in between. Knows nothing of
// what is edited.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

namespace tarnwick {

class Document;
class TxyGraph;

/// Unlike an OpenEdit it leaves undoing to the user: every change is a step from the start, later ones join it. A step that
/// comes in between, undoing or saving begins another one.
class LiveEdit {
 public:
  /// `name` as it is read after "Undo". The document outlives the edit.
  LiveEdit(Document& document, std::string name) : document_(document), name_(std::move(name)) {}

  /// As Document::Edit.
  void Change(const std::function<void(TxyGraph&)>& change);
  /// True while there is something that TakeBack() would take back.
  bool IsOpen() const;
  /// The graph as before the first change that joined the present step; nothing is left to redo.
  void TakeBack();
  /// What comes next is another step.
  void Finish() { step_ = 0; }

 private:
  Document& document_;
  std::string name_;
  std::int64_t step_ = 0;  // that changes join; 0: none
};

}  // namespace tarnwick
