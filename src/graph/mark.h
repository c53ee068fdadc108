// Marks: lines, points, arrows, boxes and texts in data coordinates, and their list ordered by ID.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/color.h"

namespace tarnwick {

enum class MarkType : std::uint8_t {
  Vertical = 0,
  Horizontal = 1,
  Point = 2,
  Line = 3,
  // Those behind have a stand-in among these four, for readers that know no others.
  Text = 4,       ///< the caption alone, from X1, Y1 on
  Arrow = 5,      ///< from X1, Y1 to its tip at X2, Y2
  Rectangle = 6,  ///< between two opposite corners
};
enum class MarkStatus : std::uint8_t { XAndY = 0, XAndY2 = 1, NotDrawn = 2 };

struct Mark {
  std::int32_t id = 0;
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;  ///< a point's x2 is its width in pixels
  Color color;
  std::string caption;
  MarkType type = MarkType::Vertical;
  MarkStatus status = MarkStatus::XAndY;
  bool operator==(const Mark&) const = default;
};

/// True of marks that have a second place, X2 and Y2.
constexpr bool HasEnd(MarkType type) {
  return type == MarkType::Line || type == MarkType::Arrow || type == MarkType::Rectangle;
}

/// The type nearest to it among the first four: a line for an arrow and for a rectangle's diagonal, a point for a text.
constexpr MarkType StandIn(MarkType type) {
  if (HasEnd(type)) return MarkType::Line;
  return type == MarkType::Text ? MarkType::Point : type;
}

/// The marks of one graph, ascending by ID, no two alike.
class MarkList {
 public:
  /// Stores a mark under the lowest free ID >= 1 (an empty caption becomes the ID) and makes it current.
  std::int32_t AddMark(Mark mark);
  /// Overwrites the mark with this ID or inserts it in its place.
  void SetMark(const Mark& mark);
  bool DeleteMark(std::int32_t id);
  void ClearMarks();
  const Mark* FindMark(std::int32_t id) const;
  const std::vector<Mark>& All() const { return marks_; }
  std::int32_t CurrentId() const { return current_; }
  void SetCurrentId(std::int32_t id) { current_ = id; }
  bool operator==(const MarkList&) const = default;

 private:
  std::vector<Mark> marks_;
  std::int32_t current_ = 0;
};

}  // namespace tarnwick
