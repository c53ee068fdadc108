#include "editors/data/point_counter.h"

#include <array>

#include "base/error.h"
#include "data/import/loader.h"
#include "desk/widgets/text.h"
#include "sources/all_source_kinds.h"

namespace tarnwick {
namespace {

/// Empty when it was given up.
QString CountText(const DataState& state, Progress& progress) {
  TDataSeries series;
  series.SetState(state);
  LoadOptions options;
  options.progress = &progress;
  options.kinds = AllSourceKinds();
  try {
    const std::array<TDataSeries*, 1> all = {&series};
    const LoadReport report = RefreshAll(all, options).front();
    if (progress.Cancelled()) return {};
    if (!report.loaded) return PointCounter::tr("The source has no such columns.");
    QString text = PointCounter::tr("%1 points will be read.").arg(report.points);
    if (report.Skipped() > 0) {
      text += ' ' + PointCounter::tr("%1 rows are skipped.").arg(report.Skipped());
    }
    return text;
  } catch (const Error& error) {
    return ToQt(error.what());
  }
}

}  // namespace

void PointCounter::Count(const DataState& state) {
  work_.Begin([this, state](Progress& progress) -> LatestWork::Answer {
    const QString text = CountText(state, progress);
    return [this, text] { emit counted(text); };
  });
}

}  // namespace tarnwick
