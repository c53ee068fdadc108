// The value encoding, writing side: each value is a kind byte and its data, appended to a growing string. Knows nothing of
// keys and sections.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarnwick {

/// The kind bytes.
enum class ValueKind : std::uint8_t {
  Integer8 = 2,
  Integer16 = 3,
  Integer32 = 4,
  Float = 5,
  ShortString = 6,
  False = 8,
  True = 9,
  LongString = 12,
};

class ValueWriter {
 public:
  /// Appends to `out`, which must outlive the writer.
  explicit ValueWriter(std::string& out) : out_(out) {}

  void WriteInteger(std::int32_t value);  ///< in the smallest kind that holds it
  void WriteFloat(double value);          ///< widened to 80 bits
  void WriteBoolean(bool value);
  void WriteString(
      std::string_view bytes);  ///< 8-bit text as it stands; up to 255 bytes short, else long
  void WriteRawInteger(std::int32_t value);  ///< four bytes little-endian, without a kind

 private:
  void WriteKind(ValueKind kind);
  void WriteLittleEndian(std::uint32_t value, int size);

  std::string& out_;
};

}  // namespace tarnwick
