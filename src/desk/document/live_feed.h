// One stream on its way into the DataSets of a document. Knows the document and what a stream is; no kind of source and no
// widget.
//
// What comes is taken at the screen's rate at most, seldom while nothing comes, and no more than a third of the time is spent on
// it: a graph that is long in drawing is drawn less often, and no row is lost by that.
#pragma once

#include <QObject>
#include <QTimer>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "sources/stream_kinds.h"
#include "sources/streams/came_rows.h"

namespace tarnwick {

class Document;
class TSeries;
class TxyGraph;

class LiveFeed final : public QObject {
  Q_OBJECT

 public:
  /// For all DataSets of the document that share the stream of `first`. Where they are empty, DataSets are added for the further
  /// Y that come. The document outlives the feed. Throws Error.
  LiveFeed(Document& document, const StreamKind& kind, const TSeries& first);

  bool Feeds(const TDSInfo& info) const;
  /// From the start, or on from a pause.
  void Start();
  void Pause();
  void Stop();
  /// The DataSets were read again by other means: a stream that rereads begins anew, while it runs.
  void FollowReading();
  StreamState State() const { return stream_->State(); }
  /// What the stream says, how many rows came, how many of them were lost or held no numbers, and how points are had back that a
  /// beginning took away without as many rows in their place.
  std::string Text() const;

 signals:
  /// State or text are other ones.
  void told();

 private:
  void Poll();
  bool TakeRows();
  void Give(const StreamRows& rows);
  void TakeAway();
  std::string WayBack() const;
  void AddDataSets(std::size_t columns);
  std::vector<TSeries*> Fed() const;
  void Restart(int wait_ms);

  Document& document_;
  const StreamKind& kind_;
  TDSInfo source_;
  std::unique_ptr<RowStream> stream_;
  QTimer timer_;
  CameRows came_;
  std::string last_told_;
  int polls_without_rows_ = 0;
  std::size_t columns_ = 0;      // that DataSets were made of; 0: none shall be
  std::string trouble_;          // why it had to stop
  std::int64_t taken_away_ = 0;  // points, when the source began anew
  std::int64_t taken_by_ = 0;    // the step; 0: none
};

}  // namespace tarnwick
