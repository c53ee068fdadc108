#include "readers/arrays/netcdf_size.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/error.h"

namespace tarnwick {
namespace {

constexpr std::uint64_t kMost = std::uint64_t{1} << 50;  // beyond any file; products stay in range
constexpr std::uint64_t kStreamed = 0xFFFFFFFF;          // records are counted by the file's length

/// Bytes of each type, by its number.
constexpr std::array<std::uint64_t, 12> kTypeSizes = {0, 1, 1, 2, 4, 4, 8, 1, 2, 4, 8, 8};

Error Damaged() {
  return Error("The NetCDF file is damaged: its header claims what cannot be");
}

/// Walks through the header; numbers have the highest byte first, and everything is padded to four bytes.
class Header {
 public:
  explicit Header(std::string_view file) : rest_(file) {
    if (rest_.size() < 4 || !rest_.starts_with("CDF")) throw Damaged();
    version_ = rest_[3];
    if (version_ != 1 && version_ != 2 && version_ != 5) throw Damaged();
    rest_.remove_prefix(4);
  }

  std::uint64_t Number(std::size_t bytes) {
    if (rest_.size() < bytes) throw Error("The NetCDF file is cut short in its header");
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < bytes; ++i) {
      number = number << 8 | static_cast<unsigned char>(rest_[i]);
    }
    rest_.remove_prefix(bytes);
    return number;
  }
  std::uint64_t Count() { return Number(version_ == 5 ? 8 : 4); }
  std::uint64_t Offset() { return Number(version_ == 1 ? 4 : 8); }
  std::uint64_t Type() {
    const std::uint64_t type = Number(4);
    if (type == 0 || type >= kTypeSizes.size()) throw Damaged();
    return kTypeSizes[type];
  }
  /// How many entries the list that begins here has.
  std::uint64_t ListLength() {
    Number(4);
    return Count();
  }
  void Skip(std::uint64_t bytes) {
    const std::uint64_t padded = bytes + (4 - bytes % 4) % 4;
    if (padded < bytes || padded > rest_.size()) {
      throw Error("The NetCDF file is cut short in its header");
    }
    rest_.remove_prefix(static_cast<std::size_t>(padded));
  }
  void SkipAttributes() {
    for (std::uint64_t left = ListLength(); left > 0; --left) {
      Skip(Count());
      const std::uint64_t size = Type();
      const std::uint64_t count = Count();
      if (count > rest_.size()) throw Error("The NetCDF file is cut short in its header");
      Skip(count * size);
    }
  }
  bool IsStreamed(std::uint64_t records) const { return version_ != 5 && records == kStreamed; }

 private:
  std::string_view rest_;
  char version_;
};

struct Variable {
  std::uint64_t begin = 0;
  std::uint64_t bytes = 0;  ///< of a record, where it has records
  bool records = false;
};

Variable ReadVariable(Header& header, const std::vector<std::uint64_t>& lengths) {
  Variable variable{.begin = 0, .bytes = 1};
  header.Skip(header.Count());
  const std::uint64_t axes = header.Count();
  for (std::uint64_t i = 0; i < axes; ++i) {
    const std::uint64_t dimension = header.Count();
    if (dimension >= lengths.size()) throw Damaged();
    const std::uint64_t length = lengths[dimension];
    variable.records |= i == 0 && length == 0;
    const std::uint64_t factor = i == 0 && length == 0 ? 1 : length;
    if (factor > 0 && variable.bytes > kMost / factor) throw Damaged();
    variable.bytes *= factor;
  }
  header.SkipAttributes();
  variable.bytes *= header.Type();
  header.Count();  // the size as padded, which is no news
  variable.begin = header.Offset();
  if (variable.begin > kMost) throw Damaged();
  return variable;
}

}  // namespace

std::uint64_t ClaimedSize(std::string_view file) {
  Header header(file);
  const std::uint64_t records = header.Count();
  std::vector<std::uint64_t> lengths;
  for (std::uint64_t left = header.ListLength(); left > 0; --left) {
    header.Skip(header.Count());
    lengths.push_back(header.Count());
  }
  header.SkipAttributes();
  std::vector<Variable> variables;
  for (std::uint64_t left = header.ListLength(); left > 0; --left) {
    variables.push_back(ReadVariable(header, lengths));
  }
  std::uint64_t record_bytes = 0;
  const auto with_records = std::ranges::count_if(variables, &Variable::records);
  for (const Variable& variable : variables) {
    const std::uint64_t padding = with_records > 1 ? (4 - variable.bytes % 4) % 4 : 0;
    if (variable.records) record_bytes += variable.bytes + padding;
  }
  std::uint64_t claimed = 0;
  for (const Variable& variable : variables) {
    std::uint64_t end = variable.begin + variable.bytes;
    if (variable.records) {
      if (records == 0 || header.IsStreamed(records)) continue;
      if (record_bytes > 0 && records > kMost / record_bytes) throw Damaged();
      end += (records - 1) * record_bytes;
    }
    claimed = std::max(claimed, end);
  }
  return claimed;
}

}  // namespace tarnwick
