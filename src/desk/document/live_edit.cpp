#include "desk/document/live_edit.h"

#include "desk/document/document.h"

namespace tarnwick {

bool LiveEdit::IsOpen() const {
  return step_ != 0 && document_.History().LastStep() == step_;
}

void LiveEdit::Change(const std::function<void(TxyGraph&)>& change) {
  EditHistory& history = document_.History();
  if (!IsOpen()) history.EndStep();
  const std::int64_t before = history.LastStep();
  const bool joins = IsOpen();
  document_.Edit(name_, change, Merging::WithLikeStep);
  // A step that leads back to where it began is none any more.
  if (!joins || history.LastStep() != before) {
    step_ = history.LastStep() == before ? 0 : history.LastStep();
  }
}

void LiveEdit::TakeBack() {
  if (IsOpen()) document_.History().DropLast();
  step_ = 0;
}

}  // namespace tarnwick
