#include "desk/work/latest_work.h"

#include <utility>

#include "desk/work/shared_progress.h"

namespace tarnwick {

LatestWork::LatestWork(QObject* parent) : QObject(parent) {
  pool_.setMaxThreadCount(1);
}

LatestWork::~LatestWork() {
  GiveUp();
  pool_.waitForDone();
}

void LatestWork::GiveUp() {
  if (progress_) progress_->Cancel();
  progress_.reset();
}

void LatestWork::Begin(std::function<Answer(Progress&)> work) {
  GiveUp();
  progress_ = std::make_shared<SharedProgress>();
  pool_.start([this, work = std::move(work), progress = progress_] {
    if (progress->Cancelled()) return;
    Answer answer = work(*progress);
    QMetaObject::invokeMethod(
        this,
        [this, answer = std::move(answer), progress] {
          if (progress != progress_) return;  // another answer is wanted by now
          progress_.reset();
          answer();
        },
        Qt::QueuedConnection);
  });
}

}  // namespace tarnwick
