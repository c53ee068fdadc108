#include "results/tools/tool.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <stdexcept>

#include "base/error.h"
#include "base/number_text.h"
#include "base/undefined.h"
#include "base/word_list.h"
#include "data/column_caption.h"
#include "data/series/line_breaks.h"
#include "graph/line_way.h"

namespace tarnwick {
namespace {

std::string Quoted(std::string_view text) {
  return "\"" + std::string(text) + "\"";
}

[[noreturn]] void Refuse(const ToolSetting& row, const std::string& wanted) {
  throw Error("The setting " + Quoted(row.caption) + " is " + wanted + ".");
}

std::string RangeText(const FieldControl& control) {
  if (std::isinf(control.max)) {
    return std::isinf(control.min) ? "a number"
                                   : "a number from " + GeneralText(control.min) + " on";
  }
  return "a number from " + GeneralText(control.min) + " to " + GeneralText(control.max);
}

bool Allows(const ToolSetting& row, const FieldValue& value) {
  const FieldControl& control = row.control;
  if (const auto* number = std::get_if<double>(&value)) {
    if (IsUndefined(*number)) return IsUndefined(std::get<double>(row.initial));
    return *number >= control.min && *number <= control.max;
  }
  const auto* whole = std::get_if<std::int32_t>(&value);
  if (!whole) return true;
  if (control.kind != ControlKind::Choice) return *whole >= control.min && *whole <= control.max;
  return std::ranges::find(control.choices, *whole, &FieldChoice::value) != control.choices.end();
}

std::string ChoicesText(const FieldControl& control) {
  std::string text;
  for (const FieldChoice& choice : control.choices)
    text += (text.empty() ? "one of " : ", ") + ChoiceWord(choice.caption);
  return text;
}

}  // namespace

std::string ChoiceWord(std::string_view caption) {
  std::string word(caption.substr(0, caption.find(',')));
  for (char& c : word)
    c = c == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return word;
}

ToolSettings::ToolSettings(std::span<const ToolSetting> rows) : rows_(rows) {
  for (const ToolSetting& row : rows) values_.push_back(row.initial);
}

void ToolSettings::Set(std::size_t row, const FieldValue& value) {
  const ToolSetting& setting = rows_[row];
  if (!Allows(setting, value)) {
    Refuse(setting, setting.control.kind == ControlKind::Choice ? ChoicesText(setting.control)
                                                                : RangeText(setting.control));
  }
  values_[row] = value;
}

std::size_t ToolSettings::Place(std::string_view key) const {
  const auto found = std::ranges::find(rows_, key, &ToolSetting::key);
  if (found == rows_.end()) throw std::logic_error("no setting " + std::string(key));
  return static_cast<std::size_t>(found - rows_.begin());
}

double ToolSettings::Number(std::string_view key) const {
  return std::get<double>(values_[Place(key)]);
}
std::int32_t ToolSettings::Whole(std::string_view key) const {
  return std::get<std::int32_t>(values_[Place(key)]);
}
bool ToolSettings::Is(std::string_view key) const {
  return std::get<bool>(values_[Place(key)]);
}
const std::string& ToolSettings::Text(std::string_view key) const {
  return std::get<std::string>(values_[Place(key)]);
}

void ToolSettings::Suggest(std::string_view key, double number) {
  double& value = std::get<double>(values_[Place(key)]);
  if (IsUndefined(value)) value = number;
}

std::string ToolSettings::TextAt(std::size_t row) const {
  const FieldValue& value = values_[row];
  if (const auto* number = std::get_if<double>(&value)) return ShortestText(*number);
  if (const auto* flag = std::get_if<bool>(&value)) return *flag ? "yes" : "no";
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  const std::int32_t whole = std::get<std::int32_t>(value);
  const FieldControl& control = rows_[row].control;
  if (control.kind != ControlKind::Choice) return std::to_string(whole);
  return ChoiceWord(std::ranges::find(control.choices, whole, &FieldChoice::value)->caption);
}

void ToolSettings::SetText(std::size_t row, const std::string& text) {
  const ToolSetting& setting = rows_[row];
  const FieldControl& control = setting.control;
  if (std::holds_alternative<std::string>(setting.initial)) return Set(row, text);
  if (std::holds_alternative<bool>(setting.initial)) {
    if (text != "yes" && text != "no") Refuse(setting, "yes or no");
    return Set(row, text == "yes");
  }
  if (control.kind == ControlKind::Choice) {
    const auto found = std::ranges::find(control.choices, text, [](const FieldChoice& choice) {
      return ChoiceWord(choice.caption);
    });
    if (found == control.choices.end()) Refuse(setting, ChoicesText(control));
    return Set(row, found->value);
  }
  if (std::holds_alternative<std::int32_t>(setting.initial)) {
    const std::optional<std::int32_t> whole = ParseInteger(text);
    if (!whole) Refuse(setting, RangeText(control));
    return Set(row, *whole);
  }
  const std::optional<double> number = ParseNumber(text);
  if (!number) Refuse(setting, RangeText(control));
  Set(row, *number);
}

void ToolColumns::TakePoint(const ToolColumns& others, std::size_t i, double y_now) {
  x.push_back(others.x[i]);
  y.push_back(y_now);
  if (!others.piece.empty()) piece.push_back(others.piece[i]);
  if (!others.x_error.empty()) x_error.push_back(others.x_error[i]);
  if (others.y_error.empty()) return;
  y_error.push_back(y_now == others.y[i] ? others.y_error[i] : kUndefined);
}

namespace {

ToolColumns ColumnsAlong(const TSeries& source, const LineWay& way) {
  ToolColumns columns;
  const BaseLine line = source.GetBaseLine();
  const PointErrors& errors = source.Errors();
  const PointChain& points = source.Points();
  std::size_t place = 0;
  auto next_break = way.breaks.begin();
  std::int32_t piece = 0;
  const auto take = [&](double x, double y) {
    const std::size_t index = way.IndexAt(place);
    if (next_break != way.breaks.end() && *next_break == place) {
      ++piece;
      ++next_break;
    }
    ++place;
    const double above = line.CorrectedY(x, y);
    if (!std::isfinite(x) || !std::isfinite(above)) {
      ++columns.left_out;
      return;
    }
    columns.x.push_back(x);
    columns.y.push_back(above);
    if (!way.breaks.empty()) columns.piece.push_back(piece);
    if (HasXErrors(errors)) columns.x_error.push_back(XErrorOf(errors, points.At(index)));
    if (HasYErrors(errors)) columns.y_error.push_back(YErrorOf(errors, points.At(index)));
  };
  if (way.order.empty()) {
    points.ForEachPoint(take);
  } else {
    for (const Point& point : PointsAlong(points, way)) take(point.x, point.y);
  }
  if (columns.x.empty()) throw Error("No Data Found in DataSet " + source.SeriesName() + "!");
  return columns;
}

}  // namespace

ToolColumns ColumnsOf(const TSeries& source) {
  return ColumnsAlong(source, WayToCompute(source));
}

ToolColumns ColumnsInX(const TSeries& source) {
  return ColumnsAlong(source, {});
}

std::vector<std::size_t> BreaksOf(const ToolColumns& columns) {
  std::vector<std::size_t> breaks;
  for (std::size_t i = 1; i < columns.piece.size(); ++i) {
    if (columns.piece[i] != columns.piece[i - 1]) breaks.push_back(i);
  }
  return breaks;
}

std::string PointsLeftOutText(const ToolColumns& columns) {
  if (columns.left_out == 0) return {};
  return Counted(static_cast<std::int64_t>(columns.left_out), "point") +
         " without a value left out.";
}

std::string LeftOutText(const TSeries& source, const ToolColumns& columns) {
  std::string told = PointsLeftOutText(columns);
  if (HasYErrors(source.Errors()) || HasXErrors(source.Errors()))
    AddSentence(told, "Errors are left out.");
  return told;
}

std::unique_ptr<TSeries> SeriesLike(const TSeries& source, std::span<const double> x,
                                    std::span<const double> y, const std::string& x_column,
                                    const std::string& y_column) {
  auto series = std::make_unique<TSeries>();
  // Branches of a loop go over the same X.
  series->SetDuplicatesAllowed(source.DuplicatesAllowed() || TurnsBack(source));
  const TDSInfo& from = source.Source();
  series->Source().XDataColumn = x_column.empty() ? CaptionOfX(from) : x_column;
  series->Source().YDataColumn = y_column.empty() ? CaptionOfY(from) : y_column;
  series->AddPoints(x, y);
  return series;
}

std::unique_ptr<TSeries> SeriesWithErrors(const TSeries& source, const ToolColumns& columns,
                                          const std::string& y_column) {
  auto series = SeriesLike(source, {}, {}, {}, y_column);
  PointErrors errors;
  if (!columns.x_error.empty()) errors.x.kind = ErrorKind::Column;
  if (!columns.y_error.empty()) errors.y.kind = ErrorKind::Column;
  series->SetErrors(std::move(errors));
  series->AddPoints(columns.x, columns.y, {columns.y_error, columns.x_error});
  if (!columns.piece.empty()) BreakBefore(*series, BreaksOf(columns));
  return series;
}

}  // namespace tarnwick
