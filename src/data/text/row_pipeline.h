// Reads a text block by block on one or more threads and hands the blocks over in order. Knows threads; knows no DataSet.
#pragma once

#include <span>
#include <string_view>

#include "data/text/row_block.h"

namespace tarnwick {

/// Reads the rows of `text` on `threads` threads (the caller's among them; 0 = as many as help). What was thrown on any
/// thread is thrown here.
void ReadRowBlocks(std::string_view text, const TextLayout& layout,
                   std::span<const ColumnRequest> requests, int threads,
                   const BlockConsumer& consume);

}  // namespace tarnwick
