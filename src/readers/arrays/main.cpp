// tarnwick-arrays list FILE: answers as ListOf does.
// tarnwick-arrays read FILE ROWS {PATH MEMBER LINE}...: the first ROWS values (0: all) of each column, as doubles of the
// machine, one column behind the other. A LINE is one of ColumnPlace.
#include <charconv>
#include <cstring>
#include <fstream>

#include "base/error.h"
#include "readers/arrays/array_file.h"
#include "readers/reader_main.h"

namespace {

using namespace tarnwick;

std::uint64_t Number(const char* text) {
  std::uint64_t number = 0;
  std::from_chars(text, text + std::strlen(text), number);
  return number;
}

std::unique_ptr<ArrayFile> Open(const std::string& file) {
  std::string mark(3, '\0');
  std::ifstream(file, std::ios::binary).read(mark.data(), 3);
  return mark == "CDF" ? OpenNetcdf(file) : OpenHdf5(file);
}

std::string ReadColumns(ArrayFile& file, const char* rows, std::span<char* const> columns) {
  std::string bytes;
  for (std::size_t i = 0; i + 2 < columns.size(); i += 3) {
    const std::vector<double> values =
        file.Column({columns[i], columns[i + 1], columns[i + 2], Number(rows)});
    bytes.append(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(double));
  }
  return bytes;
}

std::string Answer(std::span<char* const> words) {
  const std::string what = words.empty() ? "" : words[0];
  if (what == "list" && words.size() == 2) return ListOf(*Open(words[1]));
  if (what == "read" && words.size() > 3) {
    return ReadColumns(*Open(words[1]), words[2], words.subspan(3));
  }
  throw Error("Tarnwick reads arrays by this program; it is not called alone");
}

}  // namespace

int main(int argc, char** argv) {
  return tarnwick::RunReaderMain(argc, argv, &Answer);
}
