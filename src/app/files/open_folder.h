// Opens all files of a folder, each in a window of its own.
#pragma once

namespace tarnwick {

struct CommandContext;

/// Asks which folder; whether what was found out about its first data file holds for the others, where there are several;
/// and before many windows open. What cannot be opened is told once at the end; cancelling keeps what is open.
void OpenFolder(CommandContext& context);

}  // namespace tarnwick
