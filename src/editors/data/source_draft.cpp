#include "editors/data/source_draft.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "data/series/data_series_file.h"

namespace tarnwick {
namespace {

constexpr std::array<std::string_view, 3> kGroups = {"Columns", "Text", "Rows"};
constexpr std::string_view kShared = "Text";  // the group that holds for all DataSets of a source

}  // namespace

SourceDraft::SourceDraft() : draft_(std::make_unique<TDataSeries>()) {
  const FieldTable<TDataSeries> table = DataSeriesFields();
  const std::vector<FieldRow> all = RowsOf<TDataSeries>(table);
  for (const std::string_view group : kGroups) {
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (all[i].look.group != group || all[i].look.control.kind == ControlKind::Hidden) continue;
      rows_.push_back(all[i]);
      fields_.push_back(i);
    }
  }
}

FieldValue SourceDraft::Get(std::size_t row) const {
  return GetField<TDataSeries>(DataSeriesFields()[fields_[row]], *draft_);
}

void SourceDraft::Set(std::size_t row, const FieldValue& value) {
  SetField<TDataSeries>(DataSeriesFields()[fields_[row]], *draft_, value);
}

void SourceDraft::Begin(const TDataSeries& series) {
  begun_with_ = series.Source();
  draft_->Source() = begun_with_;
}

TDSInfo SourceDraft::CutAlike(const TDSInfo& other) const {
  TDataSeries alike;
  alike.Source() = other;
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    if (rows_[row].look.group != kShared) continue;
    SetField<TDataSeries>(DataSeriesFields()[fields_[row]], alike, Get(row));
  }
  return alike.Source();
}

}  // namespace tarnwick
