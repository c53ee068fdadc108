#include "data/import/data_files.h"

#include <utility>

#include "data/import/file_supplier.h"
#include "data/import/import_file.h"
#include "data/import/import_source.h"
#include "data/import/load_run.h"
#include "data/text/text_supplier.h"

namespace tarnwick {
namespace {

constexpr std::string_view kTitle = "Loading data";
constexpr std::size_t kLargeText = 64 << 20;  // worth a progress window

GuessHints HintsOf(const ImportOptions& options) {
  return {options.separators,
          options.markers,
          options.merge_separators,
          options.width,
          options.headers,
          {},
          {},
          {}};
}

/// What the user says of the text, into its description.
void ApplyTextOptions(const ImportOptions& options, TDSInfo& info) {
  info.NamesLine = options.names_line.value_or(info.NamesLine);
  info.UnitsLine = options.units_line.value_or(info.UnitsLine);
  info.CommentMarks = options.comment_marks.value_or(info.CommentMarks);
  info.MissingValues = options.missing.value_or(info.MissingValues);
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
  const TextFormat format = GuessTextFormat(all, HintsOf(options), examining);
  format.ApplyTo(source.info);
  ApplyTextOptions(options, source.info);
  source.columns = format.columns;
  source.supplier = std::make_unique<TTxtSupplier>(source.info, std::move(text));
  source.columns.resize(source.supplier->ColumnNames().size());
}

}  // namespace tarnwick
