// Unpacks a packed file as a whole, within bounds: what no data file can be is refused, and what is large lies in a file
// without a name instead of in memory. Knows no format.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/error.h"
#include "base/mapped_file.h"
#include "base/progress.h"
#include "data/packed/packing.h"

namespace tarnwick {

struct UnpackLimits {
  /// Bytes that are kept in memory; what unpacks to more lies in `folder`, and is looked at twice.
  std::size_t in_memory = std::size_t{64} << 20;
  std::size_t gigabytes = 16;  ///< that come out at most
  /// Times the packed bytes read so far that come out at most, beyond `in_memory`: tables of numbers reach 50.
  std::size_t ratio = 500;
  std::filesystem::path folder = {};  ///< empty: the system's for temporary files
};

/// The user cancelled.
class UnpackingCancelled final : public Error {
 public:
  using Error::Error;
};

/// All that `packed` holds; `name` is for messages. Throws FileError when it is damaged, cut short, too large, or when
/// something else stands behind it (zeros may), and UnpackingCancelled. Progresses by packed bytes.
MappedFile Unpack(const Packing& packing, std::string_view packed, const std::string& name,
                  Progress& progress, const UnpackLimits& limits = {});

}  // namespace tarnwick
