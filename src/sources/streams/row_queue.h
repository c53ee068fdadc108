// What a stream's thread hands its owner, and what the owner wants of the thread. Knows rows and states, no source.
#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>

#include "base/descriptor.h"
#include "sources/streams/row_stream.h"

namespace tarnwick {

/// All functions may be called from any thread, and none waits.
class RowQueue {
 public:
  /// Throws Error when the system has no handle left.
  RowQueue();

  // --- the thread's side
  bool Stopped() const;
  bool Paused() const;
  /// Readable when the thread is wanted for something: to be waited for beside its source. It is for nothing else.
  int WakeHandle() const { return wake_.Value(); }
  /// Waits at most that long for the owner to want something; 0 or less: not at all.
  void Sleep(int milliseconds);
  /// A state is not told when the owner has stopped the stream meanwhile.
  void Say(StreamState state, std::string told);
  bool HasRoom() const;
  /// Puts the rows behind those that wait. What has no room is lost, and counted.
  void Add(const StreamRows& rows);

  // --- the owner's side
  void Begin();
  void Pause();
  void Resume();
  void Stop();
  StreamState State() const;
  std::string Told() const;
  StreamRows Take();

 private:
  void Wake() const;
  bool IsPaused() const;
  std::size_t MostRows(std::size_t columns) const;

  mutable std::mutex mutex_;
  Descriptor wake_;
  StreamRows rows_;
  StreamState state_ = StreamState::Stopped;  // of the source; pausing stands beside it
  std::string told_;
  bool paused_ = false;
};

}  // namespace tarnwick
