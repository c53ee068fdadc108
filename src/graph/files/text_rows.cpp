#include "graph/files/text_rows.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "data/import/piece_finder.h"

namespace tarnwick {
namespace {

/// What one DataSet's gaps become in the table.
struct GapsOfColumn {
  std::vector<double> x;                      // of the points so far
  std::vector<std::size_t> certain;           // places before which a row without values stands
  std::vector<std::size_t> uncertain;         // places before which other DataSets have rows
  std::size_t lost = 0;                       // places between two rows that follow one another
  bool gap_above = false, row_above = false;  // since the last point
};

/// Whether the other's points stand in rows of the leader's, in the order of its line.
bool Follows(const TSeries& other, const TSeries& leader, double tolerance) {
  LineCursor row(leader), cursor(other);
  for (; !row.AtEnd() && !cursor.AtEnd(); row.Next()) {
    if (SharesRow(cursor.X(), row.X(), tolerance)) cursor.Next();
  }
  return cursor.AtEnd();
}

}  // namespace

LineCursor::LineCursor(const TSeries& series)
    : points_(series.Points()), errors_(series.Errors()), way_(WayOf(series)) {
  Settle();
}

void LineCursor::Next() {
  ++place_;
  ++offset_;
  while (next_break_ < way_.breaks.size() && Break() < place_) ++next_break_;
  Settle();
}

void LineCursor::Settle() {
  if (AtEnd()) return;
  if (!FollowsX()) {
    point_ = points_.At(way_.order[place_]);
    return;
  }
  while (offset_ == view_.x.size()) {
    view_ = points_.Chunk(next_chunk_++);
    offset_ = 0;
  }
  point_ = {view_.chunk->Id(offset_), view_.x[offset_], view_.y[offset_]};
}

std::vector<LineCursor> CursorsOf(const std::vector<const TSeries*>& series) {
  std::vector<LineCursor> cursors;
  cursors.reserve(series.size());
  for (const TSeries* const one : series) cursors.emplace_back(*one);
  return cursors;
}

bool SharesRow(double x, double row_x, double tolerance) {
  if (x == row_x) return true;
  const double difference = std::abs(x - row_x);
  return difference <= tolerance && difference <= tolerance * std::abs(row_x);
}

std::vector<SharedRows> SharedRowsOf(const std::vector<const TSeries*>& series, double tolerance) {
  std::vector<std::size_t> left(series.size());
  for (std::size_t i = 0; i < left.size(); ++i) left[i] = i;
  std::vector<std::size_t> loops;
  std::ranges::copy_if(left, std::back_inserter(loops),
                       [&](std::size_t number) { return !WayOf(*series[number]).order.empty(); });
  std::vector<SharedRows> blocks;
  while (!loops.empty()) {
    const std::size_t leader = *std::ranges::max_element(
        loops, {}, [&](std::size_t number) { return series[number]->PointCount(); });
    SharedRows block{{leader}, true};
    std::erase(left, leader);
    for (const std::size_t number : left) {
      if (Follows(*series[number], *series[leader], tolerance)) block.columns.push_back(number);
    }
    const auto has_place = [&](std::size_t number) {
      return std::ranges::find(block.columns, number) != block.columns.end();
    };
    std::erase_if(left, has_place);
    std::erase_if(loops, has_place);
    blocks.push_back(std::move(block));
  }
  if (!left.empty()) blocks.push_back({std::move(left), false});
  return blocks;
}

const LineCursor* NextRowOf(const SharedRows& block, const std::vector<LineCursor>& cursors) {
  if (block.follows_first) {
    const LineCursor& first = cursors[block.columns.front()];
    return first.AtEnd() ? nullptr : &first;
  }
  const LineCursor* next = nullptr;
  for (const std::size_t column : block.columns) {
    const LineCursor& cursor = cursors[column];
    if (!cursor.AtEnd() && (next == nullptr || cursor.X() < next->X())) next = &cursor;
  }
  return next;
}

bool BreaksAll(const SharedRows& block, const std::vector<LineCursor>& cursors) {
  bool breaks = false;
  for (const std::size_t column : block.columns) {
    const LineCursor& cursor = cursors[column];
    if (cursor.AtEnd() || !cursor.HasBegun()) continue;
    if (!cursor.BeginsPiece()) return false;
    breaks = true;
  }
  return breaks;
}

std::string GapsLost(const std::vector<const TSeries*>& series, double tolerance) {
  std::vector<LineCursor> cursors = CursorsOf(series);
  if (std::ranges::none_of(cursors, &LineCursor::HasGaps)) return "";
  std::vector<GapsOfColumn> columns(series.size());
  const auto take_row = [&](const LineCursor&, const std::vector<bool>& here) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      GapsOfColumn& column = columns[i];
      if (!here[i]) {
        column.row_above = true;
        continue;
      }
      const std::size_t place = cursors[i].Place();
      if (column.gap_above) {
        column.certain.push_back(place);
      } else if (cursors[i].BeginsPiece()) {
        if (column.row_above) {
          column.uncertain.push_back(place);
        } else {
          ++column.lost;
        }
      }
      column.x.push_back(cursors[i].X());
      column.gap_above = column.row_above = false;
    }
  };
  ForEachRow(SharedRowsOf(series, tolerance), cursors, tolerance, take_row,
             [&](const SharedRows& block) {
               for (const std::size_t i : block.columns) columns[i].gap_above = true;
             });
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const GapsOfColumn& column = columns[i];
    const std::size_t seen = GapsInEvenSteps(column.x, column.uncertain, column.certain).size();
    const std::size_t lost = column.lost + column.uncertain.size() - seen;
    if (lost == 0) continue;
    return BrokenAt(*series[i], lost) +
           " where the table cannot show it, since other DataSets go on there. A graph file keeps "
           "them.";
  }
  return "";
}

}  // namespace tarnwick
