// The data of a document that come by themselves: which of its DataSets have rows to come, and the streams that bring them, from
// the user's start to his stop. Knows the document and the table of streams; no widget.
#pragma once

#include <QObject>
#include <memory>
#include <string>
#include <vector>

#include "sources/streams/row_stream.h"

namespace tarnwick {

class Document;
class LiveFeed;
class TSeries;

class LiveData final : public QObject {
  Q_OBJECT

 public:
  /// Part of `document`, which is its owner.
  explicit LiveData(Document& document);
  ~LiveData() override;

  /// Whether rows can come for a DataSet of the document at all.
  bool HasSources() const;
  /// Begins, or goes on with, what can come. Nothing begins by itself. Throws Error for what cannot be begun; the rest runs.
  void Start();
  /// The same for what can come for these DataSets alone.
  void StartOf(const std::vector<const TSeries*>& series);
  void Pause();
  void Stop();
  /// What was read again from its beginning goes on from there.
  void FollowReading();
  /// Ends what no DataSet of the document takes any more.
  void DropUnused();
  /// Of the streams the one that most needs to be seen: one that failed, is away, runs, is paused.
  StreamState State() const;
  /// One sentence per stream that was begun.
  std::vector<std::string> Texts() const;

 signals:
  /// State or texts are other ones.
  void changed();

 private:
  void FollowFeeds();
  void TellState();

  Document& document_;
  std::vector<std::unique_ptr<LiveFeed>> feeds_;
  StreamState told_ = StreamState::Stopped;  // the commands know of
};

}  // namespace tarnwick
