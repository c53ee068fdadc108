// The display panel's thread: makes texts of values that were copied for it, so that the panel never waits for more than
// the copying. Knows values and texts, no document and no widget.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace tarnwick {

/// A parameter's value, and its standard error; undefined where there is none.
struct DisplayedValue {
  double value = 0;
  double error = 0;
};

/// The values of all indicators. The version tells those of one set of indicators from those of the next.
struct DisplayedValues {
  std::vector<DisplayedValue> values;
  int version = 0;
};

class TCloseDisplayThread {
 public:
  using Show = std::function<void(std::vector<std::string> texts, int version)>;

  /// `show` is called on the thread, with the texts of the values put last, at most ten times a second.
  explicit TCloseDisplayThread(Show show);
  /// Waits until the thread has ended: `show` is not called any more.
  ~TCloseDisplayThread();
  TCloseDisplayThread(const TCloseDisplayThread&) = delete;
  TCloseDisplayThread& operator=(const TCloseDisplayThread&) = delete;

  void Put(DisplayedValues values);

 private:
  void Work();

  Show show_;
  std::mutex critical_section_;  // guards what follows
  std::condition_variable changed_;
  DisplayedValues values_;
  bool waiting_ = false;  // values that no text was made of yet
  bool ending_ = false;
  std::thread thread_;
};

}  // namespace tarnwick
