#include "sources/workbook/workbook_source.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "base/word_list.h"
#include "data/import/data_files.h"
#include "data/import/import_file.h"
#include "data/import/import_source.h"
#include "data/import/source_place.h"
#include "data/text/known_binaries.h"
#include "data/text/text_supplier.h"
#include "sources/readers/file_on_disk.h"
#include "sources/readers/reader_process.h"
#include "sources/workbook/sheet_part.h"

namespace tarnwick {
namespace {

using enum SettingUse;

constexpr ReaderProgram kReader = {"tarnwick-workbook", "workbooks"};
constexpr std::size_t kMostNames = 5;  // in a note

constexpr SourceSetting kSettings[] = {
    {"TablePart", Opens},
    {"FileHasHeaders", Opens},
    {"TextSeparators", Opens},
    {"TextMarkers", Opens},
    {"MergeSeparators", Opens},
    {"NamesLine", Opens},
    {"UnitsLine", Opens},
    {"CommentMarks", Opens},
    {"MissingValues", Opens},
    {"TimeColumns", Opens},
    {"TableLines", Opens},
    {"XDataColumn"},
    {"YDataColumn"},
    {"YErrorColumn"},
    {"XErrorColumn"},
    {"XFormat"},
    {"YFormat"},
    {"RowSamplingFrequency"},
    {"AutoRowHitFreq"},
    {"AllRows"},
    {"Run"},
    {"RowChoiceMode"},
    {"RowChoiceValue1"},
    {"RowChoiceValue2"},
    {"XColExpr"},
    {"YColExpr"},
};

struct Sheet {
  std::string name;
  bool has_numbers = false;
};

/// What the reader answered.
struct ReadSheet {
  std::vector<Sheet> all;
  std::string name;
  std::int64_t errors = 0;
  std::string text;
};

ReadSheet TakeAnswer(std::string answer) {
  ReadSheet sheet;
  std::size_t at = 0;
  for (std::size_t end = answer.find('\n'); end != answer.npos && end > at;
       end = answer.find('\n', at)) {
    const std::string_view line = std::string_view(answer).substr(at, end - at);
    const std::size_t tab = line.find('\t');
    const std::string_view word = line.substr(0, tab);
    const std::string_view value = line.substr(tab + 1);
    if (word == "sheet") {
      const std::size_t count = value.rfind('\t');
      sheet.all.push_back({std::string(value.substr(0, count)), value.substr(count + 1) != "0"});
    } else if (word == "read") {
      sheet.name = value;
    } else if (word == "errors") {
      sheet.errors = ParseInteger(value).value_or(0);
    }
    at = end + 1;
  }
  answer.erase(0, at + 1);
  sheet.text = std::move(answer);
  return sheet;
}

ReadSheet AskFor(const SheetPart& part, const MappedFile& file, const std::string& name,
                 Progress& progress) {
  const FileOnDisk on_disk(file, name);
  std::vector<std::string> words = {on_disk.Path(), part.sheet};
  for (const std::int64_t edge : RangeEdges(part.range)) words.push_back(std::to_string(edge));
  return TakeAnswer(AskReader(kReader, words, name, progress));
}

std::shared_ptr<const TextSource> TextOf(ReadSheet& sheet, const std::string& file) {
  return std::make_shared<const TextSource>(std::move(sheet.text),
                                            file + ", sheet \"" + sheet.name + '"');
}

/// What the reader's lines are, whatever text tables may be.
ImportOptions OptionsForLines(ImportOptions options) {
  options.separators = "\t";
  options.markers = "";
  options.merge_separators = false;
  options.width.reset();
  options.cuts.reset();
  // "#" and "%" begin names more often than remarks.
  if (!options.comment_marks) options.comment_marks = "";
  return options;
}

void TellSheets(const ReadSheet& sheet, const SheetPart& asked, ImportSource& source) {
  std::vector<std::string> others;
  for (const Sheet& other : sheet.all) {
    if (other.has_numbers && other.name != sheet.name) others.push_back('"' + other.name + '"');
  }
  if (asked.sheet.empty() && !others.empty()) {
    source.notes.push_back("the sheet \"" + sheet.name + "\" is shown, numbers are also in " +
                           Listed(others, kMostNames) + " (others: --sheet, Edit Data)");
  }
  if (sheet.errors > 0) {
    source.notes.push_back(Counted(sheet.errors, "cell") +
                           " of the sheet without a result (as #N/A) count as empty");
  }
}

void Examine(FileToExamine file, ImportSource& source) {
  SheetPart part = ParseSheetPart(file.options.table_part);
  ReadSheet sheet = AskFor(part, file.file, file.name, file.progress);
  ExamineText(TextOf(sheet, file.name), OptionsForLines(file.options), file.progress, source);
  TellSheets(sheet, part, source);
  part.sheet = sheet.name;
  source.info.TablePart = part.Text();
}

std::unique_ptr<TDataSupplier> OpenAgain(const TDSInfo& info, Progress& progress) {
  const std::string place = SourcePlace(info).string();
  const MappedFile file = OpenSourceFile(place, progress);
  ReadSheet sheet = AskFor(ParseSheetPart(info.TablePart), file, place, progress);
  return std::make_unique<TTxtSupplier>(info, TextOf(sheet, place));
}

ImportSource BeginAt(const TDSInfo& place, const ImportOptions& options, Progress& progress) {
  const SourceKind kinds[] = {WorkbookKind()};
  ImportOptions with_part = options;
  with_part.table_part = place.TablePart;
  return OpenImportSource(SourcePlace(place), with_part, kinds, progress);
}

}  // namespace

SourceKind WorkbookKind() {
  return {.kind = DataSourceKind::Spreadsheet,
          .name = "Workbook",
          .recognises = &IsZippedWorkbook,
          .examine = &Examine,
          .begin = &BeginAt,
          .open = &OpenAgain,
          .settings = kSettings};
}

std::vector<std::string> SheetsOf(const std::string& file, Progress& progress) {
  const MappedFile opened = OpenSourceFile(file, progress);
  std::vector<std::string> names;
  for (Sheet& sheet : AskFor({}, opened, file, progress).all) {
    names.push_back(std::move(sheet.name));
  }
  return names;
}

}  // namespace tarnwick
