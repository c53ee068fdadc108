// A stream whose source is read in a thread of its own. Knows the thread; what is read is its producer's.
#pragma once

#include <memory>
#include <thread>

#include "sources/streams/row_queue.h"
#include "sources/streams/row_stream.h"

namespace tarnwick {

/// What reads a source. It is used by one thread at a time.
class RowProducer {
 public:
  virtual ~RowProducer() = default;
  RowProducer(const RowProducer&) = delete;
  RowProducer& operator=(const RowProducer&) = delete;

  /// Reads from the beginning until the queue is stopped or nothing more can come, says how it stands and adds rows. It waits
  /// nowhere without the queue's WakeHandle(). An Error that it throws is the reason why nothing more comes.
  virtual void Run(RowQueue& queue) = 0;

 protected:
  RowProducer() = default;
};

class ThreadedStream final : public RowStream {
 public:
  /// Throws Error when the system has no handle left.
  explicit ThreadedStream(std::unique_ptr<RowProducer> producer) : producer_(std::move(producer)) {}
  ~ThreadedStream() override;

  void Start() override;
  void Pause() override { queue_.Pause(); }
  void Stop() override { queue_.Stop(); }
  StreamState State() const override { return queue_.State(); }
  std::string Told() const override { return queue_.Told(); }
  StreamRows Take() override { return queue_.Take(); }

 private:
  void Join();

  std::unique_ptr<RowProducer> producer_;
  RowQueue queue_;
  std::thread thread_;
};

}  // namespace tarnwick
