#include "app/recovery/offer_left_graphs.h"

#include <QDateTime>
#include <QFileInfo>
#include <algorithm>
#include <string>
#include <vector>

#include "base/error.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostListed = 12;
constexpr const char* kOutdatedFolder = "older copies";  // beside those that are offered

/// When a file was written: "14:03", of another day with its date.
std::string TimeText(const std::filesystem::path& file) {
  const QDateTime time = QFileInfo(PathText(file)).lastModified();
  const bool today = time.date() == QDate::currentDate();
  return time.toString(today ? "HH:mm" : "yyyy-MM-dd HH:mm").toStdString();
}

std::string LineOf(const LeftGraph& left) {
  const GraphNote& note = left.note;
  const auto& named = note.graph_file.empty() ? note.data_file : note.graph_file;
  const std::string file = named.filename().string();
  const std::string belongs = file.empty() ? "" : " (" + file + ')';
  return note.name + belongs + ", changed " + TimeText(left.copy);
}

Question QuestionOf(const std::vector<LeftGraph>& left) {
  std::string text = "Tarnwick was ended before these changes were saved:\n\n";
  for (std::size_t i = 0; i < left.size() && i < kMostListed; ++i) text += LineOf(left[i]) + '\n';
  if (left.size() > kMostListed)
    text += "and " + std::to_string(left.size() - kMostListed) + " more\n";
  text += "\nOpen them? \"No\" discards them, \"Cancel\" asks again at the next start.";
  return {text, {Answer::Yes, Answer::No, Answer::Cancel}};
}

/// Copies whose files were written later are not offered: what the files hold is newer. They are kept, and told.
void KeepOutdated(const std::vector<LeftGraph>& outdated, const std::filesystem::path& folder,
                  Prompt& prompt) {
  std::string text;
  for (const LeftGraph& left : outdated) {
    const std::string file = left.note.graph_file.filename().string();
    const std::string changed = TimeText(left.copy);
    const std::string filed = TimeText(left.note.graph_file);
    text += text.empty() ? "" : "\n\n";
    try {
      const QString told = QStringLiteral(
          "%1 was written at %2, after Tarnwick kept unsaved changes of it at %3 and was ended. "
          "The "
          "file is as it is; the changes lie in %4");
      text += told.arg(ToQt(file), ToQt(filed), ToQt(changed), PathText(SetAside(left, folder)))
                  .toStdString();
    } catch (const Error& error) {
      text += error.what();
    }
  }
  if (!text.empty()) prompt.Tell(text);
}

}  // namespace

void OfferLeftGraphs(const std::filesystem::path& folder, Prompt& prompt,
                     const std::function<void(const LeftGraph&)>& open) {
  std::vector<LeftGraph> all = FindLeftGraphs(folder);
  const auto outdated = std::stable_partition(
      all.begin(), all.end(), [](const LeftGraph& left) { return !left.filed_later; });
  KeepOutdated({outdated, all.end()}, folder.parent_path() / kOutdatedFolder, prompt);
  all.erase(outdated, all.end());
  if (all.empty()) return;
  const Answer answer = prompt.Ask(QuestionOf(all));
  if (answer == Answer::Cancel) return;
  for (const LeftGraph& left : all) {
    if (answer == Answer::No) {
      RemoveLeft(left);
      continue;
    }
    try {
      open(left);
    } catch (const Error& error) {
      prompt.Tell(error.what());
    }
  }
}

}  // namespace tarnwick
