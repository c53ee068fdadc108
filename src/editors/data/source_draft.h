// A description of a DataSet's source that is being changed, apart from the graph until it is taken over. Knows descriptions and
// their fields; no widget and no document.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "data/series/data_series.h"
#include "desk/fields/field_row.h"

namespace tarnwick {

class SourceDraft {
 public:
  SourceDraft();

  /// The fields that say how a source is read: those of its text, columns and rows.
  const std::vector<FieldRow>& Rows() const { return rows_; }
  FieldValue Get(std::size_t row) const;
  void Set(std::size_t row, const FieldValue& value);
  /// Why the field has no effect beside what the others say; empty when it has.
  std::string IdleReason(std::size_t row) const;

  /// Begins with the description of `series`.
  void Begin(const TDataSeries& series);
  const TDSInfo& Source() const { return draft_->Source(); }
  TDSInfo& Source() { return draft_->Source(); }
  bool IsChanged() const { return draft_->Source() != begun_with_; }
  /// The description that it began with.
  const TDSInfo& BegunWith() const { return begun_with_; }

  /// `other`, a description of the same source, cut as the draft says: columns and rows stay its own.
  TDSInfo CutAlike(const TDSInfo& other) const;

 private:
  std::vector<FieldRow> rows_;
  std::vector<std::size_t> fields_;  // their places in the table of the DataSet's fields
  std::unique_ptr<TDataSeries> draft_;
  TDSInfo begun_with_;
};

}  // namespace tarnwick
