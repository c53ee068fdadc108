// What a start asks of the changed graphs that were open when the program was ended before. Knows copies and the question;
// windows are opened by whoever has them.
#pragma once

#include <filesystem>
#include <functional>

#include "base/prompt.h"
#include "desk/recovery/left_graphs.h"

namespace tarnwick {

/// Asks once about all graphs left within `folder`, if there are any. Yes hands each to `open`, which may throw Error: that
/// is told and its copy kept. No removes the copies, Cancel keeps them for the next start.
void OfferLeftGraphs(const std::filesystem::path& folder, Prompt& prompt,
                     const std::function<void(const LeftGraph&)>& open);

}  // namespace tarnwick
