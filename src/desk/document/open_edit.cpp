#include "desk/document/open_edit.h"

#include <utility>

#include "desk/document/document.h"

namespace tarnwick {

OpenEdit::OpenEdit(Document& document, std::string name, Merging merging)
    : document_(document),
      name_(std::move(name)),
      merging_(merging),
      before_(document.History().Present()) {
  document_.History().Open();
}

OpenEdit::~OpenEdit() {
  if (open_) document_.History().TakeBack(*before_);
}

bool OpenEdit::Finish() {
  open_ = false;
  return document_.History().Close(name_, merging_, before_);
}

}  // namespace tarnwick
