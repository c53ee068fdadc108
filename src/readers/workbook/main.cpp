// tarnwick-workbook FILE SHEET FIRST_ROW LAST_ROW FIRST_COLUMN LAST_COLUMN: answers as AnswerOf does. SHEET may be empty.
#include <charconv>
#include <cstring>

#include "base/error.h"
#include "readers/reader_main.h"
#include "readers/workbook/read_workbook.h"
#include "readers/workbook/zip_parts.h"

namespace {

std::int64_t Number(const char* text) {
  std::int64_t number = 0;
  std::from_chars(text, text + std::strlen(text), number);
  return number;
}

std::string Answer(std::span<char* const> words) {
  if (words.size() != 6) {
    throw tarnwick::Error("Tarnwick reads workbooks by this program; it is not called alone");
  }
  const tarnwick::ZipParts parts(words[0]);
  return tarnwick::AnswerOf(*tarnwick::OpenWorkbook(parts), {words[1],
                                                             {.first_row = Number(words[2]),
                                                              .last_row = Number(words[3]),
                                                              .first_column = Number(words[4]),
                                                              .last_column = Number(words[5])}});
}

}  // namespace

int main(int argc, char** argv) {
  return tarnwick::RunReaderMain(argc, argv, &Answer);
}
