#include "editors/data/source_draft.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "data/series/data_series_file.h"

namespace tarnwick {
namespace {

constexpr std::array<std::string_view, 3> kGroups = {"Columns", "Text", "Rows"};
constexpr std::string_view kShared = "Text";  // the group that holds for all DataSets of a source

bool UsesFirst(RowChoice choice) {
  return choice == RowChoice::FromX || choice == RowChoice::BetweenX ||
         choice == RowChoice::SkipRows || choice == RowChoice::DropLast;
}

bool UsesLast(RowChoice choice) {
  return choice == RowChoice::UntilX || choice == RowChoice::BetweenX ||
         choice == RowChoice::FirstRows;
}

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
  const TDSInfo before = Source();
  SetField<TDataSeries>(DataSeriesFields()[fields_[row]], *draft_, value);
  TDSInfo& info = Source();
  if (info.FileHasHeaders != before.FileHasHeaders) {
    // Names and end that were found are those of the table that began elsewhere.
    const TDSInfo unsaid;
    info.NamesLine = unsaid.NamesLine;
    info.UnitsLine = unsaid.UnitsLine;
    info.StackedNames = unsaid.StackedNames;
    info.TableLines = unsaid.TableLines;
    info.TableEndSought = before.TableEndSought || before.TableLines > 0;
  } else if (info.TableLines != before.TableLines) {
    info.TableEndSought = false;
  }
}

std::string SourceDraft::IdleReason(std::size_t row) const {
  const TDSInfo& info = Source();
  const std::string_view key = rows_[row].key;
  const bool first = key == "RowChoiceValue1";
  if (first || key == "RowChoiceValue2") {
    const bool used = first ? UsesFirst(info.RowChoiceMode) : UsesLast(info.RowChoiceMode);
    return used ? "" : "The rows taken do not go by it";
  }
  if (key == "ColumnWidth") return info.DivideTextByWidth ? "" : "Columns have no fixed width";
  const bool one_of = key == "RowSamplingFrequency";
  if (!one_of && key != "AutoRowHitFreq") return {};
  if (info.AllRows) return "Every row is taken";
  return one_of && info.AutoRowHitFreq ? "As many rows are taken as the plot can show" : "";
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
