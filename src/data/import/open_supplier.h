// The one place that knows which supplier reads a file. Knows the kinds of files; knows none of their contents.
#pragma once

#include <filesystem>
#include <memory>

#include "data/data_supplier.h"

namespace tarnwick {

/// Opens the file that `path` names ("-": standard input) as a TFileSupplier when its second line begins with
/// "@Unformatted", else as a TTxtSupplier that reads by the settings of `info`. Throws FileError when the file is
/// missing, empty, unreadable, or no text.
std::unique_ptr<TDataSupplier> OpenSupplier(const TDSInfo& info, const std::filesystem::path& path);

}  // namespace tarnwick
