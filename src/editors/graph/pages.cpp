#include "editors/graph/pages.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tarnwick {
namespace {

using Kind = GraphPart::Kind;
using Names = std::string_view;
using S = SectionId;

constexpr Names kTitle[] = {"Title", "Fonts"};
constexpr Names kPlotArea[] = {"Colors", "Grid", "View", "Cross at zero", "Background image"};
constexpr Names kAllAxes[] = {"Axes"};
constexpr Names kAxis[] = {"Title", "Range", "Scale", "Ticks", "Labels", "Position", "Grid"};
constexpr Names kDataSet[] = {"DataSet"};
constexpr Names kLook[] = {"View", "Line", "Symbols"};
constexpr Names kErrors[] = {"Errors"};
constexpr Names kBounds[] = {"Bounds"};
constexpr Names kRegression[] = {"Regression", "Base line"};
constexpr Names kCurves[] = {"Regression", "Fit model"};
constexpr Names kNewDataSets[] = {"DataSets", "New DataSets"};
constexpr Names kLegend[] = {"Legend", "Look", "Position"};
constexpr Names kMark[] = {"Mark", "Position"};
constexpr Names kMargins[] = {"Margins", "Distances"};
constexpr Names kPrint[] = {"Print"};
constexpr Names kPrintAndWindow[] = {"Print", "Window"};

constexpr PageGroups kTitlePage[] = {{S::Appearance, kTitle}};
constexpr PageGroups kPlotAreaPage[] = {{S::Appearance, kPlotArea}};
constexpr PageGroups kAllAxesPage[] = {{S::Appearance, kAllAxes}, {S::Dimensions, kAllAxes}};
constexpr PageGroups kAxisPage[] = {{S::Axis, kAxis}};
constexpr PageGroups kLookPage[] = {{S::DataSet, kDataSet}, {S::Style, kLook}};
constexpr PageGroups kErrorsPage[] = {{S::DataSet, kErrors}, {S::Style, kBounds}};
constexpr PageGroups kRegressionPage[] = {{S::DataSet, kRegression}, {S::Style, kCurves}};
constexpr PageGroups kNewDataSetsPage[] = {{S::Appearance, kNewDataSets}};
constexpr PageGroups kLegendPage[] = {{S::Legend, kLegend}};
constexpr PageGroups kMarksPage[] = {{S::Mark, kMark}};
constexpr PageGroups kMarginsPage[] = {{S::Dimensions, kMargins}};
constexpr PageGroups kPrintPage[] = {{S::Appearance, kPrint}, {S::Dimensions, kPrintAndWindow}};

constexpr GraphPart kWhole = {};

constexpr std::array kPages = {
    Page{"Title and Fonts", "Edit Title", {Kind::Title}, kTitlePage},
    Page{"Plot Area", "Edit Plot Area", kWhole, kPlotAreaPage},
    Page{"All Axes", "Edit Axes", kWhole, kAllAxesPage},
    Page{"X Axis", "Edit X Axis", PartOf(AxisId::X), kAxisPage, true},
    Page{"Y Axis", "Edit Y Axis", PartOf(AxisId::Y), kAxisPage, true},
    Page{"Y2 Axis", "Edit Y2 Axis", PartOf(AxisId::Y2), kAxisPage, true},
    Page{"DataSets", "Edit DataSets", {Kind::DataSet}, kLookPage},
    Page{"Errors and Bounds", "Edit Errors", {Kind::DataSet}, kErrorsPage, true},
    Page{"Regression", "Edit Regression", {Kind::DataSet}, kRegressionPage, true},
    Page{"New DataSets", "Edit DataSets", kWhole, kNewDataSetsPage, true},
    Page{"Legend", "Edit Legend", {Kind::Legend}, kLegendPage},
    Page{"Marks", "Edit Marks", {Kind::Mark}, kMarksPage},
    Page{"Margins", "Edit Margins", kWhole, kMarginsPage},
    Page{"Page and Print", "Edit Page", kWhole, kPrintPage},
};

/// Rows that one looks for before the others of their group.
constexpr std::array kFirst = {
    std::pair{S::Axis, 7},  // the minimum, stored behind the maximum
    std::pair{S::Axis, 5},  // what a scale is, before its ticks
    std::pair{S::Axis, 10}, std::pair{S::Axis, 13}, std::pair{S::Appearance, 19},
};

bool StandsFirst(const PageField& field) {
  const std::pair of_field{field.section, SectionOf(field.section).rows[field.row].number};
  return std::ranges::find(kFirst, of_field) != kFirst.end();
}

bool IsAbout(const Page& page, const GraphPart& part) {
  if (page.part.kind != part.kind) return false;
  return part.kind != Kind::Axis || page.part == part;
}

}  // namespace

std::span<const Page> Pages() {
  return kPages;
}

std::vector<PageField> FieldsOf(const Page& page) {
  std::vector<PageField> fields;
  for (const PageGroups& groups : page.content) {
    const std::vector<FieldRow>& rows = SectionOf(groups.section).rows;
    for (const std::string_view group : groups.groups) {
      const auto begin = static_cast<std::ptrdiff_t>(fields.size());
      for (std::size_t row = 0; row < rows.size(); ++row) {
        if (rows[row].look.group == group) fields.push_back({groups.section, row});
      }
      std::stable_partition(fields.begin() + begin, fields.end(), StandsFirst);
    }
  }
  return fields;
}

std::size_t PageOf(const GraphPart& part) {
  if (part.kind == Kind::Graph) return 0;
  const auto found =
      std::ranges::find_if(kPages, [&](const Page& page) { return IsAbout(page, part); });
  return static_cast<std::size_t>(found - kPages.begin());
}

}  // namespace tarnwick
