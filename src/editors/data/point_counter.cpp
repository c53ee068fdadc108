#include "editors/data/point_counter.h"

#include <array>

#include "base/error.h"
#include "data/import/loader.h"
#include "desk/widgets/text.h"
#include "desk/work/shared_progress.h"
#include "sources/all_source_kinds.h"

namespace tarnwick {
namespace {

/// Empty when it was given up.
QString CountText(const DataState& state, SharedProgress& progress) {
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
    QString text = PointCounter::tr("%L1 points will be read.").arg(report.points);
    if (report.Skipped() > 0) {
      text += ' ' + PointCounter::tr("%L1 rows are skipped.").arg(report.Skipped());
    }
    return text;
  } catch (const Error& error) {
    return ToQt(error.what());
  }
}

}  // namespace

PointCounter::PointCounter(QObject* parent) : QObject(parent) {
  pool_.setMaxThreadCount(1);
}

PointCounter::~PointCounter() {
  GiveUp();
  pool_.waitForDone();
}

void PointCounter::GiveUp() {
  if (progress_) progress_->Cancel();
  progress_.reset();
}

void PointCounter::Count(const DataState& state) {
  GiveUp();
  progress_ = std::make_shared<SharedProgress>();
  pool_.start([this, state, progress = progress_] {
    const QString text = progress->Cancelled() ? QString() : CountText(state, *progress);
    QMetaObject::invokeMethod(
        this,
        [this, text, progress] {
          if (progress != progress_) return;  // another count is wanted by now
          progress_.reset();
          emit counted(text);
        },
        Qt::QueuedConnection);
  });
}

}  // namespace tarnwick
