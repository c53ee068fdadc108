#include "data/text/known_binaries.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "base/text_encoding.h"
#include "data/packed/packing.h"

namespace tarnwick {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kOldWorkbook =
    "Workbooks of the old binary kind (.xls) cannot be read; save it as .xlsx or .ods and open "
    "that";
constexpr std::string_view kLockedWorkbook =
    "The workbook is protected by a password; save it without one and open that";
constexpr std::string_view kZippedWorkbook = "The file is a workbook, not text";
constexpr std::string_view kDamagedWorkbook = "The workbook is damaged or cut short";
constexpr std::string_view kUnpackFirst = "; unpack it first and open the file wanted";
constexpr std::string_view kNoText = ", not text";
constexpr std::size_t kSearched = std::size_t{1} << 16;  // at either end of a container

struct Mark {
  std::size_t place;
  std::string_view bytes;
  std::string_view meaning;
  std::string_view advice = kNoText;
};

constexpr Mark kMarks[] = {
    {0, "PK\3\4"sv, "a zip archive", kUnpackFirst},
    {0, "PK\5\6"sv, "a zip archive", kUnpackFirst},
    {257, "ustar"sv, "a tar archive", kUnpackFirst},
    {0, "7z\xBC\xAF\x27\x1C"sv, "a 7-Zip archive", kUnpackFirst},
    {0, "Rar!\x1A\7"sv, "a RAR archive", kUnpackFirst},
    {0, "\x1F\x9D"sv, "a file packed by compress", kUnpackFirst},
    {0, "\x04\x22\x4D\x18"sv, "a file packed by lz4", kUnpackFirst},
    {0, "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, "an office document"},
    {0, "\6\x09xyvk0"sv, "a graph, template or DataSet file",
     "; it is read unpacked and with its ending (.tgr, .ttp, .tds)"},
    {0, "MATLAB 5.0 MAT-file"sv, "a MATLAB data file"},
    {0, "MATLAB 7.3 MAT-file"sv, "a MATLAB data file"},
    {0, "\x89HDF\r\n\x1A\n"sv, "an HDF5 file"},
    {512, "\x89HDF\r\n\x1A\n"sv, "an HDF5 file"},
    {0, "\x0E\x03\x13\x01"sv, "an HDF4 file"},
    {0, "CDF\1"sv, "a NetCDF file"},
    {0, "CDF\2"sv, "a NetCDF file"},
    {0, "CDF\5"sv, "a NetCDF file"},
    {0, "SIMPLE  =                    T"sv, "a FITS file"},
    {0, "\x93NUMPY"sv, "a NumPy array"},
    {0, "RDX2\n"sv, "an R data file"},
    {0, "RDX3\n"sv, "an R data file"},
    {0, "<stata_dta>"sv, "a Stata data file"},
    {0, "$FL2"sv, "an SPSS data file"},
    {0, "TDSm"sv, "a TDMS measurement file"},
    {0, "PAR1"sv, "a Parquet file"},
    {0, "ARROW1\0\0"sv, "an Arrow file"},
    {0, "SQLite format 3\0"sv, "an SQLite database"},
    {0, "\x89PNG\r\n\x1A\n"sv, "a PNG picture"},
    {0, "\xFF\xD8\xFF"sv, "a JPEG picture"},
    {0, "GIF87a"sv, "a GIF picture"},
    {0, "GIF89a"sv, "a GIF picture"},
    {0, "II*\0"sv, "a TIFF picture"},
    {0, "MM\0*"sv, "a TIFF picture"},
    {8, "WAVEfmt "sv, "a sound"},
    {0, "%PDF-"sv, "a PDF document"},
    {0, "%!PS-"sv, "a PostScript document", ", not a table"},
    {0,
     "\x7F"
     "ELF"sv,
     "a program"},
};

bool HoldsNearAnEnd(std::string_view bytes, std::string_view text) {
  const std::string_view tail = bytes.substr(bytes.size() - std::min(bytes.size(), kSearched));
  return bytes.substr(0, kSearched).find(text) != text.npos || tail.find(text) != tail.npos;
}

/// A locked workbook is wrapped into the container of the old kind.
bool IsLocked(std::string_view bytes) {
  return bytes.starts_with("\xD0\xCF\x11\xE0") &&
         bytes.find("E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0"sv) != bytes.npos;
}

bool IsOldWorkbook(std::string_view bytes) {
  return bytes.starts_with("\xD0\xCF\x11\xE0") &&
         (bytes.find("W\0o\0r\0k\0b\0o\0o\0k\0"sv) != bytes.npos ||
          bytes.find("\0\0B\0o\0o\0k\0\0\0"sv) != bytes.npos);
}

bool IsNamedWorkbook(std::string_view name) {
  const std::string lower = LowerAscii(name);
  return lower.ends_with(".xlsx") || lower.ends_with(".xlsm") || lower.ends_with(".ods");
}

}  // namespace

bool IsZippedWorkbook(std::string_view bytes) {
  // The containers of office documents name what is inside at one of their ends.
  return bytes.starts_with("PK\3\4") &&
         (HoldsNearAnEnd(bytes, "xl/w") || HoldsNearAnEnd(bytes, "xl/s") ||
          HoldsNearAnEnd(bytes, "application/vnd.oasis.opendocument.spreadsheet"));
}

std::string WhyNoText(std::string_view bytes, std::string_view name) {
  if (IsLocked(bytes)) return std::string(kLockedWorkbook);
  if (IsOldWorkbook(bytes)) return std::string(kOldWorkbook);
  if (IsZippedWorkbook(bytes)) return std::string(kZippedWorkbook);
  if (bytes.starts_with("PK") && IsNamedWorkbook(name)) return std::string(kDamagedWorkbook);
  // Only what was packed once has been unpacked.
  if (const Packing* const packing = PackingOf(bytes)) {
    return "The file is packed twice, inside by " + std::string(packing->name) +
           "; unpack it first";
  }
  const auto* const found = std::ranges::find_if(kMarks, [bytes](const Mark& mark) {
    return bytes.substr(std::min(mark.place, bytes.size())).starts_with(mark.bytes);
  });
  if (found == std::end(kMarks)) return {};
  return "The file is " + std::string(found->meaning) + std::string(found->advice);
}

}  // namespace tarnwick
