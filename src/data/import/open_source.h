// The first look at a file: its kind, its layout, its columns. Knows the kinds of sources and the guess; knows no DataSet.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/progress.h"
#include "data/columns/import_source.h"
#include "data/import/source_kinds.h"

namespace tarnwick {

struct ImportOptions;

/// Opens and examines a file, of the first of `kinds` that recognises it. Throws Error for options that cannot be used and
/// FileError for files that cannot be read, and UnpackingCancelled.
ImportSource OpenImportSource(const std::filesystem::path& path, const ImportOptions& options,
                              SourceKinds kinds, Progress& progress);

/// What every first look ends with: the kind where there is a place to read again, the rows that the options choose.
void FinishSource(const ImportOptions& options, DataSourceKind kind, ImportSource& source);

/// The same for a text that is no file's, which nothing can read again. `name` is for messages.
ImportSource TextImportSource(std::string text, const std::string& name,
                              const ImportOptions& options, Progress& progress);

/// The source's notes, and that lines behind the table are left out, where they are.
std::vector<std::string> NotesOf(const ImportSource& source);

}  // namespace tarnwick
