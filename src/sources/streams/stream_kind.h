// What a kind of source that goes on offers. Knows descriptions and streams; no kind.
#pragma once

#include <memory>
#include <string>

#include "data/ds_info.h"
#include "sources/streams/append_rows.h"
#include "sources/streams/row_stream.h"

namespace tarnwick {

class TDataSeries;

struct StreamKind {
  DataSourceKind kind = DataSourceKind::Manual;
  /// Whether rows may come for a DataSet so described.
  bool (*goes_on)(const TDSInfo& info) = nullptr;
  /// The description of a DataSet that a stream from that place alone can fill; other settings than the place are taken over
  /// where they are no new one's. Throws Error for what names no place. Null where DataSets begin with what stands in a file.
  TDSInfo (*begin)(const TDSInfo& place) = nullptr;
  /// Whether a stream begins with all that its source has had so far, in place of the points that are there.
  bool rereads = false;
  /// Whether one stream serves DataSets with these descriptions.
  bool (*shares)(const TDSInfo& one, const TDSInfo& other) = nullptr;
  /// A stream, stopped, for this DataSet and those that share. Throws Error for a description that no stream can follow.
  std::unique_ptr<RowStream> (*open)(const TDataSeries& series) = nullptr;
  /// What a DataSet of the Y at a place, from 0, has as its YDataColumn. Null where no DataSet is made of what comes unasked.
  std::string (*y_name)(std::size_t place) = nullptr;
  /// Whether X of a DataSet so described are moments.
  bool (*x_is_moment)(const TDSInfo& info) = nullptr;
  /// What may hold no number: "line".
  const char* piece = "line";
  /// What the points of a DataSet so described are made of.
  StreamColumns (*columns)(const TDSInfo& info) = nullptr;
};

}  // namespace tarnwick
