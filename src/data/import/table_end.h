// Where the table of a file ends that is read again, as its guess finds it in the file as it is now. Knows descriptions of
// sources.
#pragma once

#include <cstdint>

#include "data/import/loader.h"

namespace tarnwick {

struct TableEnd {
  std::int32_t lines = 0;          ///< as TDSInfo::TableLines
  std::int64_t left_out_from = 0;  ///< as LoadReport::left_out_from
};

/// The end of the table that the DataSet of a text file was read from. Throws FileError as an import of the file does, and
/// UnpackingCancelled.
TableEnd FindTableEnd(const TDataSeries& series, const LoadOptions& options);

}  // namespace tarnwick
