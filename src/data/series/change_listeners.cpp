#include "data/series/change_listeners.h"

#include <utility>

namespace tarnwick {

// Entries are only emptied, never taken out, while calls are under way: the positions hold.
class ChangeListeners::Calling {
 public:
  explicit Calling(ChangeListeners& listeners) : listeners_(listeners) { ++listeners_.calling_; }
  ~Calling() {
    if (--listeners_.calling_ == 0) listeners_.DropRemoved();
  }
  Calling(const Calling&) = delete;
  Calling& operator=(const Calling&) = delete;

 private:
  ChangeListeners& listeners_;
};

void ChangeListeners::DropRemoved() {
  std::erase_if(entries_, [](const Entry& entry) { return entry.call == nullptr; });
}

void ChangeListeners::Set(int key, Listener listener) {
  auto call = std::make_shared<const Listener>(std::move(listener));
  for (Entry& entry : entries_) {
    if (entry.key == key && entry.call != nullptr) {
      entry.call = std::move(call);
      return;
    }
  }
  entries_.push_back({key, std::move(call)});
}

void ChangeListeners::Remove(int key) {
  for (Entry& entry : entries_) {
    if (entry.key == key) entry.call = nullptr;
  }
  if (calling_ == 0) DropRemoved();
}

void ChangeListeners::Call(TDataSeries& series, ChangeCode code) {
  if (entries_.empty()) return;
  const Calling calling(*this);
  const std::size_t present = entries_.size();
  for (std::size_t i = 0; i < present; ++i) {
    const std::shared_ptr<const Listener> call = entries_[i].call;
    if (call != nullptr && *call) (*call)(series, code);
  }
}

}  // namespace tarnwick
