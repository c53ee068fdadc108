// Points that wait to be merged into the chain.

#include <memory>
#include <mutex>
#include <utility>

#include "data/points/point_batch.h"
#include "data/points/point_chain.h"

namespace tarnwick {

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
    const Place place = LowerPlaceIn(*root_, x);
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
