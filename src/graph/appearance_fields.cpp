#include "graph/appearance_fields.h"

namespace tarnwick {
namespace {

constexpr AllowedRange kLineStyles = {0, 5};

constexpr Field<Appearance> kAppearanceFields[] = {
    {1, "DuplicatesAllowed", &Appearance::duplicates_allowed},
    {2, "AxesColor", &Appearance::axes_color},
    {3, "Color", &Appearance::color},
    {4, "MarginColor", &Appearance::margin_color},
    {5, "PrintwithBackground", &Appearance::print_with_background},
    {7, "GridColor", &Appearance::grid_color},
    {8, "GridLineStyle", kVia<&Appearance::grid_line_style>, kLineStyles},
    {9, "GridLabelsShown", &Appearance::grid_labels_shown},
    {10, "ShowPointsOutsidePlotArea", &Appearance::show_points_outside_plot_area},
    {11, "MarksAreShown", &Appearance::marks_are_shown},
    {12, "TicksAreShown", &Appearance::ticks_are_shown},
    {13, "TitleOfGraph", &Appearance::title_of_graph},
    {14, "MinimumStepsShown", &Appearance::min_steps},
    {15, "MaximumStepsShown", &Appearance::max_steps},
    {16, "FontForAxesTitles", &Appearance::font_for_axes_titles},
    {17, "FontForTitle", &Appearance::font_for_title},
    {18, "FontForLabels", &Appearance::font_for_labels},
    {19, "ShowCrossAtZero", &Appearance::show_cross_at_zero},
    {20, "ColorOfCross", &Appearance::color_of_cross},
    {21, "LengthOfCross", &Appearance::length_of_cross},
    {22, "PrintStyleforLines", &Appearance::print_style_for_lines},
    {35, "XAxisSerIndex", &Appearance::x_axis_series_index},
    {36, "CurrSerIndex", &Appearance::current_series_index},
    {38, "bkgdImageFile", &Appearance::background_image_file},
    {39, "stretchBkgd", &Appearance::stretch_background},
    {40, "dataDirectory", &Appearance::data_directory},
    {41,
     "GridDrawnLast",
     &Appearance::grid_drawn_last,
     {},
     [](const Appearance& appearance) { return appearance.grid_drawn_last; }},
};

constexpr Field<Dimensions> kDimensionsFields[] = {
    {1, "BottomMargin", &Dimensions::bottom_margin},
    {2, "LeftMargin", &Dimensions::left_margin},
    {3, "RightMargin", &Dimensions::right_margin},
    {4, "TopMargin", &Dimensions::top_margin},
    {5, "TickLength", &Dimensions::tick_length},
    {6, "XAxisTitleOffset", &Dimensions::x_axis_title_offset},
    {7, "XAxisLabelOffset", &Dimensions::x_axis_label_offset},
    {8, "YAxisTitleOffset", &Dimensions::y_axis_title_offset},
    {9, "YAxisLabelOffset", &Dimensions::y_axis_label_offset},
    {10, "GraphTitleOffset", &Dimensions::graph_title_offset},
    {11, "PrintXOffsetPct", &Dimensions::print_x_offset_pct},
    {12, "PrintYOffsetPct", &Dimensions::print_y_offset_pct},
    {13, "PrintScalePct", &Dimensions::print_scale_pct},
    {14, "HorPosition", &Dimensions::hor_position},
    {15, "VerPosition", &Dimensions::ver_position},
    {16, "HorSize", &Dimensions::hor_size},
    {17, "VerSize", &Dimensions::ver_size},
};

constexpr Field<Legend> kLegendFields[] = {
    {1, "LegendIsVisible", &Legend::visible},
    {2, "LegendColor", &Legend::color},
    {3, "borderStyle", &Legend::border_style},
    {4, "LayoutMode", kVia<&Legend::layout_mode>, {0, 2}},
    {5, "Legendtop", &Legend::top},
    {6, "Legendleft", &Legend::left},
    {7, "Legendwidth", &Legend::width},
    {8, "Legendheight", &Legend::height},
    {9, "Legendfont", &Legend::font},
    {10, "SpaceForSymbols", &Legend::space_for_symbols},
    {11, "XMargin", &Legend::x_margin},
    {12, "YMargin", &Legend::y_margin},
};

constexpr Field<SeriesStyle> kSeriesFields[] = {
    {1, "", &SeriesStyle::visible},
    {2, "", &SeriesStyle::connect_points},
    {3, "", &SeriesStyle::show_symbols},
    {4, "", &SeriesStyle::fill_symbols},
    {5, "", &SeriesStyle::line_color},
    {6, "", &SeriesStyle::symbol_color},
    {7, "", kVia<&SeriesStyle::symbol>, {0, 8}},
    {8, "", &SeriesStyle::symbol_size, {1, 200}},
    {9, "", kVia<&SeriesStyle::line_style>, kLineStyles},
    {10, "", &SeriesStyle::line_width, {1, 100}},
    {11, "FirstAxis", &SeriesStyle::first_axis},
    {12, "UpperBound", &SeriesStyle::upper_bound},
    {13, "LowerBound", &SeriesStyle::lower_bound},
    {14, "BoundsMode", kVia<&SeriesStyle::bounds_mode>, {0, 2}},
    {15, "BoundLineMode", kVia<&SeriesStyle::bound_line_mode>, {0, 3}},
    {16, "RegressionLineColor", &SeriesStyle::regression_line_color},
    {17, "RegressionLineStyle", kVia<&SeriesStyle::regression_line_style>, kLineStyles},
    {18, "ShowInLegend", &SeriesStyle::show_in_legend},
    {19, "", &SeriesStyle::bound_line_color},
    {20, "", kVia<&SeriesStyle::bound_line_style>, kLineStyles},
    {21, "", &SeriesStyle::model_curve_color},
    {22, "", &SeriesStyle::selectable},
};

constexpr Field<Mark> kMarkFields[] = {
    {1, "ID ", &Mark::id},
    {2, "X1Value", &Mark::x1},
    {3, "Y1Value", &Mark::y1},
    {4, "X2Value", &Mark::x2},
    {5, "Y2Value", &Mark::y2},
    {6, "Color", &Mark::color},
    {7, "Caption", &Mark::caption},
    {8, "TypeOfMark", kVia<&Mark::type>, {0, 3}},
    {9, "WhenDrawn", kVia<&Mark::status>, {0, 2}},
};

}  // namespace

FieldTable<Appearance> AppearanceFields() {
  return kAppearanceFields;
}
FieldTable<Dimensions> DimensionsFields() {
  return kDimensionsFields;
}
FieldTable<Legend> LegendFields() {
  return kLegendFields;
}
FieldTable<SeriesStyle> SeriesFields() {
  return kSeriesFields;
}
FieldTable<Mark> MarkFields() {
  return kMarkFields;
}

}  // namespace tarnwick
