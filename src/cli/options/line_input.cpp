#include "cli/options/line_input.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "base/error.h"
#include "cli/options/command.h"
#include "cli/options/option_parser.h"
#include "cli/output/interrupt.h"
#include "cli/output/output.h"
#include "graph/files/waiting_series.h"
#include "sources/lines/line_source.h"
#include "sources/stream_kinds.h"
#include "sources/streams/came_rows.h"

namespace tarnwick::cli {
namespace {

using Clock = std::chrono::steady_clock;
constexpr auto kPause = std::chrono::milliseconds(20);

TDSInfo SourceOf(const LineArguments& arguments, const ImportArguments& import) {
  const ImportOptions options = ToImportOptions(import);
  TDSInfo info = ReadOption([&] { return LineSourceInfo(arguments.place); });
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

/// Calls `take` until it answers that nothing more comes, the time is over or Ctrl+C is pressed.
void TakeUntilEnd(const LineArguments& arguments, const std::function<bool()>& take) {
  const InterruptCaught interrupt;
  const auto end = Clock::now() + std::chrono::duration<double>(arguments.seconds.value_or(0));
  while (!interrupt.Asked() && !(arguments.seconds && Clock::now() >= end) && take()) {
    std::this_thread::sleep_for(kPause);
  }
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

  void Run(Output& output) {
    stream_->Start();
    bool told_of_waiting = arguments_.seconds.has_value();
    TakeUntilEnd(arguments_, [&] {
      const StreamState state = stream_->State();
      Take();
      if (state == StreamState::Away && came_.rows == 0 && !std::exchange(told_of_waiting, true)) {
        output.Note(stream_->Told() + " (Ctrl+C ends it).");
        output.TellNotes();  // who waits reads it now
      }
      return state != StreamState::Failed && (state != StreamState::Away || came_.rows == 0);
    });
    const std::string told = stream_->Told();
    stream_->Stop();
    Take();
    if (came_.rows == 0) throw Error("Nothing came: " + told);
  }

  std::string Note() const { return came_.Text(kind_.piece) + '.'; }

 private:
  void Add(const std::string& y) {
    TDSInfo info = source_;
    info.YDataColumn = y;
    kind_.columns(info);
    AddWaitingSeries(graph_, info, y,
                     kind_.x_is_moment(info) ? XMeaning::Moments : XMeaning::Numbers);
  }

  void Take() {
    const StreamRows rows = stream_->Take();
    came_.Count(rows);
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
  CameRows came_;
};

/// DataSets that one stream brings more rows for.
struct Fed {
  const StreamKind* kind = nullptr;
  std::vector<TSeries*> series;
  std::unique_ptr<RowStream> stream;

  bool Feeds(const TDSInfo& info) const {
    return info.DataSource == kind->kind && kind->shares(series.front()->Source(), info);
  }
  void Take(CameRows& came) const {
    const StreamRows rows = stream->Take();
    came.Count(rows);
    for (TSeries* const one : series) AppendRows(*one, rows, kind->columns(one->Source()));
  }
};

std::vector<Fed> StreamsOf(TxyGraph& graph) {
  std::vector<Fed> all;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    TSeries& series = graph.Series(i);
    const StreamKind* const kind = StreamOf(series.Source());
    if (kind == nullptr) continue;
    const auto known =
        std::ranges::find_if(all, [&](const Fed& fed) { return fed.Feeds(series.Source()); });
    if (known != all.end()) {
      known->series.push_back(&series);
    } else {
      all.push_back({kind, {&series}, kind->open(series)});
    }
  }
  return all;
}

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
           "Seconds to read lines, or new values of links; default: until the source ends. Ctrl+C "
           "ends it, too, and keeps what came")
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
  reading.Run(output);
  output.Note(reading.Note());
  return input;
}

void ReadOn(InputGraph& input, const LineArguments& arguments, Output& output) {
  for (std::size_t i = 0; i < input.graph->SeriesCount(); ++i) {
    input.graph->Series(i).Source().KeepPoints = arguments.keep.value_or(0);
  }
  const std::vector<Fed> all = StreamsOf(*input.graph);
  CameRows came;
  for (const Fed& fed : all) fed.stream->Start();
  TakeUntilEnd(arguments, [&] {
    for (const Fed& fed : all) fed.Take(came);
    return std::ranges::any_of(
        all, [](const Fed& fed) { return fed.stream->State() != StreamState::Failed; });
  });
  for (const Fed& fed : all) {
    if (fed.stream->State() == StreamState::Failed) throw Error(fed.stream->Told());
    fed.stream->Stop();
    fed.Take(came);
  }
  if (!all.empty()) output.Note(came.Text(all.front().kind->piece) + '.');
}

}  // namespace tarnwick::cli
