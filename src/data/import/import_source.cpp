#include "data/import/import_source.h"

#include <algorithm>
#include <utility>

#include "base/error.h"
#include "data/import/file_supplier.h"
#include "data/import/import_file.h"
#include "data/import/load_run.h"
#include "data/text/text_source.h"
#include "data/text/text_supplier.h"

namespace tarnwick {
namespace {

constexpr std::string_view kStandardInput = "-";
constexpr std::string_view kTitle = "Loading data";
constexpr std::size_t kLargeText = 64 << 20;  // worth a progress window
constexpr std::size_t kNamesInMessage = 12;

GuessHints HintsOf(const ImportOptions& options) {
  return {options.separators, options.markers, options.merge_separators, options.width,
          options.headers};
}

/// Where the file is found again from any folder; nothing for what cannot be read twice.
std::string Location(const std::filesystem::path& path) {
  if (path == kStandardInput) return {};
  std::error_code error;  // a folder that was removed meanwhile has no name
  const std::filesystem::path whole = std::filesystem::absolute(path, error);
  return (error ? path : whole).lexically_normal().string();
}

void ApplyRows(const ImportOptions& options, TDSInfo& info) {
  if (options.row_choice) {
    info.RowChoiceMode = *options.row_choice;
    info.RowChoiceValue1 = options.row_value1;
    info.RowChoiceValue2 = options.row_value2;
  }
  if (options.every) {
    info.AutoRowHitFreq = false;
    info.RowSamplingFrequency = *options.every;
  }
}

void OpenBinary(MappedFile file, const std::string& name, const ImportOptions& options,
                ImportSource& source) {
  auto supplier = std::make_unique<TFileSupplier>(std::move(file), name);
  source.info.DataSource = DataSourceKind::Unformatted;
  source.info.FileHasHeaders = supplier->HeaderRowsPassed();
  source.info.RowSamplingFrequency = supplier->SamplingFrequency();
  source.columns.assign(supplier->ColumnNames().size(), ColumnGuess{true, false, {}});
  source.supplier = std::move(supplier);
  if (options.headers) source.info.FileHasHeaders = *options.headers;
}

void OpenText(std::shared_ptr<const TextSource> text, const ImportOptions& options,
              ImportSource& source, Progress& progress) {
  LoadProgress examining(&progress);
  const std::string_view all = text->Text();
  if (all.size() > kLargeText) {
    examining.Begin(kTitle, text->Name(), static_cast<std::int64_t>(all.size()));
  }
  const TextFormat format = GuessTextFormat(all, HintsOf(options), examining);
  source.info.DataSource = DataSourceKind::Text;
  format.ApplyTo(source.info);
  source.columns = format.columns;
  source.supplier = std::make_unique<TTxtSupplier>(source.info, std::move(text));
  source.columns.resize(source.supplier->ColumnNames().size());
}

}  // namespace

ImportSource OpenImportSource(const std::filesystem::path& path, const ImportOptions& options,
                              Progress& progress) {
  options.Validate();
  ImportSource source;
  const std::string name = path == kStandardInput ? "standard input" : path.string();
  MappedFile file = OpenSourceFile(path);
  if (IsUnformatted(file.Bytes())) {
    OpenBinary(std::move(file), name, options, source);
  } else {
    OpenText(std::make_shared<const TextSource>(std::move(file), name), options, source, progress);
  }
  source.info.DatasourceInfo = Location(path);
  source.info.active = true;
  ApplyRows(options, source.info);
  return source;
}

ImportSource ExamineText(std::string text, const std::string& name, const ImportOptions& options,
                         Progress& progress) {
  options.Validate();
  ImportSource source;
  OpenText(std::make_shared<const TextSource>(std::move(text), name), options, source, progress);
  source.info.active = true;
  ApplyRows(options, source.info);
  return source;
}

std::int32_t ImportSource::Column(std::string_view name) const {
  const std::int32_t column = supplier->ColumnIndex(name);
  if (column >= 0) return column;
  std::string known;
  const std::vector<std::string>& names = supplier->ColumnNames();
  for (std::size_t i = 0; i < std::min(names.size(), kNamesInMessage); ++i) {
    known += (i > 0 ? ", " : "") + names[i];
  }
  if (names.size() > kNamesInMessage) known += ", ...";
  throw FileError("There is no column \"" + std::string(name) + "\"", supplier->Describe(),
                  "columns: " + known);
}

std::string ImportSource::NameOf(std::int32_t column) const {
  if (column == kRowNumberColumn) return std::string(kRowNumberName);
  return supplier->ColumnNames()[static_cast<std::size_t>(column)];
}

std::string ImportSource::ReferenceTo(std::int32_t column) const {
  const std::string name = NameOf(column);
  return supplier->ColumnIndex(name) == column ? name : "#" + std::to_string(column);
}

ColumnGuess ImportSource::Guess(std::int32_t column) const {
  const auto at = static_cast<std::size_t>(column);
  return at < columns.size() ? columns[at] : ColumnGuess{column == kRowNumberColumn, false, {}};
}

std::vector<std::int32_t> ImportSource::NumberColumns() const {
  std::vector<std::int32_t> numbers;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].has_numbers) numbers.push_back(static_cast<std::int32_t>(i));
  }
  return numbers;
}

}  // namespace tarnwick
