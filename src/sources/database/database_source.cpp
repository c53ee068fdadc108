#include "sources/database/database_source.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include "base/error.h"
#include "base/word_list.h"
#include "data/columns/column_meaning.h"
#include "data/fields/text_fields.h"
#include "data/import/import_file.h"
#include "data/import/open_source.h"
#include "sources/database/database_supplier.h"
#include "sources/database/thinned_supplier.h"
#include "sources/database/thinned_view.h"

namespace tarnwick {
namespace {

constexpr int kJudgedRows = 1000;
constexpr std::size_t kMostNames = 5;  // in a note
constexpr char kBetween = '\x1F';      // no value holds it

constexpr SourceSetting kSettings[] = {{"XDataColumn", SettingUse::Opens},
                                       {"YDataColumn"},
                                       {"YErrorColumn"},
                                       {"XErrorColumn"},
                                       {"XFormat"},
                                       {"YFormat"},
                                       {"AutoRowHitFreq"},
                                       {"RowChoiceMode", SettingUse::Opens},
                                       {"RowChoiceValue1"},
                                       {"RowSamplingFrequency"},
                                       {"RowChoiceValue2"},
                                       {"AllRows", SettingUse::Opens},
                                       {"ThinnedAtSource", SettingUse::Opens},
                                       {"XColExpr"},
                                       {"YColExpr"}};

/// The row's values as the fields of a line.
std::string LineOfRow(TDBSupplier& supplier, std::size_t columns) {
  std::string line;
  for (std::size_t i = 0; i < columns; ++i) {
    std::string field = supplier.TextAt(static_cast<std::int32_t>(i));
    std::ranges::replace_if(
        field, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    line += (i > 0 ? std::string(1, kBetween) : "") + field;
  }
  return line;
}

/// Texts and dates of a data base are judged as those of a text file are.
void JudgeRows(TDBSupplier& supplier, ImportSource& source) {
  TDSInfo fields;
  fields.TextSeparators = kBetween;
  fields.MergeSeparators = false;
  fields.TextMarkers.clear();
  fields.CommentMarks.clear();
  const TextLayout layout(fields, '\n');
  const std::size_t columns = supplier.ColumnNames().size();
  std::vector<std::string> lines;
  for (int row = 0; row < kJudgedRows && !supplier.AtEnd(); ++row, supplier.NextRow()) {
    lines.push_back(LineOfRow(supplier, columns));
  }
  const std::vector<std::string_view> rows(lines.begin(), lines.end());
  source.columns = JudgeColumns(rows, layout);
  source.columns.resize(columns);
  supplier.FirstRow();
}

/// What answers there.
const DatabaseDialect& OpenTable(const DatabasePlace& place, Progress& progress,
                                 ImportSource& source) {
  auto supplier = std::make_unique<TDBSupplier>(place, progress);
  supplier->MoveUnder(&progress);
  JudgeRows(*supplier, source);
  supplier->MoveUnder(nullptr);
  supplier->GuessRows(progress);
  source.info.DatasourceInfo = place.Text();
  const DatabaseDialect& dialect = supplier->Dialect();
  source.supplier = std::move(supplier);
  return dialect;
}

const DatabaseDialect& OpenFirstTable(DatabasePlace place, Progress& progress,
                                      ImportSource& source) {
  std::vector<std::string> tables = DatabaseConnection(place).Tables();
  for (std::size_t i = 0; i < tables.size(); ++i) {
    place.table = tables[i];
    const DatabaseDialect& dialect = OpenTable(place, progress, source);
    if (source.NumberColumns().empty()) continue;
    std::vector<std::string> others;
    for (const std::string& name : tables) {
      if (name != place.table) others.push_back('"' + name + '"');
    }
    if (others.empty()) return dialect;
    source.notes.push_back("the table \"" + place.table + "\" is shown, beside it " +
                           (others.size() == 1 ? "is " : "are ") + Listed(others, kMostNames));
    return dialect;
  }
  place.table.clear();
  throw FileError("No table of the data base holds numbers", place.Name(),
                  "tables: " + std::to_string(tables.size()));
}

/// Where nothing else says which rows are taken.
bool ChoosesRows(const ImportOptions& options) {
  return options.every || options.automatic_sampling ||
         options.row_choice.value_or(RowChoice::All) != RowChoice::All;
}

void ChooseThinning(const ImportOptions& options, const DatabaseDialect& dialect,
                    FirstPicture picture, ImportSource& source) {
  const DatabasePlace place = ParsePlace(source.info.DatasourceInfo);
  const bool wanted = options.thinned_at_source.value_or(false);
  if (wanted && ChoosesRows(options)) {
    throw Error("Rows are thinned by the data base, or chosen, not both");
  }
  if (wanted) RequireThinning(place, dialect);
  if (options.thinned_at_source || ChoosesRows(options) || !CanThin(dialect)) {
    source.info.ThinnedAtSource = wanted;
  } else {
    source.info.ThinnedAtSource = source.supplier->Size() > kMostWholeRows;
  }
  if (!source.info.ThinnedAtSource) return;
  source.thinning_note = "the data base gives the highest and lowest rows only, of about " +
                         std::to_string(source.supplier->Size()) +
                         " rows; a view that is zoomed shows more";
  source.supplier = std::make_unique<ThinnedSupplier>(std::move(source.supplier), place, picture);
}

void Examine(const DatabasePlace& place, const ImportOptions& options, Progress& progress,
             FirstPicture picture, ImportSource& source) {
  const bool named = !place.table.empty() || !place.query.empty();
  const DatabaseDialect& dialect =
      named ? OpenTable(place, progress, source) : OpenFirstTable(place, progress, source);
  SettleStoredTimes(options, source);
  ChooseThinning(options, dialect, picture, source);
}

template <FirstPicture picture>
void ExamineFile(FileToExamine file, ImportSource& source) {
  std::error_code ignored;  // what cannot be looked at cannot be opened either
  if (!std::filesystem::is_regular_file(file.name, ignored)) {
    throw FileError("A data base is read from its own file, not from a pipe", file.name, "");
  }
  Examine(PlaceOfFile(file.name), file.options, file.progress, picture, source);
}

template <FirstPicture picture>
std::unique_ptr<TDataSupplier> OpenAgain(const TDSInfo& info, Progress& progress) {
  const DatabasePlace place = PlaceOf(info);
  if (place.table.empty() && place.query.empty()) {
    throw Error("The source names no table of its data base: " + place.Name());
  }
  auto table = std::make_unique<TDBSupplier>(place, progress);
  if (!IsThinned(info)) {
    table->GuessRows(progress);
    return table;
  }
  return std::make_unique<ThinnedSupplier>(std::move(table), place, picture);
}

template <FirstPicture picture>
ImportSource BeginAt(const TDSInfo& place, const ImportOptions& options, Progress& progress) {
  ImportOptions asked = options;
  if (place.ThinnedAtSource) asked.thinned_at_source = true;
  return OpenDatabase(PlaceOf(place), asked, progress, picture);
}

}  // namespace

bool IsThinned(const TDSInfo& info) {
  return info.DataSource == DataSourceKind::Database && info.ThinnedAtSource && info.AllRows &&
         info.RowChoiceMode == RowChoice::All;
}

bool IsCoarse(const TDSInfo& info) {
  return IsThinned(info) && info.RowSamplingFrequency > 1;
}

bool ShowsRowsAsTheyAre(const TDSInfo& info) {
  const auto is_raw = [](const std::string& expression, const char* name) {
    return expression.empty() || expression == name;
  };
  return IsThinned(info) && is_raw(info.XColExpr, "X") && is_raw(info.YColExpr, "Y") &&
         info.YErrorColumn.empty() && info.XErrorColumn.empty();
}

ThinnedView WholeViewOf(const TDSInfo& info) {
  return {.place = PlaceOf(info),
          .x = {info.XDataColumn, info.XFormat},
          .y = {{info.YDataColumn, info.YFormat}},
          .columns = kColumnsOfWhole};
}

std::string TitleOfTable(const TDSInfo& info) {
  const bool is_table = info.DataSource == DataSourceKind::Database && !info.DatasourceInfo.empty();
  return is_table ? PlaceOf(info).Title() : std::string();
}

SourceKind DatabaseKind(FirstPicture picture) {
  const bool coarse = picture == FirstPicture::Coarse;
  return {
      .kind = DataSourceKind::Database,
      .name = "Database table",
      .recognises = [](std::string_view bytes) { return bytes.starts_with("SQLite format 3"); },
      .examine = coarse ? &ExamineFile<FirstPicture::Coarse> : &ExamineFile<FirstPicture::Whole>,
      .begin = coarse ? &BeginAt<FirstPicture::Coarse> : &BeginAt<FirstPicture::Whole>,
      .open = coarse ? &OpenAgain<FirstPicture::Coarse> : &OpenAgain<FirstPicture::Whole>,
      .settings = kSettings};
}

ImportSource OpenDatabase(const DatabasePlace& place, const ImportOptions& options,
                          Progress& progress, FirstPicture picture) {
  options.Validate();
  ImportSource source;
  Examine(place, options, progress, picture, source);
  FinishSource(options, DataSourceKind::Database, source);
  return source;
}

}  // namespace tarnwick
