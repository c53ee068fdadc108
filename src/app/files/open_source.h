// Opening data that are no file: the command.
#pragma once

namespace tarnwick {

struct CommandContext;

/// Asks for a source and opens it, in a window of its own or in the present graph. What cannot be opened is told in the
/// dialog, which stays.
void OpenSource(CommandContext& context);

}  // namespace tarnwick
