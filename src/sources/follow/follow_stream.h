// A text file that is written to as a source that goes on. Knows files and their rows; no DataSet of a document.
#pragma once

#include "sources/streams/stream_kind.h"

namespace tarnwick {

/// The row of the table of streams: text files whose description says Follow. The file is read from its first row, then what is
/// written to it, ten times a second at most. A last line waits for its end. Where the file was cut short or written anew, or
/// another file took its place, the points stay and reading goes on behind the lines that both have in common; the line of a
/// DataSet breaks where what was read before went.
StreamKind FollowedFileKind();

}  // namespace tarnwick
