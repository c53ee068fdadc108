// Where the file of a data source lies, which may have moved together with the graph file that tells of it. Knows
// descriptions and names of files; opens none.
#pragma once

#include <filesystem>
#include <string>

#include "data/ds_info.h"

namespace tarnwick {

/// The place that the description's own file tells, when a file of the same name is there: graph and data were moved, or copied
/// for the next measurement, together. Else the named place. Of a data base in a file that file; of what is no file what is
/// named.
std::filesystem::path SourcePlace(const TDSInfo& info);

/// DatasourceInfo with the file where SourcePlace finds it.
std::string PlacedSource(const TDSInfo& info);

/// The source's place as a file in `folder` keeps it: from that folder on, with "/" between folders. Empty where that says
/// nothing: no file is named, or it has no folder in common with `folder`. For an empty folder what is told already.
std::string RelativeSourceIn(const std::filesystem::path& folder, const TDSInfo& info);

/// The folder of a file, from the root on; empty for no file.
std::filesystem::path FolderOfFile(const std::filesystem::path& file);

}  // namespace tarnwick
