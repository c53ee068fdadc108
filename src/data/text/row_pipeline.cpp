#include "data/text/row_pipeline.h"

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace tarnwick {
namespace {

constexpr std::size_t kBlockBytes =
    256 * 1024;  // text and values of a block stay in the second cache
constexpr std::size_t kBytesWorthThreads = 4 << 20;  // below this a thread costs more than it saves
constexpr int kMostThreads = 4;                      // beyond, the consumer is what is waited for
constexpr std::size_t kSlotsPerThread = 4;

struct Slot {
  RowBlock block;
  bool ready = false;
};

/// Blocks are taken by number, parsed into a ring of slots by whichever thread is free, and consumed in order. A slot is
/// touched outside the lock only by the thread that took its number, or, once ready, by the consumer.
class BlockReader {
 public:
  BlockReader(std::string_view text, const TextLayout& layout,
              std::span<const ColumnRequest> requests, int threads)
      : text_(text),
        layout_(layout),
        requests_(requests),
        blocks_((text.size() + kBlockBytes - 1) / kBlockBytes),
        slots_(threads == 1 ? 1 : kSlotsPerThread * static_cast<std::size_t>(threads)) {
    for (int i = 1; i < threads; ++i) workers_.emplace_back([this] { Work(); });
  }

  ~BlockReader() {
    {
      const std::lock_guard lock(mutex_);
      stopped_ = true;
    }
    changed_.notify_all();
  }

  void Run(const BlockConsumer& consume) {
    for (; consumed_ < blocks_; Release()) {
      RowBlock& block = AwaitNext().block;
      if (block.text.empty()) continue;  // a line that began before is longer than the block
      block.first_row = 1 + rows_;
      block.first_line = lines_;
      CarryBlanks(block);
      rows_ += block.rows;
      lines_ += block.lines;
      if (!consume(block)) return;
    }
  }

 private:
  bool MayTake() const { return taken_ < blocks_ && taken_ < consumed_ + slots_.size(); }

  /// Takes a number and reads its block. Called and left with the lock held.
  void ReadOne(std::unique_lock<std::mutex>& lock) {
    const std::size_t number = taken_++;
    Slot& slot = slots_[number % slots_.size()];
    lock.unlock();
    const std::size_t from = number * kBlockBytes;
    const std::size_t to = std::min(from + kBlockBytes, text_.size());
    ReadRowBlock(LinesBeginningIn(text_, from, to, layout_.line_end), layout_, requests_,
                 slot.block);
    lock.lock();
    slot.ready = true;
    changed_.notify_all();
  }

  void Work() {
    std::unique_lock lock(mutex_);
    try {
      while (true) {
        changed_.wait(lock, [this] { return stopped_ || taken_ == blocks_ || MayTake(); });
        if (stopped_ || taken_ == blocks_) return;
        ReadOne(lock);
      }
    } catch (...) {
      // Carried to the caller's thread, where AwaitNext throws it again.
      if (!lock.owns_lock()) lock.lock();
      failure_ = std::current_exception();
      stopped_ = true;
      changed_.notify_all();
    }
  }

  /// Empty lines at the end of a block lie before the first row of the next.
  void CarryBlanks(RowBlock& block) {
    if (block.rows == 0) {
      blanks_.lines += block.blanks_behind.lines;
      blanks_.remark = blanks_.remark || block.blanks_behind.remark;
      return;
    }
    if (blanks_.lines > 0 || blanks_.remark) {
      if (block.blanks.empty() || block.blanks.front().row != 0) {
        block.blanks.insert(block.blanks.begin(), BlankLines{});
      }
      BlankLines& first = block.blanks.front();
      first.lines += blanks_.lines;
      first.remark = first.remark || blanks_.remark;
    }
    blanks_ = block.blanks_behind;
  }

  Slot& AwaitNext() {
    std::unique_lock lock(mutex_);
    Slot& slot = slots_[consumed_ % slots_.size()];
    while (!slot.ready) {
      if (failure_) std::rethrow_exception(failure_);
      if (MayTake()) {
        ReadOne(lock);
      } else {
        changed_.wait(lock);
      }
    }
    return slot;
  }

  void Release() {
    {
      const std::lock_guard lock(mutex_);
      slots_[consumed_ % slots_.size()].ready = false;
      ++consumed_;
    }
    changed_.notify_all();
  }

  std::string_view text_;
  const TextLayout& layout_;
  std::span<const ColumnRequest> requests_;
  const std::size_t blocks_;
  std::vector<Slot> slots_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::size_t taken_ = 0;
  std::size_t consumed_ = 0;
  std::int64_t rows_ = 0;  // of the blocks consumed, and lines
  std::int64_t lines_ = 0;
  BlankLines blanks_;  // behind the rows consumed
  bool stopped_ = false;
  std::exception_ptr failure_;
  std::vector<std::jthread> workers_;  // last: ended before what they use
};

int ThreadsFor(std::size_t bytes, int wanted) {
  if (wanted == 0) wanted = static_cast<int>(std::thread::hardware_concurrency());
  return bytes < kBytesWorthThreads ? 1 : std::clamp(wanted, 1, kMostThreads);
}

}  // namespace

void ReadRowBlocks(std::string_view text, const TextLayout& layout,
                   std::span<const ColumnRequest> requests, int threads,
                   const BlockConsumer& consume) {
  if (text.empty()) return;
  BlockReader(text, layout, requests, ThreadsFor(text.size(), threads)).Run(consume);
}

}  // namespace tarnwick
