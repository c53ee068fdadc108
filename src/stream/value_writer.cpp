#include "stream/value_writer.h"

#include <cstddef>
#include <limits>
#include <utility>

#include "stream/extended_float.h"
#include "stream/stream_error.h"

namespace tarnwick {
namespace {

constexpr std::size_t kLongestShortString = 255;

}  // namespace

void ValueWriter::WriteKind(ValueKind kind) {
  out_ += static_cast<char>(kind);
}

void ValueWriter::WriteLittleEndian(std::uint32_t value, int size) {
  for (int i = 0; i < size; ++i) out_ += static_cast<char>(value >> (8 * i) & 0xFF);
}

void ValueWriter::WriteInteger(std::int32_t value) {
  const auto bits = static_cast<std::uint32_t>(value);
  if (std::in_range<std::int8_t>(value)) {
    WriteKind(ValueKind::Integer8);
    WriteLittleEndian(bits, 1);
  } else if (std::in_range<std::int16_t>(value)) {
    WriteKind(ValueKind::Integer16);
    WriteLittleEndian(bits, 2);
  } else {
    WriteKind(ValueKind::Integer32);
    WriteLittleEndian(bits, 4);
  }
}

void ValueWriter::WriteFloat(double value) {
  const ExtendedFloat extended = ExtendedFromDouble(value);
  WriteKind(ValueKind::Float);
  out_.append(extended.begin(), extended.end());
}

void ValueWriter::WriteBoolean(bool value) {
  WriteKind(value ? ValueKind::True : ValueKind::False);
}

void ValueWriter::WriteString(std::string_view bytes) {
  if (!std::in_range<std::int32_t>(bytes.size())) throw StreamError(kUnexpectedValue);
  const auto size = static_cast<std::uint32_t>(bytes.size());
  const bool is_short = bytes.size() <= kLongestShortString;
  WriteKind(is_short ? ValueKind::ShortString : ValueKind::LongString);
  WriteLittleEndian(size, is_short ? 1 : 4);
  out_.append(bytes);
}

void ValueWriter::WriteRawInteger(std::int32_t value) {
  WriteLittleEndian(static_cast<std::uint32_t>(value), 4);
}

}  // namespace tarnwick
