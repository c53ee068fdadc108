// Work that may take long, done so that the program stays alive: an interface, so that documents need no window.
#pragma once

#include <functional>
#include <string>

#include "base/progress.h"

namespace tarnwick {

enum class Cancellable { No, Yes };

/// Of the progress window: before the middle of the program's, or where it hides little of what the work shows.
enum class ProgressPlace { Centre, Aside };

struct WorkTitle {
  std::string text;  ///< "Loading data"
  Cancellable cancellable = Cancellable::Yes;
  std::string caption = {};  ///< of the progress window; empty: the text
  ProgressPlace place = ProgressPlace::Centre;
};

class LongWork {
 public:
  virtual ~LongWork() = default;
  /// Answers when `work` is done, and throws what it threw. `work` may run on another thread, so it touches only what it
  /// was given by value, and nothing else runs on that until then.
  void Run(const WorkTitle& title, const std::function<void(Progress&)>& work);
  /// While some work runs, events may come that were better answered later.
  bool IsRunning() const { return running_ > 0; }

 protected:
  virtual void DoRun(const WorkTitle& title, const std::function<void(Progress&)>& work) = 0;
  LongWork() = default;
  LongWork(const LongWork&) = default;
  LongWork& operator=(const LongWork&) = default;

 private:
  int running_ = 0;  // one within the other
};

}  // namespace tarnwick
