#include "data/import/source_place.h"

#include <algorithm>
#include <iterator>
#include <system_error>

#include "data/import/source_file.h"

namespace tarnwick {
namespace {

using Path = std::filesystem::path;

bool IsThere(const Path& file) {
  std::error_code ignored;  // what cannot be looked at cannot be read either
  return std::filesystem::exists(file, ignored);
}

/// However its place is written.
bool SameFile(const Path& one, const Path& other) {
  std::error_code ignored;  // what cannot be looked at is no such file
  return one == other || std::filesystem::equivalent(one, other, ignored);
}

/// What the description's own file tells; empty when that is nothing, or of another file than the one named.
Path ToldPlace(const TDSInfo& info) {
  const Path told(info.RelativeSource);
  if (told.empty() || told.is_absolute() || info.GraphFolder.empty()) return {};
  if (told.filename() != FileOfSource(info).file.filename()) return {};
  return (Path(info.GraphFolder) / told).lexically_normal();
}

}  // namespace

Path SourcePlace(const TDSInfo& info) {
  Path named = FileOfSource(info).file;
  if (named.empty()) return info.DatasourceInfo;
  const Path told = ToldPlace(info);
  return !told.empty() && IsThere(told) && !SameFile(told, named) ? told : named;
}

std::string PlacedSource(const TDSInfo& info) {
  const SourceFile source = FileOfSource(info);
  return source.file.empty() ? info.DatasourceInfo : source.With(SourcePlace(info));
}

std::string RelativeSourceIn(const Path& folder, const TDSInfo& info) {
  if (folder.empty()) return info.RelativeSource;
  Path place = FileOfSource(info).file;
  if (info.DataSource == DataSourceKind::Manual || !place.is_absolute()) return {};
  // Where neither is there, both have moved or are away for a while: what was told of them holds.
  if (const Path told = ToldPlace(info); !told.empty() && !IsThere(place)) place = told;
  const auto parted = std::mismatch(place.begin(), place.end(), folder.begin(), folder.end()).first;
  if (std::distance(place.begin(), parted) < 2) return {};  // the root alone
  return place.lexically_relative(folder).generic_string();
}

Path FolderOfFile(const Path& file) {
  std::error_code ignored;  // a folder that was removed meanwhile has no name
  return std::filesystem::absolute(file, ignored).lexically_normal().parent_path();
}

}  // namespace tarnwick
