#include "cli/options/import_options.h"

#include <array>
#include <utility>

#include "base/number_text.h"
#include "cli/options/command.h"
#include "cli/options/number_check.h"

namespace tarnwick::cli {
namespace {

constexpr std::array<std::pair<std::string_view, ColumnFormat>, 10> kFormats = {{
    {"auto", ColumnFormat::Automatic},
    {"number", ColumnFormat::Number},
    {"comma", ColumnFormat::DecimalComma},
    {"date", ColumnFormat::DateTime},
    {"day-first", ColumnFormat::DateDayFirst},
    {"month-first", ColumnFormat::DateMonthFirst},
    {"thousands", ColumnFormat::GroupedThousands},
    {"unit", ColumnFormat::NumberWithUnit},
    {"unix", ColumnFormat::UnixSeconds},
    {"unix-ms", ColumnFormat::UnixMilliseconds},
}};

/// A name of the table or its position in it.
std::optional<ColumnFormat> FormatNamed(const std::string& text) {
  if (text.empty()) return std::nullopt;
  for (std::size_t i = 0; i < kFormats.size(); ++i) {
    if (text == kFormats[i].first || text == std::to_string(i)) return kFormats[i].second;
  }
  throw UsageError("\"" + text +
                   "\" is no column format; auto, number, comma, date, day-first, month-first, "
                   "thousands, unit, unix and unix-ms are");
}

/// "\t" stands for a tab, "\\" for a backslash.
std::string Unescaped(const std::string& text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == 't' || text[i + 1] == '\\')) {
      result += text[++i] == 't' ? '\t' : '\\';
    } else {
      result += text[i];
    }
  }
  return result;
}

double RowNumber(const std::string& text) {
  const std::optional<double> number = ParseNumber(text);
  if (!number) throw UsageError("\"" + text + "\" is no number in --rows");
  return *number;
}

/// MODE[,V1[,V2]]
void ReadRows(const std::string& text, ImportOptions& options) {
  if (text.empty()) return;
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == ',') {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  const std::optional<std::int32_t> mode = ParseInteger(parts[0]);
  if (!mode || *mode < 0 || *mode > 6 || parts.size() > 3)
    throw UsageError("--rows takes MODE[,V1[,V2]], MODE 0 to 6");
  options.row_choice = static_cast<RowChoice>(*mode);
  if (parts.size() > 1) options.row_value1 = RowNumber(parts[1]);
  if (parts.size() > 2) options.row_value2 = RowNumber(parts[2]);
}

std::optional<std::int32_t> SamplingNamed(const std::string& text) {
  if (text == "auto") return std::nullopt;
  const std::optional<std::int32_t> every = ParseInteger(text);
  if (!every || *every < 1) throw UsageError("--every takes a whole number from 1, or auto");
  return every;
}

}  // namespace

void AddImportOptions(Command& command, ImportArguments& arguments) {
  const char* group = "Reading a text file";
  command.Add("--x", arguments.x_column, "Column of X: a name, or #N from 0").Group(group);
  command.Add("--y", arguments.y_columns, "Column of Y; repeat for several DataSets")
      .Group(group)
      .Repeated();
  command.Add("--headers", arguments.headers, "Lines before the first row")
      .Group(group)
      .Check(kNonNegativeNumber);
  command.Add("--separators", arguments.separators, "Characters between columns, \\t is the tab")
      .Group(group);
  command.Add("--markers", arguments.markers, "Characters that quote a column").Group(group);
  command
      .AddChoice("--merge-separators,!--no-merge-separators", arguments.merge_separators,
                 "A run of separators counts as one, or each counts")
      .Group(group);
  command.Add("--width", arguments.width, "Columns of this many characters instead of separators")
      .Group(group)
      .Check(kPositiveNumber);
  command.Add("--rows", arguments.rows, "Which rows: MODE[,V1[,V2]]").Group(group);
  command.Add("--every", arguments.every, "Take one row of N, or auto").Group(group);
  command
      .Add("--x-format", arguments.x_format,
           "auto, number, comma, date, day-first, month-first, thousands, unit, unix or unix-ms")
      .Group(group);
  command.Add("--y-format", arguments.y_format, "The same for Y").Group(group);
  command
      .Add("--x-expr", arguments.x_expression,
           "What becomes of X: an expression in the row's X, Y and columns")
      .Group(group);
  command.Add("--y-expr", arguments.y_expression, "The same for Y").Group(group);
  command.Add("--tolerance", arguments.tolerance, "X distance within which two points are one")
      .Group(group)
      .Check(kNonNegativeNumber);
  command.AddFlag("--duplicates", arguments.duplicates, "Allow several points at one X")
      .Group(group);
}

ImportOptions ToImportOptions(const ImportArguments& arguments) {
  ImportOptions options;
  if (!arguments.x_column.empty()) options.x_column = arguments.x_column;
  options.y_columns = arguments.y_columns;
  options.headers = arguments.headers;
  if (arguments.separators) options.separators = Unescaped(*arguments.separators);
  if (arguments.markers) options.markers = Unescaped(*arguments.markers);
  options.merge_separators = arguments.merge_separators;
  options.width = arguments.width;
  ReadRows(arguments.rows, options);
  options.every = SamplingNamed(arguments.every);
  options.x_format = FormatNamed(arguments.x_format);
  options.y_format = FormatNamed(arguments.y_format);
  options.x_expression = arguments.x_expression;
  options.y_expression = arguments.y_expression;
  options.tolerance = arguments.tolerance;
  options.duplicates_allowed = arguments.duplicates;
  return options;
}

}  // namespace tarnwick::cli
