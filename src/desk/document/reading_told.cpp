#include "desk/document/reading_told.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "graph/files/import_into_graph.h"
#include "graph/series.h"
#include "graph/series_of_whole.h"

namespace tarnwick {

ImportTold ToldOfReading(TxyGraph& whole, const PointsAsRead& read) {
  const std::vector<TSeries*> all = SeriesOfWhole(whole);
  std::vector<LoadReport> reports;
  std::vector<std::string> names;
  for (const TSeries* const series : all) {
    const SeriesAsRead* const known = read.Of(*series);
    reports.push_back(known != nullptr ? known->report : LoadReport());
    names.push_back(series->SeriesName());
  }
  ImportTold told = TellImport(reports, names);
  for (ToldClause& clause : TellSomeRows(std::vector<const TDataSeries*>(all.begin(), all.end()))) {
    if (!IsAbout(told, clause.about)) told.push_back(std::move(clause));
  }
  std::ranges::move(TellGaps(all), std::back_inserter(told));
  return told;
}

bool SameLayout(TDSInfo now, const TDSInfo& before) {
  const auto take = [&](auto... field) { ((now.*field = before.*field), ...); };
  take(&TDSInfo::XColExpr, &TDSInfo::YColExpr, &TDSInfo::RowSamplingFrequency,
       &TDSInfo::AutoRowHitFreq, &TDSInfo::AllRows, &TDSInfo::RowChoiceMode,
       &TDSInfo::RowChoiceValue1, &TDSInfo::RowChoiceValue2, &TDSInfo::Follow, &TDSInfo::KeepPoints,
       &TDSInfo::PointsEdited, &TDSInfo::active, &TDSInfo::x_column_index, &TDSInfo::y_column_index,
       &TDSInfo::x_error_index, &TDSInfo::y_error_index);
  return now == before;
}

}  // namespace tarnwick
