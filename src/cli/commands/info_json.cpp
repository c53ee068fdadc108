#include "cli/commands/info_json.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "base/number_text.h"
#include "cli/commands/fit_text.h"
#include "cli/options/function_input.h"
#include "cli/output/point_text.h"
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
  Json object = Json::Object();
  VisitFields<Owner>(
      table, owner, [&](const FieldView& field) { object[KeyOf(field)] = ValueJson(field.value); });
  return object;
}

/// The keys of a DataSet's section that say where its points come from.
bool IsSourceKey(int number) {
  return (number >= 9 && number <= 24) || number == 44 || (number >= 46 && number <= 49) ||
         (number >= 53 && number <= 59) || number == 67 || number == 68 || number == 81;
}

Json SourceJson(const TDataSeries& series) {
  Json object = Json::Object();
  const bool has_part = !series.Source().TablePart.empty();
  const bool computed = !series.Source().Recipe.empty();
  VisitFields<TDataSeries>(DataSeriesFields(), series, [&](const FieldView& field) {
    const bool told = IsSourceKey(field.number) || (has_part && field.key == "TablePart") ||
                      (computed && field.key == "Recipe");
    if (told) object[KeyOf(field)] = ValueJson(field.value);
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

/// How the errors come about, and how many points have one that can be used.
Json ErrorsJson(const TDataSeries& series) {
  constexpr std::string_view kKinds[] = {"none", "column", "constant", "percent", "counts"};
  std::int64_t y_points = 0, x_points = 0;
  series.Points().ForEachChunk([&](const ChunkView& chunk) {
    for (std::size_t i = 0; i < chunk.x.size(); ++i) {
      const Point point = chunk.chunk->At(i);
      y_points += YErrorAt(series, point) > 0 ? 1 : 0;
      x_points += XErrorAt(series, point) > 0 ? 1 : 0;
    }
  });
  const auto json = [&](const ErrorRule& rule, std::int64_t points) {
    return Json{{"kind", kKinds[static_cast<std::size_t>(rule.kind)]},
                {"value", JsonNumber(rule.value)},
                {"points", points}};
  };
  return {{"y", json(series.Errors().y, y_points)}, {"x", json(series.Errors().x, x_points)}};
}

Json DataSetJson(const TxyGraph& graph, const TSeries& series) {
  const Extremes extremes = series.GetExtremes();
  const DataSettings& settings = series.Settings();
  Json json = {{"name", settings.SeriesName},
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
               {"errors", ErrorsJson(series)},
               {"source", SourceJson(series)},
               {"series", TableJson<SeriesStyle>(SeriesFields(), series.Style())},
               {"fit", FitJson(series.Fit().Settings())}};
  AddRegressionFigures(series, json);
  if (const LastFit& last = series.Fit().Last(); last.record || last.damaged)
    json["last_fit"] = LastFitJson(graph, series);
  return json;
}

std::string Indent(int depth) {
  return std::string(static_cast<std::size_t>(depth) * 2, ' ');
}

void PrintValue(const Json& value, int depth, std::ostream& out);

void PrintMembers(const Json& object, int depth, std::ostream& out) {
  for (const auto& [key, value] : std::get<Json::Members>(object.Get())) {
    out << Indent(depth) << key << ':';
    PrintValue(value, depth + 1, out);
  }
}

bool IsPlain(const Json& item) {
  return !std::holds_alternative<Json::Members>(item.Get()) &&
         !std::holds_alternative<Json::Items>(item.Get());
}

void PrintItems(const Json::Items& items, int depth, std::ostream& out) {
  const bool on_one_line = std::all_of(items.begin(), items.end(), &IsPlain);
  int number = 0;
  if (on_one_line) {
    for (const Json& item : items) out << (number++ == 0 ? " " : "; ") << PlainText(item, "none");
    out << (items.empty() ? " none\n" : "\n");
    return;
  }
  out << '\n';
  for (const Json& item : items) {
    out << Indent(depth) << '[' << ++number << ']';
    if (const auto* row = std::get_if<Json::Items>(&item.Get())) {
      PrintItems(*row, depth + 1, out);
      continue;
    }
    out << '\n';
    PrintMembers(item, depth + 1, out);
  }
}

void PrintValue(const Json& value, int depth, std::ostream& out) {
  if (std::holds_alternative<Json::Members>(value.Get())) {
    out << '\n';
    PrintMembers(value, depth, out);
  } else if (const auto* items = std::get_if<Json::Items>(&value.Get())) {
    PrintItems(*items, depth, out);
  } else {
    out << ' ' << PlainText(value, "NaN") << '\n';
  }
}

void Print(const Json& document, Output& output) {
  if (output.IsJson()) {
    output.Document(document);
  } else {
    PrintMembers(document, 0, output.Text());
  }
}

Json InfoJson(const TxyGraph& graph, const std::vector<LoadReport>& reports) {
  Json axes = Json::Array();
  for (const AxisId id : {AxisId::X, AxisId::Y, AxisId::Y2}) {
    axes.Append(TableJson<AxisState>(AxisFields(), graph.Axis(id).State()));
  }
  Json datasets = Json::Array();
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    Json& dataset = datasets.Append(DataSetJson(graph, graph.Series(i)));
    if (i < reports.size()) dataset["import"] = SkippedJson(reports[i]);
  }
  Json marks = Json::Array();
  for (const Mark& mark : graph.Marks().All()) marks.Append(TableJson<Mark>(MarkFields(), mark));
  Json children = Json::Array();
  for (const auto& child : graph.Children()) children.Append(InfoJson(*child, {}));
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

}  // namespace

void PrintInfo(const InputGraph& input, Output& output) {
  Json document = InfoJson(*input.graph, input.reports);
  Json& notes = document["notes"] = Json::Array();
  for (const ToldClause& clause : input.told) notes.Append(clause.text);
  Print(document, output);
}

void PrintFunctionInfo(const FitSettings& function, Output& output) {
  Print({{"kind", "function"}, {"fit", FitJson(function)}}, output);
}

}  // namespace tarnwick::cli
