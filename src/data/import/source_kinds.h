// The kinds of data source as rows of a table: how each is recognised, examined and opened, and which stored settings are
// its own. Knows what a kind offers; whoever loads is handed the rows, so that layers above add kinds without being known.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "base/mapped_file.h"
#include "base/progress.h"
#include "data/data_supplier.h"
#include "data/ds_info.h"

namespace tarnwick {

class TDataSeries;
struct ImportOptions;
struct ImportSource;

/// What a stored setting of a kind is for.
enum class SettingUse {
  Opens,  ///< how the source is read: DataSets that agree in all of these share one pass over it
  Picks,  ///< what one DataSet takes from it
};

/// A setting that a kind of source uses, by the key it is stored under.
struct SourceSetting {
  std::string_view key;
  SettingUse use = SettingUse::Picks;
};

/// A file to be examined for the first time.
struct FileToExamine {
  MappedFile file;
  std::string name;  ///< for messages
  const ImportOptions& options;
  Progress& progress;
};

/// One kind of data source.
struct SourceKind {
  DataSourceKind kind = DataSourceKind::Manual;
  std::string_view name;  ///< "Text file"
  /// True for the bytes of a file of this kind; null for kinds that are no files.
  bool (*recognises)(std::string_view bytes) = nullptr;
  /// Opens a file for the first time and fills in its supplier, columns and settings. Throws FileError. Null for kinds
  /// that are no files.
  void (*examine)(FileToExamine file, ImportSource& source) = nullptr;
  /// The first look at the place that a description names (its DatasourceInfo and TablePart), where that says more than a
  /// file's name. Throws as `open`, and Error for options that cannot be used. Null where OpenImportSource takes the file.
  ImportSource (*begin)(const TDSInfo& place, const ImportOptions& options,
                        Progress& progress) = nullptr;
  /// Opens the source that a description names, as it was opened before. Throws FileError, or Error of a source that is no
  /// file, and UnpackingCancelled. Null where nothing can be read again. What a supplier can do in blocks it says itself
  /// (TDataSupplier::Blocks).
  std::unique_ptr<TDataSupplier> (*open)(const TDSInfo& info, Progress& progress) = nullptr;
  std::span<const SourceSetting> settings = {};  ///< beside "DataSource" and "DatasourceInfo"
};

/// A table of kinds. Files are of the first kind that recognises them.
using SourceKinds = std::span<const SourceKind>;

/// What this layer reads itself: points of the user's own, binary and text files. The last takes every file.
SourceKinds BasicSourceKinds();

/// The row of a kind, or null.
const SourceKind* FindSourceKind(SourceKinds kinds, DataSourceKind kind);

/// The row of a file with these bytes. Throws FileError when no kind recognises it; `name` is for the message.
const SourceKind& KindOfFile(SourceKinds kinds, std::string_view bytes, const std::string& name);

/// Whether one supplier, opened for `one`, serves `other` as well: the same kind, place and settings that open it.
bool ShareSource(const SourceKind& kind, const TDataSeries& one, const TDataSeries& other);

}  // namespace tarnwick
