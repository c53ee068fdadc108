// Work that is done in pieces, on several threads of which one is the asker's. Knows nothing of the work.
#pragma once

#include <cstddef>
#include <functional>

namespace tarnwick {

/// As many threads as work on pieces of a view.
std::size_t PieceThreads();

/// Calls `work` once for each of so many pieces, the lower ones first, and `between` on the asking thread behind each of its own.
/// Once one throws no other is begun; the first error is thrown when all have ended.
void RunPieces(std::size_t pieces, const std::function<void(std::size_t piece)>& work,
               const std::function<void()>& between);

}  // namespace tarnwick
