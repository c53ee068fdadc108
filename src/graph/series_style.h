// How one DataSet is drawn: plain values as stored in its Series section. Knows neither data nor painter.
#pragma once

#include <cstdint>

#include "base/color.h"
#include "graph/appearance.h"

namespace tarnwick {

enum class SymbolShape : std::int32_t {
  Circle = 0,
  Square = 1,
  Diamond = 2,
  TriangleUp = 3,
  TriangleDown = 4,
  Plus = 5,
  Cross = 6,
  Star = 7,
  Dot = 8
};

/// What UpperBound and LowerBound mean.
enum class BoundsMode : std::int32_t { Absolute = 0, StandardDeviations = 1, PercentOfMean = 2 };
enum class BoundLineMode : std::int32_t { None = 0, Upper = 1, Lower = 2, Both = 3 };

/// Which points a line joins.
enum class LineOrder : std::int32_t {
  ByX = 0,         ///< neighbours in X
  AsTheyCame = 1,  ///< in the order in which they came, that of their ids
};

/// Drawing attributes of one DataSet, as stored in its Series section (key numbers in brackets).
struct SeriesStyle {
  bool visible = true;                                             // [1]
  bool connect_points = true;                                      // [2]
  bool show_symbols = true;                                        // [3]
  bool fill_symbols = true;                                        // [4]
  Color line_color;                                                // [5]
  Color symbol_color;                                              // [6]
  SymbolShape symbol = SymbolShape::Circle;                        // [7]
  std::int32_t symbol_size = 6;                                    // [8] pixels across
  LineStyle line_style = LineStyle::Solid;                         // [9]
  std::int32_t line_width = 1;                                     // [10] pixels
  bool first_axis = true;                                          // [11] false: drawn against Y2
  double upper_bound = 0;                                          // [12]
  double lower_bound = 0;                                          // [13]
  BoundsMode bounds_mode = BoundsMode::Absolute;                   // [14]
  BoundLineMode bound_line_mode = BoundLineMode::None;             // [15]
  Color regression_line_color = Color::FromRgb(0xC0, 0x20, 0x20);  // [16]
  LineStyle regression_line_style = LineStyle::Solid;              // [17]
  std::int32_t show_in_legend = 1;                                 // [18] 0 no, else yes
  Color bound_line_color = Color::FromRgb(0x80, 0x80, 0x80);       // [19]
  LineStyle bound_line_style = LineStyle::Dash;                    // [20]
  Color model_curve_color = Color::FromRgb(0xC0, 0x20, 0x20);      // [21]
  bool selectable = true;                 // [22] offered in the popup menu and to picking
  LineOrder line_order = LineOrder::ByX;  // [23]
  bool in_panel = false;  // [24] drawn in the panel under the plot, against neither Y nor Y2
  bool operator==(const SeriesStyle&) const = default;
};

}  // namespace tarnwick
