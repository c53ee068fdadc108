#include "data/points/point_batch.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <limits>
#include <utility>

namespace tarnwick {

namespace {

// A value of the batch as it is sorted: an integer that orders like X, and the position in the batch.
struct Entry {
  std::uint64_t key;
  std::uint32_t index;
};

constexpr std::uint64_t kSign = std::uint64_t{1} << 63;

std::uint64_t OrderedKey(double x) {
  const auto bits = std::bit_cast<std::uint64_t>(x + 0.0);  // both zeros are one abscissa
  return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

double XOfKey(std::uint64_t key) {
  return std::bit_cast<double>((key & kSign) != 0 ? key & ~kSign : ~key);
}

constexpr std::size_t kSmall = 256;  // up to here a comparison sort is quicker

void SortByComparing(std::span<Entry> entries) {
  std::sort(entries.begin(), entries.end(), [](const Entry& left, const Entry& right) {
    return std::pair(left.key, left.index) < std::pair(right.key, right.index);
  });
}

// One half of the key's bytes, 0 being the lower, in four stable passes (H. H. Seward, 1954). `other` is as long as `entries`.
void SortByHalf(std::span<Entry> entries, std::span<Entry> other, std::size_t half) {
  constexpr std::size_t kDigits = 4;
  const auto digit = [half](const Entry& entry, std::size_t d) {
    return static_cast<std::size_t>((entry.key >> (8 * (half * kDigits + d))) & 0xFF);
  };
  std::array<std::array<std::size_t, 256>, kDigits> counts{};
  for (const Entry& entry : entries) {
    for (std::size_t d = 0; d < kDigits; ++d) ++counts[d][digit(entry, d)];
  }
  std::span<Entry> from = entries;
  std::span<Entry> to = other;
  for (std::size_t d = 0; d < kDigits; ++d) {
    if (counts[d][digit(from.front(), d)] == entries.size()) continue;
    std::array<std::size_t, 256> place{};
    for (std::size_t i = 1; i < place.size(); ++i) place[i] = place[i - 1] + counts[d][i - 1];
    for (const Entry& entry : from) to[place[digit(entry, d)]++] = entry;
    std::swap(from, to);
  }
  if (from.data() != entries.data()) std::copy(from.begin(), from.end(), entries.begin());
}

// Stable sort by key: by the upper half, then each run with one upper half by the lower. Such runs are mostly short.
void SortByKey(std::vector<Entry>& entries) {
  if (entries.size() <= kSmall) return SortByComparing(entries);
  std::vector<Entry> other(entries.size());
  SortByHalf(entries, other, 1);
  const auto upper = [&](std::size_t i) { return entries[i].key >> 32; };
  for (std::size_t begin = 0, end = 0; begin < entries.size(); begin = end) {
    for (end = begin + 1; end < entries.size() && upper(end) == upper(begin);) ++end;
    const std::span<Entry> run(entries.data() + begin, end - begin);
    if (run.size() > kSmall) {
      SortByHalf(run, std::span(other).first(run.size()), 0);
    } else if (run.size() > 1) {
      SortByComparing(run);
    }
  }
}

std::vector<Entry> SortedEntries(std::span<const double> x) {
  std::vector<Entry> entries(x.size());
  for (std::size_t i = 0; i < x.size(); ++i) {
    entries[i] = {OrderedKey(x[i]), static_cast<std::uint32_t>(i)};
  }
  SortByKey(entries);
  return entries;
}

// Takes the old chain point by point while the new one is built.
class OldPoints {
 public:
  explicit OldPoints(const PointChain& chain) : chain_(chain) { Fetch(); }

  bool AtEnd() const { return chunk_ == chain_.ChunkCount(); }
  double X() const { return view_.x[offset_]; }
  Point Take() {
    const Point point = chain_.At(view_.first_index + offset_);
    if (++offset_ == view_.x.size()) {
      ++chunk_;
      offset_ = 0;
      Fetch();
    }
    return point;
  }

 private:
  void Fetch() {
    if (!AtEnd()) view_ = chain_.Chunk(chunk_);
  }

  const PointChain& chain_;
  ChunkView view_;
  std::size_t chunk_ = 0;
  std::size_t offset_ = 0;
};

class Merge {
 public:
  Merge(PointChain& chain, std::span<const double> x, std::span<const double> y,
        std::int32_t last_id)
      : chain_(chain), before_(chain), old_(before_), x_(x), y_(y), entries_(SortedEntries(x)) {
    outcome_.last_id = last_id;
    outcome_.made_point.assign(x.size(), 1);
  }

  BatchOutcome Overwriting();
  BatchOutcome KeepingAll();

 private:
  // The end of the entries with the X of the one at `begin`.
  std::size_t RunEnd(std::size_t begin) const {
    std::size_t end = begin + 1;
    while (end < entries_.size() && entries_[end].key == entries_[begin].key) ++end;
    return end;
  }
  template <class Keep>
  void TakeOldWhile(Keep keep) {
    while (!old_.AtEnd() && keep(old_.X())) chain_.Append(old_.Take());
  }
  void MarkOverwriting();
  void GiveIds();
  // X itself: the key has no sign of zero. For any other X it saves a walk to a distant place in memory.
  double XOf(const Entry& entry) const {
    const double x = XOfKey(entry.key);
    return x == 0 ? x_[entry.index] : x;
  }
  void AppendNew(const Entry& entry) {
    chain_.Append(ids_[entry.index], XOf(entry), y_[entry.index]);
  }

  PointChain& chain_;
  const PointChain before_;
  OldPoints old_;
  std::span<const double> x_;
  std::span<const double> y_;
  std::vector<Entry> entries_;
  std::vector<std::int32_t> ids_;  // for each value of the batch; 0 where it makes no point
  BatchOutcome outcome_;
};

void Merge::GiveIds() {
  ids_.reserve(x_.size());
  for (const std::uint8_t made : outcome_.made_point) {
    outcome_.last_id += made;
    ids_.push_back(made != 0 ? outcome_.last_id : 0);
  }
}

// Of an X that is new, the first value makes the point; of one that the chain has, none does.
void Merge::MarkOverwriting() {
  OldPoints old(before_);
  for (std::size_t begin = 0, end = 0; begin < entries_.size(); begin = end) {
    end = RunEnd(begin);
    const double x = XOfKey(entries_[begin].key);
    while (!old.AtEnd() && old.X() < x) old.Take();
    const bool known = !old.AtEnd() && old.X() == x;
    for (std::size_t i = known ? begin : begin + 1; i < end; ++i) {
      outcome_.made_point[entries_[i].index] = 0;
    }
  }
}

BatchOutcome Merge::Overwriting() {
  MarkOverwriting();
  GiveIds();
  chain_.Clear();
  for (std::size_t begin = 0, end = 0; begin < entries_.size(); begin = end) {
    end = RunEnd(begin);
    const double here = XOfKey(entries_[begin].key);
    TakeOldWhile([&](double x) { return x < here; });
    const std::int32_t new_id = ids_[entries_[begin].index];
    Point point;
    if (new_id != 0) {
      point.id = new_id;
    } else {
      point = old_.Take();
    }
    point.x = XOf(entries_[end - 1]);
    point.y = y_[entries_[end - 1].index];
    chain_.Append(point);
  }
  TakeOldWhile([](double) { return true; });
  return std::move(outcome_);
}

// A value that was no smaller than all before it stands behind the points of its X, any other before them.
BatchOutcome Merge::KeepingAll() {
  GiveIds();
  std::vector<std::uint8_t> was_last(x_.size(), 0);
  double last = before_.Empty() ? -std::numeric_limits<double>::infinity() : before_.LastX();
  for (std::size_t i = 0; i < x_.size(); ++i) {
    if (x_[i] < last) continue;
    was_last[i] = 1;
    last = x_[i];
  }
  chain_.Clear();
  for (std::size_t begin = 0, end = 0; begin < entries_.size(); begin = end) {
    end = RunEnd(begin);
    const double here = XOfKey(entries_[begin].key);
    TakeOldWhile([&](double x) { return x < here; });
    for (std::size_t i = end; i-- > begin;) {
      if (was_last[entries_[i].index] == 0) AppendNew(entries_[i]);
    }
    TakeOldWhile([&](double x) { return x == here; });
    for (std::size_t i = begin; i < end; ++i) {
      if (was_last[entries_[i].index] != 0) AppendNew(entries_[i]);
    }
  }
  TakeOldWhile([](double) { return true; });
  return std::move(outcome_);
}

}  // namespace

BatchOutcome MergeBatch(PointChain& chain, std::span<const double> x, std::span<const double> y,
                        Duplicates duplicates, std::int32_t last_id) {
  Merge merge(chain, x, y, last_id);
  return duplicates == Duplicates::Allowed ? merge.KeepingAll() : merge.Overwriting();
}

}  // namespace tarnwick
