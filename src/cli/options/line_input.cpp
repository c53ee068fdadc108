#include "cli/options/line_input.h"

#include <chrono>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "base/error.h"
#include "base/number_text.h"
#include "cli/options/command.h"
#include "cli/options/option_parser.h"
#include "cli/output/interrupt.h"
#include "cli/output/output.h"
#include "graph/files/waiting_series.h"
#include "sources/lines/line_source.h"
#include "sources/stream_kinds.h"

namespace tarnwick::cli {
namespace {

using Clock = std::chrono::steady_clock;
constexpr auto kPause = std::chrono::milliseconds(20);

TDSInfo SourceOf(const LineArguments& arguments, const ImportArguments& import) {
  const ImportOptions options = ToImportOptions(import);
  TDSInfo info = LineSourceInfo(arguments.place);
  if (!import.x_column.empty()) info.XDataColumn = import.x_column;
  if (!import.y_columns.empty()) info.YDataColumn = import.y_columns.front();
  info.XFormat = options.x_format.value_or(info.XFormat);
  info.YFormat = options.y_format.value_or(info.YFormat);
  info.TextSeparators = options.separators.value_or(info.TextSeparators);
  info.CommentMarks = options.comment_marks.value_or(info.CommentMarks);
  info.MissingValues = options.missing.value_or(info.MissingValues);
  info.KeepPoints = arguments.keep.value_or(0);
  return info;
}

/// The DataSets of a stream, made as its columns show.
class Reading {
 public:
  Reading(const LineArguments& arguments, const ImportArguments& import, TxyGraph& graph)
      : arguments_(arguments),
        names_(import.y_columns),
        graph_(graph),
        source_(SourceOf(arguments, import)),
        kind_(*StreamOf(source_)) {
    Add(source_.YDataColumn);
    for (std::size_t i = 1; i < names_.size(); ++i) Add(names_[i]);
    stream_ = kind_.open(graph_.Series(0));
  }

  void Run() {
    const InterruptCaught interrupt;
    const auto end = Clock::now() + std::chrono::duration<double>(arguments_.seconds.value_or(0));
    stream_->Start();
    while (!interrupt.Asked() && !(arguments_.seconds && Clock::now() >= end)) {
      const StreamState state = stream_->State();
      Take();
      if (state == StreamState::Failed || (state == StreamState::Away && rows_ > 0)) break;
      std::this_thread::sleep_for(kPause);
    }
    told_ = stream_->Told();
    stream_->Stop();
    Take();
    if (rows_ == 0) throw Error("Nothing came: " + told_);
  }

  std::string Note() const {
    std::string note = Counted(rows_, "row") + " came";
    if (lost_ > 0) note += "; " + Counted(lost_, "row") + " came too fast and got lost";
    if (unreadable_ > 0) note += "; " + Counted(unreadable_, "line") + " held no numbers";
    return note + '.';
  }

 private:
  void Add(const std::string& y) {
    TDSInfo info = source_;
    info.YDataColumn = y;
    kind_.columns(info);
    AddWaitingSeries(graph_, info, y,
                     kind_.x_is_moment(info) ? WaitingX::Moments : WaitingX::Numbers);
  }

  void Take() {
    const StreamRows rows = stream_->Take();
    rows_ += static_cast<std::int64_t>(rows.x.size());
    lost_ += rows.lost;
    unreadable_ += rows.unreadable;
    while (names_.empty() && graph_.SeriesCount() < rows.y.size()) {
      Add(kind_.y_name(graph_.SeriesCount()));
    }
    for (std::size_t i = 0; i < graph_.SeriesCount(); ++i) {
      TSeries& series = graph_.Series(i);
      AppendRows(series, rows, kind_.columns(series.Source()));
    }
  }

  const LineArguments& arguments_;
  const std::vector<std::string>& names_;
  TxyGraph& graph_;
  TDSInfo source_;
  const StreamKind& kind_;
  std::unique_ptr<RowStream> stream_;
  std::string told_;
  std::int64_t rows_ = 0;
  std::int64_t lost_ = 0;
  std::int64_t unreadable_ = 0;
};

}  // namespace

void AddLineOptions(Command& command, LineArguments& arguments) {
  const char* group = "Reading lines as they come";
  command
      .Add("--lines", arguments.place,
           "Instead of FILE: pipe:FILE, tcp:HOST:PORT, listen:PORT, listen:ADDRESS:PORT or "
           "serial:DEVICE?baud=9600")
      .Group(group);
  command
      .Add("--for", arguments.seconds,
           "Seconds to read; default: until the source ends. Ctrl+C ends it, too, and keeps what "
           "came")
      .Group(group)
      .Check(kPositiveNumber);
  command.Add("--keep", arguments.keep, "Only the last so many points")
      .Group(group)
      .Check(kPositiveNumber);
}

InputGraph ReadLines(const LineArguments& arguments, const ImportArguments& import,
                     Output& output) {
  InputGraph input;
  input.from_data = true;
  input.graph = std::make_unique<TxyGraph>();
  Reading reading(arguments, import, *input.graph);
  reading.Run();
  output.Note(reading.Note());
  return input;
}

}  // namespace tarnwick::cli
