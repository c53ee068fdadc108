// What becomes of a DataSet's points when rows of its table come that a view shows. Knows DataSets and rows; asks nobody.
#pragma once

#include <cstdint>
#include <string>

#include "sources/database/thinned_view.h"

namespace tarnwick {

class Document;
class PointChain;
class TSeries;

/// A stretch of X, its ends among it; none where they fall.
struct Stretch {
  double from = 1;
  double to = 0;
  bool Holds(double x) const { return x >= from && x <= to; }
};

/// The first Y of `rows` in place of the points that lie in the view; those beside it stay, so many as the whole shows.
ThinnedRows WithView(const PointChain& points, const ThinnedRows& rows, const Stretch& view);

/// Some rows of the whole beside the points that there are, as many together as the whole shows; those of the view that was
/// looked at stay as they are.
ThinnedRows WithMoreRows(const PointChain& points, const ThinnedRows& rows, const Stretch& view);

/// All rows of the whole in place of the points beside the view that was looked at.
ThinnedRows WithEveryRow(const PointChain& points, const ThinnedRows& rows, const Stretch& view);

/// Looking elsewhere takes nothing back of what was fitted. Rows without a Y give no point, those of one X one each: what was
/// there before may have repeated none, so that it was read as a DataSet that must not.
void ReplacePoints(TSeries& series, const ThinnedRows& rows);

/// Since it was read, in whichever session: other rows would take that back.
bool WasEdited(const Document& document, const TSeries& series);

/// Notes of thinned DataSets that they were edited, so that whoever opens the graph again knows.
void RememberEdits(Document& document);

/// "thinned by the data base: 8 of 1000 rows in view of "y", zooming shows more"
std::string ShownRows(const TSeries& series, std::int64_t picked, std::int64_t rows);

}  // namespace tarnwick
