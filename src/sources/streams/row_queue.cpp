#include "sources/streams/row_queue.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <utility>

#include "base/error.h"
#include "base/undefined.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostValues = std::size_t{8} << 20;  // 64 MiB of numbers wait at most

/// Behind `count` rows of undefined values a column begins that the rows so far did not have.
void WidenTo(StreamRows& rows, std::size_t columns) {
  while (rows.y.size() < columns) rows.y.emplace_back(rows.x.size(), kUndefined);
}

void AppendPlaces(std::vector<std::size_t>& places, const std::vector<std::size_t>& more,
                  std::size_t offset, std::size_t rows) {
  for (const std::size_t place : more)
    if (place <= rows) places.push_back(offset + place);
}

}  // namespace

RowQueue::RowQueue() : wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (wake_.Value() < 0) throw Error("The system lets no more sources be opened");
}

bool RowQueue::Stopped() const {
  const std::lock_guard lock(mutex_);
  return state_ == StreamState::Stopped;
}

bool RowQueue::Paused() const {
  const std::lock_guard lock(mutex_);
  return paused_;
}

void RowQueue::Sleep(int milliseconds) {
  pollfd wake{wake_.Value(), POLLIN, 0};
  if (milliseconds > 0 && ::poll(&wake, 1, milliseconds) == 0) return;
  std::uint64_t count = 0;
  [[maybe_unused]] const ssize_t ignored = ::read(wake_.Value(), &count, sizeof count);
}

void RowQueue::Wake() const {
  const std::uint64_t one = 1;
  [[maybe_unused]] const ssize_t ignored = ::write(wake_.Value(), &one, sizeof one);
}

void RowQueue::Say(StreamState state, std::string told) {
  const std::lock_guard lock(mutex_);
  if (state_ == StreamState::Stopped) return;
  state_ = state;
  told_ = std::move(told);
}

std::size_t RowQueue::MostRows(std::size_t columns) const {
  return kMostValues / (std::max(columns, rows_.y.size()) + 1);
}

bool RowQueue::HasRoom() const {
  const std::lock_guard lock(mutex_);
  return rows_.x.size() < MostRows(1) / 2;
}

void RowQueue::Add(const StreamRows& rows) {
  const std::lock_guard lock(mutex_);
  if (state_ == StreamState::Stopped) return;
  const std::size_t before = rows_.x.size();
  const std::size_t most = MostRows(rows.y.size());
  const std::size_t taken = std::min(rows.x.size(), most - std::min(most, before));
  WidenTo(rows_, rows.y.size());
  const auto end = static_cast<std::ptrdiff_t>(taken);
  rows_.x.insert(rows_.x.end(), rows.x.begin(), rows.x.begin() + end);
  for (std::size_t i = 0; i < rows_.y.size(); ++i) {
    if (i < rows.y.size()) {
      rows_.y[i].insert(rows_.y[i].end(), rows.y[i].begin(), rows.y[i].begin() + end);
    } else {
      rows_.y[i].resize(before + taken, kUndefined);
    }
  }
  AppendPlaces(rows_.breaks, rows.breaks, before, taken);
  AppendPlaces(rows_.begins, rows.begins, before, taken);
  rows_.lost += rows.lost + static_cast<std::int64_t>(rows.x.size() - taken);
  rows_.unreadable += rows.unreadable;
}

void RowQueue::Begin() {
  const std::lock_guard lock(mutex_);
  rows_ = {};
  state_ = StreamState::Running;
  told_.clear();
  paused_ = false;
}

void RowQueue::Pause() {
  const std::lock_guard lock(mutex_);
  paused_ = true;
  Wake();
}

void RowQueue::Resume() {
  const std::lock_guard lock(mutex_);
  paused_ = false;
  Wake();
}

void RowQueue::Stop() {
  const std::lock_guard lock(mutex_);
  state_ = StreamState::Stopped;
  told_ = "Stopped";
  paused_ = false;
  Wake();
}

/// What has ended is not paused.
bool RowQueue::IsPaused() const {
  return paused_ && (state_ == StreamState::Running || state_ == StreamState::Away);
}

StreamState RowQueue::State() const {
  const std::lock_guard lock(mutex_);
  return IsPaused() ? StreamState::Paused : state_;
}

std::string RowQueue::Told() const {
  const std::lock_guard lock(mutex_);
  return IsPaused() ? "Paused" : told_;
}

StreamRows RowQueue::Take() {
  const std::lock_guard lock(mutex_);
  return std::exchange(rows_, {});
}

}  // namespace tarnwick
