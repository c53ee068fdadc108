#include "sources/follow/follow_stream.h"

#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include "base/error.h"
#include "data/import/source_place.h"
#include "data/packed/packing.h"
#include "data/series/data_series.h"
#include "sources/follow/followed_text.h"
#include "sources/follow/growing_file.h"
#include "sources/streams/described_rows.h"
#include "sources/streams/threaded_stream.h"

namespace tarnwick {
namespace {

constexpr int kPollMs = 100;
constexpr std::size_t kLongestLine = std::size_t{1} << 20;

class FollowedFile final : public RowProducer {
 public:
  explicit FollowedFile(const TDSInfo& info)
      : path_(SourcePlace(info)), name_(path_.filename().string()), file_(path_), text_(info) {}

  void Run(RowQueue& queue) override {
    file_.Reopen();
    BeginAnew(queue);
    told_ = "Following " + name_;
    while (!queue.Stopped() && !text_.IsDone()) {
      const bool waits = queue.Paused() || !queue.HasRoom();
      if (waits || !ReadOn(queue)) queue.Sleep(kPollMs);
    }
    if (text_.IsDone()) {
      queue.Say(StreamState::Stopped, "All rows of " + name_ + " that were chosen are there");
    }
  }

 private:
  /// False when nothing came.
  bool ReadOn(RowQueue& queue) {
    const GrowingFile::Came came = file_.Read(pending_);
    switch (came) {
      case GrowingFile::Came::Nothing:
        away_ = away_ || !file_.IsThere();
        break;
      case GrowingFile::Came::Bytes:
        TakeLines(queue);
        break;
      case GrowingFile::Came::Rewritten:
        BeginAnew(queue);
        told_ = name_ + " was cut short or written anew, and is followed from its beginning";
        break;
      case GrowingFile::Came::NewFile:
        TakeRest(queue);
        BeginText();
        told_ = "Another file took the place of " + name_ + ", which is followed now";
        break;
    }
    if (file_.IsThere()) {
      queue.Say(StreamState::Running, told_);
    } else {
      queue.Say(StreamState::Away, name_ + " is not there; it is looked for");
    }
    return came != GrowingFile::Came::Nothing;
  }

  void BeginText() {
    pending_.clear();
    passing_ = false;
    at_beginning_ = true;
    text_.BeginText();
  }

  void BeginAnew(RowQueue& queue) {
    BeginText();
    text_.BeginAnew();
    StreamRows none;
    none.begins = {0};
    queue.Add(none);
  }

  void TakeLines(RowQueue& queue) {
    if (std::exchange(at_beginning_, false)) RequirePlainText();
    StreamRows rows;
    std::size_t end = pending_.rfind('\n') + 1;
    if (end > 0 && std::exchange(passing_, false)) {
      const std::size_t passed = pending_.find('\n') + 1;
      pending_.erase(0, passed);
      end -= passed;
      ++rows.unreadable;
    }
    text_.Take(pending_.substr(0, end), rows);
    pending_.erase(0, end);
    if (pending_.size() > kLongestLine) {
      passing_ = true;
      pending_.clear();
    }
    if (!rows.x.empty() && std::exchange(away_, false)) rows.breaks.insert(rows.breaks.begin(), 0);
    queue.Add(rows);
  }

  /// Nobody writes to the end of the last line any more.
  void TakeRest(RowQueue& queue) {
    const bool away = std::exchange(away_, false);
    if (!pending_.empty()) pending_ += '\n';
    TakeLines(queue);
    away_ = away;
  }

  void RequirePlainText() const {
    const bool wide = pending_.starts_with("\xFF\xFE") || pending_.starts_with("\xFE\xFF");
    if (wide) throw FileError("UTF-16 cannot be followed, UTF-8 can", path_.string(), "");
    if (PackingOf(pending_) != nullptr)
      throw FileError("A packed file cannot be followed", path_.string(), "");
  }

  std::filesystem::path path_;
  std::string name_;
  GrowingFile file_;
  FollowedText text_;
  std::string pending_;       // from the beginning of a line on
  bool passing_ = false;      // the rest of a line that is too long
  bool at_beginning_ = true;  // of a text
  bool away_ = false;         // since the last row
  std::string told_;
};

}  // namespace

StreamKind FollowedFileKind() {
  return {
      .kind = DataSourceKind::Text,
      .goes_on = [](const TDSInfo& info) { return info.Follow; },
      .rereads = true,
      .shares = &ReadAlike,
      .open = [](const TDataSeries& series) -> std::unique_ptr<RowStream> {
        return std::make_unique<ThreadedStream>(std::make_unique<FollowedFile>(series.Source()));
      },
      .x_is_moment = [](const TDSInfo&) { return false; },  // the first rows have told
      .columns = &DescribedColumns};
}

}  // namespace tarnwick
