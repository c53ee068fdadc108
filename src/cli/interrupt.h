// Ctrl+C: the batch program says so and ends at once, wherever it is. Files are written whole or not at all, so nothing
// half done stays behind.
#pragma once

namespace tarnwick::cli {

/// From now on Ctrl+C ends the process with exit status 1 and one line on standard error.
void EndOnInterrupt();

}  // namespace tarnwick::cli
