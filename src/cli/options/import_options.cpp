#include "cli/options/import_options.h"

#include <array>
#include <utility>

#include "base/number_text.h"
#include "cli/options/command.h"
#include "cli/options/number_check.h"
#include "sources/arrays/array_part.h"
#include "sources/workbook/sheet_part.h"

namespace tarnwick::cli {
namespace {

constexpr std::array<std::pair<std::string_view, ColumnFormat>, 14> kFormats = {{
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
    {"time-on", ColumnFormat::TimeGoingOn},
    {"base-unit", ColumnFormat::ScaledUnit},
    {"uncertainty", ColumnFormat::Uncertainty},
    {"factor", ColumnFormat::Factor},
}};

/// A name of the table or its position in it.
std::optional<ColumnFormat> FormatNamed(const std::string& text) {
  if (text.empty()) return std::nullopt;
  for (std::size_t i = 0; i < kFormats.size(); ++i) {
    if (text == kFormats[i].first || text == std::to_string(i)) return kFormats[i].second;
  }
  throw UsageError(
      "\"" + text +
      "\" is no column format; auto, number, comma, date, day-first, month-first, "
      "thousands, unit, unix, unix-ms, time-on, base-unit, uncertainty and factor are");
}

/// "\t" stands for a tab, "\\" for a backslash.
std::string Unescaped(const std::string& text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    constexpr std::string_view kMarks = "tn\\", kMeant = "\t\n\\";
    const std::size_t mark =
        text[i] == '\\' && i + 1 < text.size() ? kMarks.find(text[i + 1]) : kMarks.npos;
    result += mark == kMarks.npos ? text[i] : kMeant[mark];
    i += mark == kMarks.npos ? 0 : 1;
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

void ReadSampling(const std::string& text, ImportOptions& options) {
  if (text.empty()) return;
  options.automatic_sampling = text == "auto";
  if (text == "thin") options.thinned_at_source = true;
  if (options.automatic_sampling || options.thinned_at_source) return;
  options.every = ParseInteger(text);
  if (!options.every || *options.every < 1)
    throw UsageError("--every takes a whole number from 1, auto or thin");
}

void AddDatabaseOptions(Command& command, ImportArguments& arguments) {
  const char* group = "Reading a data base";
  command
      .Add("--database", arguments.database,
           "Instead of FILE: sqlite:FILE, postgresql://USER@HOST/BASE, mysql://USER@HOST/BASE or "
           "odbc:NAME; TARNWICK_DB_PASSWORD holds the password for TARNWICK_DB_SERVER")
      .Group(group);
  const Option table =
      command
          .Add("--table", arguments.table,
               "Table or view of the data base; default: its first table with numbers")
          .Group(group);
  command.Add("--query", arguments.query, "The rows of this SELECT instead of a table")
      .Group(group)
      .NotEmpty()
      .Excludes(table);
}

void AddPartOptions(Command& command, ImportArguments& arguments) {
  const char* group = "Reading a workbook or a file of arrays";
  const Option sheet = command
                           .Add("--sheet", arguments.sheet,
                                "Sheet of the workbook; default: the one with the most numbers")
                           .Group(group);
  const Option range =
      command.Add("--range", arguments.range, "Cells of the sheet: A1:C9, A:C or 1:9").Group(group);
  command
      .Add("--array", arguments.arrays,
           "Array by its path, all in a group, or a line (HGT[0,36,:]); repeat for several; "
           "default: the most of one length")
      .Group(group)
      .Repeated()
      .Excludes(sheet)
      .Excludes(range);
}

/// What of a file with several tables is read.
std::string PartOf(const ImportArguments& arguments) {
  if (!arguments.arrays.empty()) return ArraysText(arguments.arrays);
  return ReadOption([&] { return TypedSheetPart(arguments.sheet, arguments.range).Text(); });
}

}  // namespace

void AddImportOptions(Command& command, ImportArguments& arguments) {
  AddDatabaseOptions(command, arguments);
  command
      .Add("--link", arguments.links,
           "Instead of FILE: the present values of live links, SERVICE|TOPIC!ITEM, with commas "
           "between")
      .Group("Reading live links");
  AddPartOptions(command, arguments);
  const char* group = "Reading a text file";
  command.Add("--x", arguments.x_column, "Column of X: a name, or #N from 0").Group(group);
  command.Add("--y", arguments.y_columns, "Column of Y; repeat for several DataSets")
      .Group(group)
      .Repeated();
  command.Add("--headers", arguments.headers, "Lines before the first row")
      .Group(group)
      .Check(kNonNegativeNumber);
  command.Add("--names-line", arguments.names_line, "Line of the columns' names, from 1")
      .Group(group)
      .Check(kPositiveNumber);
  command
      .AddChoice("--stacked-names,!--no-stacked-names", arguments.stacked_names,
                 "Whether the line above it holds the upper words of the names")
      .Group(group);
  command.Add("--units-line", arguments.units_line, "Line of the columns' units, from 1")
      .Group(group)
      .Check(kPositiveNumber);
  command
      .Add("--comment", arguments.comment_marks,
           "What begins a line that is no row; several with blanks between")
      .Group(group);
  command
      .Add("--missing", arguments.missing,
           "Texts and numbers that stand for no value, with blanks between")
      .Group(group);
  command
      .Add("--separators", arguments.separators,
           "Characters between columns, \\t is the tab; with \\n rows go on from line to line")
      .Group(group);
  command.Add("--markers", arguments.markers, "Characters that quote a column").Group(group);
  command
      .AddChoice("--merge-separators,!--no-merge-separators", arguments.merge_separators,
                 "A run of separators counts as one, or each counts")
      .Group(group);
  const Option width =
      command
          .Add("--width", arguments.width, "Columns of this many characters instead of separators")
          .Group(group)
          .Check(kPositiveNumber);
  command
      .Add("--cuts", arguments.cuts,
           "The first character of each column, from 1, instead of separators: \"1 9 21\"")
      .Group(group)
      .Excludes(width);
  command.Add("--rows", arguments.rows, "Which rows: MODE[,V1[,V2]]").Group(group);
  command
      .Add("--every", arguments.every,
           "Take one row of N; auto: about 5000 of them; thin: what a view of a data base shows")
      .Group(group);
  command
      .Add("--x-format", arguments.x_format,
           "auto, number, comma, date, day-first, month-first, thousands, unit, unix, unix-ms, "
           "time-on, base-unit, uncertainty or factor")
      .Group(group);
  command.Add("--y-format", arguments.y_format, "The same for Y").Group(group);
  command
      .Add("--y-error", arguments.y_errors,
           "Error of Y: a column (name or #N), a number for all, P% of each value, sqrt of counts, "
           "or "
           "none; repeat for several DataSets")
      .Group(group)
      .Repeated();
  command.Add("--x-error", arguments.x_errors, "The same for X, without sqrt; it is drawn only")
      .Group(group);
  command
      .Add("--x-expr", arguments.x_expression,
           "What becomes of X: an expression in the row's X, Y and columns")
      .Group(group);
  command.Add("--y-expr", arguments.y_expression, "The same for Y").Group(group);
  command.Add("--tolerance", arguments.tolerance, "X distance within which two points are one")
      .Group(group)
      .Check(kNonNegativeNumber);
  const Option duplicates =
      command
          .AddFlag("--duplicates", arguments.duplicates,
                   "Allow several points at one X, as is done where the file repeats X")
          .Group(group);
  command
      .AddFlag("--overwrite-equal", arguments.overwrite_equal,
               "Of several rows at one X the last one counts")
      .Group(group)
      .Excludes(duplicates);
  command
      .AddFlag("--whole-table", arguments.whole_table,
               "Keep rows of several kinds, which a column of texts tells apart, in one DataSet")
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
  options.cuts = arguments.cuts;
  ReadRows(arguments.rows, options);
  options.names_line = arguments.names_line;
  options.stacked_names = arguments.stacked_names;
  options.units_line = arguments.units_line;
  options.comment_marks = arguments.comment_marks;
  options.missing = arguments.missing;
  options.whole_table = arguments.whole_table;
  ReadSampling(arguments.every, options);
  options.x_format = FormatNamed(arguments.x_format);
  options.y_format = FormatNamed(arguments.y_format);
  for (const std::string& text : arguments.y_errors) {
    options.y_errors.push_back(ReadOption([&] { return ParseErrorOption(text); }));
  }
  if (arguments.x_errors) {
    options.x_errors = ReadOption([&] { return ParseErrorOption(*arguments.x_errors); });
  }
  options.x_expression = arguments.x_expression;
  options.y_expression = arguments.y_expression;
  options.table_part = PartOf(arguments);
  options.tolerance = arguments.tolerance;
  if (arguments.duplicates || arguments.overwrite_equal) {
    options.duplicates_allowed = arguments.duplicates;
  }
  return options;
}

}  // namespace tarnwick::cli
