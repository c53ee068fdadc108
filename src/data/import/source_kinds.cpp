#include "data/import/source_kinds.h"

#include <algorithm>

#include "base/error.h"
#include "data/import/data_files.h"
#include "data/import/file_supplier.h"
#include "data/series/data_series.h"
#include "data/series/data_series_file.h"

namespace tarnwick {
namespace {

using enum SettingUse;

constexpr SourceSetting kTextSettings[] = {
    {"DivideTextByWidth", Opens},
    {"FileHasHeaders", Opens},
    {"TextSeparators", Opens},
    {"TextMarkers", Opens},
    {"ColumnWidth", Opens},
    {"ColumnCuts", Opens},
    {"MergeSeparators", Opens},
    {"NamesLine", Opens},
    {"StackedNames", Opens},
    {"UnitsLine", Opens},
    {"CommentMarks", Opens},
    {"MissingValues", Opens},
    {"TimeColumns", Opens},
    {"TableLines", Opens},
    {"TableEndSought"},
    {"XDataColumn"},
    {"YDataColumn"},
    {"YErrorColumn"},
    {"XErrorColumn"},
    {"XFormat"},
    {"YFormat"},
    {"RowSamplingFrequency"},
    {"AutoRowHitFreq"},
    {"AllRows"},
    {"Run"},
    {"GroupColumn"},
    {"GroupValue"},
    {"Follow"},
    {"KeepPoints"},
    {"RowChoiceMode"},
    {"RowChoiceValue1"},
    {"RowChoiceValue2"},
    {"XColExpr"},
    {"YColExpr"},
};

constexpr SourceSetting kUnformattedSettings[] = {
    {"FileHasHeaders"}, {"XDataColumn"},     {"YDataColumn"},     {"RowSamplingFrequency"},
    {"YErrorColumn"},   {"XErrorColumn"},    {"AutoRowHitFreq"},  {"AllRows"},
    {"RowChoiceMode"},  {"RowChoiceValue1"}, {"RowChoiceValue2"}, {"XColExpr"},
    {"YColExpr"},
};

constexpr SourceKind kKinds[] = {
    {.kind = DataSourceKind::Manual, .name = "Points of one's own"},
    {.kind = DataSourceKind::Unformatted,
     .name = "Unformatted file",
     .recognises = &IsUnformatted,
     .examine = &ExamineUnformatted,
     .open = &OpenDataFile,
     .settings = kUnformattedSettings},
    {.kind = DataSourceKind::Text,
     .name = "Text file",
     .recognises = [](std::string_view) { return true; },
     .examine = &ExamineTextFile,
     .open = &OpenDataFile,
     .settings = kTextSettings},
};

bool SameSetting(std::string_view key, const TDataSeries& one, const TDataSeries& other) {
  const FieldTable<TDataSeries> fields = DataSeriesFields();
  return std::all_of(fields.begin(), fields.end(), [&](const Field<TDataSeries>& field) {
    return field.key != key || SameValue(GetField(field, one), GetField(field, other));
  });
}

}  // namespace

SourceKinds BasicSourceKinds() {
  return kKinds;
}

const SourceKind* FindSourceKind(SourceKinds kinds, DataSourceKind kind) {
  const auto found = std::ranges::find(kinds, kind, &SourceKind::kind);
  return found == kinds.end() ? nullptr : &*found;
}

const SourceKind& KindOfFile(SourceKinds kinds, std::string_view bytes, const std::string& name) {
  const auto found = std::ranges::find_if(kinds, [bytes](const SourceKind& kind) {
    return kind.recognises != nullptr && kind.recognises(bytes);
  });
  if (found == kinds.end()) throw FileError("No kind of data source reads this file", name, "");
  return *found;
}

bool ShareSource(const SourceKind& kind, const TDataSeries& one, const TDataSeries& other) {
  const TDSInfo& left = one.Source();
  const TDSInfo& right = other.Source();
  if (left.DataSource != right.DataSource || left.DatasourceInfo != right.DatasourceInfo) {
    return false;
  }
  return std::ranges::all_of(kind.settings, [&](const SourceSetting& setting) {
    return setting.use != SettingUse::Opens || SameSetting(setting.key, one, other);
  });
}

}  // namespace tarnwick
