#include "sources/streams/threaded_stream.h"

#include <system_error>
#include <utility>

#include "base/error.h"

namespace tarnwick {

ThreadedStream::~ThreadedStream() {
  queue_.Stop();
  Join();
}

void ThreadedStream::Start() {
  if (queue_.State() == StreamState::Paused) return queue_.Resume();
  queue_.Stop();
  Join();
  queue_.Sleep(0);
  queue_.Begin();
  try {
    thread_ = std::thread([this] {
      try {
        producer_->Run(queue_);
      } catch (const Error& error) {
        queue_.Say(StreamState::Failed, error.what());
      }
    });
  } catch (const std::system_error&) {
    queue_.Say(StreamState::Failed, "The system lets no more be done at once");
  }
}

void ThreadedStream::Join() {
  if (thread_.joinable()) thread_.join();
}

}  // namespace tarnwick
