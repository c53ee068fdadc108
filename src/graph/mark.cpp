#include "graph/mark.h"

#include <algorithm>

namespace tarnwick {
namespace {

/// The first mark whose ID is not below `id`.
template <class Marks>
auto LowerBoundOf(Marks& marks, std::int32_t id) {
  return std::lower_bound(marks.begin(), marks.end(), id,
                          [](const Mark& mark, std::int32_t value) { return mark.id < value; });
}

}  // namespace

std::int32_t MarkList::AddMark(Mark mark) {
  mark.id = 1;
  for (const Mark& other : marks_) {
    if (other.id == mark.id) ++mark.id;
  }
  if (mark.caption.empty()) mark.caption = std::to_string(mark.id);
  SetMark(mark);
  current_ = mark.id;
  return mark.id;
}

void MarkList::SetMark(const Mark& mark) {
  const auto place = LowerBoundOf(marks_, mark.id);
  if (place != marks_.end() && place->id == mark.id) {
    *place = mark;
  } else {
    marks_.insert(place, mark);
  }
}

bool MarkList::DeleteMark(std::int32_t id) {
  const auto place = LowerBoundOf(marks_, id);
  if (place == marks_.end() || place->id != id) return false;
  marks_.erase(place);
  return true;
}

void MarkList::ClearMarks() {
  marks_.clear();
}

const Mark* MarkList::FindMark(std::int32_t id) const {
  const auto place = LowerBoundOf(marks_, id);
  return place != marks_.end() && place->id == id ? &*place : nullptr;
}

}  // namespace tarnwick
