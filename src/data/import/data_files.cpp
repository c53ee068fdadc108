#include "data/import/data_files.h"

#include <utility>

#include "data/import/column_meaning.h"
#include "data/import/file_supplier.h"
#include "data/import/import_file.h"
#include "data/import/import_source.h"
#include "data/import/load_run.h"
#include "data/text/format_notes.h"
#include "data/text/text_names.h"
#include "data/text/text_supplier.h"

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
          .units_line = options.units_line,
          .comment_marks = options.comment_marks};
}

/// A line of names that the rule finds need not be kept.
void DropStatedNames(std::string_view text, char line_end, TDSInfo& info) {
  TDSInfo by_rule = info;
  by_rule.NamesLine = 0;
  const TextLayout layout(info, line_end);
  if (ReadTextNames(text, layout, by_rule).names == ReadTextNames(text, layout, info).names) {
    info.NamesLine = 0;
  }
}

/// One name too few, and nobody knows which column lacks its own.
bool LacksLastName(const ImportSource& source) {
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  std::size_t unnamed = 0;
  for (std::size_t i = 0; i < names.size(); ++i) {
    unnamed += names[i] == UnnamedColumn(static_cast<std::int32_t>(i)) ? 1 : 0;
  }
  const auto last = static_cast<std::int32_t>(names.size()) - 1;
  return names.size() > 2 && unnamed == 1 && names.back() == UnnamedColumn(last) &&
         source.columns.back().has_numbers;
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

void ExamineText(std::shared_ptr<const TextSource> text, const ImportOptions& options,
                 Progress& progress, ImportSource& source) {
  LoadProgress examining(&progress);
  const std::string_view all = text->Text();
  if (all.size() > kLargeText) {
    examining.Begin(kTitle, text->Name(), static_cast<std::int64_t>(all.size()));
  }
  TextFormat format = GuessTextFormat(all, HintsOf(options), examining);
  RequireTable(format, all, text->Name());
  format.ApplyTo(source.info);
  DropStatedNames(text->Text(), text->LineEnd(), source.info);
  source.info.MissingValues = options.missing.value_or(source.info.MissingValues);
  source.columns = std::move(format.columns);
  source.samples = std::move(format.samples);
  source.notes = NotesOf(format);
  source.supplier = std::make_unique<TTxtSupplier>(source.info, text);
  // Rows may have fields beyond the columns that the lines looked at for them have.
  source.columns.resize(source.supplier->ColumnNames().size());
  source.samples.resize(source.columns.size());
  if (LacksLastName(source)) {
    source.notes.emplace_back(
        "the last column has no name: names may stand over the wrong columns");
  }
  SettleTimes(options, source);
  SettleMissingValues(options, source);
  // The supplier was opened for the names; the description has learnt since.
  source.supplier = std::make_unique<TTxtSupplier>(source.info, std::move(text));
}

}  // namespace tarnwick
