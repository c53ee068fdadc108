#include <algorithm>
#include <memory>
#include <utility>

#include "data/points/point_chain.h"

namespace tarnwick {

namespace {

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

}  // namespace

PointChunk& PointChain::EditChunk(const Place& place) {
  return EditRoot().groups[place.group].Edit().chunks[place.chunk].Edit();
}

// The chunk for editing, with room for one more point and, when asked for, for ids.
PointChunk& PointChain::EditRoomyChunk(const Place& place, IdRoom id_room) {
  CowPtr<PointChunk>& chunk = EditRoot().groups[place.group].Edit().chunks[place.chunk];
  const bool full = chunk->Size() == chunk->Room();
  if (!full && (id_room == IdRoom::No || chunk->HasIdRoom() == IdRoom::Yes)) return chunk.Edit();
  const std::size_t room = full ? NextRoom(chunk->Size()) : chunk->Room();
  chunk = CowPtr(chunk->Clone(room, id_room));
  return chunk.Edit();
}

// Opens a chunk behind all others, whose first X the caller notes.
void PointChain::AddChunk(std::size_t room, IdRoom id_room) {
  ChunkRoot& root = root_.Edit();
  // Whoever draws wants a full chunk's extremes sooner or later; now its values are still in the cache.
  if (!root.groups.empty()) root.groups.back()->chunks.back()->Extremes();
  if (root.groups.empty() || root.groups.back()->chunks.size() == ChunkGroup::kCapacity) {
    const std::size_t chunks = ChunkCount();
    root.first_x.push_back(0);
    root.start.push_back(size_);
    root.first_chunk.push_back(chunks);
    root.groups.emplace_back(std::make_unique<ChunkGroup>());
  }
  ChunkGroup& group = root.groups.back().Edit();
  group.first_x.push_back(0);
  group.start.push_back(group.points);
  group.chunks.emplace_back(PointChunk::Make(room, id_room));
}

void PointChain::Append(std::int32_t id, double x, double y) {
  if (late_ != nullptr && late_->IsOpen() && AppendLate(id, x, y)) return;
  Settle();
  const bool starts_chunk =
      size_ == 0 || root_->groups.back()->chunks.back()->Size() == PointChunk::kCapacity;
  if (starts_chunk) AddChunk(size_ == 0 ? kFirstCapacity : PointChunk::kCapacity, last_id_room_);
  ChunkRoot& root = root_.Edit();
  ChunkGroup& group = root.groups.back().Edit();
  CowPtr<PointChunk>& last = group.chunks.back();
  PointChunk* chunk = &last.Edit();
  const IdRoom id_room = chunk->IdFollows(id) ? IdRoom::No : IdRoom::Yes;
  if (chunk->Size() == chunk->Room() || id_room > chunk->HasIdRoom()) {
    last_id_room_ = id_room;
    chunk = &EditRoomyChunk({root.groups.size() - 1, group.chunks.size() - 1, 0}, id_room);
  }
  chunk->Append(id, x, y);
  if (starts_chunk) {
    group.first_x.back() = x;
    if (group.chunks.size() == 1) root.first_x.back() = x;
  }
  ++group.points;
  ++size_;
  last_x_ = x;
}

void PointChain::Append(const Point& point) {
  Append(point.id, point.x, point.y);
  if (point.regression == 0) return;
  const Place last = PlaceOf(size_ - 1);
  EditChunk(last).EditRegression()[last.offset] = point.regression;
}

void PointChain::AppendRun(std::int32_t first_id, std::span<const double> x,
                           std::span<const double> y) {
  std::size_t done = 0;
  while (done < x.size()) {
    // The first point of each chunk goes the ordinary way, which sees to the directory.
    Append(first_id + static_cast<std::int32_t>(done), x[done], y[done]);
    ++done;
    ChunkGroup& group = EditRoot().groups.back().Edit();
    CowPtr<PointChunk>& last = group.chunks.back();
    const std::size_t count = std::min(x.size() - done, PointChunk::kCapacity - last->Size());
    if (count == 0) continue;
    const auto next_id = first_id + static_cast<std::int32_t>(done);
    if (last->Size() + count > last->Room()) {
      last = CowPtr(
          last->Clone(PointChunk::kCapacity, last->IdFollows(next_id) ? IdRoom::No : IdRoom::Yes));
    }
    last.Edit().AppendRun(next_id, x.data() + done, y.data() + done, count);
    group.points += static_cast<std::uint32_t>(count);
    size_ += count;
    done += count;
    last_x_ = x[done - 1];
  }
}

void PointChain::Insert(const Place& place, const Point& point) {
  if (place == End()) {
    Append(point);
    return;
  }
  const std::size_t index = IndexOf(place);
  Place at = place;
  while (ChunkAt(at).Size() >= PointChunk::kInsertCapacity) {
    SplitChunk(at);
    at = PlaceOf(index);
  }
  EditRoomyChunk(at, IdRoom::Yes).Insert(at.offset, point);
  if (at.offset == 0) FirstXChanged(at);
  PointsChanged(at, 1);
}

void PointChain::Set(const Place& place, double x, double y) {
  EditChunk(place).Set(place.offset, x, y);
  if (place.offset == 0) FirstXChanged(place);
  if (IndexOf(place) + 1 == size_) last_x_ = x;
}

void PointChain::Erase(const Place& place) {
  const bool in_the_middle = place.offset > 0 && place.offset + 1 < ChunkAt(place).Size();
  PointChunk& chunk = EditRoomyChunk(place, in_the_middle ? IdRoom::Yes : IdRoom::No);
  chunk.Erase(place.offset);
  const bool emptied = chunk.Size() == 0;
  if (!emptied && place.offset == 0) FirstXChanged(place);
  PointsChanged(place, -1);
  if (emptied) RemoveChunk(place);
  last_x_ = size_ == 0 ? 0 : Root().groups.back()->chunks.back()->X().back();
}

void PointChain::Clear() {
  *this = PointChain();
}

void PointChain::ShiftX(double dx) {
  ChunkRoot& root = EditRoot();
  for (auto& shared_group : root.groups) {
    ChunkGroup& group = shared_group.Edit();
    for (auto& chunk : group.chunks) chunk.Edit().Shift(dx);
    for (double& x : group.first_x) x += dx;
  }
  for (double& x : root.first_x) x += dx;
  last_x_ += dx;
}

void PointChain::FillRegression(
    const std::function<void(const ChunkView&, std::span<double>)>& fill) {
  for (std::size_t group = 0; group < Root().groups.size(); ++group) {
    for (std::size_t chunk = 0; chunk < Root().groups[group]->chunks.size(); ++chunk) {
      const Place place{group, chunk, 0};
      std::vector<double>& values = EditChunk(place).EditRegression();
      fill(View(place), values);
      EditChunk(place).TidyRegression();
    }
  }
}

void PointChain::ClearRegression() {
  for (std::size_t group = 0; group < Root().groups.size(); ++group) {
    for (std::size_t chunk = 0; chunk < Root().groups[group]->chunks.size(); ++chunk) {
      const Place place{group, chunk, 0};
      if (!ChunkAt(place).Regression().empty()) EditChunk(place).ClearRegression();
    }
  }
}

// Keeps the first indices behind `place` and the counts right after points came or went in its chunk.
void PointChain::PointsChanged(const Place& place, std::ptrdiff_t change) {
  ChunkRoot& root = EditRoot();
  ChunkGroup& group = root.groups[place.group].Edit();
  const auto step =
      static_cast<std::uint32_t>(change);  // wraps for a negative change, and so do the sums
  group.points += step;
  for (std::size_t i = place.chunk + 1; i < group.start.size(); ++i) group.start[i] += step;
  const auto wide_step = static_cast<std::size_t>(change);
  for (std::size_t i = place.group + 1; i < root.start.size(); ++i) root.start[i] += wide_step;
  size_ += wide_step;
}

void PointChain::FirstXChanged(const Place& place) {
  ChunkRoot& root = EditRoot();
  const double x = ChunkAt(place).X().front();
  root.groups[place.group].Edit().first_x[place.chunk] = x;
  if (place.chunk == 0) root.first_x[place.group] = x;
}

// Cuts a chunk into halves, its group too when that is full.
void PointChain::SplitChunk(const Place& place) {
  Place at = place;
  if (Root().groups[at.group]->chunks.size() == ChunkGroup::kCapacity) {
    SplitGroup(at.group);
    const std::size_t kept = Root().groups[at.group]->chunks.size();
    if (at.chunk >= kept) at = {at.group + 1, at.chunk - kept, 0};
  }
  ChunkRoot& root = EditRoot();
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

void PointChain::SplitGroup(std::size_t number) {
  ChunkRoot& root = EditRoot();
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

// Takes an empty chunk out, and its group when that was the last one in it.
void PointChain::RemoveChunk(const Place& place) {
  ChunkRoot& root = EditRoot();
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
