#include "app/fit/live_fit.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "analysis/fits/fit_run.h"
#include "base/error.h"
#include "base/prompt.h"
#include "desk/document/document.h"
#include "desk/work/latest_work.h"
#include "graph/series_of_whole.h"
#include "results/fitted_model.h"
#include "sources/stream_kinds.h"

namespace tarnwick {
namespace {

constexpr int kPauseMs = 1000;

bool IsToFollow(const TSeries& series) {
  const TCurFit& fit = series.Fit();
  return StreamOf(series.Source()) != nullptr && IsFitted(fit.Status()) && fit.Modified() &&
         series.PointCount() > 0;
}

/// The next that waits, in turn after `last`; as many as there are: none.
std::size_t NextToFollow(const std::vector<TSeries*>& all, std::size_t last) {
  for (std::size_t i = 1; i <= all.size(); ++i) {
    const std::size_t place = (last + i) % all.size();
    if (IsToFollow(*all[place])) return place;
  }
  return all.size();
}

}  // namespace

LiveFit::LiveFit(Document& document)
    : QObject(&document), document_(document), fitting_(new LatestWork(this)) {
  next_.setInterval(kPauseMs);
  connect(&next_, &QTimer::timeout, this, &LiveFit::Fit);
  next_.start();
}

LiveFit* LiveFit::Of(Document& document) {
  const QObjectList& children = document.children();
  const auto found = std::ranges::find_if(
      children, [](QObject* child) { return dynamic_cast<LiveFit*>(child) != nullptr; });
  return found == children.end() ? nullptr : dynamic_cast<LiveFit*>(*found);
}

void LiveFit::Fit() {
  const auto is_busy = [this] {
    return document_.History().IsOpen() || document_.Work().IsRunning();
  };
  if (fitting_->IsRunning() || is_busy()) return;
  const std::vector<TSeries*> all = SeriesOfWhole(document_.WholeGraph());
  const std::size_t place = NextToFollow(all, last_);
  if (place == all.size()) return;
  last_ = place;
  const auto fail = [this](const std::string& why) {
    next_.stop();
    document_.GetPrompt().Tell("Fits follow the data no more: " + why);
    deleteLater();
  };
  try {
    fitting_->Begin([this, place, is_busy, fail,
                     job = PrepareFit(*all[place], {})](Progress& progress) -> LatestWork::Answer {
      try {
        const auto result = std::make_shared<const FitResult>(RunFit(job, progress));
        return [this, place, is_busy, result, settings = job.settings] {
          const std::vector<TSeries*> now = SeriesOfWhole(document_.WholeGraph());
          // What was edited meanwhile is fitted the next time.
          if (is_busy() || place >= now.size() || !IsToFollow(*now[place]) ||
              now[place]->Fit().Settings().Expression != settings.Expression) {
            return;
          }
          document_.TakeComing([&](TxyGraph&) { ApplyFit(*now[place], *result); });
        };
      } catch (const Error& error) {
        return [fail, why = std::string(error.what())] { fail(why); };
      }
    });
  } catch (const Error& error) {
    fail(error.what());
  }
}

}  // namespace tarnwick
