#include "data/points/chunk_directory.h"

#include <algorithm>
#include <utility>

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
ChunkPlace FirstPlaceNot(const ChunkRoot& root, Before before) {
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

// Small DataSets stay small: the first chunk grows in steps.
constexpr std::size_t kFirstCapacity = 16;

template <class T>
typename std::vector<T>::iterator IteratorAt(std::vector<T>& values, std::size_t offset) {
  return values.begin() + static_cast<typename std::vector<T>::difference_type>(offset);
}

// The room to give a chunk that has too little for one more of `points`.
std::size_t NextRoom(std::size_t points) {
  if (points < kFirstCapacity) return kFirstCapacity;
  return points < PointChunk::kInsertCapacity ? PointChunk::kInsertCapacity : PointChunk::kCapacity;
}

void SplitGroup(ChunkRoot& root, std::size_t number) {
  ChunkGroup& head = root.groups[number].Edit();
  const std::size_t half = head.chunks.size() / 2;
  auto tail = std::make_unique<ChunkGroup>();
  const std::uint32_t kept_points = head.start[half];
  tail->first_x.assign(IteratorAt(head.first_x, half), head.first_x.end());
  for (std::size_t i = half; i < head.start.size(); ++i) {
    tail->start.push_back(head.start[i] - kept_points);
  }
  tail->chunks.assign(IteratorAt(head.chunks, half), head.chunks.end());
  tail->points = head.points - kept_points;
  head.first_x.resize(half);
  head.start.resize(half);
  head.chunks.resize(half);
  head.points = kept_points;
  root.first_x.insert(IteratorAt(root.first_x, number + 1), tail->first_x.front());
  root.start.insert(IteratorAt(root.start, number + 1), root.start[number] + kept_points);
  root.first_chunk.insert(IteratorAt(root.first_chunk, number + 1),
                          root.first_chunk[number] + half);
  root.groups.insert(IteratorAt(root.groups, number + 1), CowPtr(std::move(tail)));
}

}  // namespace

std::size_t CountChunks(const ChunkRoot& root) {
  if (root.groups.empty()) return 0;
  return root.first_chunk.back() + root.groups.back()->chunks.size();
}

std::size_t CountPoints(const ChunkRoot& root) {
  return root.groups.empty() ? 0 : root.start.back() + root.groups.back()->points;
}

ChunkPlace PlaceNotBelow(const ChunkRoot& root, double x) {
  return FirstPlaceNot(root, [x](double value) { return value < x; });
}

ChunkPlace PlaceAbove(const ChunkRoot& root, double x) {
  return FirstPlaceNot(root, [x](double value) { return value <= x; });
}

ChunkPlace PlaceOfPoint(const ChunkRoot& root, std::size_t index) {
  constexpr std::size_t kFullGroup = ChunkGroup::kCapacity * PointChunk::kCapacity;
  const std::size_t group = EntryOf(root.start, index, index / kFullGroup);
  const std::size_t in_group = index - root.start[group];
  const ChunkGroup& chunks = *root.groups[group];
  const std::size_t chunk = EntryOf(chunks.start, in_group, in_group / PointChunk::kCapacity);
  return {group, chunk, in_group - chunks.start[chunk]};
}

ChunkPlace PlaceOfChunk(const ChunkRoot& root, std::size_t number) {
  const std::size_t group = EntryOf(root.first_chunk, number, number / ChunkGroup::kCapacity);
  return {group, number - root.first_chunk[group], 0};
}

ChunkPlace PlaceBehind(const ChunkRoot& root, ChunkPlace place) {
  if (++place.offset < ChunkAt(root, place).Size()) return place;
  if (place.chunk + 1 < root.groups[place.group]->chunks.size()) {
    return {place.group, place.chunk + 1, 0};
  }
  return {place.group + 1, 0, 0};
}

std::size_t IndexOfPlace(const ChunkRoot& root, const ChunkPlace& place) {
  if (place.group == root.groups.size()) return CountPoints(root);
  return root.start[place.group] + root.groups[place.group]->start[place.chunk] + place.offset;
}

PointChunk& EditChunk(ChunkRoot& root, const ChunkPlace& place) {
  return root.groups[place.group].Edit().chunks[place.chunk].Edit();
}

PointChunk& EditRoomyChunk(ChunkRoot& root, const ChunkPlace& place, IdRoom id_room) {
  CowPtr<PointChunk>& chunk = root.groups[place.group].Edit().chunks[place.chunk];
  const bool full = chunk->Size() == chunk->Room();
  if (!full && (id_room == IdRoom::No || chunk->HasIdRoom() == IdRoom::Yes)) return chunk.Edit();
  const std::size_t room = full ? NextRoom(chunk->Size()) : chunk->Room();
  chunk = CowPtr(chunk->Clone(room, id_room));
  return chunk.Edit();
}

void AddChunk(ChunkRoot& root, IdRoom id_room) {
  const std::size_t room = root.groups.empty() ? kFirstCapacity : PointChunk::kCapacity;
  // Whoever draws wants a full chunk's extremes sooner or later; now its values are still in the cache.
  if (!root.groups.empty()) root.groups.back()->chunks.back()->Extremes();
  if (root.groups.empty() || root.groups.back()->chunks.size() == ChunkGroup::kCapacity) {
    const std::size_t points = CountPoints(root);
    const std::size_t chunks = CountChunks(root);
    root.first_x.push_back(0);
    root.start.push_back(points);
    root.first_chunk.push_back(chunks);
    root.groups.emplace_back(std::make_unique<ChunkGroup>());
  }
  ChunkGroup& group = root.groups.back().Edit();
  group.first_x.push_back(0);
  group.start.push_back(group.points);
  group.chunks.emplace_back(PointChunk::Make(room, id_room));
}

void NotePoints(ChunkRoot& root, const ChunkPlace& place, std::ptrdiff_t change) {
  ChunkGroup& group = root.groups[place.group].Edit();
  const auto step =
      static_cast<std::uint32_t>(change);  // wraps for a negative change, and so do the sums
  group.points += step;
  for (std::size_t i = place.chunk + 1; i < group.start.size(); ++i) group.start[i] += step;
  const auto wide_step = static_cast<std::size_t>(change);
  for (std::size_t i = place.group + 1; i < root.start.size(); ++i) root.start[i] += wide_step;
}

void NoteFirstX(ChunkRoot& root, const ChunkPlace& place) {
  const double x = ChunkAt(root, place).X().front();
  root.groups[place.group].Edit().first_x[place.chunk] = x;
  if (place.chunk == 0) root.first_x[place.group] = x;
}

void SplitChunk(ChunkRoot& root, const ChunkPlace& place) {
  ChunkPlace at = place;
  if (root.groups[at.group]->chunks.size() == ChunkGroup::kCapacity) {
    SplitGroup(root, at.group);
    const std::size_t kept = root.groups[at.group]->chunks.size();
    if (at.chunk >= kept) at = {at.group + 1, at.chunk - kept, 0};
  }
  ChunkGroup& group = root.groups[at.group].Edit();
  CowPtr<PointChunk>& whole = group.chunks[at.chunk];
  const std::size_t half = whole->Size() / 2;
  std::unique_ptr<PointChunk> tail = whole->Part(half, whole->Size(), NextRoom(half));
  whole = CowPtr(whole->Part(0, half, NextRoom(half)));
  const auto start = group.start[at.chunk] + static_cast<std::uint32_t>(half);
  group.first_x.insert(IteratorAt(group.first_x, at.chunk + 1), tail->X().front());
  group.start.insert(IteratorAt(group.start, at.chunk + 1), start);
  group.chunks.insert(IteratorAt(group.chunks, at.chunk + 1), CowPtr(std::move(tail)));
  for (std::size_t i = at.group + 1; i < root.first_chunk.size(); ++i) ++root.first_chunk[i];
}

void RemoveChunk(ChunkRoot& root, const ChunkPlace& place) {
  ChunkGroup& group = root.groups[place.group].Edit();
  group.first_x.erase(IteratorAt(group.first_x, place.chunk));
  group.start.erase(IteratorAt(group.start, place.chunk));
  group.chunks.erase(IteratorAt(group.chunks, place.chunk));
  for (std::size_t i = place.group + 1; i < root.first_chunk.size(); ++i) --root.first_chunk[i];
  if (!group.chunks.empty()) {
    root.first_x[place.group] = group.first_x.front();
    return;
  }
  root.first_x.erase(IteratorAt(root.first_x, place.group));
  root.start.erase(IteratorAt(root.start, place.group));
  root.first_chunk.erase(IteratorAt(root.first_chunk, place.group));
  root.groups.erase(IteratorAt(root.groups, place.group));
}

}  // namespace tarnwick
