// Who wants to hear of a DataSet's changes, and in which order they are called. Knows nothing of what changes.
#pragma once

#include <functional>
#include <memory>
#include <vector>

namespace tarnwick {

class TDataSeries;

/// What a DataSet tells its listeners. The numbers are part of the interface.
enum class ChangeCode : int {
  Destroyed = 0,
  Data = 1,
  BaseLine = 2,
  Regression = 4,
  Fit = 5,
  PointAdded = 7
};

/// A listener may set or remove any listener, itself too, while it is called.
class ChangeListeners {
 public:
  using Listener = std::function<void(TDataSeries&, ChangeCode)>;

  /// Registers or replaces the listener of `key`; a new key is called last.
  void Set(int key, Listener listener);
  void Remove(int key);
  /// Calls all in order; one that comes meanwhile is not called.
  void Call(TDataSeries& series, ChangeCode code);

 private:
  struct Entry {
    int key = 0;
    std::shared_ptr<const Listener> call;  // null: removed while listeners are being called
  };
  class Calling;
  void DropRemoved();

  std::vector<Entry> entries_;
  int calling_ = 0;
};

}  // namespace tarnwick
