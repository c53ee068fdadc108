// The ways in which files are packed, as rows of a table: how each is recognised and what unpacks it. Knows the four
// libraries; knows no files and no limits.
#pragma once

#include <memory>
#include <span>
#include <string_view>

namespace tarnwick {

/// What a step of unpacking came to.
enum class Unpacked {
  Going,
  MemberEnd,  ///< the whole, or one of several parts written one behind the other; its checksum is right
  Damaged,
  TooMuchMemory,  ///< the file asks for more than x
};

/// What unpacking itself may take, beside the bytes that come out of it.
inline constexpr int kMostUnpackingMegabytes = 256;

/// Unpacks one member.
class Decoder {
 public:
  Decoder() = default;
  virtual ~Decoder() = default;
  Decoder(const Decoder&) = delete;
  Decoder& operator=(const Decoder&) = delete;

  /// Unpacks from the front of `packed` into the front of `room`, both below 2 GB, and takes away from both what was used.
  /// Nothing used of either: there is nothing to do before more bytes come.
  virtual Unpacked Decode(std::string_view& packed, std::span<char>& room) = 0;
};

struct Packing {
  std::string_view name;  ///< "gzip"
  bool (*recognises)(std::string_view bytes);
  std::unique_ptr<Decoder> (*decoder)();
};

/// How these bytes are packed, by the first of them; null when they are not.
const Packing* PackingOf(std::string_view bytes);

}  // namespace tarnwick
