// The value encoding, reading side: walks bytes that may be damaged. Every length is checked against what is left before
// anything is allocated. Knows nothing of keys and sections.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "stream/stream_error.h"
#include "stream/value_writer.h"

namespace tarnwick {

/// Every Read throws StreamError kUnexpectedEnd when the bytes run out and kUnexpectedValue when another kind stands
/// there; the position is then that of the value.
class ValueReader {
 public:
  /// Reads `bytes`, which must outlive the reader and the strings it answers.
  explicit ValueReader(std::string_view bytes) : bytes_(bytes) {}

  std::int32_t ReadInteger();  ///< any of the three integer kinds
  double ReadFloat();          ///< narrowed to 64 bits
  bool ReadBoolean();
  std::string_view ReadString();  ///< either string kind; 8-bit text as it stands
  std::int32_t ReadRawInteger();  ///< four bytes little-endian, without a kind

  std::size_t Position() const { return position_; }
  std::size_t Left() const { return bytes_.size() - position_; }

 private:
  ValueKind PeekKind() const;
  /// The data of the value at the position, `header` bytes after it; throws when they are not all there.
  std::string_view Peek(std::size_t header, std::size_t size) const;

  std::string_view bytes_;
  std::size_t position_ = 0;
};

}  // namespace tarnwick
