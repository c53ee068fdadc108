#include "sources/follow/follow_stream.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "data/import/source_place.h"
#include "data/packed/packing.h"
#include "data/series/data_series.h"
#include "sources/follow/followed_text.h"
#include "sources/follow/growing_file.h"
#include "sources/follow/lines_read.h"
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
    Begin(queue);
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
        ReadAgain(name_ +
                  " was cut short or written anew: what came before stays, and its new rows "
                  "are added");
        cut_ = true;
        break;
      case GrowingFile::Came::NewFile:
        TakeRest(queue);
        ReadAgain("Another file took the place of " + name_ + ", which is followed now");
        break;
    }
    if (file_.IsThere()) {
      queue.Say(StreamState::Running, told_);
    } else {
      queue.Say(StreamState::Away, name_ + " is not there; it is looked for");
    }
    return came != GrowingFile::Came::Nothing;
  }

  void Begin(RowQueue& queue) {
    BeginText();
    text_.BeginAnew();
    StreamRows none;
    none.begins = {0};
    queue.Add(none);
  }

  /// A text of which nothing is known.
  void BeginText() {
    GoToBeginning();
    read_ = {};
    text_.BeginText();
    reading_again_ = cut_ = false;
  }

  void GoToBeginning() {
    pending_.clear();
    passing_ = false;
    at_beginning_ = true;
  }

  /// Of another text at the place the rows are taken behind those that it has in common with what was read.
  void ReadAgain(std::string told) {
    told_ = std::move(told);
    if (!text_.KnowsColumns()) return BeginText();
    GoToBeginning();
    read_.Restart();
    reading_again_ = true;
  }

  void TakeLines(RowQueue& queue) {
    if (std::exchange(at_beginning_, false)) RequirePlainText();
    StreamRows rows;
    std::size_t end = pending_.rfind('\n') + 1;
    if (end > 0 && std::exchange(passing_, false)) {
      const std::size_t passed = pending_.find('\n') + 1;
      pending_.erase(0, passed);
      end -= passed;
      TakeNew("\n", rows);  // stands for it
      if (!reading_again_) ++rows.unreadable;
    }
    const std::string lines = pending_.substr(0, end);
    pending_.erase(0, end);
    if (pending_.size() > kLongestLine) {
      passing_ = true;
      pending_.clear();
    }
    TakeNew(lines, rows);
    if (!rows.x.empty() && std::exchange(away_, false)) rows.breaks.insert(rows.breaks.begin(), 0);
    queue.Add(rows);
  }

  void TakeNew(std::string_view lines, StreamRows& rows) {
    if (reading_again_) {
      lines.remove_prefix(read_.PassKnown(lines));
      if (read_.AtEnd()) {
        told_ = "Following " + name_;
      } else if (lines.empty()) {
        return;
      } else if (read_.Count() < text_.HeaderLines()) {
        return ReadFromNewHeader();
      } else {
        LeaveKnownLines();
      }
      reading_again_ = cut_ = false;
    }
    read_.Add(lines);
    text_.Take(std::string(lines), rows);
  }

  void LeaveKnownLines() {
    away_ = away_ || cut_;
    const std::size_t same = read_.Count() - text_.HeaderLines();
    if (same == 0) return;
    told_ += "; it begins with " + Counted(static_cast<std::int64_t>(same), "line") +
             " that it had before, not added again";
  }

  void ReadFromNewHeader() {
    away_ = away_ || cut_;
    BeginText();
    file_.Reopen();
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
  LinesRead read_;
  bool reading_again_ = false;  // what was read before, or another text
  bool cut_ = false;            // and since then no row came
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
