// Hot links as a source that goes on. Knows descriptions; knows no DataSet of a document.
#pragma once

#include "sources/streams/stream_kind.h"

namespace tarnwick {

/// The row of the table of streams: links whose description says Follow. A row comes with each new value of the link that gives
/// Y; X is the clock, or the value that the link of X has then. Programs that are not there are waited for; where one was away
/// the line is broken.
StreamKind LinkStreamKind();

}  // namespace tarnwick
