// How long work says how far it is and learns that it should stop. Knows no window and no clock: whoever shows it
// decides when it is worth showing.
#pragma once

#include <cstdint>
#include <string_view>

namespace tarnwick {

class Progress {
 public:
  virtual ~Progress() = default;
  /// Work begins: what is done ("Loading"), to what (a file's name), and how much there is (0 = unknown).
  virtual void Begin(std::string_view title, std::string_view subject, std::int64_t total) = 0;
  /// `done` of the total are done. False: the work was cancelled and should stop at the next clean place.
  virtual bool Advance(std::int64_t done) = 0;
  virtual bool Cancelled() const = 0;

 protected:
  Progress() = default;
  Progress(const Progress&) = default;
  Progress& operator=(const Progress&) = default;
};

/// Shows nothing and never cancels.
class NoProgress final : public Progress {
 public:
  void Begin(std::string_view, std::string_view, std::int64_t) override {}
  bool Advance(std::int64_t) override { return true; }
  bool Cancelled() const override { return false; }
};

/// For work inside another: shows nothing of its own, while the other stands still at `done`, and is cancelled with it.
class QuietProgress final : public Progress {
 public:
  QuietProgress(Progress& shown, std::int64_t done) : shown_(shown), done_(done) {}
  void Begin(std::string_view, std::string_view, std::int64_t) override {}
  bool Advance(std::int64_t) override { return shown_.Advance(done_); }
  bool Cancelled() const override { return shown_.Cancelled(); }

 private:
  Progress& shown_;
  std::int64_t done_;
};

}  // namespace tarnwick
