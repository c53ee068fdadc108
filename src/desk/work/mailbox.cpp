#include "desk/work/mailbox.h"

#include <QCoreApplication>
#include <QEvent>
#include <deque>
#include <future>
#include <mutex>
#include <utility>

namespace tarnwick {

struct MailAddress::Box {
  std::mutex mutex;  // guards what follows
  Mailbox* owner = nullptr;
  std::deque<Call> calls;  // an event is on its way for each

  /// The next one; empty for none.
  Call Take() {
    const std::lock_guard lock(mutex);
    if (calls.empty()) return {};
    Call call = std::move(calls.front());
    calls.pop_front();
    return call;
  }
};

void MailAddress::Post(Call call) const {
  const std::lock_guard lock(box_->mutex);  // also while Qt takes the event: the owner must not go
  if (box_->owner == nullptr) return;
  box_->calls.push_back(std::move(call));
  QCoreApplication::postEvent(box_->owner, new QEvent(QEvent::User));
}

void MailAddress::PostAndWait(const Call& call) const {
  auto made = std::make_shared<std::promise<void>>();
  const std::future<void> end = made->get_future();
  // What is posted alone holds the promise: dropping it ends the waiting too.
  Post([&call, made = std::move(made)] {
    call();
    made->set_value();
  });
  end.wait();
}

Mailbox::Mailbox(QObject* parent)
    : QObject(parent), address_(std::make_shared<MailAddress::Box>()) {
  address_.box_->owner = this;
}

Mailbox::~Mailbox() {
  std::deque<MailAddress::Call> dropped;  // unlocked: what they hold may be anything
  const std::lock_guard lock(address_.box_->mutex);
  address_.box_->owner = nullptr;
  dropped.swap(address_.box_->calls);
}

void Mailbox::customEvent(QEvent*) {
  // One call an event: a call that runs an event loop of its own lets the next ones come.
  if (const MailAddress::Call call = address_.box_->Take()) call();
}

}  // namespace tarnwick
