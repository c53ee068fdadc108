#include "app/display/close_display_thread.h"

#include <chrono>
#include <utility>

#include "results/fit_texts.h"

namespace tarnwick {
namespace {

constexpr std::chrono::milliseconds kShownAtLeast{100};

std::vector<std::string> TextsOf(const std::vector<DisplayedValue>& values) {
  std::vector<std::string> texts;
  texts.reserve(values.size());
  for (const DisplayedValue& one : values) {
    FittedParameter parameter;
    parameter.settings.Value = one.value;
    parameter.error = one.error;
    texts.push_back(ValueText(parameter));
  }
  return texts;
}

}  // namespace

TCloseDisplayThread::TCloseDisplayThread(Show show)
    : show_(std::move(show)), thread_([this] { Work(); }) {}

TCloseDisplayThread::~TCloseDisplayThread() {
  {
    const std::lock_guard lock(critical_section_);
    ending_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

void TCloseDisplayThread::Put(DisplayedValues values) {
  {
    const std::lock_guard lock(critical_section_);
    values_ = std::move(values);
    waiting_ = true;
  }
  changed_.notify_one();
}

void TCloseDisplayThread::Work() {
  std::unique_lock lock(critical_section_);
  while (!ending_) {
    changed_.wait(lock, [this] { return waiting_ || ending_; });
    if (ending_) return;
    const DisplayedValues present = std::exchange(values_, {});
    waiting_ = false;
    lock.unlock();
    show_(TextsOf(present.values), present.version);
    lock.lock();
    changed_.wait_for(lock, kShownAtLeast, [this] { return ending_; });
  }
}

}  // namespace tarnwick
