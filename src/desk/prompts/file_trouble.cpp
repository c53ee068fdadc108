#include "desk/prompts/file_trouble.h"

#include <system_error>

#include "base/prompt.h"
#include "graph/files/file_kinds.h"

namespace tarnwick {

bool TellIfMissing(const std::filesystem::path& path, Prompt& prompt) {
  std::error_code ignored;  // what cannot be looked at is not found
  if (std::filesystem::exists(path, ignored)) return false;
  prompt.Tell("File \"" + path.string() + "\" is not found!");
  return true;
}

void TellFileError(const std::filesystem::path& path, const std::string& reason, Prompt& prompt) {
  const bool graph = HoldsSections(KindToRead(path));
  prompt.Tell(graph ? reason + "\n\nFile " + path.string() + " has wrong format" : reason);
}

}  // namespace tarnwick
