// The border between an editor's library and the program that loaded it: no exception crosses. For the functions of its
// table.
#pragma once

#include <exception>

#include "desk/editors/editor_table.h"

namespace tarnwick {

/// Does `work`; what it throws is told, and `otherwise` answered.
template <class Work, class Result>
Result WithinBorder(const EditorTrouble& trouble, Work&& work, Result otherwise) noexcept {
  try {
    return work();
  } catch (const std::exception& error) {
    trouble.tell(trouble.receiver, error.what());
  } catch (...) {
    trouble.tell(trouble.receiver, "The editor failed for an unknown reason.");
  }
  return otherwise;
}

}  // namespace tarnwick
