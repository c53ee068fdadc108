#include "sources/workbook/workbook_source.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <span>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "base/word_list.h"
#include "data/import/data_files.h"
#include "data/import/source_place.h"
#include "data/text/known_binaries.h"
#include "data/text/text_supplier.h"
#include "sources/readers/file_on_disk.h"
#include "sources/readers/part_of_file.h"
#include "sources/readers/reader_process.h"
#include "sources/workbook/sheet_part.h"

namespace tarnwick {
namespace {

constexpr ReaderProgram kReader = {"tarnwick-workbook", "workbooks"};
constexpr std::size_t kMostNames = 5;  // in a note

/// Those of text tables, but for what cuts lines by their places.
std::span<const SourceSetting> Settings() {
  static const std::vector<SourceSetting> kSettings = [] {
    constexpr std::string_view kByPlace[] = {"DivideTextByWidth", "ColumnWidth", "ColumnCuts"};
    std::vector<SourceSetting> settings = {{"TablePart", SettingUse::Opens}};
    for (const SourceSetting& setting :
         FindSourceKind(BasicSourceKinds(), DataSourceKind::Text)->settings) {
      if (std::ranges::find(kByPlace, setting.key) == std::end(kByPlace)) {
        settings.push_back(setting);
      }
    }
    return settings;
  }();
  return kSettings;
}

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
                           Listed(others, kMostNames) + " (--sheet names another)");
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
  return OpenPartOfFile(WorkbookKind(), place, options, progress);
}

}  // namespace

SourceKind WorkbookKind() {
  return {.kind = DataSourceKind::Spreadsheet,
          .name = "Workbook",
          .recognises = &IsZippedWorkbook,
          .examine = &Examine,
          .begin = &BeginAt,
          .open = &OpenAgain,
          .settings = Settings()};
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
