// A graph's DataSets as a table of text: one column of X, one of Y for each DataSet, and their errors. Knows no graph file.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tarnwick {

class TSeries;
class TxyGraph;

struct DataTextOptions {
  std::string x_heading = "X";
  std::string separators =
      "\t";  ///< the first character separates; empty throws "No Text Separators supplied"
  /// X values of different DataSets share a row when they differ by no more than this, and by no more than this part of
  /// their size (else values all smaller than the tolerance would fall together).
  double x_tolerance = 1e-12;
  std::string x_format = {};  ///< X as dates of FormatDay; empty: as numbers
};

/// The table: a line of names, then rows in ascending X, or as the points came where that is how the line joins them and X turns
/// back (SharedRowsOf); a DataSet without a point at a row's X has an empty field there. Where all lines are broken stands a row
/// without values, which an import takes as that.
/// Numbers in their shortest text that reads back; names that hold a separator are quoted, a DataSet without a name has
/// "(col N)", its column from 0. Stored Y, not corrected. Errors of Y stand in a column behind it, those of X behind X where
/// all DataSets have the same, empty where a point has none; an import takes them as that. Throws Error.
std::string DataText(const std::vector<const TSeries*>& series, const DataTextOptions& options);

/// What such a table of the graph leaves out, a sentence; empty for nothing.
std::string LeftOutOfTable(const TxyGraph& graph);

/// All DataSets of a graph separated by commas, without tolerance: X headed by the first one's column. On a time axis X is
/// written as dates, where these keep it: not what passes within a millisecond, nor times of day and durations (under a year
/// from day 0).
std::string CsvText(const TxyGraph& graph);

/// Writes all DataSets of a graph separated by tabs: X headed "Time" on a time axis, else "Time (hours)".
void SaveDataText(const TxyGraph& graph, const std::filesystem::path& path);

}  // namespace tarnwick
