// What a row of links is made of: the description of a DataSet over the values that its links have. Knows columns and formats;
// hears no link.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "sources/links/link_supplier.h"
#include "sources/streams/described_rows.h"
#include "sources/streams/stream_clock.h"

namespace tarnwick {

class LinkRows {
 public:
  /// Throws Error for a list of links, columns or expressions that cannot be used, and where no link gives Y.
  explicit LinkRows(const TDSInfo& info);

  /// The columns whose links have to be heard, first that of Y.
  const std::vector<std::int32_t>& Heard() const { return heard_; }
  const std::string& LinkOf(std::int32_t column) const;
  void Put(std::int32_t column, const std::string& text) { row_.Put(column, text); }
  /// Adds a row of the values that the links have now, or counts it as unreadable and answers the text that is no number.
  std::optional<std::string> AddRow(StreamRows& rows);

 private:
  TDSInfo info_;
  TLinkSupplier row_;
  DescribedReading reading_;
  std::vector<std::int32_t> heard_;
  StreamClock clock_;
  std::int64_t count_ = 0;
};

}  // namespace tarnwick
