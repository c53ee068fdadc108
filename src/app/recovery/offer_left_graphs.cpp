#include "app/recovery/offer_left_graphs.h"

#include <QDateTime>
#include <QFileInfo>
#include <string>
#include <vector>

#include "base/error.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostListed = 12;

/// "14:03", of another day with its date.
std::string TimeText(const LeftGraph& left) {
  const QDateTime time = QFileInfo(PathText(left.copy)).lastModified();
  const bool today = time.date() == QDate::currentDate();
  return time.toString(today ? "HH:mm" : "yyyy-MM-dd HH:mm").toStdString();
}

std::string LineOf(const LeftGraph& left) {
  const GraphNote& note = left.note;
  const auto& named = note.graph_file.empty() ? note.data_file : note.graph_file;
  const std::string file = named.filename().string();
  const std::string belongs = file.empty() ? "" : " (" + file + ')';
  return note.name + belongs + ", changed " + TimeText(left);
}

Question QuestionOf(const std::vector<LeftGraph>& left) {
  std::string text = "Tarnwick was ended before these changes were saved:\n\n";
  for (std::size_t i = 0; i < left.size() && i < kMostListed; ++i) text += LineOf(left[i]) + '\n';
  if (left.size() > kMostListed)
    text += "and " + std::to_string(left.size() - kMostListed) + " more\n";
  text += "\nOpen them? \"No\" discards them, \"Cancel\" asks again at the next start.";
  return {text, {Answer::Yes, Answer::No, Answer::Cancel}};
}

}  // namespace

void OfferLeftGraphs(const std::filesystem::path& folder, Prompt& prompt,
                     const std::function<void(const LeftGraph&)>& open) {
  const std::vector<LeftGraph> all = FindLeftGraphs(folder);
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
