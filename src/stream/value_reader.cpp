#include "stream/value_reader.h"

#include <cstring>

#include "stream/extended_float.h"

namespace tarnwick {
namespace {

constexpr std::size_t kKindSize = 1;

std::uint32_t LittleEndian(std::string_view bytes) {
  std::uint32_t value = 0;
  for (std::size_t i = bytes.size(); i > 0; --i) {
    value = value << 8 | static_cast<unsigned char>(bytes[i - 1]);
  }
  return value;
}

std::int32_t SignedLittleEndian(std::string_view bytes) {
  const std::uint32_t value = LittleEndian(bytes);
  switch (bytes.size()) {
    case 1:
      return static_cast<std::int8_t>(value);
    case 2:
      return static_cast<std::int16_t>(value);
    default:
      return static_cast<std::int32_t>(value);
  }
}

}  // namespace

std::string_view ValueReader::Peek(std::size_t header, std::size_t size) const {
  if (Left() < header || Left() - header < size) throw StreamError(kUnexpectedEnd);
  return bytes_.substr(position_ + header, size);
}

ValueKind ValueReader::PeekKind() const {
  return static_cast<ValueKind>(static_cast<unsigned char>(Peek(0, kKindSize).front()));
}

std::int32_t ValueReader::ReadInteger() {
  std::size_t size = 0;
  switch (PeekKind()) {
    case ValueKind::Integer8:
      size = 1;
      break;
    case ValueKind::Integer16:
      size = 2;
      break;
    case ValueKind::Integer32:
      size = 4;
      break;
    default:
      throw StreamError(kUnexpectedValue);
  }
  const std::int32_t value = SignedLittleEndian(Peek(kKindSize, size));
  position_ += kKindSize + size;
  return value;
}

double ValueReader::ReadFloat() {
  if (PeekKind() != ValueKind::Float) throw StreamError(kUnexpectedValue);
  ExtendedFloat extended;
  const std::string_view data = Peek(kKindSize, extended.size());
  std::memcpy(extended.data(), data.data(), extended.size());
  position_ += kKindSize + extended.size();
  return DoubleFromExtended(extended);
}

bool ValueReader::ReadBoolean() {
  const ValueKind kind = PeekKind();
  if (kind != ValueKind::False && kind != ValueKind::True) throw StreamError(kUnexpectedValue);
  position_ += kKindSize;
  return kind == ValueKind::True;
}

std::string_view ValueReader::ReadString() {
  const ValueKind kind = PeekKind();
  if (kind != ValueKind::ShortString && kind != ValueKind::LongString) {
    throw StreamError(kUnexpectedValue);
  }
  const std::size_t length_size = kind == ValueKind::ShortString ? 1 : 4;
  const std::size_t size = LittleEndian(Peek(kKindSize, length_size));
  const std::string_view text = Peek(kKindSize + length_size, size);
  position_ += kKindSize + length_size + size;
  return text;
}

std::int32_t ValueReader::ReadRawInteger() {
  const std::int32_t value = SignedLittleEndian(Peek(0, 4));
  position_ += 4;
  return value;
}

}  // namespace tarnwick
