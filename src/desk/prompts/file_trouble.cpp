#include "desk/prompts/file_trouble.h"

#include <system_error>

#include "base/prompt.h"
#include "graph/files/file_kinds.h"

namespace tarnwick {

std::string MissingText(const std::filesystem::path& path) {
  return "File \"" + path.string() + "\" is not found!";
}

std::string FileErrorText(const std::filesystem::path& path, const std::string& reason) {
  const bool graph = HoldsSections(KindToRead(path));
  return graph ? reason + "\n\nFile " + path.string() + " has wrong format" : reason;
}

bool TellIfMissing(const std::filesystem::path& path, Prompt& prompt) {
  std::error_code ignored;  // what cannot be looked at is not found
  if (std::filesystem::exists(path, ignored)) return false;
  prompt.Tell(MissingText(path));
  return true;
}

void TellFileError(const std::filesystem::path& path, const std::string& reason, Prompt& prompt) {
  prompt.Tell(FileErrorText(path, reason));
}

bool MayReplace(const std::filesystem::path& path, Prompt& prompt) {
  std::error_code ignored;  // what cannot be looked at will fail with its reason when it is written
  if (!std::filesystem::is_regular_file(path, ignored)) return true;
  const Question question{"File " + path.string() + " exists. Overwrite?",
                          {Answer::Yes, Answer::No},
                          Question::Kind::Warning};
  return prompt.Ask(question) == Answer::Yes;
}

}  // namespace tarnwick
