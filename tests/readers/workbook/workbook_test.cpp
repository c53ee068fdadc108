// Workbooks written part by part, and what is read of them.
#include <gtest/gtest.h>
#include <zip.h>

#include <string>
#include <utility>
#include <vector>

#include "readers/workbook/number_look.h"
#include "readers/workbook/read_workbook.h"
#include "readers/workbook/zip_parts.h"
#include "support/refusal.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::Refusal;
using Parts = std::vector<std::pair<std::string, std::string>>;

std::string Zipped(const testing::TemporaryFolder& folder, const Parts& parts,
                   const char* password = nullptr) {
  const std::string file = folder.File("made.zip").string();
  zip_t* const archive = zip_open(file.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
  for (const auto& [name, text] : parts) {
    zip_source_t* const source = zip_source_buffer(archive, text.data(), text.size(), 0);
    const auto index = static_cast<zip_uint64_t>(zip_file_add(archive, name.c_str(), source, 0));
    if (password != nullptr) zip_file_set_encryption(archive, index, ZIP_EM_AES_256, password);
  }
  EXPECT_EQ(zip_close(archive), 0);
  return file;
}

std::string Read(const std::string& file, const SheetRequest& request = {}) {
  const ZipParts parts(file);
  return AnswerOf(*OpenWorkbook(parts), request);
}

std::string Read(const Parts& parts, const SheetRequest& request = {}) {
  const testing::TemporaryFolder folder;
  return Read(Zipped(folder, parts), request);
}

std::string TextOf(const std::string& answer) {
  return answer.substr(answer.find("\n\n") + 2);
}

std::string Related(const std::string& id, const std::string& type, const std::string& target) {
  return "<Relationship Id='" + id + "' Type='http://any/relationships/" + type + "' Target='" +
         target + "'/>";
}

/// One sheet of these rows, a style for dates (1), times (2) and passed time (3), and the texts "Time" and "a<b".
Parts Xlsx(const std::string& rows, const std::string& book = {}) {
  return {
      {"[Content_Types].xml", "<Types/>"},
      {"_rels/.rels", "<R>" + Related("r", "officeDocument", "xl/workbook.xml") + "</R>"},
      {"xl/workbook.xml",
       "<workbook xmlns:r='x'>" + book +
           "<sheets><sheet name='One' r:id='a'/><sheet name='Chart' r:id='c'/>"
           "<sheet name='Kept away' state='hidden' r:id='b'/></sheets></workbook>"},
      {"xl/_rels/workbook.xml.rels", "<R>" + Related("a", "worksheet", "worksheets/s1.xml") +
                                         Related("b", "worksheet", "/xl/worksheets/s2.xml") +
                                         Related("c", "chartsheet", "chartsheets/s1.xml") +
                                         Related("s", "sharedStrings", "strings.xml") +
                                         Related("f", "styles", "styles.xml") + "</R>"},
      {"xl/strings.xml",
       "<sst><si><t>Time</t></si><si><r><t>a</t></r><r><t>&lt;b</t></r>"
       "<rPh><t>read so</t></rPh></si></sst>"},
      {"xl/styles.xml",
       "<styleSheet><numFmts><numFmt numFmtId='170' formatCode='[h]:mm'/></numFmts>"
       "<cellStyleXfs><xf numFmtId='14'/></cellStyleXfs><cellXfs><xf numFmtId='0'/>"
       "<xf numFmtId='14'/><xf numFmtId='20'/><xf numFmtId='170'/></cellXfs></styleSheet>"},
      {"xl/worksheets/s1.xml", "<worksheet><sheetData>" + rows + "</sheetData></worksheet>"},
      {"xl/worksheets/s2.xml",
       "<worksheet><row><c><v>1</v></c><c><v>2</v></c><c><v>3</v></c></row></worksheet>"},
  };
}

Parts Ods(const std::string& rows) {
  return {{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
          {"content.xml",
           "<o:document-content xmlns:o='o' xmlns:t='t' xmlns:p='p' xmlns:c='c'>"
           "<t:table t:name='One'>" +
               rows + "</t:table></o:document-content>"}};
}

struct Row {
  const char* what;
  std::string rows;
  std::string text;
};

TEST(XlsxTest, CellsAreReadAsTheyAreShown) {
  const std::string date_below = "<row r='3'><c r='B3' s='1'><v>";
  for (const Row& row : {
           Row{"shared, inline and computed texts, a formula left alone",
               "<row><c t='s'><v>0</v></c><c t='s'><v>1</v></c><c "
               "t='inlineStr'><is><t>in</t></is></c>"
               "<c t='str'><f>A1</f><v>made</v></c><c><f>1+1</f><v>2</v></c></row>",
               "Time\ta<b\tin\tmade\t2\n"},
           Row{"gaps, empty rows and columns before the table",
               "<row r='2'><c r='C2'><v>1.50</v></c><c r='E2'><v>-3E-7</v></c></row><row r='4'><c "
               "r='D4'><v>2</v></c></row>",
               "\n1.50\t\t-3E-7\n\n\t2\t\n"},
           Row{"two tables, each as wide as its own rows, a gap within the first",
               "<row r='1'><c t='str'><v>x</v></c><c t='str'><v>y</v></c></row><row "
               "r='2'><c><v>1</v></c></row>"
               "<row r='4'><c><v>2</v></c></row><row r='6'><c t='str'><v>a</v></c><c "
               "t='str'><v>b</v></c><c "
               "t='str'><v>c</v></c></row><row r='7'><c><v>-3</v></c></row>",
               "x\ty\n1\t\n\n2\t\n\na\tb\tc\n-3\t\t\n"},
           Row{"truth and errors",
               "<row><c t='b'><v>1</v></c><c t='e'><v>#N/A</v></c><c><v>4</v></c></row>",
               "1\t\t4\n"},
           Row{"days, times and what has passed",
               "<row><c s='1'><v>45355</v></c><c s='1'><v>45355.520833333336</v></c><c "
               "s='2'><v>0.25</v></c>"
               "<c s='3'><v>1.2604166666666667</v></c><c s='1'><v>-1</v></c></row>",
               "2024-03-04\t2024-03-04 12:30:00\t06:00:00\t30:15:00\t-1\n"},
           Row{"the leap day that 1900 had not",
               date_below + "59</v></c><c r='C3' s='1'><v>61</v></c></row>",
               "\n\n1900-02-28\t1900-03-01\n"},
           Row{"line ends, tabs and quotes in a text",
               "<row><c t='str'><v>\"a\tb\nc\"</v></c><c><v>1</v></c></row>", "\u201Ca b c\"\t1\n"},
       }) {
    EXPECT_EQ(TextOf(Read(Xlsx(row.rows))), row.text) << row.what;
  }
  EXPECT_EQ(TextOf(Read(Xlsx(date_below + "0</v></c></row>", "<workbookPr date1904='1'/>"))),
            "\n\n1904-01-01\n");
}

TEST(OdsTest, CellsAreReadAsTheyAreShown) {
  for (const Row& row : {
           Row{"numbers by their values, texts by their paragraphs",
               "<t:table-row><t:table-cell o:value-type='percentage' o:value='0.125'><p:p>12.5 "
               "%</p:p></t:table-cell>"
               "<t:table-cell o:value-type='string'><p:p>a<p:s "
               "p:c='2'/>b</p:p><p:p>c</p:p></t:table-cell>"
               "<t:table-cell o:value-type='boolean' "
               "o:boolean-value='true'><p:p>WAHR</p:p></t:table-cell></t:table-row>",
               "12.5%\ta  b c\t1\n"},
           Row{"days, times and errors",
               "<t:table-row><t:table-cell o:value-type='date' o:date-value='2024-03-04T12:30:00'/>"
               "<t:table-cell o:value-type='time' o:time-value='PT30H15M00.5S'/>"
               "<t:table-cell o:value-type='float' c:value-type='error' "
               "o:value='0'><p:p>#N/A</p:p></t:table-cell>"
               "<t:table-cell o:value-type='float' o:value='7'/></t:table-row>",
               "2024-03-04 12:30:00\t30:15:00.500\t\t7\n"},
           Row{"repeated rows and cells, covered ones, remarks",
               "<t:table-row t:number-rows-repeated='2'><t:table-cell "
               "t:number-columns-repeated='3'/></t:table-row>"
               "<t:table-row t:number-rows-repeated='2'><t:table-cell/><t:table-cell "
               "t:number-columns-repeated='2' "
               "o:value-type='float' "
               "o:value='5'><o:annotation><p:p>said</p:p></o:annotation></t:table-cell>"
               "<t:covered-table-cell/></t:table-row><t:table-row "
               "t:number-rows-repeated='1000000'><t:table-cell/></t:table-row>",
               "\n\n5\t5\n5\t5\n"},
       }) {
    EXPECT_EQ(TextOf(Read(Ods(row.rows))), row.text) << row.what;
  }
}

TEST(NumberLookTest, FormatsSayWhatIsShown) {
  using enum NumberLook;
  for (const auto& [code, look] :
       std::initializer_list<std::pair<const char*, NumberLook>>{{"General", Number},
                                                                 {"0.00", Number},
                                                                 {"#,##0 \"days\"", Number},
                                                                 {"[Red]0.0;[Blue]-0.0", Number},
                                                                 {"0.0%", Percent},
                                                                 {"yyyy-mm-dd", Date},
                                                                 {"d/m/yy h:mm", Date},
                                                                 {"mmm-yy", Date},
                                                                 {"mm:ss.0", Time},
                                                                 {"h:mm AM/PM", Time},
                                                                 {"[$-409]h:mm", Time},
                                                                 {"[h]:mm:ss", Duration},
                                                                 {"[mm]:ss", Duration},
                                                                 {"0\\d", Number},
                                                                 {"0_d", Number}}) {
    EXPECT_EQ(LookOfCode(code), look) << code;
  }
  EXPECT_EQ(PercentText(0.07), "7%");
}

TEST(WorkbookTest, TheSheetAndTheRangeAreFound) {
  const Parts parts =
      Xlsx("<row><c><v>1</v></c><c t='e'><v>#N/A</v></c></row><row r='3'><c><v>5</v></c></row>");
  EXPECT_EQ(Read(parts),
            "sheet\tOne\t2\nsheet\tKept away\t3\nread\tOne\nerrors\t1\n\n1\t\n\n5\t\n");
  EXPECT_EQ(TextOf(Read(parts, {"Kept away", {}})), "1\t2\t3\n");
  EXPECT_EQ(TextOf(Read(parts, {"One", {.first_row = 2, .last_row = 9}})), "\n\n5\n");
  EXPECT_EQ(TextOf(Read(parts, {"Kept away", {.first_column = 2, .last_column = 2}})), "2\n");
}

TEST(WorkbookTest, TellsWhyAWorkbookIsNotRead) {
  const auto refusal = [](const Parts& parts, const SheetRequest& request = {}) {
    return Refusal([&] { Read(parts, request); });
  };
  const auto row = [&](const std::string& rows) { return refusal(Xlsx(rows)); };
  const std::string number = "<row><c><v>1</v></c></row>";
  EXPECT_EQ(refusal(Xlsx(number), {"Two", {}}),
            "There is no sheet \"Two\" in the workbook; it has \"One\" and \"Kept away\"");
  EXPECT_EQ(refusal(Ods("")), "No sheet of the workbook holds numbers: it has \"One\"");
  EXPECT_EQ(refusal({{"content.xml", "<a/>"}}),
            "The workbook holds no sheet with cells, only charts or nothing");
  EXPECT_EQ(row("<row r='1000000000'><c><v>1</v></c></row>"),
            "The workbook is damaged: a sheet claims a cell in row 1000000000, column 1");
  EXPECT_EQ(row("<row r='2'><c><v>1</v></c></row><row r='1'><c><v>1</v></c></row>"),
            "The workbook is damaged: the cells of row 1 are not in order");
  EXPECT_EQ(row("<row><c><v>one</v></c></row>"),
            "The workbook is damaged: a cell of row 1 holds no number where one should be");
  EXPECT_EQ(row("<row><c t='s'><v>2</v></c></row>"),
            "The workbook is damaged: a cell of row 1 names a text that is not there");
  EXPECT_EQ(row("<row>"),
            "The part xl/worksheets/s1.xml of the workbook is damaged: mismatched tag, line 1");
  EXPECT_EQ(refusal({{"content.xml", "<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>"}}),
            "The part content.xml of the workbook is damaged: it declares a document type, line 1");
  std::string deep;
  for (int i = 0; i < 1000; ++i) deep += "<a>";
  EXPECT_EQ(refusal({{"content.xml", deep}}),
            "The part content.xml of the workbook is damaged: it nests too deep, line 1");
  EXPECT_EQ(refusal({{"content.xml", "<a/>"}, {"META-INF/manifest.xml", "<encryption-data/>"}}),
            "The workbook is protected by a password; save it without one");
  const testing::TemporaryFolder folder;
  const std::string locked = Zipped(folder, Ods(""), "secret");
  EXPECT_EQ(Refusal([&] { Read(locked); }),
            "The workbook is protected by a password; save it without one");
}

TEST(WorkbookTest, GrowsOnlyAsTablesDo) {
  const std::string bomb = "<a>" + std::string(80 << 20, ' ') + "</a>";
  EXPECT_EQ(
      Refusal([&] {
        Read({{"content.xml", bomb}});
      }),
      "The part content.xml of the workbook unpacks to far more than a table does; it is not read");
  const std::string many =
      "<t:table-row t:number-rows-repeated='1048576'><t:table-cell "
      "t:number-columns-repeated='16384' "
      "o:value-type='float' o:value='5'/></t:table-row>";
  EXPECT_EQ(Refusal([&] { Read(Ods(many)); }),
            "The sheet repeats one row more often than can be read; name a range of it");
}

TEST(WorkbookTest, EveryDamageIsToldOrHarmless) {
  const testing::TemporaryFolder folder;
  const std::string good = testing::ReadFile(
      Zipped(folder, Xlsx("<row><c t='s'><v>0</v></c><c s='1'><v>45355</v></c></row>")));
  const auto try_file = [&](const std::string& bytes) {
    const std::string file = folder.Write("damaged.zip", bytes).string();
    try {
      EXPECT_NE(Read(file), "");
    } catch (const Error& error) {
      EXPECT_NE(std::string(error.what()), "");
    }
  };
  for (std::size_t i = 0; i < good.size(); ++i) {
    if (i % 16 == 0) try_file(good.substr(0, i));
    std::string damaged = good;
    damaged[i] = static_cast<char>(damaged[i] ^ 0x41);
    try_file(damaged);
  }
}

}  // namespace
}  // namespace tarnwick
