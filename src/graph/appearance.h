// How a graph looks apart from its axes, DataSets and marks: colours, fonts, margins, print placement, legend. Plain
// values as stored in a graph file; they know neither painter nor data.
#pragma once

#include <cstdint>
#include <string>

#include "base/color.h"
#include "base/font.h"
#include "base/line_style.h"

namespace tarnwick {

/// Colours, grid, title, fonts and options of a graph.
struct Appearance {
  bool duplicates_allowed = false;  ///< what a new DataSet of this graph starts with
  Color axes_color = Color::FromRgb(0x20, 0x20, 0x20);
  Color color = Color::FromRgb(0xFF, 0xFF, 0xFF);         ///< inside the plot rectangle
  Color margin_color = Color::FromRgb(0xFF, 0xFF, 0xFF);  ///< around it
  bool print_with_background = false;
  Color grid_color = Color::FromRgb(0xDC, 0xDC, 0xDC);
  LineStyle grid_line_style = LineStyle::Solid;
  bool grid_labels_shown = true;
  bool show_points_outside_plot_area = false;
  bool marks_are_shown = true;
  bool ticks_are_shown = true;
  std::string title_of_graph;
  std::int32_t min_steps = 5;
  std::int32_t max_steps = 50;
  Font font_for_axes_titles;
  Font font_for_title;
  Font font_for_labels;
  bool show_cross_at_zero = false;
  Color color_of_cross = Color::FromRgb(0x80, 0x80, 0x80);
  std::int32_t length_of_cross =
      12;  ///< pixels, from the centre to each end; 0 or less: across the whole plot
  bool print_style_for_lines = false;
  std::int32_t x_axis_series_index =
      -1;  ///< DataSet that gives the X axis its title, from 0; -1 none
  std::int32_t current_series_index = -1;  ///< from 0; -1 none
  std::string background_image_file;
  bool stretch_background = false;
  std::string data_directory;
  bool grid_drawn_last = false;  ///< over the DataSets instead of behind them
  bool operator==(const Appearance&) const = default;
};

/// Margins and offsets in screen pixels (1/96 inch), print placement in percent of the paper.
struct Dimensions {
  std::int32_t bottom_margin = 40;
  std::int32_t left_margin = 40;
  std::int32_t right_margin = 15;
  std::int32_t top_margin = 30;
  std::int32_t tick_length = 4;
  std::int32_t x_axis_title_offset = 4;
  std::int32_t x_axis_label_offset = 2;
  std::int32_t y_axis_title_offset = 4;
  std::int32_t y_axis_label_offset = 2;
  std::int32_t graph_title_offset = 16;
  std::int32_t print_x_offset_pct = 5;
  std::int32_t print_y_offset_pct = 5;
  std::int32_t print_scale_pct = 90;
  double hor_position = 0;  ///< window placement, fraction of the work space
  double ver_position = 0;
  double hor_size = 0;
  double ver_size = 0;
  bool operator==(const Dimensions&) const = default;
};

enum class LegendLayout : std::int32_t { Vertical = 0, Horizontal = 1, Free = 2 };

struct Legend {
  bool visible = true;
  Color color = Color::FromRgb(0xFF, 0xFF, 0xFF);
  std::int32_t border_style = 1;  ///< 0 none, 1 single line
  LegendLayout layout_mode = LegendLayout::Vertical;
  std::int32_t top =
      10;  ///< from the client's top edge; negative: of the lower edge from the client's lower edge
  std::int32_t left =
      10;  ///< likewise from the left; negative from the right, so that it stays there on resizing
  std::int32_t width = 0;  ///< 0: client width - 20
  std::int32_t height = 20;
  Font font;
  std::int32_t space_for_symbols = 28;  ///< pixels for the sample of line and symbol
  std::int32_t x_margin = 6;
  std::int32_t y_margin = 4;
  bool automatic =
      false;  ///< nobody chose its place: it is looked for in every size of the picture
  std::int32_t room_beside = 0;  ///< of the right margin, what an automatic one has for itself
  std::int32_t room_above = 0;   ///< likewise of the top margin
  bool no_room = false;          ///< an automatic one is hidden only for want of room
  bool operator==(const Legend&) const = default;
};

}  // namespace tarnwick
