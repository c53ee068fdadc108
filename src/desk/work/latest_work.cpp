#include "desk/work/latest_work.h"

#include <QCoreApplication>
#include <utility>

#include "desk/work/shared_progress.h"
#include "desk/work/worker.h"

namespace tarnwick {
namespace {

/// Holds a worker whose jobs nobody waits for, until it has done them or the program ends, which does wait.
class RunningOut final : public QObject {
 public:
  RunningOut(std::unique_ptr<Worker> worker, QCoreApplication& program)
      : QObject(&program), worker_(std::move(worker)) {
    worker_->Do([this, here = ends_.Address()] { here.Post([this] { deleteLater(); }); });
  }

 private:
  Mailbox ends_;
  std::unique_ptr<Worker> worker_;  // last: it uses the others
};

void LetRunOut(std::unique_ptr<Worker> worker, QCoreApplication& program) {
  new RunningOut(std::move(worker), program);
}

}  // namespace

LatestWork::LatestWork(QObject* parent, AbandonedWork abandoned)
    : QObject(parent), abandoned_(abandoned), worker_(std::make_unique<Worker>()) {}

LatestWork::~LatestWork() {
  GiveUp();
  QCoreApplication* const program = QCoreApplication::instance();
  if (abandoned_ == AbandonedWork::RunsOut && !worker_->IsIdle() && program != nullptr)
    LetRunOut(std::move(worker_), *program);
}

void LatestWork::GiveUp() {
  if (progress_) progress_->Cancel();
  progress_.reset();
}

void LatestWork::Begin(std::function<Answer(Progress&)> work) {
  BeginInParts(
      [work = std::move(work)](Progress& progress, const Interim&) { return work(progress); });
}

void LatestWork::BeginInParts(std::function<Answer(Progress&, const Interim&)> work) {
  GiveUp();
  progress_ = std::make_shared<SharedProgress>();
  worker_->Do([this, here = answers_.Address(), work = std::move(work), progress = progress_] {
    if (progress->Cancelled()) return;
    const auto post = [&](Answer answer, Reaches reaches) {
      here.Post([this, answer = std::move(answer), progress, reaches] {
        if (progress != progress_) return;  // another answer is wanted by now
        if (reaches == Reaches::End) progress_.reset();
        answer();
      });
    };
    const Interim tell = [&](Answer answer) { post(std::move(answer), Reaches::Interim); };
    Answer answer = work(*progress, tell);
    post(std::move(answer), Reaches::End);
  });
}

}  // namespace tarnwick
