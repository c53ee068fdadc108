#include "desk/work/latest_work.h"

#include <QCoreApplication>
#include <mutex>
#include <utility>

#include "desk/work/shared_progress.h"

namespace tarnwick {

struct LatestWork::Line {
  std::mutex mutex;
  LatestWork* asker;
};

LatestWork::LatestWork(QObject* parent, AbandonedWork abandoned)
    : QObject(parent),
      abandoned_(abandoned),
      pool_(std::make_unique<QThreadPool>()),
      line_(std::make_shared<Line>()) {
  pool_->setMaxThreadCount(1);
  line_->asker = this;
}

LatestWork::~LatestWork() {
  GiveUp();
  {
    const std::lock_guard lock(line_->mutex);
    line_->asker = nullptr;
  }
  if (abandoned_ == AbandonedWork::IsWaitedFor) pool_->waitForDone();
  if (pool_->waitForDone(0)) return;
  QThreadPool* const left = pool_.release();
  left->setParent(QCoreApplication::instance());
  // Comes when all is done that was begun.
  left->start([left] { left->deleteLater(); });
}

void LatestWork::GiveUp() {
  if (progress_) progress_->Cancel();
  progress_.reset();
}

void LatestWork::Begin(std::function<Answer(Progress&)> work) {
  GiveUp();
  progress_ = std::make_shared<SharedProgress>();
  pool_->start([line = line_, work = std::move(work), progress = progress_] {
    if (progress->Cancelled()) return;
    Answer answer = work(*progress);
    const std::lock_guard lock(line->mutex);
    LatestWork* const asker = line->asker;
    if (asker == nullptr) return;
    QMetaObject::invokeMethod(
        asker,
        [asker, answer = std::move(answer), progress] {
          if (progress != asker->progress_) return;  // another answer is wanted by now
          asker->progress_.reset();
          answer();
        },
        Qt::QueuedConnection);
  });
}

}  // namespace tarnwick
