// Which lines of a file were read, so that one that was cut short or is written anew is known as far as it is the same. Knows
// lines; no file and no row. Four bytes a line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tarnwick {

class LinesRead {
 public:
  /// Whole lines that were read behind those of before. Lines that were known behind these are so no more.
  void Add(std::string_view lines);
  /// What comes is looked at from the first line on.
  void Restart();
  /// The bytes at the front of `lines`, whole ones, that are the lines known to follow.
  std::size_t PassKnown(std::string_view lines);
  /// Lines added or passed since the beginning.
  std::size_t Count() const { return count_; }
  /// No further line is known.
  bool AtEnd() const { return count_ == hashes_.size(); }

 private:
  std::vector<std::uint32_t> hashes_;  // each of a line and all before it
  std::size_t count_ = 0;
  std::uint64_t hash_ = 0;  // of these
};

}  // namespace tarnwick
