#include "data/points/point_chain.h"

#include <algorithm>

namespace tarnwick {

namespace {

// How many of the ascending values stand before x. Two short counting loops instead of halving: their loads wait neither for
// a guessed branch nor for each other, which is what a search in memory costs.
template <class Before>
std::size_t CountBefore(std::span<const double> values, Before before) {
  constexpr std::size_t kStride = 8;
  const double* const data = values.data();
  const std::size_t strides = values.size() / kStride;
  std::size_t passed = 0;
  for (std::size_t i = 0; i < strides; ++i) passed += before(data[(i + 1) * kStride - 1]) ? 1 : 0;
  const std::size_t begin = passed * kStride;
  const std::size_t end = std::min(begin + kStride, values.size());
  std::size_t count = begin;
  for (std::size_t i = begin; i < end; ++i) count += before(data[i]) ? 1 : 0;
  return count;
}

template <class Before>
PointChain::Place FirstPlaceNot(const ChunkRoot& root, Before before) {
  const std::size_t groups = CountBefore(root.first_x, before);
  if (groups == 0) return {};
  const std::size_t group = groups - 1;
  const ChunkGroup& chunks = *root.groups[group];
  const std::size_t chunk = CountBefore(chunks.first_x, before) - 1;
  // The number of points is taken from here, not from the chunk, whose memory is slow to come.
  const bool last = chunk + 1 == chunks.start.size();
  const std::size_t points = (last ? chunks.points : chunks.start[chunk + 1]) - chunks.start[chunk];
  chunks.chunks[chunk]->Prefetch(points);
  const std::size_t offset = CountBefore({chunks.chunks[chunk]->XData(), points}, before);
  if (offset < points) return {group, chunk, offset};
  if (!last) return {group, chunk + 1, 0};
  return {group + 1, 0, 0};
}

// The entry that holds `position`, given the ascending first position of each; `guess` is tried first.
template <class T>
std::size_t EntryOf(const std::vector<T>& start, std::size_t position, std::size_t guess) {
  const auto holds = [&](std::size_t i) {
    return start[i] <= position && (i + 1 == start.size() || position < start[i + 1]);
  };
  if (guess < start.size() && holds(guess)) return guess;
  return static_cast<std::size_t>(std::upper_bound(start.begin(), start.end(), position) -
                                  start.begin()) -
         1;
}

}  // namespace

PointChain::PointChain() : root_(std::make_unique<ChunkRoot>()) {}

PointChain::PointChain(const PointChain& other)
    : root_((other.Settle(), other.root_)),
      size_(other.size_),
      last_x_(other.last_x_),
      last_id_room_(other.last_id_room_) {}

PointChain& PointChain::operator=(const PointChain& other) {
  return *this = PointChain(other);
}

std::size_t PointChain::ChunkCount() const {
  if (Root().groups.empty()) return 0;
  return Root().first_chunk.back() + Root().groups.back()->chunks.size();
}

PointChain::Place PointChain::PlaceOfChunk(std::size_t number) const {
  const std::size_t group = EntryOf(Root().first_chunk, number, number / ChunkGroup::kCapacity);
  return {group, number - Root().first_chunk[group], 0};
}

ChunkView PointChain::View(const Place& place) const {
  const PointChunk& chunk = ChunkAt(place);
  return {root_->start[place.group] + root_->groups[place.group]->start[place.chunk], chunk.X(),
          chunk.Y(), chunk.Regression(), &chunk};
}

ChunkView PointChain::Chunk(std::size_t number) const {
  return View(PlaceOfChunk(number));
}

YExtremes PointChain::ChunkExtremes(std::size_t number) const {
  return ChunkAt(PlaceOfChunk(number)).Extremes();
}

double PointChain::ChunkFirstX(std::size_t number) const {
  const Place place = PlaceOfChunk(number);
  return root_->groups[place.group]->first_x[place.chunk];
}

std::size_t PointChain::ChunkOfIndex(std::size_t index) const {
  const Place place = PlaceOf(index);
  return Root().first_chunk[place.group] + place.chunk;
}

Point PointChain::At(std::size_t index) const {
  return At(PlaceOf(index));
}

std::size_t PointChain::LowerBound(double x) const {
  return IndexOf(LowerPlace(x));
}

std::size_t PointChain::UpperBound(double x) const {
  return IndexOf(FirstPlaceNot(Root(), [x](double value) { return value <= x; }));
}

PointChain::Place PointChain::LowerPlace(double x) const {
  return LowerPlaceIn(Root(), x);
}

PointChain::Place PointChain::LowerPlaceIn(const ChunkRoot& root, double x) {
  return FirstPlaceNot(root, [x](double value) { return value < x; });
}

PointChain::Place PointChain::PlaceOf(std::size_t index) const {
  if (index >= size_) return End();
  constexpr std::size_t kFullGroup = ChunkGroup::kCapacity * PointChunk::kCapacity;
  const std::size_t group = EntryOf(Root().start, index, index / kFullGroup);
  const std::size_t in_group = index - Root().start[group];
  const ChunkGroup& chunks = *Root().groups[group];
  const std::size_t chunk = EntryOf(chunks.start, in_group, in_group / PointChunk::kCapacity);
  return {group, chunk, in_group - chunks.start[chunk]};
}

std::size_t PointChain::IndexOf(const Place& place) const {
  if (place.group == Root().groups.size()) return size_;
  return Root().start[place.group] + Root().groups[place.group]->start[place.chunk] + place.offset;
}

PointChain::Place PointChain::Next(Place place) const {
  if (++place.offset < ChunkAt(place).Size()) return place;
  if (place.chunk + 1 < Root().groups[place.group]->chunks.size()) {
    return {place.group, place.chunk + 1, 0};
  }
  return {place.group + 1, 0, 0};
}

std::optional<std::size_t> PointChain::IndexOfId(std::int32_t id) const {
  if (size_ == 0 || id <= 0) return std::nullopt;
  // Where points were only appended, and some deleted, the point stands at id - 1 or somewhat before.
  const std::size_t guess = std::min(static_cast<std::size_t>(id) - 1, size_ - 1);
  const std::size_t home = ChunkOfIndex(guess);
  const auto index_in = [&](std::size_t number) -> std::optional<std::size_t> {
    const Place place = PlaceOfChunk(number);
    const std::size_t offset = ChunkAt(place).OffsetOfId(id);
    if (offset == ChunkAt(place).Size()) return std::nullopt;
    return IndexOf(place) + offset;
  };
  for (std::size_t number = home + 1; number-- > 0;) {
    if (const auto index = index_in(number)) return index;
  }
  for (std::size_t number = home + 1; number < ChunkCount(); ++number) {
    if (const auto index = index_in(number)) return index;
  }
  return std::nullopt;
}

std::vector<double> PointChain::XValues() const {
  std::vector<double> values;
  values.reserve(size_);
  ForEachChunk(
      [&](const ChunkView& chunk) { values.insert(values.end(), chunk.x.begin(), chunk.x.end()); });
  return values;
}

std::vector<double> PointChain::YValues() const {
  std::vector<double> values;
  values.reserve(size_);
  ForEachChunk(
      [&](const ChunkView& chunk) { values.insert(values.end(), chunk.y.begin(), chunk.y.end()); });
  return values;
}

std::vector<std::int32_t> PointChain::Ids() const {
  std::vector<std::int32_t> ids;
  ids.reserve(size_);
  for (const auto& group : Root().groups) {
    for (const auto& chunk : group->chunks) {
      for (std::size_t i = 0; i < chunk->Size(); ++i) ids.push_back(chunk->Id(i));
    }
  }
  return ids;
}

}  // namespace tarnwick
