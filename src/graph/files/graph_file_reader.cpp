#include "graph/files/graph_file_reader.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/error.h"
#include "graph/appearance_fields.h"
#include "graph/axes/axis_fields.h"
#include "graph/files/graph_file_writer.h"
#include "stream/stream_error.h"

namespace tarnwick {
namespace {

constexpr std::string_view kMagicStart = "xyvk";
constexpr char kMagicMajor = '0';

constexpr std::size_t kSmallestSection = 6;  // the end mark: a tag of five bytes and false
constexpr std::size_t kSmallestDataSet = 2 * kSmallestSection + 17;  // two sections, a point block
constexpr std::size_t kSmallestGraph = 7 + 6 * kSmallestSection + 2 * 5 + 4;

/// A position in the file as its reader moves on: which part of which child graph.
struct Place {
  std::string part;
  std::vector<std::size_t> children;  ///< from 1, outermost first

  std::string Text(std::size_t position) const {
    std::string text = "byte " + std::to_string(position) + ", " + part;
    for (std::size_t i = 0; i < children.size(); ++i) {
      text += (i == 0 ? " of child graph " : ".") + std::to_string(children[i]);
    }
    return text;
  }
};

class Reader {
 public:
  explicit Reader(std::string_view bytes) : values_(bytes) {}

  GraphState Read() { return ReadGraph(); }
  std::string PlaceText() const { return place_.Text(values_.Position()); }

 private:
  struct Counts {
    std::int32_t series = 0;
    std::int32_t marks = 0;
  };

  GraphState ReadGraph() {
    GraphState state;
    const Counts counts = ReadHead(state);
    if (counts.series > 0) state.series = ReadDataSets(counts.series);
    if (counts.marks > 0) state.marks = ReadMarks(counts.marks);
    ReadChildren(state);
    SettleIndex(state.appearance.current_series_index, state.series.size());
    SettleIndex(state.appearance.x_axis_series_index, state.series.size());
    return state;
  }

  Counts ReadHead(GraphState& state) {
    SectionReader reader(values_);
    ReadMagic(reader);
    place_.part = "Appearance section";
    ReadSection(reader, AppearanceFields(), state.appearance);
    place_.part = "Dimensions section";
    ReadSection(reader, DimensionsFields(), state.dimensions);
    for (std::size_t i = 0; i < state.axes.size(); ++i) {
      place_.part = "Axis section " + std::to_string(i + 1);
      ReadSection(reader, AxisFields(), state.axes[i]);
    }
    place_.part = "Legend section";
    ReadSection(reader, LegendFields(), state.legend);
    Counts counts;
    place_.part = "count of DataSets";
    counts.series = reader.ReadCount();
    place_.part = "count of marks";
    counts.marks = reader.ReadCount();
    // Both counts are judged when both are known: the smallest parts must fit together.
    CheckCount(counts.series, kSmallestDataSet);
    CheckCount(counts.marks, kSmallestSection);
    return counts;
  }

  void ReadMagic(SectionReader& reader) {
    place_.part = "version text";
    std::string magic;
    try {
      magic = reader.ReadPlainString();
    } catch (const StreamError&) {
      throw Error("Not a valid graph file");  // not even a text stands there
    }
    if (!magic.starts_with(kMagicStart)) throw Error("Not a valid graph file");
    if (magic.size() <= kMagicStart.size() || magic[kMagicStart.size()] != kMagicMajor) {
      throw Error("Wrong Graph version");
    }
  }

  void CheckCount(std::int32_t count, std::size_t smallest) const {
    if (count < 0) throw StreamError(kUnexpectedValue);
    if (static_cast<std::size_t>(count) > values_.Left() / smallest) {
      throw StreamError(kUnexpectedEnd);
    }
  }

  std::vector<SeriesState> ReadDataSets(std::int32_t count) {
    if (count <= 0) throw Error(kDataSetFilingError);
    std::vector<SeriesState> all;
    SectionReader reader(values_);
    for (std::int32_t i = 0; i < count; ++i) {
      place_.part = "Series section " + std::to_string(i + 1);
      SeriesState series;
      ReadSection(reader, SeriesFields(), series.style);
      place_.part = "DataSet section " + std::to_string(i + 1);
      TDataSeries data;
      ReadDataSeries(reader, data);
      data.Source().active = data.Source().DataSource != DataSourceKind::Manual;
      series.data = data.State();
      all.push_back(std::move(series));
    }
    return all;
  }

  MarkList ReadMarks(std::int32_t count) {
    if (count <= 0) throw Error(kMarkFilingError);
    std::vector<Mark> marks;
    SectionReader reader(values_);
    for (std::int32_t i = 0; i < count; ++i) {
      place_.part = "Mark section " + std::to_string(i + 1);
      ReadSection(reader, MarkFields(), marks.emplace_back());
    }
    // Sorted beforehand, each mark is appended to the list. Of equal IDs the last one in the file stays.
    std::stable_sort(marks.begin(), marks.end(),
                     [](const Mark& left, const Mark& right) { return left.id < right.id; });
    MarkList list;
    for (const Mark& mark : marks) list.SetMark(mark);
    return list;
  }

  void ReadChildren(GraphState& state) {
    place_.part = "count of child graphs";
    const std::int32_t count = values_.ReadRawInteger();
    CheckCount(count, kSmallestGraph);
    if (count > 0 && place_.children.size() >= kDeepestChild) throw Error(kNestedTooDeep);
    for (std::int32_t i = 0; i < count; ++i) {
      place_.children.push_back(static_cast<std::size_t>(i) + 1);
      state.children.push_back(std::make_shared<const GraphState>(ReadGraph()));
      place_.children.pop_back();
    }
  }

  static void SettleIndex(std::int32_t& index, std::size_t count) {
    if (index < 0 || static_cast<std::size_t>(index) >= count) index = -1;
  }

  ValueReader values_;
  Place place_;
};

}  // namespace

GraphState ReadGraphState(std::string_view bytes, std::string_view file_name) {
  Reader reader(bytes);
  try {
    return reader.Read();
  } catch (const Error& error) {
    throw FileError(error.what(), file_name, reader.PlaceText());
  }
}

}  // namespace tarnwick
