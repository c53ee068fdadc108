#include "data/names/text_names.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/text_encoding.h"
#include "data/column_caption.h"
#include "data/fields/field_value.h"
#include "data/fields/row_remark.h"
#include "data/fields/text_lines.h"
#include "data/fields/unit_text.h"
#include "data/names/date_heads.h"
#include "data/names/listed_names.h"
#include "data/names/names_line.h"
#include "data/names/placed_names.h"
#include "data/names/shared_names.h"
#include "data/names/stacked_names.h"
#include "data/names/worded_names.h"

namespace tarnwick {
namespace {

constexpr std::int32_t kMostHeaderLines = 1000;  // looked at for names
constexpr std::int32_t kMostLinesBeforeRows = 10000;

using Fields = std::vector<std::string>;

Fields Split(std::string_view line, const TextLayout& layout) {
  Fields fields;
  FieldCursor cursor(line, layout);
  while (static_cast<std::int32_t>(fields.size()) < kMostColumns) {
    const std::optional<std::string_view> field = cursor.Next();
    if (!field) break;
    fields.push_back(NameText(*field, layout));
  }
  return fields;
}

TextLayout WithSeparator(const TextLayout& layout, char separator) {
  TextLayout changed = layout;
  for (std::uint8_t& kind : changed.kinds) {
    if (kind == TextLayout::kSeparator) kind = TextLayout::kPlain;
  }
  changed.kinds[static_cast<unsigned char>(separator)] = TextLayout::kSeparator;
  changed.width = 0;
  changed.cuts.clear();
  return changed;
}

/// The names of a comment line are often separated otherwise than the values: "# time, temperature" over columns of
/// blanks. The separators of the rows come first, then whichever gives as many names as there are columns.
Fields SplitComment(std::string_view line, const TextLayout& layout, std::int32_t columns) {
  Fields fields = Split(line, layout);
  if (static_cast<std::int32_t>(fields.size()) != columns) {
    for (const char separator : {',', ';', '\t', '|'}) {
      Fields others = Split(line, WithSeparator(layout, separator));
      if (static_cast<std::int32_t>(others.size()) == columns) fields = std::move(others);
    }
  }
  for (std::string& name : fields) {
    while (!name.empty() && (name.back() == ',' || name.back() == ';')) name.pop_back();
  }
  return fields;
}

struct Line {
  std::string_view text;
  bool comment = false;
  Fields fields;
  bool fits_rows = false;  // has as many names as the rows have fields, and was chosen for it
};

bool NamesAll(const Fields& fields) {
  return std::none_of(fields.begin(), fields.end(),
                      [](const std::string& f) { return f.empty() || ReadsAsNumber(f); });
}

/// What is known of a text before its names are: the lines ahead of the rows, and the rows' number of fields.
struct Opening {
  std::vector<std::string_view> header;
  std::vector<std::string_view> rows;  // the first few
  std::int32_t row_columns = 0;        // the most of the first rows
  std::int32_t first_row_columns = 0;  // lines behind a short table may have more
  RowLabels labels = RowLabels::Possible;
};

/// Words that separators part may hold marks of remarks.
Before MayStandBeforeRemark(const TextLayout& layout) {
  return layout.IsSeparator(' ') ? Before::Words : Before::Numbers;
}

Opening ReadOpening(std::string_view text, const TextLayout& layout, const TDSInfo& info) {
  const std::int32_t header_lines = info.FileHasHeaders;
  const std::int64_t table_end = std::int64_t{header_lines} + info.TableLines;
  Opening opening;
  LineWalker walker(text, layout.line_end);
  const Before before = MayStandBeforeRemark(layout);
  std::int32_t rows = 0;
  std::int32_t widest = 0;  // rows of the most columns
  bool all_end = true;
  for (std::int32_t i = 0; rows < kColumnLines && !walker.AtEnd(); ++i) {
    // Rows behind the table have columns of their own.
    if (info.TableLines > 0 && i >= table_end) break;
    const std::string_view line = walker.Next();
    const bool ahead = i < header_lines || !IsDataLine(line, layout);
    if (ahead && i >= header_lines + kMostLinesBeforeRows) break;
    if (ahead && rows == 0 && static_cast<std::int32_t>(opening.header.size()) < kMostHeaderLines) {
      opening.header.push_back(line);
    }
    if (ahead) continue;
    const std::int32_t columns =
        CountFields(WithoutRemark(line, layout, before), layout, kMostColumns);
    if (rows == 0) opening.first_row_columns = columns;
    if (opening.rows.size() < kRowsOfPlaces) opening.rows.push_back(line);
    if (!EndsWithSeparator(line, layout)) all_end = false;
    if (columns > opening.row_columns) widest = 0;
    opening.row_columns = std::max(opening.row_columns, columns);
    if (columns == opening.row_columns) ++widest;
    ++rows;
  }
  // An empty field behind the last separator has no name, nor has what only the lesser part of the rows ends with; the rows'
  // labels have theirs then.
  const bool few_widest = 2 * widest < rows;
  opening.labels =
      all_end || few_widest ? RowLabels::Never : LabelsOf(opening.rows, layout, opening.header);
  return opening;
}

Line ReadLine(std::string_view text, const TextLayout& layout, std::int32_t columns) {
  Line line{text, !IsDataLine(text, layout), {}, false};
  line.fields = line.comment ? SplitComment(WithoutCommentMarks(text, layout), layout, columns)
                             : Split(text, layout);
  return line;
}

/// The number of columns to the letter: over the first lines of the text, comments apart.
std::int32_t CountColumns(std::string_view text, const TextLayout& layout) {
  LineWalker walker(text, layout.line_end);
  std::int32_t columns = 0;
  for (std::int32_t i = 0; i < kColumnLines && !walker.AtEnd(); ++i) {
    const std::string_view line =
        WithoutRemark(walker.Next(), layout, MayStandBeforeRemark(layout));
    if (IsDataLine(line, layout)) {
      columns = std::max(columns, CountFields(line, layout, kMostColumns));
    }
  }
  return columns;
}

/// The line of the text by its number from 1; empty behind the last.
std::string_view LineAt(std::string_view text, std::int32_t number, char line_end) {
  LineWalker walker(text, line_end);
  for (; number > 1 && !walker.AtEnd(); --number) walker.Next();
  return walker.AtEnd() ? std::string_view() : walker.Next();
}

/// The names of the first line, or of the header line that fits the rows better; empty or too few where there is none.
Line FindNames(std::string_view text, const TextLayout& layout, const Opening& opening) {
  const std::int32_t rows = opening.row_columns;
  LineWalker walker(text, layout.line_end);
  Line line = ReadLine(walker.Next(), layout, rows);
  const auto size = static_cast<std::int32_t>(line.fields.size());
  const bool title = rows > 1 && (size == 1 || size > rows);
  if (!line.comment && !title) return line;
  if (line.comment) line.fields.clear();
  for (const std::string_view header : opening.header) {
    Line candidate = ReadLine(header, layout, rows);
    const bool fits =
        static_cast<std::int32_t>(candidate.fields.size()) == rows && NamesAll(candidate.fields);
    if (!fits) continue;
    line = std::move(candidate);
    line.fits_rows = true;
    // Units may follow a plain line of names; of comments the one nearest to the rows names them.
    if (!line.comment) break;
  }
  return line;
}

bool IsRow(std::string_view line, const Opening& opening) {
  return std::ranges::any_of(opening.rows,
                             [line](std::string_view row) { return row.data() == line.data(); });
}

/// A line of names or units, cut for the rows' columns or else for those of the first row; of a row its words name its numbers.
Fields FieldsOfLine(std::string_view text, std::int32_t number, const TextLayout& layout,
                    std::int32_t columns, const Opening& opening) {
  if (number < 1) return {};
  const std::string_view line = LineAt(text, number, layout.line_end);
  // Of turned rows the labels stand on one.
  if (IsRow(line, opening) && !layout.IsSeparator('\n')) {
    return NamesFromWords(line, opening.rows, layout, columns);
  }
  std::optional<Fields> fields = SpreadNames(line, opening.rows, layout, columns);
  if (!fields) fields = NamesOverDate(line, opening.rows, layout, columns);
  if (!fields) fields = SplitNames(line, layout, columns, opening.labels);
  if (!fields && opening.labels == RowLabels::Never) fields = SplitNames(line, layout, columns - 1);
  if (!fields) fields = SplitNames(line, layout, opening.first_row_columns);
  if (!fields) fields = NamesByPlace(line, opening.rows, layout, columns);
  return std::move(fields).value_or(Fields());
}

/// The names on the line that is said to hold them, with the upper words of the line above where they have such.
Fields StatedNames(std::string_view text, const TDSInfo& info, const TextLayout& layout,
                   std::int32_t columns, const Opening& opening) {
  if (info.StackedNames && info.NamesLine > 1) {
    auto names = StackNames(LineAt(text, info.NamesLine - 1, layout.line_end),
                            LineAt(text, info.NamesLine, layout.line_end), layout, columns);
    if (names) return *std::move(names);
  }
  return FieldsOfLine(text, info.NamesLine, layout, columns, opening);
}

/// What stands behind the numbers of a row, as far as the names do not say it themselves.
Fields UnitsOfValues(std::string_view row, const TextLayout& layout, const Fields& names) {
  Fields units = Split(row, layout);
  units.resize(std::min(units.size(), names.size()));
  for (std::size_t i = 0; i < units.size(); ++i) {
    const std::optional<NumberAndUnit> split = SplitUnit(units[i]);
    const bool said = NameWithoutUnit(names[i]).size() < names[i].size();
    const bool flag = split && (split->unit == "*" || split->unit == "#");
    units[i] = split && !said && !flag ? std::string(split->unit) : std::string();
  }
  return units;
}

/// The units of the columns; fewer than columns stand under their names.
Fields UnitsOf(std::string_view text, const TDSInfo& info, const TextLayout& layout,
               std::int32_t columns, const Opening& opening) {
  if (info.UnitsLine > 0 && info.NamesLine > 0) {
    auto ruled = UnitsOverRule(LineAt(text, info.UnitsLine, layout.line_end),
                               LineAt(text, info.UnitsLine + 1, layout.line_end), layout, columns);
    if (ruled) return *std::move(ruled);
    auto units = UnitsUnderNames(LineAt(text, info.UnitsLine, layout.line_end),
                                 LineAt(text, info.NamesLine, layout.line_end), layout, columns);
    if (units) return *std::move(units);
  }
  return FieldsOfLine(text, info.UnitsLine, layout, columns, opening);
}

}  // namespace

std::string UnnamedColumn(std::int32_t column) {
  return "(col " + std::to_string(column) + ")";
}

bool ReadsAsNumber(std::string_view field) {
  std::string packed;
  for (const char c : field) {
    if (!IsBlankByte(c)) packed += c;
  }
  return packed >= "0" && packed <= "9";
}

TextNames ReadTextNames(std::string_view text, const TextLayout& layout, const TDSInfo& info) {
  const Opening opening = ReadOpening(text, layout, info);
  const std::int32_t rows =
      layout.cuts.empty() ? opening.row_columns : static_cast<std::int32_t>(layout.cuts.size());
  std::optional<ListedNames> listed;
  if (info.NamesLine == 0) listed = FindListedNames(opening.header, layout, rows);
  const bool stated = info.NamesLine != 0 || listed;
  Line line = listed   ? Line{{}, false, std::move(listed->names), true}
              : stated ? Line{{}, false, StatedNames(text, info, layout, rows, opening), true}
                       : FindNames(text, layout, opening);
  const std::int32_t columns =
      line.comment || line.fits_rows ? rows : std::max(CountColumns(text, layout), rows);

  // Without header lines the first line holds values, and no value is a name, whatever its first digit.
  const bool first_is_row =
      !stated && info.FileHasHeaders == 0 && !line.comment && opening.header.empty();
  TextNames read;
  read.has_names_line = columns > 0;
  for (std::int32_t i = 0; i < columns; ++i) {
    const auto at = static_cast<std::size_t>(i);
    std::string name = at < line.fields.size() ? std::move(line.fields[at]) : std::string();
    const bool value = first_is_row && ValueOfField(name, ColumnFormat::Automatic).has_value();
    // What a line is said to name columns by is taken as it stands.
    if (name.empty() || (!stated && (ReadsAsNumber(name) || value))) {
      name = UnnamedColumn(i);
      read.has_names_line = false;
    }
    read.names.push_back(std::move(name));
  }
  read.bare_names = read.names;
  const std::string_view units_at = LineAt(text, info.UnitsLine, layout.line_end);
  const bool of_values =
      info.UnitsLine > 0 && IsRow(units_at, opening) && !layout.IsSeparator('\n');
  const Fields units = listed      ? std::move(listed->units)
                       : of_values ? UnitsOfValues(units_at, layout, read.names)
                                   : UnitsOf(text, info, layout, columns, opening);
  for (std::size_t i = 0; i < units.size(); ++i) {
    const std::string unit = UnitText(units[i]);
    if (!unit.empty()) read.names[i] += " [" + unit + "]";
  }
  return read;
}

}  // namespace tarnwick
