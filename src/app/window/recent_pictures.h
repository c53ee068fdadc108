// Small pictures of the graphs of recent files, kept between runs in a folder of the user's. Made of states on a thread of
// its own; files are looked for on others, so that a place that does not answer keeps nobody waiting. Knows no widget.
#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <filesystem>
#include <set>
#include <vector>

#include "desk/work/mailbox.h"
#include "desk/work/worker.h"
#include "graph/graph_state.h"

namespace tarnwick {

class RecentPictures final : public QObject {
  Q_OBJECT

 public:
  /// Of a picture, pixels: twice as many as it is shown with, for sharp screens.
  static constexpr QSize kSize{320, 216};
  /// Beyond that the ones not made for the longest time go.
  static constexpr int kMostKept = 24;

  /// Pictures lie in `folder`, which is made when the first one is; empty: none are kept.
  explicit RecentPictures(std::filesystem::path folder, QObject* parent = nullptr);
  /// Waits for pictures that are being made, not for files that are being looked for.
  ~RecentPictures() override = default;

  /// Makes the picture of `file` anew, which shows `state`.
  void Make(const std::filesystem::path& file, const GraphState& state);
  /// Looks for the pictures of these files, then for the files themselves.
  void LookFor(const std::vector<std::filesystem::path>& files);

 signals:
  void pictureFound(const QString& file, const QImage& picture);
  void fileThere(const QString& file);
  void fileMissing(const QString& file);

 private:
  void LookForOne(const std::filesystem::path& file);

  std::filesystem::path folder_;
  std::set<std::filesystem::path> looked_for_;  // that no answer has come for
  Mailbox mail_;
  Worker maker_;
};

}  // namespace tarnwick
