// Lines of numbers that a pipe, a socket or a serial port brings, as a kind of data source and as a stream. Knows descriptions;
// no DataSet of a document.
#pragma once

#include "data/import/source_kinds.h"
#include "sources/streams/stream_kind.h"

namespace tarnwick {

/// The row of the table of kinds: nothing can be read again of what came.
SourceKind LinesKind();

/// The row of the table of streams. A source that ends or cannot be reached is tried again, at first after a quarter of a second,
/// at last every ten; the line is broken there.
StreamKind LineStreamKind();

/// How lines from that place are read where nothing else is said: X and Y parted by commas, semicolons, tabs or blanks. Throws
/// Error for what names no place.
TDSInfo LineSourceInfo(std::string_view place);

}  // namespace tarnwick
