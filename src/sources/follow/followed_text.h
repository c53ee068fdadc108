// Whole lines of a text that grows, as rows: cut, chosen and computed as the loader does with a text that is there. Knows the
// description of one DataSet; no file and no thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "data/import/row_taking.h"
#include "sources/streams/described_rows.h"
#include "sources/streams/row_stream.h"

namespace tarnwick {

class FollowedText {
 public:
  /// Every row is taken, whatever sampling says. Throws Error for a description that ends before what is still to come: a table
  /// of so many lines, all but the last rows.
  explicit FollowedText(const TDSInfo& info);

  /// The text that comes next is another one, which begins with its header lines. The numbers of the rows go on.
  void BeginText();
  /// So do they, and all before is void.
  void BeginAnew();
  /// Adds the rows of lines that are there to their ends. Lines before the first row wait for it. Throws Error when the text
  /// cannot be read so: a column is missing, it is no text.
  void Take(const std::string& lines, StreamRows& rows);
  /// The text's first row is there, and what stands where is known.
  bool KnowsColumns() const { return head_read_; }
  /// Lines before the first row, whatever they hold.
  std::size_t HeaderLines() const { return static_cast<std::size_t>(info_.FileHasHeaders); }
  /// True when the description chooses no further row.
  bool IsDone() const { return taking_->Chooser().NextRow() == RowChooser::kNoRow; }

 private:
  void TakeHead(StreamRows& rows);
  void TakeRest(const std::string& lines, StreamRows& rows);
  void TakeRows(TDataSupplier& supplier, StreamRows& rows);
  void TakeRow(TDataSupplier& supplier, StreamRows& rows);
  void AddPoint(const RowValues& values, StreamRows& rows);
  std::unique_ptr<TDataSupplier> Supplier(const TDSInfo& info, const std::string& text) const;
  void ResolveColumns(TDataSupplier& supplier);

  TDSInfo info_;       // of the text from its beginning
  TDSInfo rest_info_;  // of lines behind the headers
  std::unique_ptr<RowTaking> taking_;
  std::int32_t blanks_ = 0;  // empty lines at the end of the lines so far
  std::string head_;         // until the first row is there
  bool head_read_ = false;
  DescribedReading reading_;
  std::int32_t group_column_ = -1;
  std::int64_t row_ = 0;     // number of the row at hand, from 1
  std::int64_t points_ = 0;  // so far
};

}  // namespace tarnwick
