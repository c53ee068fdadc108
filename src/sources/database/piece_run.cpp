#include "sources/database/piece_run.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

namespace tarnwick {
namespace {

constexpr std::size_t kMostThreads = 8;

}  // namespace

std::size_t PieceThreads() {
  return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kMostThreads);
}

void RunPieces(std::size_t pieces, const std::function<void(std::size_t piece)>& work,
               const std::function<void()>& between) {
  std::atomic<std::size_t> next = 0;
  std::mutex mutex;
  std::exception_ptr trouble;
  const auto run = [&](const std::function<void()>& behind) {
    try {
      for (std::size_t piece = next++; piece < pieces; piece = next++) {
        work(piece);
        if (behind) behind();
      }
    } catch (...) {
      next = pieces;
      const std::lock_guard lock(mutex);
      if (!trouble) trouble = std::current_exception();
    }
  };
  std::vector<std::future<void>> others;
  for (std::size_t i = 1; i < std::min(PieceThreads(), pieces); ++i) {
    others.push_back(std::async(std::launch::async, run, nullptr));
  }
  run(between);
  for (std::future<void>& other : others) other.wait();
  if (trouble) std::rethrow_exception(trouble);
}

}  // namespace tarnwick
