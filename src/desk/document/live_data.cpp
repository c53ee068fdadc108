#include "desk/document/live_data.h"

#include <algorithm>
#include <utility>

#include "base/error.h"
#include "desk/document/document.h"
#include "desk/document/live_feed.h"
#include "graph/series_of_whole.h"

namespace tarnwick {

LiveData::LiveData(Document& document) : document_(document) {}

LiveData::~LiveData() = default;

bool LiveData::HasSources() const {
  return std::ranges::any_of(SeriesOfWhole(document_.WholeGraph()), [](const TSeries* series) {
    return StreamOf(series->Source()) != nullptr;
  });
}

void LiveData::Start() {
  const std::vector<TSeries*> all = SeriesOfWhole(document_.WholeGraph());
  StartOf({all.begin(), all.end()});
}

void LiveData::StartOf(const std::vector<const TSeries*>& series) {
  DropUnused();
  std::string trouble;
  for (const TSeries* const one : series) {
    const StreamKind* const kind = StreamOf(one->Source());
    const bool fed =
        std::ranges::any_of(feeds_, [one](const auto& feed) { return feed->Feeds(one->Source()); });
    if (kind == nullptr || fed) continue;
    try {
      feeds_.push_back(std::make_unique<LiveFeed>(document_, *kind, *one));
      connect(feeds_.back().get(), &LiveFeed::told, this, &LiveData::FollowFeeds);
    } catch (const Error& error) {
      if (trouble.empty()) trouble = error.what();
    }
  }
  for (const auto& feed : feeds_) {
    const bool wanted = std::ranges::any_of(
        series, [&feed](const TSeries* one) { return feed->Feeds(one->Source()); });
    const bool goes = feed->State() == StreamState::Running || feed->State() == StreamState::Away;
    if (wanted && !goes) feed->Start();
  }
  TellState();
  if (!trouble.empty()) throw Error(trouble);
}

void LiveData::Pause() {
  for (const auto& feed : feeds_) {
    if (feed->State() == StreamState::Running || feed->State() == StreamState::Away) feed->Pause();
  }
  TellState();
}

void LiveData::Stop() {
  for (const auto& feed : feeds_) feed->Stop();
  DropUnused();
}

StreamState LiveData::State() const {
  using enum StreamState;
  for (const StreamState state : {Failed, Away, Running, Paused}) {
    if (std::ranges::any_of(feeds_, [state](const auto& feed) { return feed->State() == state; }))
      return state;
  }
  return Stopped;
}

std::vector<std::string> LiveData::Texts() const {
  std::vector<std::string> texts;
  for (const auto& feed : feeds_) texts.push_back(feed->Text());
  return texts;
}

void LiveData::FollowReading() {
  for (const auto& feed : feeds_) feed->FollowReading();
}

void LiveData::DropUnused() {
  const std::vector<TSeries*> all = SeriesOfWhole(document_.WholeGraph());
  std::erase_if(feeds_, [&all](const auto& feed) {
    return std::ranges::none_of(
        all, [&feed](const TSeries* series) { return feed->Feeds(series->Source()); });
  });
  TellState();
}

/// Commands look at the state alone: rows that come change nothing of what they can do.
void LiveData::FollowFeeds() {
  if (State() != told_) return TellState();
  emit changed();
}

/// Commands can do something else now.
void LiveData::TellState() {
  told_ = State();
  emit changed();
  emit document_.stateChanged();
}

}  // namespace tarnwick
