// The kinds of source that go on, as rows of a table: which DataSets have rows to come, and what brings them. Knows what a kind
// offers; whoever shows streams asks the table.
#pragma once

#include <span>

#include "sources/streams/stream_kind.h"

namespace tarnwick {

std::span<const StreamKind> StreamKinds();

/// The kind of stream that brings rows for such a DataSet; null when none does.
const StreamKind* StreamOf(const TDSInfo& info);

/// Describes a new DataSet for the stream at a place, of which only kind and place are told. Throws Error, also where the kind
/// begins otherwise.
TDSInfo BeginStream(const TDSInfo& place);

}  // namespace tarnwick
