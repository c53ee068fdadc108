// Rows that come by themselves, from a file that is written to, a line, a link. Knows rows of numbers and the state of what
// brings them; knows no DataSet and no window.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarnwick {

/// What a stream is doing.
enum class StreamState : std::uint8_t {
  Stopped,  ///< not begun, or ended by the user
  Running,
  Paused,  ///< what comes meanwhile is lost, or waits in the file
  Away,    ///< the source is gone for now and is looked for again
  Failed   ///< it will not come back by itself
};

/// The rows that came since the last Take(), oldest first.
struct StreamRows {
  std::vector<double> x;  ///< one per row
  std::vector<std::vector<double>>
      y;  ///< one column per Y of the stream; undefined where a row has none
  std::vector<std::size_t> breaks;  ///< rows, from 0, before which the source was away
  std::vector<std::size_t>
      begins;             ///< rows before which all rows until then are void: the source began anew
  std::int64_t lost = 0;  ///< rows that came faster than they were taken
  std::int64_t unreadable = 0;  ///< rows that held no numbers
};

/// A source that goes on. It reads in a thread, or by the events, of its own; all functions may be called from the one thread
/// that owns it, and none of them waits.
class RowStream {
 public:
  virtual ~RowStream() = default;
  RowStream(const RowStream&) = delete;
  RowStream& operator=(const RowStream&) = delete;

  virtual void Start() = 0;
  virtual void Pause() = 0;
  /// Ends reading and gives back what was held for it. Start() begins again.
  virtual void Stop() = 0;
  virtual StreamState State() const = 0;
  /// What State() says, as a sentence with the reason: for people, UTF-8.
  virtual std::string Told() const = 0;
  /// Hands over what came; the stream keeps no more of it.
  virtual StreamRows Take() = 0;

 protected:
  RowStream() = default;
};

}  // namespace tarnwick
