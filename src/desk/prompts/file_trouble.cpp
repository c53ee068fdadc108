#include "desk/prompts/file_trouble.h"

#include <algorithm>
#include <cstdint>
#include <system_error>

#include "base/number_text.h"
#include "base/prompt.h"
#include "data/import/import_told.h"
#include "graph/files/file_kinds.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostTroublesTold = 10;

}  // namespace

std::string MissingText(const std::filesystem::path& path) {
  return "File \"" + path.string() + "\" is not found!";
}

std::string NoFileText(const std::filesystem::path& path) {
  std::error_code ignored;  // what cannot be looked at is no folder
  const std::string named = "\"" + path.string() + "\"";
  return std::filesystem::is_directory(path, ignored)
             ? named + " is a folder: Open Directory, in the menu File, opens what it holds."
             : named + " is no file but a device or a pipe.";
}

std::string FileErrorText(const std::filesystem::path& path, const std::string& reason) {
  const bool graph = HoldsSections(KindToRead(path));
  return graph ? reason + "\n\nFile " + path.string() + " has wrong format" : WithoutOption(reason);
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

void TellTroubles(const std::vector<std::string>& troubles, Prompt& prompt) {
  if (troubles.empty()) return;
  const auto count = static_cast<std::int64_t>(troubles.size());
  std::string text = Counted(count, "file") + " could not be opened:";
  for (std::size_t i = 0; i < std::min(troubles.size(), kMostTroublesTold); ++i)
    text += "\n\n" + troubles[i];
  if (troubles.size() > kMostTroublesTold)
    text += "\n\nand " + std::to_string(troubles.size() - kMostTroublesTold) + " more";
  prompt.Tell(text);
}

void TellUnopened(const std::vector<std::string>& troubles, std::size_t named, Prompt& prompt) {
  if (named > 1) return TellTroubles(troubles, prompt);
  for (const std::string& trouble : troubles) prompt.Tell(trouble);
}

bool MayReplace(const std::filesystem::path& path, Prompt& prompt, const std::string& lost) {
  std::error_code ignored;  // what cannot be looked at will fail with its reason when it is written
  if (!std::filesystem::is_regular_file(path, ignored)) return true;
  Question question{"File " + path.string() + " exists. Overwrite?",
                    {Answer::Yes, Answer::No},
                    Question::Kind::Warning};
  if (!lost.empty()) {
    question.text += "\n\n" + lost;
    question.answers = {Answer::No, Answer::Yes};
  }
  return prompt.Ask(question) == Answer::Yes;
}

bool MayReplaceChanged(const std::filesystem::path& path, Prompt& prompt) {
  const Question question{
      "File " + path.string() +
          " was changed by another program since it was opened or saved here. Overwrite?",
      {Answer::No, Answer::Yes},
      Question::Kind::Warning};
  return prompt.Ask(question) == Answer::Yes;
}

}  // namespace tarnwick
