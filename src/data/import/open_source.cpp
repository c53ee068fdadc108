#include "data/import/open_source.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/error.h"
#include "data/columns/import_options.h"
#include "data/import/data_files.h"
#include "data/import/load_report.h"

namespace tarnwick {
namespace {

constexpr std::string_view kStandardInput = "-";

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
}

bool Knows(const SourceKind& kind, std::string_view key) {
  return std::ranges::find(kind.settings, key, &SourceSetting::key) != kind.settings.end();
}

/// What is asked for by name is refused where it cannot be done.
void RequireKnown(const SourceKind& kind, const ImportOptions& options, const std::string& name) {
  if (!options.table_part.empty() && !Knows(kind, "TablePart")) {
    throw FileError("Only workbooks and files of arrays hold several tables; this is none", name,
                    "");
  }
  if (options.thinned_at_source.value_or(false) && !Knows(kind, "ThinnedAtSource")) {
    throw FileError("Only data bases give their rows thinned; this is none", name, "");
  }
}

}  // namespace

ImportSource OpenImportSource(const std::filesystem::path& path, const ImportOptions& options,
                              SourceKinds kinds, Progress& progress) {
  options.Validate();
  ImportSource source;
  const std::string name = path == kStandardInput ? "standard input" : path.string();
  MappedFile file = OpenSourceFile(path, progress, [&](std::string_view first) {
    const bool text = KindOfFile(kinds, first, name).kind == DataSourceKind::Text;
    if (text) RefuseBinaryBlock(first, name);
  });
  const SourceKind& kind = KindOfFile(kinds, file.Bytes(), name);
  RequireKnown(kind, options, name);
  kind.examine({std::move(file), name, options, progress}, source);
  // A kind whose files hold several tables has told which one.
  if (source.info.DatasourceInfo.empty()) source.info.DatasourceInfo = Location(path);
  FinishSource(options, kind.kind, source);
  return source;
}

void FinishSource(const ImportOptions& options, DataSourceKind kind, ImportSource& source) {
  if (!source.info.DatasourceInfo.empty()) source.info.DataSource = kind;
  source.info.active = true;
  ApplyRows(options, source.info);
}

ImportSource TextImportSource(std::string text, const std::string& name,
                              const ImportOptions& options, Progress& progress) {
  options.Validate();
  ImportSource source;
  ExamineText(std::make_shared<const TextSource>(std::move(text), name), options, progress, source);
  FinishSource(options, DataSourceKind::Manual, source);
  return source;
}

std::vector<std::string> NotesOf(const ImportSource& source) {
  std::vector<std::string> notes = source.notes;
  LoadReport report;
  report.left_out_from = source.left_out_from;
  if (source.left_out_from > 0) notes.push_back(report.LeftOutText());
  return notes;
}

}  // namespace tarnwick
