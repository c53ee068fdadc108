#include "graph/appearance_fields.h"

#include <array>

namespace tarnwick {
namespace {

using namespace control;
using A = Appearance;
using D = Dimensions;
using L = Legend;
using S = SeriesStyle;
using M = Mark;

constexpr AllowedRange kLineStyleRange = {0, 5};
constexpr FieldControl kPixels = WholeWithin(0, 1000, "px");

constexpr std::array kBorders = {FieldChoice{0, "None"}, FieldChoice{1, "Single line"}};

constexpr std::array kLegendLayouts = {
    FieldChoice{LegendLayout::Vertical, "One below the other"},
    FieldChoice{LegendLayout::Horizontal, "Side by side"},
    FieldChoice{LegendLayout::Free, "Freely, in a box of its own size"},
};

constexpr std::array kSymbols = {
    FieldChoice{SymbolShape::Circle, "Circle"},
    FieldChoice{SymbolShape::Square, "Square"},
    FieldChoice{SymbolShape::Diamond, "Diamond"},
    FieldChoice{SymbolShape::TriangleUp, "Triangle, point up"},
    FieldChoice{SymbolShape::TriangleDown, "Triangle, point down"},
    FieldChoice{SymbolShape::Plus, "Plus"},
    FieldChoice{SymbolShape::Cross, "Cross"},
    FieldChoice{SymbolShape::Star, "Star"},
    FieldChoice{SymbolShape::Dot, "Dot"},
};

constexpr std::array kLineOrders = {
    FieldChoice{LineOrder::ByX, "By X"},
    FieldChoice{LineOrder::AsTheyCame, "In the order in which they came"},
};

constexpr std::array kBoundsModes = {
    FieldChoice{BoundsMode::Absolute, "Values of Y"},
    FieldChoice{BoundsMode::StandardDeviations, "Standard deviations from the mean"},
    FieldChoice{BoundsMode::PercentOfMean, "Percent of the mean"},
};

constexpr std::array kBoundLineModes = {
    FieldChoice{BoundLineMode::None, "None"},
    FieldChoice{BoundLineMode::Upper, "Upper bound"},
    FieldChoice{BoundLineMode::Lower, "Lower bound"},
    FieldChoice{BoundLineMode::Both, "Both bounds"},
};

constexpr std::array kMarkTypes = {
    FieldChoice{MarkType::Vertical, "Vertical Line"},
    FieldChoice{MarkType::Horizontal, "Horizontal Line"},
    FieldChoice{MarkType::Point, "Point"},
    FieldChoice{MarkType::Line, "Line"},
    FieldChoice{MarkType::Text, "Text"},
    FieldChoice{MarkType::Arrow, "Arrow"},
    FieldChoice{MarkType::Rectangle, "Rectangle"},
};

constexpr std::array kMarkStatuses = {
    FieldChoice{MarkStatus::XAndY, "Draw in X and Y"},
    FieldChoice{MarkStatus::XAndY2, "Draw in X and Y2"},
    FieldChoice{MarkStatus::NotDrawn, "Do not Draw"},
};

constexpr Field<Appearance> kAppearanceFields[] = {
    {1,
     "DuplicatesAllowed",
     &A::duplicates_allowed,
     {"Several points at one X", "New DataSets", kCheckBox}},
    {2, "AxesColor", &A::axes_color, {"Axes", "Colors", kColor}},
    {3, "Color", &A::color, {"Plot area", "Colors", kColor}},
    {4, "MarginColor", &A::margin_color, {"Margins", "Colors", kColor}},
    {5,
     "PrintwithBackground",
     &A::print_with_background,
     {"Print the background", "Print", kCheckBox}},
    {7, "GridColor", &A::grid_color, {"Color", "Grid", kColor}},
    {8, "GridLineStyle", kVia<&A::grid_line_style>, {"Lines", "Grid", kLineStyle}, kLineStyleRange},
    {9, "GridLabelsShown", &A::grid_labels_shown, {"Show labels", "Axes", kCheckBox}},
    {10,
     "ShowPointsOutsidePlotArea",
     &A::show_points_outside_plot_area,
     {"Show points outside the plot area", "View", kCheckBox}},
    {11, "MarksAreShown", &A::marks_are_shown, {"Show marks", "View", kCheckBox}},
    {12, "TicksAreShown", &A::ticks_are_shown, {"Show ticks", "Axes", kCheckBox}},
    {13, "TitleOfGraph", &A::title_of_graph, {"Title", "Title", kText}},
    {14, "MinimumStepsShown", &A::min_steps, {"Fewest steps", "Axes", WholeWithin(1, 35)}},
    {15, "MaximumStepsShown", &A::max_steps, {"Most steps", "Axes", WholeWithin(3, 90)}},
    {16, "FontForAxesTitles", &A::font_for_axes_titles, {"Titles of axes", "Fonts", kFont}},
    {17, "FontForTitle", &A::font_for_title, {"Title of the graph", "Fonts", kFont}},
    {18, "FontForLabels", &A::font_for_labels, {"Labels", "Fonts", kFont}},
    {19,
     "ShowCrossAtZero",
     &A::show_cross_at_zero,
     {"Show a cross at zero", "Cross at zero", kCheckBox}},
    {20, "ColorOfCross", &A::color_of_cross, {"Color", "Cross at zero", kColor}},
    {21,
     "LengthOfCross",
     &A::length_of_cross,
     {"Length (0: across the plot)", "Cross at zero", kPixels}},
    {22,
     "PrintStyleforLines",
     &A::print_style_for_lines,
     {"Dash and dot lines", "Print", kCheckBox}},
    {35,
     "XAxisSerIndex",
     &A::x_axis_series_index,
     {"Title of the X axis from", "DataSets", kDataSet}},
    {36, "CurrSerIndex", &A::current_series_index, {"Current DataSet", "DataSets", kDataSet}},
    {38, "bkgdImageFile", &A::background_image_file, {"File", "Background image", kFile}},
    {39,
     "stretchBkgd",
     &A::stretch_background,
     {"Stretch over the plot area", "Background image", kCheckBox}},
    {40, "dataDirectory", &A::data_directory, {"Folder of the files", "DataSets", kFolder}},
    {41,
     "GridDrawnLast",
     &A::grid_drawn_last,
     {"Draw over the DataSets", "Grid", kCheckBox},
     {},
     [](const A& a) { return a.grid_drawn_last; }},
};

constexpr Field<Dimensions> kDimensionsFields[] = {
    {1, "BottomMargin", &D::bottom_margin, {"Bottom", "Margins", kPixels}},
    {2, "LeftMargin", &D::left_margin, {"Left", "Margins", kPixels}},
    {3, "RightMargin", &D::right_margin, {"Right", "Margins", kPixels}},
    {4, "TopMargin", &D::top_margin, {"Top", "Margins", kPixels}},
    {5, "TickLength", &D::tick_length, {"Length of ticks", "Axes", WholeWithin(0, 40, "px")}},
    {6, "XAxisTitleOffset", &D::x_axis_title_offset, {"Title of the X axis", "Distances", kPixels}},
    {7,
     "XAxisLabelOffset",
     &D::x_axis_label_offset,
     {"Labels of the X axis", "Distances", WholeWithin(0, 200, "px")}},
    {8,
     "YAxisTitleOffset",
     &D::y_axis_title_offset,
     {"Titles of the Y axes", "Distances", kPixels}},
    {9,
     "YAxisLabelOffset",
     &D::y_axis_label_offset,
     {"Labels of the Y axes", "Distances", WholeWithin(0, 200, "px")}},
    {10, "GraphTitleOffset", &D::graph_title_offset, {"Title of the graph", "Distances", kPixels}},
    {11,
     "PrintXOffsetPct",
     &D::print_x_offset_pct,
     {"From the left", "Print", WholeWithin(0, 100, "%")}},
    {12,
     "PrintYOffsetPct",
     &D::print_y_offset_pct,
     {"From the top", "Print", WholeWithin(0, 100, "%")}},
    {13, "PrintScalePct", &D::print_scale_pct, {"Size", "Print", WholeWithin(1, 100, "%")}},
    {14,
     "HorPosition",
     &D::hor_position,
     {"Left edge, share of the width", "Window", RealWithin(0, 1)}},
    {15,
     "VerPosition",
     &D::ver_position,
     {"Top edge, share of the height", "Window", RealWithin(0, 1)}},
    {16, "HorSize", &D::hor_size, {"Share of the width", "Window", RealWithin(0, 1)}},
    {17, "VerSize", &D::ver_size, {"Share of the height", "Window", RealWithin(0, 1)}},
};

constexpr Field<Legend> kLegendFields[] = {
    {1, "LegendIsVisible", &L::visible, {"Show the legend", "Legend", kCheckBox}},
    {2, "LegendColor", &L::color, {"Background", "Look", kColor}},
    {3, "borderStyle", &L::border_style, {"Border", "Look", ChoiceOf(kBorders)}},
    {4,
     "LayoutMode",
     kVia<&L::layout_mode>,
     {"DataSets stand", "Legend", ChoiceOf(kLegendLayouts)},
     {0, 2}},
    {5,
     "Legendtop",
     &L::top,
     {"From the top (below 0: from the bottom)", "Position", WholeWithin(-10000, 10000, "px")}},
    {6,
     "Legendleft",
     &L::left,
     {"From the left (below 0: from the right)", "Position", WholeWithin(-10000, 10000, "px")}},
    {7,
     "Legendwidth",
     &L::width,
     {"Width (0: by the graph)", "Position", WholeWithin(0, 10000, "px")}},
    {8, "Legendheight", &L::height, {"Height", "Position", WholeWithin(0, 10000, "px")}},
    {9, "Legendfont", &L::font, {"Font", "Look", kFont}},
    {10, "SpaceForSymbols", &L::space_for_symbols, {"Room for line and symbol", "Look", kPixels}},
    {11, "XMargin", &L::x_margin, {"Margin left and right", "Look", kPixels}},
    {12, "YMargin", &L::y_margin, {"Margin above and below", "Look", kPixels}},
    {13,
     "AutoPlace",
     &L::automatic,
     {"Where it hides least, in every size", "Position", kCheckBox},
     {},
     [](const L& legend) { return legend.automatic; }},
    {14,
     "RoomBeside",
     &L::room_beside,
     {"Room beside the plot", "Position", Hidden("follows from where the legend finds its place")},
     {0, 10000},
     [](const L& legend) { return legend.room_beside != 0; }},
    {15,
     "RoomAbove",
     &L::room_above,
     {"Room above the plot", "Position", Hidden("follows from where the legend finds its place")},
     {0, 10000},
     [](const L& legend) { return legend.room_above != 0; }},
    {16,
     "NoRoom",
     &L::no_room,
     {"Hidden for want of room", "Position", Hidden("follows from the size of the picture")},
     {},
     [](const L& legend) { return legend.no_room; }},
};

constexpr Field<SeriesStyle> kSeriesFields[] = {
    {1, "", &S::visible, {"Show the DataSet", "View", kCheckBox}},
    {2, "", &S::connect_points, {"Connect the points", "Line", kCheckBox}},
    {3, "", &S::show_symbols, {"Show symbols", "Symbols", kCheckBox}},
    {4, "", &S::fill_symbols, {"Filled", "Symbols", kCheckBox}},
    {5, "", &S::line_color, {"Color", "Line", kColor}},
    {6, "", &S::symbol_color, {"Color", "Symbols", kColor}},
    {7,
     "",
     kVia<&S::symbol>,
     {"Symbol", "Symbols", ChoiceOf(kSymbols, ControlKind::Symbol)},
     {0, 8}},
    {8, "", &S::symbol_size, {"Size", "Symbols", WholeWithin(1, 200, "px")}, {1, 200}},
    {9, "", kVia<&S::line_style>, {"Style", "Line", kLineStyle}, kLineStyleRange},
    {10, "", &S::line_width, {"Width", "Line", WholeWithin(1, 100, "px")}, {1, 100}},
    {11, "FirstAxis", &S::first_axis, {"Against the first Y axis", "View", kCheckBox}},
    {12, "UpperBound", &S::upper_bound, {"Upper bound", "Bounds", kNumber}},
    {13, "LowerBound", &S::lower_bound, {"Lower bound", "Bounds", kNumber}},
    {14,
     "BoundsMode",
     kVia<&S::bounds_mode>,
     {"Bounds are", "Bounds", ChoiceOf(kBoundsModes)},
     {0, 2}},
    {15,
     "BoundLineMode",
     kVia<&S::bound_line_mode>,
     {"Lines at", "Bounds", ChoiceOf(kBoundLineModes)},
     {0, 3}},
    {16,
     "RegressionLineColor",
     &S::regression_line_color,
     {"Color of the line", "Regression", kColor}},
    {17,
     "RegressionLineStyle",
     kVia<&S::regression_line_style>,
     {"Style of the line", "Regression", kLineStyle},
     kLineStyleRange},
    {18, "ShowInLegend", &S::show_in_legend, {"Show in the legend", "View", kCheckBox}},
    {19, "", &S::bound_line_color, {"Color", "Bounds", kColor}},
    {20, "", kVia<&S::bound_line_style>, {"Style", "Bounds", kLineStyle}, kLineStyleRange},
    {21, "", &S::model_curve_color, {"Color of the curve", "Fit model", kColor}},
    {22, "", &S::selectable, {"Can be chosen with the mouse", "View", kCheckBox}},
    // Absent from a file means by X, what files without this key expect.
    {23,
     "LineOrder",
     kVia<&S::line_order>,
     {"Points are joined", "Line", ChoiceOf(kLineOrders)},
     {0, 1},
     [](const S& s) { return s.line_order != LineOrder::ByX; }},
    {24,
     "InPanel",
     &S::in_panel,
     {"In a panel under the plot", "View", kCheckBox},
     {},
     [](const S& s) { return s.in_panel; }},
};

constexpr Field<Mark> kMarkFields[] = {
    {1, "ID ", &M::id, {"ID", "Mark", ReadOnly("given to a mark when it is added")}},
    {2, "X1Value", &M::x1, {"X of the mark or its origin", "Position", kMoment}},
    {3, "Y1Value", &M::y1, {"Y of the mark or its origin", "Position", kMoment}},
    {4, "X2Value", &M::x2, {"X of the end, or width of a point", "Position", kMoment}},
    {5, "Y2Value", &M::y2, {"Y of the end", "Position", kMoment}},
    {6, "Color", &M::color, {"Color", "Mark", kColor}},
    {7, "Caption", &M::caption, {"Text", "Mark", kText}},
    {8,
     "TypeOfMark",
     Property<Mark, std::int32_t>{
         [](const M& m) { return static_cast<std::int32_t>(StandIn(m.type)); },
         [](M& m, std::int32_t type) { m.type = static_cast<MarkType>(type); }},
     {"Type of four", "Mark", Hidden("stands for the type in readers that know four types")},
     {0, 3}},
    {9, "WhenDrawn", kVia<&M::status>, {"Status", "Mark", ChoiceOf(kMarkStatuses)}, {0, 2}},
    {10,
     "ShapeOfMark",
     kVia<&M::type>,
     {"Type", "Mark", ChoiceOf(kMarkTypes)},
     {0, 6},
     [](const M& m) { return StandIn(m.type) != m.type; }},
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
