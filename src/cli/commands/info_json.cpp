#include "cli/commands/info_json.h"

#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "base/number_text.h"
#include "cli/options/function_input.h"
#include "data/series/data_series_file.h"
#include "graph/appearance_fields.h"
#include "graph/axes/axis_fields.h"
#include "graph/files/graph_file.h"
#include "graph/graph_state.h"

namespace tarnwick::cli {
namespace {

// The stored Series fields have no names of their own.
constexpr std::pair<int, std::string_view> kSeriesNames[] = {
    {1, "Visible"},          {2, "ConnectPoints"}, {3, "ShowSymbols"},     {4, "FillSymbols"},
    {5, "LineColor"},        {6, "SymbolColor"},   {7, "Symbol"},          {8, "SymbolSize"},
    {9, "LineStyle"},        {10, "LineWidth"},    {19, "BoundLineColor"}, {20, "BoundLineStyle"},
    {21, "ModelCurveColor"}, {22, "Selectable"}};

std::string KeyOf(const FieldView& field) {
  if (!field.key.empty()) return std::string(TrimBlanks(field.key));
  for (const auto& [number, name] : kSeriesNames) {
    if (number == field.number) return std::string(name);
  }
  return std::to_string(field.number);
}

Json FontJson(const Font& font) {
  return {{"name", font.name},          {"size", font.size},     {"color", font.color.value},
          {"bold", font.bold},          {"italic", font.italic}, {"underline", font.underline},
          {"strikeout", font.strikeOut}};
}

Json ValueJson(const FieldValue& value) {
  struct Convert {
    Json operator()(const std::string& text) const { return text; }
    Json operator()(std::int32_t number) const { return number; }
    Json operator()(double number) const { return JsonNumber(number); }
    Json operator()(bool on) const { return on; }
    Json operator()(Color color) const { return color.value; }
    Json operator()(const Font& font) const { return FontJson(font); }
  };
  return std::visit(Convert{}, value);
}

template <class Owner>
Json TableJson(FieldTable<Owner> table, const Owner& owner) {
  Json object = Json::object();
  VisitFields<Owner>(
      table, owner, [&](const FieldView& field) { object[KeyOf(field)] = ValueJson(field.value); });
  return object;
}

/// The keys of a DataSet's section that say where its points come from.
bool IsSourceKey(int number) {
  return (number >= 9 && number <= 24) || number == 44 || (number >= 46 && number <= 48);
}

Json SourceJson(const TDataSeries& series) {
  Json object = Json::object();
  VisitFields<TDataSeries>(DataSeriesFields(), series, [&](const FieldView& field) {
    if (IsSourceKey(field.number)) object[KeyOf(field)] = ValueJson(field.value);
  });
  return object;
}

Json SkippedJson(const LoadReport& report) {
  return {{"rows", report.rows_read},
          {"skipped", report.Skipped()},
          {"x_missing", report.x_missing},
          {"y_missing", report.y_missing},
          {"x_not_number", report.x_not_number},
          {"y_not_number", report.y_not_number},
          {"replaced", report.replaced},
          {"message", report.Message()}};
}

Json DataSetJson(const TSeries& series) {
  const Extremes extremes = series.GetExtremes();
  const DataSettings& settings = series.Settings();
  return {{"name", settings.SeriesName},
          {"points", series.PointCount()},
          {"xmin", JsonNumber(extremes.x_min)},
          {"xmax", JsonNumber(extremes.x_max)},
          {"ymin", JsonNumber(extremes.y_min)},
          {"ymax", JsonNumber(extremes.y_max)},
          {"zero_value", JsonNumber(settings.ZeroValue)},
          {"baseline_slope", JsonNumber(settings.BaseLineSlope)},
          {"tolerance", JsonNumber(settings.NumericalTolerance)},
          {"duplicates", settings.DuplicatesAllowed},
          {"auto_zero", settings.AutoZero},
          {"regression_type", static_cast<int>(settings.regression_type)},
          {"regression_steps", settings.regression_steps},
          {"regression_alpha", JsonNumber(settings.regression_alpha)},
          {"source", SourceJson(series)},
          {"series", TableJson<SeriesStyle>(SeriesFields(), series.Style())},
          {"fit", FitJson(series.Fit().Settings())}};
}

void PrintValue(const Json& value, int depth, std::ostream& out);

void PrintObject(const Json& object, int depth, std::ostream& out) {
  for (const auto& [key, value] : object.items()) {
    out << std::string(static_cast<std::size_t>(depth) * 2, ' ') << key << ':';
    PrintValue(value, depth + 1, out);
  }
}

void PrintValue(const Json& value, int depth, std::ostream& out) {
  if (value.is_object()) {
    out << '\n';
    PrintObject(value, depth, out);
  } else if (value.is_array()) {
    out << (value.empty() ? " none\n" : "\n");
    int number = 0;
    for (const Json& item : value) {
      out << std::string(static_cast<std::size_t>(depth) * 2, ' ') << '[' << ++number << "]\n";
      PrintObject(item, depth + 1, out);
    }
  } else if (value.is_number_float()) {
    out << ' ' << ShortestText(value.get<double>()) << '\n';
  } else if (value.is_string()) {
    out << ' ' << value.get_ref<const std::string&>() << '\n';
  } else if (value.is_null()) {
    out << " NaN\n";
  } else {
    out << ' ' << value << '\n';
  }
}

void Print(const Json& document, Output& output) {
  if (output.IsJson()) {
    output.Document(document);
  } else {
    PrintObject(document, 0, output.Text());
  }
}

}  // namespace

Json InfoJson(const TxyGraph& graph, const std::vector<LoadReport>& reports) {
  Json axes = Json::array();
  for (const AxisId id : {AxisId::X, AxisId::Y, AxisId::Y2}) {
    axes.push_back(TableJson<AxisState>(AxisFields(), graph.Axis(id).State()));
  }
  Json datasets = Json::array();
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    datasets.push_back(DataSetJson(graph.Series(i)));
    if (i < reports.size()) datasets.back()["import"] = SkippedJson(reports[i]);
  }
  Json marks = Json::array();
  for (const Mark& mark : graph.Marks().All()) marks.push_back(TableJson<Mark>(MarkFields(), mark));
  Json children = Json::array();
  for (const auto& child : graph.Children()) children.push_back(InfoJson(*child, {}));
  return {{"kind", "graph"},
          {"version", kGraphMagic},
          {"title", graph.GetAppearance().title_of_graph},
          {"axes", std::move(axes)},
          {"appearance", TableJson<Appearance>(AppearanceFields(), graph.GetAppearance())},
          {"dimensions", TableJson<Dimensions>(DimensionsFields(), graph.GetDimensions())},
          {"legend", TableJson<Legend>(LegendFields(), graph.GetLegend())},
          {"datasets", std::move(datasets)},
          {"marks", std::move(marks)},
          {"children", std::move(children)}};
}

void PrintInfo(const TxyGraph& graph, const std::vector<LoadReport>& reports, Output& output) {
  Print(InfoJson(graph, reports), output);
}

void PrintFunctionInfo(const FitSettings& function, Output& output) {
  Print({{"kind", "function"}, {"fit", FitJson(function)}}, output);
}

}  // namespace tarnwick::cli
