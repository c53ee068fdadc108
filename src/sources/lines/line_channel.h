// The way that lines come in, opened and read without waiting. Knows pipes, sockets and serial ports; no lines and no rows.
#pragma once

#include <memory>
#include <string>

#include "base/descriptor.h"
#include "sources/lines/line_place.h"

namespace tarnwick {

/// What came of waiting.
enum class ChannelEvent {
  Nothing,  ///< the time is over, or the owner wants something
  Bytes,
  Gone  ///< who wrote has ended, or cannot be reached any more
};

class LineChannel {
 public:
  explicit LineChannel(LinePlace place) : place_(std::move(place)) {}

  /// Opens the place. Of a pipe and of Listen that says only that somebody may write now. `wake` is a handle that ends the
  /// waiting for a server's answer when it gets readable. Throws Error, which says why it cannot be reached now.
  void Open(int wake);
  /// True when somebody who writes is there.
  bool HasWriter() const { return has_writer_; }
  void Close();
  /// Waits at most that long and appends what came to `bytes`.
  ChannelEvent Read(std::string& bytes, int wake, int milliseconds);

 private:
  ChannelEvent ReadNow(std::string& bytes);
  void Accept();

  LinePlace place_;
  std::unique_ptr<Descriptor> listener_;
  std::unique_ptr<Descriptor> source_;
  bool has_writer_ = false;
};

}  // namespace tarnwick
