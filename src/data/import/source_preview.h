// The first lines of a text source as a description cuts them, for people who write the description. Knows lines and fields;
// loads
// nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "base/progress.h"
#include "data/data_supplier.h"
#include "data/ds_info.h"
#include "data/text/text_source.h"

namespace tarnwick {

/// What a line is to the reader.
enum class LineRole : std::uint8_t {
  Header,   ///< before the rows, whatever it holds
  Names,    ///< a header that names the columns
  Units,    ///< a header with their units
  Comment,  ///< no row: it begins with a comment mark
  Blank,
  Row,
  Behind  ///< behind the table's last line
};

/// Whether such a line is cut into fields: a row, names or units.
constexpr bool IsCut(LineRole role) {
  return role == LineRole::Row || role == LineRole::Names || role == LineRole::Units;
}

struct PreviewedLine {
  std::int64_t number = 0;  ///< from 1
  LineRole role = LineRole::Row;
  std::vector<std::string> fields;  ///< as they are cut, where they are; else the whole line
  std::string text = {};            ///< the whole line of a text
};

struct SourcePreview {
  std::vector<std::string> columns;  ///< names, as the loader finds them
  std::vector<PreviewedLine> lines;
};

/// At most `lines` lines from the first on, and, where more headers stand before the rows, `lines` lines from a few before the
/// first row on. Columns beyond `columns` are left out.
SourcePreview PreviewText(const std::shared_ptr<const TextSource>& text, const TDSInfo& info,
                          std::size_t lines, std::size_t columns);

/// The first `rows` rows of a source that is no text, headers among them as `info` tells, and their columns up to `columns`.
/// Throws what the supplier throws.
SourcePreview PreviewRows(TDataSupplier& supplier, const TDSInfo& info, std::size_t rows,
                          std::size_t columns);

/// The first megabyte of a text file, to its last whole line; a packed one is unpacked as a whole. Throws FileError, also for
/// what is no text, and UnpackingCancelled.
std::shared_ptr<const TextSource> OpenHeadOfText(const std::filesystem::path& path,
                                                 Progress& progress);

}  // namespace tarnwick
