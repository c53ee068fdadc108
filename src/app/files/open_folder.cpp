#include "app/files/open_folder.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "base/prompt.h"
#include "data/import/import_like.h"
#include "desk/commands/command.h"
#include "desk/commands/workspace.h"
#include "desk/document/document.h"
#include "desk/prompts/file_chooser.h"
#include "desk/prompts/file_trouble.h"
#include "desk/prompts/folder_files.h"
#include "graph/files/file_kinds.h"

namespace tarnwick {
namespace {

using Files = std::vector<std::filesystem::path>;

constexpr std::size_t kManyFiles = 20;

bool IsData(const std::filesystem::path& file) {
  return KindToRead(file).holds == FileHolds::Table;
}

/// A function opens no window: it would go into whatever was opened before.
bool OpensNoWindow(const std::filesystem::path& file) {
  return KindToRead(file).holds == FileHolds::FitFunction;
}

bool AgreesToMany(std::size_t count, Prompt& prompt) {
  if (count <= kManyFiles) return true;
  const std::string files = Counted(static_cast<std::int64_t>(count), "file");
  return prompt.Ask({"Open " + files + ", each in a window of its own?",
                     {Answer::Yes, Answer::No}}) == Answer::Yes;
}

bool WantsSameSettings(const Files& files, Prompt& prompt) {
  if (std::ranges::count_if(files, IsData) < 2) return false;
  return prompt.Ask({"Use same settings for all data files?", {Answer::Yes, Answer::No}}) ==
         Answer::Yes;
}

ImportOptions SettingsOf(const Document& document) {
  std::vector<const TDataSeries*> series;
  for (std::size_t i = 0; i < document.WholeGraph().SeriesCount(); ++i)
    series.push_back(&document.WholeGraph().Series(i));
  return OptionsLike(series);
}

/// What went wrong, one entry for each file.
std::vector<std::string> OpenAll(const Files& files, CommandContext& context) {
  std::vector<std::string> troubles;
  std::optional<bool> same;               // asked before the first data file
  std::optional<ImportOptions> settings;  // of the first data file opened
  for (const auto& file : files) {
    const bool data = IsData(file);
    if (data && !same) same = WantsSameSettings(files, context.prompt);
    const bool as_first = data && *same && settings;
    const Opening opening =
        context.workspace.TryToOpen(file, as_first ? *settings : ImportOptions());
    if (!opening.trouble.empty()) {
      troubles.push_back(opening.trouble);
    } else if (!opening.document) {
      break;  // cancelled
    } else if (data && !settings) {
      settings = SettingsOf(*opening.document);
    }
  }
  return troubles;
}

}  // namespace

void OpenFolder(CommandContext& context) {
  const std::filesystem::path start =
      context.document ? context.document->Files().DataFolder() : std::filesystem::path();
  const auto choice = context.chooser.FolderToOpen(start);
  if (!choice) return;
  Files files = FilesOfFolder(choice->folder, choice->mask);
  std::erase_if(files, OpensNoWindow);
  if (files.empty()) {
    context.prompt.Tell("No file in " + choice->folder.string() + " is called " + choice->mask);
    return;
  }
  if (!AgreesToMany(files.size(), context.prompt)) return;
  std::vector<std::string> troubles;
  context.workspace.SeeTogether([&] { troubles = OpenAll(files, context); });
  TellTroubles(troubles, context.prompt);
}

}  // namespace tarnwick
