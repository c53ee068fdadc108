#include "data/import/data_files.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/columns/column_meaning.h"
#include "data/columns/import_source.h"
#include "data/columns/late_columns.h"
#include "data/columns/missing_meaning.h"
#include "data/columns/series_in_rows.h"
#include "data/columns/values_in_turn.h"
#include "data/doubts/row_doubts.h"
#include "data/fields/field_kind.h"
#include "data/fields/text_lines.h"
#include "data/guess/column_judge.h"
#include "data/guess/format_notes.h"
#include "data/import/file_supplier.h"
#include "data/import/import_file.h"
#include "data/import/import_like.h"
#include "data/import/load_run.h"
#include "data/import/second_look.h"
#include "data/names/number_names.h"
#include "data/names/numbered_names.h"
#include "data/names/text_names.h"
#include "data/series/data_series.h"
#include "data/text/text_supplier.h"
#include "data/text/turned_rows.h"

namespace tarnwick {
namespace {

constexpr std::string_view kTitle = "Loading data";
constexpr std::size_t kLargeText = 64 << 20;  // worth a progress window

GuessHints HintsOf(const ImportOptions& options) {
  return {.separators = options.separators,
          .markers = options.markers,
          .merge_separators = options.merge_separators,
          .column_width = options.width,
          .column_cuts = options.cuts,
          .header_lines = options.headers,
          .names_line = options.names_line,
          .stacked_names = options.stacked_names,
          .units_line = options.units_line,
          .comment_marks = options.comment_marks};
}

/// `"8336" "8315"`: numbers only, which are names since they stand in quotes.
bool AreNumbersOnly(const std::vector<std::string>& names) {
  std::size_t numbers = 0;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const bool number = KindOfField(names[i]) == FieldKind::Number;
    if (!number && names[i] != UnnamedColumn(static_cast<std::int32_t>(i))) return false;
    numbers += number ? 1 : 0;
  }
  return numbers > 1;
}

/// "x,1.5": which of several curves.
bool IsWordWithNumber(const std::vector<std::string>& names) {
  return names.size() == 2 && KindOfField(names.front()) == FieldKind::Text &&
         KindOfField(names.back()) == FieldKind::Number;
}

/// A line of names that the rule finds need not be kept. Numbers it takes for no names, which is right but for those that rise.
void DropStatedNames(std::string_view text, char line_end, TDSInfo& info) {
  TDSInfo by_rule = info;
  by_rule.NamesLine = 0;
  by_rule.StackedNames = false;
  const TextLayout layout(info, line_end);
  const std::vector<std::string> ruled = ReadTextNames(text, layout, by_rule).names;
  const std::vector<std::string> stated = ReadTextNames(text, layout, info).names;
  if (ruled.size() != stated.size() || HoldRisingNumbers(stated) || AreNumbersAcross(stated) ||
      AreNumbersOnly(stated)) {
    return;
  }
  // One number ahead of many words is a name.
  if (BeginsWithOneNumber(stated) || IsWordWithNumber(stated)) return;
  for (std::size_t i = 0; i < ruled.size(); ++i) {
    if (ruled[i] != stated[i] && KindOfField(stated[i]) != FieldKind::Number) return;
  }
  info.NamesLine = 0;
}

/// How many columns at the end have no names where those before them do.
std::size_t LackNames(const ImportSource& source) {
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  const auto is_unnamed = [&names](std::size_t i) {
    return names[i] == UnnamedColumn(static_cast<std::int32_t>(i));
  };
  std::size_t behind = names.size();
  while (behind > 0 && is_unnamed(behind - 1)) --behind;
  for (std::size_t i = 0; i < behind; ++i) {
    if (is_unnamed(i)) return 0;
  }
  const bool numbers = std::any_of(source.columns.begin() + static_cast<std::ptrdiff_t>(behind),
                                   source.columns.end(),
                                   [](const ColumnGuess& column) { return column.has_numbers; });
  return behind > 1 && numbers ? names.size() - behind : 0;
}

/// The rows are counted by their first column.
bool CountsRows(const ColumnGuess& column) {
  return StepsByOne(column.values) && column.values.front() == std::floor(column.values.front());
}

/// The names leave out the first column, of numbers that do not count the rows, or though the last holds texts, which might as
/// well lack its name. Numbers in quotes are labels.
bool LeaveOutNumbers(const ImportSource& source, std::string_view text, char line_end) {
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  const auto headers = static_cast<std::size_t>(std::max(source.info.FileHasHeaders, 0));
  if (headers == 0 || names.size() < 3 || TurnsRows(source.info) ||
      names.front() != UnnamedColumn(0) || !source.columns.front().has_numbers ||
      (source.columns.back().has_numbers && CountsRows(source.columns.front())) ||
      BehindLines(text, headers, line_end).starts_with('"')) {
    return false;
  }
  for (std::size_t i = 1; i < names.size(); ++i) {
    if (names[i] == UnnamedColumn(static_cast<std::int32_t>(i))) return false;
  }
  return true;
}

/// Too few names, and nobody knows which columns lack their own.
void NoteLackingNames(std::string_view text, char line_end, ImportSource& source) {
  if (LeaveOutNumbers(source, text, line_end)) {
    source.notes.emplace_back(
        "the first column has no name: the names are taken to begin over the second");
  }
  const std::size_t lacking = LackNames(source);
  if (lacking == 0) return;
  source.notes.push_back((lacking == 1
                              ? "the last column has no name"
                              : "the last " + std::to_string(lacking) + " columns have no names") +
                         ": names may stand over the wrong columns");
}

/// The header line that the names of the columns are from, by the first and the last of them, from 1; 0 where none holds both.
std::int32_t LineOfNames(const TextSource& text, const ImportSource& source) {
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  // A separator may end the line.
  auto last = names.end() - 1;
  while (last != names.begin() &&
         *last == UnnamedColumn(static_cast<std::int32_t>(last - names.begin()))) {
    --last;
  }
  const TextLayout layout(source.info, text.LineEnd());
  const auto headers = static_cast<std::size_t>(std::max(source.info.FileHasHeaders, 0));
  const std::vector<std::string_view> lines = FirstLines(text.Text(), headers, text.LineEnd());
  const auto holds = [&](std::string_view line) {
    const auto columns = static_cast<std::int32_t>(names.size());
    return CountFields(line, layout, columns + 1) == columns && line.find(*last) != line.npos &&
           line.find(names.front()) != line.npos;
  };
  const auto found = std::ranges::find_if(lines, holds);
  return found == lines.end() ? 0 : static_cast<std::int32_t>(found - lines.begin()) + 1;
}

/// Names that count what the curves of rows go over.
struct NamesOverRows {
  std::int32_t line = 0;  ///< the header line that holds them, from 1; 0: there are none
  bool certain =
      false;  ///< numbers or days ("Country 1990 1991"), over which each row is a curve, however many there are
};

/// "SPEC_360 SPEC_365" or "Country 1990 1991".
NamesOverRows FindNamesOverRows(const TextSource& text, const ImportSource& source) {
  TDSInfo named = source.info;
  if (HoldsCurvesInRows(source)) {
    if (named.NamesLine <= 0) named.NamesLine = LineOfNames(text, source);
    return {named.NamesLine, TurnsOverNames(text.Text(), named, text.LineEnd())};
  }
  return {FindNumberedNames(source.supplier->ColumnNames()) ? LineOfNames(text, source) : 0};
}

/// Reads rows that hold curves along the line anew, turned.
void TurnRows(const std::shared_ptr<const TextSource>& text, const ImportOptions& options,
              const NamesOverRows& over, ImportSource& source) {
  TDSInfo& info = source.info;
  const char separator = info.TextSeparators.front();
  const bool labelled = !source.samples.empty() && !source.samples.front().empty() &&
                        std::ranges::any_of(source.samples.front().front(), &IsLetter) &&
                        !source.columns.front().has_numbers;
  if (!TurnsRows(info)) info.TextSeparators += '\n';
  // Of turned rows the labels are the first.
  const std::int32_t by_labels = labelled ? info.FileHasHeaders + 1 : kNoNamesLine;
  info.NamesLine = options.names_line.value_or(over.line > 0 ? over.line : by_labels);
  info.UnitsLine = 0;
  const std::string turned = TurnedText(text->Text(), info, text->LineEnd());
  GuessHints hints = HintsOf(options);
  hints.separators = info.TextSeparators;
  hints.merge_separators = info.MergeSeparators;
  hints.header_lines = info.FileHasHeaders;
  hints.comment_marks = info.CommentMarks;
  hints.column_width.reset();
  hints.column_cuts = "";
  TextFormat format = GuessTextFormat(turned, hints);
  source.columns = std::move(format.columns);
  source.samples = std::move(format.samples);
  source.supplier = std::make_unique<TTxtSupplier>(info, text);
  source.columns.resize(source.supplier->ColumnNames().size());
  source.samples.resize(source.columns.size());
  if (options.separators) return;
  source.notes.emplace_back(
      over.certain ? "columns are called by numbers or dates: each row is a curve over these"
      : source.columns.size() == 1
          ? "the values of a row go on in the next, as one curve: they are read in turn"
          : "each of the few long rows holds a series: they are read as columns");
  if (over.certain && source.columns.size() > kMostTurnedRows) {
    source.notes.back() += ", the first " + std::to_string(kMostTurnedRows);
  }
  source.notes.back() += std::string(" (--separators \"") +
                         (separator == '\t' ? "\\t" : std::string(1, separator)) +
                         "\" reads rows as they stand)";
}

}  // namespace

std::unique_ptr<TDataSupplier> OpenDataFile(const TDSInfo& info, Progress& progress) {
  MappedFile file = OpenSourceFile(info.DatasourceInfo, progress);
  if (IsUnformatted(file.Bytes())) {
    return std::make_unique<TFileSupplier>(std::move(file), info.DatasourceInfo);
  }
  auto source = std::make_shared<const TextSource>(std::move(file), info.DatasourceInfo);
  return std::make_unique<TTxtSupplier>(info, std::move(source));
}

void ExamineUnformatted(FileToExamine file, ImportSource& source) {
  auto supplier = std::make_unique<TFileSupplier>(std::move(file.file), std::move(file.name));
  source.info.FileHasHeaders = file.options.headers.value_or(supplier->HeaderRowsPassed());
  source.info.RowSamplingFrequency = supplier->SamplingFrequency();
  source.columns.assign(supplier->ColumnNames().size(), ColumnGuess{true, false, {}});
  source.supplier = std::move(supplier);
}

void ExamineTextFile(FileToExamine file, ImportSource& source) {
  auto text = std::make_shared<const TextSource>(std::move(file.file), std::move(file.name));
  ExamineText(std::move(text), file.options, file.progress, source);
}

namespace {

void TellOfForeignNames(std::string_view text, char line_end, ImportSource& source) {
  const auto lines = static_cast<std::size_t>(std::max(source.info.FileHasHeaders, 0));
  const std::vector<std::string_view> head = FirstLines(text, lines, line_end);
  if (std::ranges::any_of(head, &LooksOfAnotherAlphabet)) {
    source.notes.emplace_back(
        "the names are no UTF-8 and read as Windows-1252, though they look like those of another "
        "alphabet (a file saved as UTF-8 keeps them)");
  }
}

/// A guess that is asked again with all that the first one found, as reading again does, may find another end: then the end stays
/// where it is.
void SettleTableEnd(std::string_view text, TDSInfo& info) {
  if (!info.TableEndSought) return;
  TDataSeries like;
  like.Source() = info;
  like.Source().DataSource = DataSourceKind::Text;
  const TDataSeries* const one[] = {&like};
  info.TableEndSought =
      GuessTextFormat(text, HintsOf(OptionsLike(one))).table_lines == info.TableLines;
}

}  // namespace

void ExamineText(std::shared_ptr<const TextSource> text, const ImportOptions& options,
                 Progress& progress, ImportSource& source) {
  LoadProgress examining(&progress);
  const std::string_view all = text->Text();
  if (all.size() > kLargeText) {
    examining.Begin(kTitle, text->Name(), static_cast<std::int64_t>(all.size()));
  }
  TextFormat format = GuessTextFormat(all, HintsOf(options), examining);
  const bool by_user = options.x_column || !options.y_columns.empty() || options.headers ||
                       options.separators || options.width || options.cuts;
  RequireTable(format, all, text->Name(), by_user ? TableBy::User : TableBy::Guess);
  format.ApplyTo(source.info);
  if (!options.names_line) DropStatedNames(all, text->LineEnd(), source.info);
  SettleTableEnd(all, source.info);
  source.info.MissingValues = options.missing.value_or(source.info.MissingValues);
  source.notes = NotesOf(format);
  if (!format.other_tables.empty()) source.other_table = format.other_tables.front().line - 1;
  source.left_out_from = format.left_out_from;
  source.columns = std::move(format.columns);
  source.samples = std::move(format.samples);
  source.supplier = std::make_unique<TTxtSupplier>(source.info, text);
  // Rows may have fields beyond the columns that the lines looked at for them have.
  source.columns.resize(source.supplier->ColumnNames().size());
  source.samples.resize(source.columns.size());
  const bool stated = options.separators || options.width || options.x_column;
  const NamesOverRows over = FindNamesOverRows(*text, source);
  if (TurnsRows(source.info) ||
      (!stated && options.y_columns.empty() &&
       (over.certain || HoldsValuesInTurn(source) == ValuesInTurn::Sure))) {
    TurnRows(text, options, over, source);
  }
  NoteLackingNames(all, text->LineEnd(), source);
  TellOfForeignNames(all, text->LineEnd(), source);
  if (!TurnsRows(source.info)) FindLateColumns(source);
  SettleTimes(options, source);
  SettleMissingValues(options, all, text->LineEnd(), source);
  SettlePenMarks(options, all, text->LineEnd(), source);
  if (!by_user && !TurnsRows(source.info)) {
    std::ranges::move(SecondLook(source, format, all, text->LineEnd()),
                      std::back_inserter(source.notes));
    AddDoubts(DoubtsOfRows(source, format, all, text->LineEnd()), source.notes);
  }
  // The supplier was opened for the names; the description has learnt since.
  source.supplier = std::make_unique<TTxtSupplier>(source.info, std::move(text));
}

}  // namespace tarnwick
