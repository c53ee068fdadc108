// The files that are kinds of data source: delimited or fixed-width text, and binary "@Unformatted" data. Knows their
// suppliers and the guess; knows no DataSet.
#pragma once

#include <memory>

#include "data/import/source_kinds.h"
#include "data/text/text_source.h"

namespace tarnwick {

/// Opens the file that a description names as a TFileSupplier when its second line begins with "@Unformatted", else as a
/// TTxtSupplier that reads by the description's settings. Throws FileError when the file is missing, empty, unreadable, or
/// no text, and UnpackingCancelled.
std::unique_ptr<TDataSupplier> OpenDataFile(const TDSInfo& info, Progress& progress);

/// Fill in what is known of a file opened for the first time. Throw FileError. Examining a large text progresses by bytes.
void ExamineUnformatted(FileToExamine file, ImportSource& source);
void ExamineTextFile(FileToExamine file, ImportSource& source);
/// The same for a text that came another way.
void ExamineText(std::shared_ptr<const TextSource> text, const ImportOptions& options,
                 Progress& progress, ImportSource& source);

}  // namespace tarnwick
