#include "data/points/point_chain.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <utility>

#include "data/points/point_batch.h"

namespace tarnwick {

PointChain::PointChain() : root_(std::make_unique<ChunkRoot>()) {}

PointChain::PointChain(const PointChain& other)
    : root_((other.Settle(), other.root_)),
      size_(other.size_),
      last_x_(other.last_x_),
      last_id_room_(other.last_id_room_) {}

PointChain& PointChain::operator=(const PointChain& other) {
  return *this = PointChain(other);
}

// --- reading

ChunkView PointChain::View(const Place& place) const {
  const PointChunk& chunk = ChunkAt(*root_, place);
  return {root_->start[place.group] + root_->groups[place.group]->start[place.chunk], chunk.X(),
          chunk.Y(), chunk.Regression(), &chunk};
}

ChunkView PointChain::Chunk(std::size_t number) const {
  return View(PlaceOfChunk(Root(), number));
}

const PointChunk& PointChain::ChunkToCome(std::size_t number) const {
  const ChunkRoot& root = Root();
  return ChunkAt(root, PlaceOfChunk(root, number));
}

double PointChain::ChunkFirstX(std::size_t number) const {
  const Place place = PlaceOfChunk(Root(), number);
  return root_->groups[place.group]->first_x[place.chunk];
}

std::size_t PointChain::ChunkOfIndex(std::size_t index) const {
  const Place place = PlaceOf(index);
  return Root().first_chunk[place.group] + place.chunk;
}

PointChain::Place PointChain::PlaceOf(std::size_t index) const {
  return index < size_ ? PlaceOfPoint(Root(), index) : End();
}

// --- editing

void PointChain::Append(std::int32_t id, double x, double y) {
  if (late_ != nullptr && late_->IsOpen() && AppendLate(id, x, y)) return;
  Settle();
  const bool starts_chunk =
      size_ == 0 || root_->groups.back()->chunks.back()->Size() == PointChunk::kCapacity;
  ChunkRoot& root = root_.Edit();
  if (starts_chunk) AddChunk(root, last_id_room_);
  ChunkGroup& group = root.groups.back().Edit();
  CowPtr<PointChunk>& last = group.chunks.back();
  PointChunk* chunk = &last.Edit();
  const IdRoom id_room = chunk->IdFollows(id) ? IdRoom::No : IdRoom::Yes;
  if (chunk->Size() == chunk->Room() || id_room > chunk->HasIdRoom()) {
    last_id_room_ = id_room;
    chunk = &EditRoomyChunk(root, {root.groups.size() - 1, group.chunks.size() - 1, 0}, id_room);
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
  EditChunk(EditRoot(), last).EditRegression()[last.offset] = point.regression;
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
  if (place == End()) return Append(point);
  ChunkRoot& root = EditRoot();
  const std::size_t index = IndexOfPlace(root, place);
  Place at = place;
  while (ChunkAt(root, at).Size() >= PointChunk::kInsertCapacity) {
    SplitChunk(root, at);
    at = PlaceOfPoint(root, index);
  }
  EditRoomyChunk(root, at, IdRoom::Yes).Insert(at.offset, point);
  if (at.offset == 0) NoteFirstX(root, at);
  NotePoints(root, at, 1);
  ++size_;
}

void PointChain::Set(const Place& place, double x, double y) {
  ChunkRoot& root = EditRoot();
  EditChunk(root, place).Set(place.offset, x, y);
  if (place.offset == 0) NoteFirstX(root, place);
  if (IndexOfPlace(root, place) + 1 == size_) last_x_ = x;
}

void PointChain::Erase(const Place& place) {
  ChunkRoot& root = EditRoot();
  const bool in_the_middle = place.offset > 0 && place.offset + 1 < ChunkAt(root, place).Size();
  PointChunk& chunk = EditRoomyChunk(root, place, in_the_middle ? IdRoom::Yes : IdRoom::No);
  chunk.Erase(place.offset);
  const bool emptied = chunk.Size() == 0;
  if (!emptied && place.offset == 0) NoteFirstX(root, place);
  NotePoints(root, place, -1);
  --size_;
  if (emptied) RemoveChunk(root, place);
  last_x_ = size_ == 0 ? 0 : root.groups.back()->chunks.back()->X().back();
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
  for (std::size_t number = 0; number < ChunkCount(); ++number) {
    const Place place = PlaceOfChunk(Root(), number);
    PointChunk& chunk = EditChunk(EditRoot(), place);
    fill(View(place), chunk.EditRegression());
    chunk.TidyRegression();
  }
}

void PointChain::ClearRegression() {
  for (std::size_t number = 0; number < ChunkCount(); ++number) {
    const Place place = PlaceOfChunk(Root(), number);
    if (!ChunkAt(Root(), place).Regression().empty()) {
      EditChunk(EditRoot(), place).ClearRegression();
    }
  }
}

// --- points that wait to be merged

PointChain::Late PointChain::PlaceLate(std::int32_t id, double x, double y, Duplicates duplicates) {
  if (late_ == nullptr) late_ = std::make_unique<LatePoints>();
  if (late_->IsOpen() && late_->Full()) Settle();
  if (!late_->IsOpen()) {
    if (x == last_x_ || !late_->Due(size_)) return Late::NotTaken;
    OpenLate(duplicates);
  }
  if (!late_->Takes(id)) return Late::NotTaken;
  if (late_->ForbidsDuplicates()) {
    const bool known = late_->Note(x);
    if (known && duplicates == Duplicates::Forbidden && OverwriteLate(x, y)) return Late::Overwrote;
  } else if (duplicates == Duplicates::Forbidden) {
    return Late::NotTaken;
  }
  AddLate(id, x, y);
  return Late::Inserted;
}

// For a point behind all others.
bool PointChain::AppendLate(std::int32_t id, double x, double y) {
  if (!late_->Takes(id)) return false;
  if (late_->ForbidsDuplicates()) late_->Note(x);
  AddLate(id, x, y);
  return true;
}

void PointChain::AddLate(std::int32_t id, double x, double y) {
  late_->Add(id, x, y);
  ++size_;
  if (x >= last_x_) last_x_ = x;
}

// The points go on waiting.
bool PointChain::OverwriteLate(double x, double y) {
  if (!late_->Overwrite(x, y)) {
    const Place place = PlaceNotBelow(*root_, x);
    if (place.group == root_->groups.size()) return false;
    CowPtr<PointChunk>& chunk = root_.Edit().groups[place.group].Edit().chunks[place.chunk];
    if (chunk->X()[place.offset] != x) return false;
    chunk.Edit().Set(place.offset, x, y);
  }
  if (x == last_x_) last_x_ = x;
  return true;
}

void PointChain::OpenLate(Duplicates duplicates) {
  late_->Open(size_, duplicates);
  if (!late_->ForbidsDuplicates()) return;
  for (const auto& group : root_->groups) {
    for (const auto& chunk : group->chunks) {
      for (const double x : chunk->X()) late_->Note(x);
    }
  }
}

void PointChain::SettleLate() const {
  const std::lock_guard lock(late_->Settling());
  if (!late_->IsOpen()) return;  // another reader was quicker
  const std::span<const double> x = late_->X();
  PointChain placed;
  std::swap(placed.root_, root_);
  placed.size_ = size_ - x.size();
  if (!placed.Empty()) placed.last_x_ = placed.At(placed.size_ - 1).x;
  if (late_->AreMany()) {
    // Where duplicates are forbidden there are none among those that wait.
    MergeBatch(placed, x, late_->Y(), Duplicates::Allowed, late_->FirstId() - 1);
  } else {
    for (std::size_t i = 0; i < x.size(); ++i) {
      const std::int32_t id = late_->FirstId() + static_cast<std::int32_t>(i);
      const bool behind = placed.Empty() || x[i] >= placed.last_x_;
      placed.Insert(behind ? placed.End() : placed.LowerPlace(x[i]), {id, x[i], late_->Y()[i], 0});
    }
  }
  std::swap(placed.root_, root_);
  late_->Close();
}

}  // namespace tarnwick
