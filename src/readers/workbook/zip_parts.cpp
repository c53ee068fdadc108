#include "readers/workbook/zip_parts.h"

#include <zip.h>

#include <array>
#include <cstdint>

#include "base/error.h"

namespace tarnwick {
namespace {

constexpr std::size_t kPiece = 64 * 1024;
constexpr std::uint64_t kMostBytes = std::uint64_t{4} << 30;  // of one part, unpacked
constexpr std::uint64_t kHarmless = std::uint64_t{64} << 20;  // whatever it was packed from
constexpr std::uint64_t kMostRatio = 300;                     // tables pack to a tenth or so

struct ClosingPart {
  void operator()(zip_file_t* part) const { zip_fclose(part); }
};

/// Counts what a part grows to; what is stated beforehand may be false.
class Growth {
 public:
  Growth(const std::string& part, std::uint64_t packed) : part_(part), packed_(packed) {}

  void Add(std::uint64_t bytes) {
    unpacked_ += bytes;
    if (unpacked_ <= kHarmless) return;
    if (unpacked_ > kMostBytes || unpacked_ / kMostRatio > packed_) {
      throw Error("The part " + part_ +
                  " of the workbook unpacks to far more than a table does; it is not read");
    }
  }

 private:
  const std::string& part_;
  std::uint64_t packed_;
  std::uint64_t unpacked_ = 0;
};

}  // namespace

void ZipParts::Closing::operator()(zip* archive) const {
  zip_discard(archive);
}

ZipParts::ZipParts(const std::string& file) {
  int code = 0;
  archive_.reset(zip_open(file.c_str(), ZIP_RDONLY, &code));
  if (archive_) return;
  zip_error_t error;
  zip_error_init_with_code(&error, code);
  const std::string reason = zip_error_strerror(&error);
  zip_error_fini(&error);
  throw Error("The workbook is damaged or cut short (" + reason + ")");
}

bool ZipParts::Has(const std::string& part) const {
  return zip_name_locate(archive_.get(), part.c_str(), ZIP_FL_NOCASE) >= 0;
}

void ZipParts::Read(const std::string& part,
                    const std::function<void(std::string_view)>& take) const {
  zip_stat_t stat;
  zip_stat_init(&stat);
  if (zip_stat(archive_.get(), part.c_str(), ZIP_FL_NOCASE, &stat) != 0) {
    throw Error("The workbook is damaged: its part " + part + " is missing");
  }
  if (stat.encryption_method != ZIP_EM_NONE) {
    throw Error("The workbook is protected by a password; save it without one");
  }
  const std::unique_ptr<zip_file_t, ClosingPart> opened(
      zip_fopen_index(archive_.get(), stat.index, 0));
  const auto damaged = [&](const char* reason) {
    return Error("The part " + part + " of the workbook is damaged (" + reason + ")");
  };
  if (!opened) throw damaged(zip_strerror(archive_.get()));
  std::array<char, kPiece> piece;
  Growth growth(part, stat.comp_size);
  for (;;) {
    const zip_int64_t size = zip_fread(opened.get(), piece.data(), piece.size());
    if (size < 0) throw damaged(zip_file_strerror(opened.get()));
    if (size == 0) return;
    growth.Add(static_cast<std::uint64_t>(size));
    take({piece.data(), static_cast<std::size_t>(size)});
  }
}

std::string ZipParts::ReadSmall(const std::string& part, std::size_t most) const {
  std::string bytes;
  Read(part, [&](std::string_view piece) {
    if (bytes.size() + piece.size() > most) {
      throw Error("The part " + part + " of the workbook is larger than it can be");
    }
    bytes += piece;
  });
  return bytes;
}

}  // namespace tarnwick
