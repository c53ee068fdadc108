// Arbitrary bytes as the XML of a sheet, of either kind of workbook; behind each 0xFF stand the shared texts, the styles and the
// list of sheets. What is read lies within a sheet, and naming the sheet and its whole range reads the same.
#include <unistd.h>
#include <zip.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/error.h"
#include "readers/workbook/read_workbook.h"
#include "readers/workbook/zip_parts.h"

namespace {

using namespace tarnwick;

constexpr char kBetween = '\xFF';
constexpr std::string_view kRelations =
    "<R><Relationship Id='r' Type='/officeDocument' Target='book.xml'/></R>";
constexpr std::string_view kParts =
    "<R><Relationship Id='a' Type='/worksheet' Target='sheet.xml'/>"
    "<Relationship Id='s' Type='/sharedStrings' Target='strings.xml'/>"
    "<Relationship Id='f' Type='/styles' Target='styles.xml'/></R>";
constexpr std::string_view kBook =
    "<workbook xmlns:r='x'><sheets><sheet name='One' r:id='a'/></sheets></workbook>";

void Require(bool holds) {
  if (!holds) std::abort();
}

struct Part {
  const char* name;
  std::string_view text;
};

/// One file that each run writes anew.
const std::string& File() {
  static const std::string file =
      (std::filesystem::temp_directory_path() / ("sheet_xml_fuzz_" + std::to_string(getpid())))
          .string();
  return file;
}

template <std::size_t kCount>
void Zip(const std::array<Part, kCount>& parts) {
  zip_t* const archive = zip_open(File().c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
  Require(archive != nullptr);
  for (const Part& part : parts) {
    zip_source_t* const source = zip_source_buffer(archive, part.text.data(), part.text.size(), 0);
    const auto index = static_cast<zip_uint64_t>(zip_file_add(archive, part.name, source, 0));
    Require(zip_set_file_compression(archive, index, ZIP_CM_STORE, 0) == 0);
  }
  Require(zip_close(archive) == 0);
}

std::string Read(const SheetRequest& request) {
  const ZipParts parts(File());
  return AnswerOf(*OpenWorkbook(parts), request);
}

std::string_view TextOf(std::string_view answer) {
  return answer.substr(answer.find("\n\n") + 2);
}

void CheckAnswer() {
  std::string answer;
  try {
    answer = Read({});
  } catch (const Error& error) {
    Require(error.what()[0] != 0);
    return;
  }
  const std::size_t name = answer.find("\nread\t") + 6;
  const std::string sheet = answer.substr(name, answer.find('\n', name) - name);
  std::int64_t rows = 0;
  const std::string_view text = TextOf(answer);
  for (std::size_t at = 0; at < text.size(); ++rows) {
    const std::size_t end = text.find('\n', at);
    Require(end != text.npos);
    Require(std::ranges::count(text.substr(at, end - at), '\t') < kMostSheetColumns);
    at = end + 1;
  }
  Require(rows <= kMostRows);
  // Two sheets may have one name, or one that is written otherwise.
  if (std::ranges::count(answer.substr(0, name), '\n') != 2 || sheet != "One") return;
  Require(TextOf(Read({sheet, {}})) == text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view left(reinterpret_cast<const char*>(data), size);
  const auto next = [&](std::string_view otherwise) {
    if (left.empty()) return otherwise;
    const std::string_view part = left.substr(0, left.find(kBetween));
    left.remove_prefix(std::min(part.size() + 1, left.size()));
    return part;
  };
  const std::string_view sheet = next("<worksheet/>");
  Zip(std::array{Part{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
                 Part{"content.xml", sheet}});
  CheckAnswer();
  const std::string_view strings = next("<sst><si><t>Time</t></si></sst>");
  const std::string_view styles = next(
      "<styleSheet><cellXfs><xf numFmtId='0'/><xf numFmtId='14'/><xf "
      "numFmtId='20'/></cellXfs></styleSheet>");
  Zip(std::array{Part{"[Content_Types].xml", "<Types/>"}, Part{"_rels/.rels", kRelations},
                 Part{"book.xml", next(kBook)}, Part{"_rels/book.xml.rels", kParts},
                 Part{"sheet.xml", sheet}, Part{"strings.xml", strings},
                 Part{"styles.xml", styles}});
  CheckAnswer();
  return 0;
}
