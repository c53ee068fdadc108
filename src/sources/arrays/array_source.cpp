#include "sources/arrays/array_source.h"

#include <cmath>
#include <cstring>
#include <memory>
#include <utility>

#include "base/error.h"
#include "data/columns/column_meaning.h"
#include "data/import/source_place.h"
#include "data/text/text_source.h"
#include "sources/arrays/array_columns.h"
#include "sources/arrays/array_part.h"
#include "sources/arrays/array_supplier.h"
#include "sources/readers/file_on_disk.h"
#include "sources/readers/part_of_file.h"
#include "sources/readers/reader_process.h"

namespace tarnwick {
namespace {

using enum SettingUse;
using namespace std::string_view_literals;

constexpr ReaderProgram kReader = {"tarnwick-arrays", "HDF5 and NetCDF files"};
constexpr std::int64_t kJudgedRows = 400;

constexpr SourceSetting kSettings[] = {
    {"TablePart", Opens}, {"XDataColumn"}, {"YDataColumn"},   {"YErrorColumn"},
    {"XErrorColumn"},     {"XFormat"},     {"YFormat"},       {"RowSamplingFrequency"},
    {"AutoRowHitFreq"},   {"AllRows"},     {"RowChoiceMode"}, {"RowChoiceValue1"},
    {"RowChoiceValue2"},  {"XColExpr"},    {"YColExpr"}};

/// The mark of one of the formats stands at the beginning, or behind a block of another program's own.
bool HoldsArrays(std::string_view bytes) {
  constexpr std::string_view kHdf5 = "\x89HDF\r\n\x1A\n"sv;
  constexpr std::size_t kLastPlace = 1 << 20;
  if (bytes.starts_with("CDF\1"sv) || bytes.starts_with("CDF\2"sv) ||
      bytes.starts_with("CDF\5"sv)) {
    return true;
  }
  if (bytes.starts_with(kHdf5)) return true;
  for (std::size_t place = 512; place <= kLastPlace && place < bytes.size(); place *= 2) {
    if (bytes.substr(place).starts_with(kHdf5)) return true;
  }
  return false;
}

/// One file, under a name as long as any of its columns may be wanted.
struct OpenedArrays {
  OpenedArrays(const MappedFile& file, std::string file_name)
      : on_disk(file, file_name), name(std::move(file_name)) {}

  std::vector<NamedArray> List(Progress& progress) const {
    return ParseArrayList(AskReader(kReader, {"list", on_disk.Path()}, name, progress));
  }

  /// The first `rows` (0: all) of each.
  std::vector<std::vector<double>> Read(std::span<const ArrayColumn> columns, std::int64_t rows,
                                        Progress& progress) const {
    std::vector<std::string> words = {"read", on_disk.Path(), std::to_string(rows)};
    for (const ArrayColumn& column : columns) {
      words.insert(words.end(), {column.path, column.member, column.line});
    }
    const std::string bytes = AskReader(kReader, words, name, progress);
    const std::size_t count = bytes.size() / sizeof(double) / columns.size();
    std::vector<std::vector<double>> values(columns.size(), std::vector<double>(count));
    for (std::size_t i = 0; i < columns.size() && count > 0; ++i) {
      std::memcpy(values[i].data(), bytes.data() + i * count * sizeof(double),
                  count * sizeof(double));
    }
    return values;
  }

  FileOnDisk on_disk;
  std::string name;
};

std::unique_ptr<TDataSupplier> SupplierOf(std::shared_ptr<const OpenedArrays> file,
                                          ArrayTable table) {
  const std::string name = file->name;
  return std::make_unique<TArraySupplier>(
      std::move(table), name,
      [file = std::move(file)](std::span<const ArrayColumn> columns, Progress& progress) {
        return file->Read(columns, 0, progress);
      });
}

std::vector<ColumnGuess> Judge(const OpenedArrays& file, const ArrayTable& table,
                               Progress& progress) {
  std::vector<ColumnGuess> guesses;
  const std::vector<std::vector<double>> read = file.Read(table.columns, kJudgedRows, progress);
  for (std::size_t i = 0; i < read.size(); ++i) {
    const StoredMeaning& meaning = table.columns[i].meaning;
    ColumnGuess guess{.has_numbers = true, .is_date = meaning.is_date};
    for (const double stored : read[i]) {
      const double value = meaning.ValueOf(stored);
      if (!std::isnan(value)) guess.values.push_back(value);
    }
    guesses.push_back(std::move(guess));
  }
  return guesses;
}

void Examine(FileToExamine file, ImportSource& source) {
  const auto opened = std::make_shared<const OpenedArrays>(file.file, file.name);
  const std::vector<std::string> asked = ParseArrays(file.options.table_part);
  ArrayTable table = ChooseArrays(opened->List(file.progress), asked, file.name);
  // Of several lengths the one that was taken is kept: another may be the most common one of the file one day.
  source.info.TablePart =
      asked.empty() && !table.notes.empty() ? ArraysText(table.read) : file.options.table_part;
  source.columns = Judge(*opened, table, file.progress);
  source.notes = table.notes;
  source.supplier = SupplierOf(opened, std::move(table));
  SettleStoredTimes(file.options, source);
}

std::unique_ptr<TDataSupplier> OpenAgain(const TDSInfo& info, Progress& progress) {
  const std::string place = SourcePlace(info).string();
  const MappedFile file = OpenSourceFile(place, progress);
  const auto opened = std::make_shared<const OpenedArrays>(file, place);
  return SupplierOf(opened,
                    ChooseArrays(opened->List(progress), ParseArrays(info.TablePart), place));
}

ImportSource BeginAt(const TDSInfo& place, const ImportOptions& options, Progress& progress) {
  return OpenPartOfFile(ArraysKind(), place, options, progress);
}

}  // namespace

SourceKind ArraysKind() {
  return {.kind = DataSourceKind::Arrays,
          .name = "Arrays",
          .recognises = &HoldsArrays,
          .examine = &Examine,
          .begin = &BeginAt,
          .open = &OpenAgain,
          .settings = kSettings};
}

std::vector<NamedArray> ArraysOf(const std::string& file, Progress& progress) {
  return OpenedArrays(OpenSourceFile(file, progress), file).List(progress);
}

}  // namespace tarnwick
