#include "data/text/text_source.h"

#include <gtest/gtest.h>

#include <string>

#include "base/error.h"

namespace tarnwick {
namespace {

using namespace std::string_literals;

std::string Utf16(std::string_view ascii, bool big) {
  std::string bytes;
  for (const char c : ascii) bytes += big ? std::string{'\0', c} : std::string{c, '\0'};
  return bytes;
}

TEST(TextSource, FindsTheTextInEveryEncoding) {
  struct Row {
    std::string bytes;
    std::string text;
    char line_end;
  };
  const Row rows[] = {
      {"a,b\n1,2", "a,b\n1,2", '\n'},
      {"\xEF\xBB\xBF"
       "1\n",
       "1\n", '\n'},
      {"1\r\n2\r\n", "1\r\n2\r\n", '\n'},
      {"1\r2\r", "1\r2\r", '\r'},
      {"\n1\r2", "\n1\r2", '\n'},
      {"\r1 2", "\r1 2", '\r'},
      // The first return may be the last byte of what is looked at.
      {std::string(65535, '1') + "\r\n2", std::string(65535, '1') + "\r\n2", '\n'},
      {std::string(65535, '1') + "\r2\n", std::string(65535, '1') + "\r2\n", '\r'},
      {"\xE9\n1", "\xE9\n1", '\n'},
      {"\xFF\xFE" + Utf16("1;2\n", false), "1;2\n", '\n'},
      {"\xFE\xFF" + Utf16("1;2\n", true), "1;2\n", '\n'},
      {Utf16("time;temp\n1;2\n", false), "time;temp\n1;2\n", '\n'},
      {Utf16("time;temp\n1;2\n", true), "time;temp\n1;2\n", '\n'},
      // Quoted fields over several lines become one line.
      {"\"a\n(s)\",\"b\"\n1,\"x\"\"\ny\" \n", "\"a (s)\",\"b\"\n1,\"x\"\" y\" \n", '\n'},
      {Utf16("1;\"a\rb\"\n", false), "1;\"a b\"\n", '\n'},
      {"1,\"oops\n2,\"fine\"\n", "1,\"oops\n2,\"fine\"\n", '\n'},
      {"5\",1\n6\",2\n", "5\",1\n6\",2\n", '\n'},
      {"# a, \"b\n1,2,\"c\"\n", "# a, \"b\n1,2,\"c\"\n", '\n'},
      {"# a, \"b\n1,2\"\n", "# a, \"b\n1,2\"\n", '\n'},
      {"1,\"" + std::string(9000, 'x') + "\n\"\n", "1,\"" + std::string(9000, 'x') + "\n\"\n",
       '\n'},
  };
  for (const Row& row : rows) {
    const TextSource source(row.bytes, "name");
    EXPECT_EQ(source.Text(), row.text);
    EXPECT_EQ(source.LineEnd(), row.line_end);
  }
}

TEST(TextSource, RefusesWhatIsNoText) {
  struct Row {
    std::string bytes;
    const char* message;
  };
  const Row rows[] = {
      {"", "The file is empty: data.txt"},
      {"\xEF\xBB\xBF", "The file is empty: data.txt"},
      {"ab\0\1\0\0\0c"s, "The file is binary, not text: it holds a zero byte: data.txt, byte 3"},
      {"1,2\n3\0,4\n"s, "The file is binary, not text: it holds a zero byte: data.txt, byte 6"},
      {"\xFF\xFE"
       "1\0"
       "2"s,
       "The UTF-16 text breaks off in the middle of a character: data.txt, byte 5"},
      {"PK\3\4.....[Content_Types].xml...xl/workbook.xml",
       "The file is a workbook, not text: data.txt"},
      {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1..W\0o\0r\0k\0b\0o\0o\0k\0"s,
       "Workbooks of the old binary kind (.xls) cannot be read; save it as .xlsx or .ods and open "
       "that: data.txt"},
      {"\xD0\xCF\x11\xE0..E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0"s,
       "The workbook is protected by a password; save it without one and open that: data.txt"},
      {"PK\3\4...data.csv",
       "The file is a zip archive; unpack it first and open the file wanted: data.txt"},
      {"data.csv" + std::string(249, '\0') + "ustar",
       "The file is a tar archive; unpack it first and open the file wanted: data.txt"},
      {"%PDF-1.7\n", "The file is a PDF document, not text: data.txt"},
  };
  for (const Row& row : rows) {
    try {
      const TextSource source(row.bytes, "data.txt");
      ADD_FAILURE() << "accepted: " << row.message;
    } catch (const FileError& error) {
      EXPECT_STREQ(error.what(), row.message);
    }
  }
}

}  // namespace
}  // namespace tarnwick
