#include "data/packed/unpack.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "data/packed/unpacked_bytes.h"

namespace tarnwick {
namespace {

constexpr std::size_t kPiece = std::size_t{1} << 18;
constexpr std::size_t kWorthShowing = std::size_t{16} << 20;  // a progress window

class Unpacking {
 public:
  Unpacking(const Packing& packing, std::string_view packed, const std::string& name,
            Progress& progress, const UnpackLimits& limits)
      : packing_(packing),
        packed_(packed),
        name_(name),
        progress_(progress),
        limits_(limits),
        unpacked_(limits.in_memory, limits.folder, name) {}

  MappedFile Run() {
    while (!left_.empty()) {
      UnpackMember();
      PassPadding();
    }
    return unpacked_.Take();
  }

 private:
  void UnpackMember() {
    const std::unique_ptr<Decoder> decoder = packing_.decoder();
    while (true) {
      std::string_view piece = left_.substr(0, kPiece);
      std::span<char> room(room_);
      const std::size_t offered = piece.size();
      const Unpacked result = decoder->Decode(piece, room);
      const std::size_t used = offered - piece.size();
      const std::size_t made = room_.size() - room.size();
      left_.remove_prefix(used);
      if (result == Unpacked::Damaged) Fail(" data are damaged");
      if (result == Unpacked::TooMuchMemory) {
        Fail(" data need more than " + std::to_string(kMostUnpackingMegabytes) +
             " MB of memory to be unpacked");
      }
      Keep({room_.data(), made});
      if (result == Unpacked::MemberEnd) return;
      if (used == 0 && made == 0) Fail(" data are cut short, their end is missing");
    }
  }

  void Keep(std::string_view bytes) {
    const std::size_t size = unpacked_.Size() + bytes.size();
    if (size >> 30 >= limits_.gigabytes) {
      throw FileError("The file unpacks to " + std::to_string(limits_.gigabytes) +
                          " GB or more, which is not read",
                      name_, "");
    }
    if (size > limits_.in_memory && (size - limits_.in_memory) / limits_.ratio > Done()) {
      throw FileError("The file unpacks to more than " + std::to_string(limits_.ratio) +
                          " times its size, which no table of numbers does",
                      name_, "");
    }
    unpacked_.Append(bytes);
    if (!shown_ && size > kWorthShowing) {
      shown_ = true;
      progress_.Begin("Unpacking", name_, static_cast<std::int64_t>(packed_.size()));
    }
    if (shown_ && !progress_.Advance(static_cast<std::int64_t>(Done()))) {
      throw UnpackingCancelled("Unpacking " + name_ + " was cancelled");
    }
  }

  /// Another member may follow, or zeros up to a full block of a tape.
  void PassPadding() {
    const std::size_t next = std::min(left_.find_first_not_of('\0'), left_.size());
    left_.remove_prefix(next);
    if (!left_.empty() && PackingOf(left_) != &packing_) {
      Fail(" data end before the file does, and something else follows");
    }
  }

  std::size_t Done() const { return packed_.size() - left_.size(); }

  /// The place is that of the first byte that could not be used.
  [[noreturn]] void Fail(const std::string& what) const {
    throw FileError("The " + std::string(packing_.name) + what, name_,
                    "byte " + std::to_string(Done() + 1));
  }

  const Packing& packing_;
  std::string_view packed_;
  const std::string& name_;
  Progress& progress_;
  const UnpackLimits& limits_;
  UnpackedBytes unpacked_;
  std::string_view left_ = packed_;
  std::vector<char> room_ = std::vector<char>(kPiece);
  bool shown_ = false;
};

}  // namespace

MappedFile Unpack(const Packing& packing, std::string_view packed, const std::string& name,
                  Progress& progress, const UnpackLimits& limits) {
  return Unpacking(packing, packed, name, progress, limits).Run();
}

}  // namespace tarnwick
