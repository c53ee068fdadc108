// Where other threads leave calls for the thread of a window. Locks of our own hand them over, which a checker of threads
// sees; Qt only carries the news that something came. Knows nothing of what is called.
#pragma once

#include <QObject>
#include <functional>
#include <memory>

namespace tarnwick {

/// Where a mailbox's calls are left, by any thread. May outlive the mailbox.
class MailAddress {
 public:
  using Call = std::function<void()>;

  /// Has the mailbox's thread make the call, after those left before; dropped where there is no mailbox any more.
  void Post(Call call) const;
  /// The same from another thread, and waits until it was made or dropped.
  void PostAndWait(const Call& call) const;

 private:
  friend class Mailbox;
  struct Box;
  explicit MailAddress(std::shared_ptr<Box> box) : box_(std::move(box)) {}

  std::shared_ptr<Box> box_;
};

class Mailbox final : public QObject {
 public:
  /// Calls are made by the event loop of the thread that makes this.
  explicit Mailbox(QObject* parent = nullptr);
  /// Drops what was not called yet.
  ~Mailbox() override;

  const MailAddress& Address() const { return address_; }

 protected:
  void customEvent(QEvent* event) override;

 private:
  MailAddress address_;
};

}  // namespace tarnwick
