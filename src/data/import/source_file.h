// The file in what a description names as its source: the whole of it, or of a data base that is a file the part between
// "sqlite:" and what is read of it. Knows the form of that text; opens no file.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "data/ds_info.h"

namespace tarnwick {

/// What ends a part of a data base's place stands as "%XX" in it; all else stays readable.
std::string EncodedPart(std::string_view part);
std::string DecodedPart(std::string_view text);

/// DatasourceInfo in three parts; the file is empty where the source is none.
struct SourceFile {
  std::string before;  ///< "sqlite:"
  std::filesystem::path file;
  std::string after;  ///< "?table=first"

  /// The description's text with another file.
  std::string With(const std::filesystem::path& other) const;
};

SourceFile FileOfSource(const TDSInfo& info);

}  // namespace tarnwick
