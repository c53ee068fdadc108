// Graph files: what is written, that it reads back, and how damaged files are refused.
#include "graph/files/graph_file.h"
#include "data/points/point_columns.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "base/error.h"
#include "graph/appearance_fields.h"
#include "graph/axes/axis_fields.h"
#include "graph/files/graph_file_writer.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"
#include "stream/stream_error.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

/// Gives every field of a table a value of its own.
template <class Owner>
void FillFields(FieldTable<Owner> table, Owner& owner) {
  std::int32_t n = 0;
  for (const Field<Owner>& field : table) {
    ++n;
    FieldValue value = GetField(field, owner);
    if (auto* text = std::get_if<std::string>(&value)) *text = "field \u03bc " + std::to_string(n);
    if (auto* real = std::get_if<double>(&value)) *real = n + 0.1;
    if (auto* flag = std::get_if<bool>(&value)) *flag = !*flag;
    if (auto* color = std::get_if<Color>(&value)) color->value = 0x10203 * n;
    if (auto* font = std::get_if<Font>(&value)) *font = {"Serif", n, {n}, true, false, true, true};
    if (auto* integer = std::get_if<std::int32_t>(&value)) {
      *integer = std::min(std::max(n, field.allowed.min), field.allowed.max);
    }
    SetField(field, owner, value);
  }
}

void FillGraph(TxyGraph& graph, int children) {
  for (int i = 0; i < 2; ++i) {
    auto series = std::make_unique<TSeries>();
    FillFields<TDataSeries>(DataSeriesFields(), *series);
    series->SetRegressionType(RegressionType::None);
    series->SetDuplicatesAllowed(i == 0);
    series->SetAutoZero(false);
    series->SetNumericalTolerance(0);
    series->AddPoints(std::vector{1.0, 2.0, 2.0, 1e-300}, std::vector{0.1, -3.0, kUndefined, 1e9});
    SeriesStyle style;
    FillFields(SeriesFields(), style);
    style.visible = i == 0;
    series->SetStyle(style);
    graph.AddSeries(std::move(series));
  }
  Appearance appearance;
  FillFields(AppearanceFields(), appearance);
  appearance.min_steps = 6;
  appearance.max_steps = 40;
  appearance.current_series_index = 1;
  appearance.x_axis_series_index = -1;
  graph.SetAppearance(appearance);
  Dimensions dimensions;
  FillFields(DimensionsFields(), dimensions);
  graph.SetDimensions(dimensions);
  Legend legend;
  FillFields(LegendFields(), legend);
  graph.SetLegend(legend);
  for (const AxisId id : {AxisId::X, AxisId::Y, AxisId::Y2}) {
    AxisState axis = DefaultAxisState(id);
    FillFields(AxisFields(), axis);
    axis.LogScale = id == AxisId::Y2;
    axis.Min = 0.5;
    // What the graph would compute anew.
    axis.AutoSizing = axis.AutoStepping = axis.AdjustDecPlaces = axis.EnableAutoTitle = false;
    graph.Axis(id).SetState(axis);
  }
  Mark mark;
  FillFields(MarkFields(), mark);
  graph.Marks().SetMark(mark);
  graph.Marks().AddMark({});
  for (int i = 0; i < children; ++i) FillGraph(graph.AddChild(), i);
}

template <class Owner>
void ExpectFieldsEqual(FieldTable<Owner> table, const Owner& left, const Owner& right) {
  for (const Field<Owner>& field : table) {
    EXPECT_TRUE(SameValue(GetField(field, left), GetField(field, right)))
        << field.number << ' ' << field.key;
  }
}

void ExpectSameGraph(const TxyGraph& left, const TxyGraph& right) {
  ExpectFieldsEqual(AppearanceFields(), left.GetAppearance(), right.GetAppearance());
  ExpectFieldsEqual(DimensionsFields(), left.GetDimensions(), right.GetDimensions());
  ExpectFieldsEqual(LegendFields(), left.GetLegend(), right.GetLegend());
  for (const AxisId id : {AxisId::X, AxisId::Y, AxisId::Y2}) {
    ExpectFieldsEqual(AxisFields(), left.Axis(id).State(), right.Axis(id).State());
  }
  EXPECT_EQ(left.Marks().All(), right.Marks().All());
  ASSERT_EQ(left.SeriesCount(), right.SeriesCount());
  for (std::size_t i = 0; i < left.SeriesCount(); ++i) {
    EXPECT_EQ(left.Series(i).Style(), right.Series(i).Style());
    ExpectFieldsEqual<TDataSeries>(DataSeriesFields(), left.Series(i), right.Series(i));
    EXPECT_EQ(XValues(left.Series(i).Points()), XValues(right.Series(i).Points()));
    EXPECT_THAT(
        YValues(left.Series(i).Points()),
        ::testing::Pointwise(::testing::NanSensitiveDoubleEq(), YValues(right.Series(i).Points())));
  }
  ASSERT_EQ(left.Children().size(), right.Children().size());
  for (std::size_t i = 0; i < left.Children().size(); ++i) {
    ExpectSameGraph(*left.Children()[i], *right.Children()[i]);
  }
}

const char* const kEmptySection = "\6\3 0B\x8";

/// A graph whose six sections are empty, up to the raw count of children.
std::string Head(std::int32_t series = 0, std::int32_t marks = 0,
                 std::string_view magic = kGraphMagic) {
  std::string bytes;
  SectionWriter writer(bytes);
  writer.WritePlainString(magic);
  for (int i = 0; i < 6; ++i) bytes += kEmptySection;
  writer.WriteCount(series);
  writer.WriteCount(marks);
  return bytes;
}

std::string Raw(std::int32_t count) {
  std::string bytes;
  ValueWriter(bytes).WriteRawInteger(count);
  return bytes;
}

TEST(GraphFile, ReadsBackWhatItWrote) {
  TxyGraph graph;
  FillGraph(graph, 3);
  for (const WriterMode mode : {WriterMode::Typed, WriterMode::Text}) {
    const std::string bytes = EncodeGraph(graph, {WithPoints::Yes, mode});
    const auto loaded = DecodeGraph(bytes, "rich.tgr");
    ExpectSameGraph(graph, *loaded);
    EXPECT_TRUE(EncodeGraph(*loaded, {WithPoints::Yes, mode}) == bytes);
  }
  const auto plan = DecodeGraph(EncodeGraph(graph, {WithPoints::No}), "rich.ttp");
  EXPECT_EQ(plan->SeriesCount(), 2u);
  EXPECT_FALSE(HasPoints(*plan) || HasPoints(*plan->Children()[1]));
  EXPECT_EQ(plan->Series(0).Style(), graph.Series(0).Style());
}

TEST(GraphFile, WritesTheseBytes) {
  using namespace std::string_literals;
  TxyGraph graph;
  const std::string bytes = EncodeGraph(graph);
  EXPECT_THAT(bytes,
              StartsWith("\6\x9xyvk06.01\6\3"s + "99S\6\xA"s + "Appearance\6\3 1B\x8\6\3 2I\4"s));
  EXPECT_THAT(bytes, ::testing::EndsWith("\6\3 0B\x8\6\1I\2\0\6\1I\2\0\0\0\0\0"s));
  Mark mark;
  mark.id = 300;
  mark.x1 = 1;
  mark.caption = "M";
  graph.Marks().SetMark(mark);
  const std::string zero = "\5"s + std::string(10, '\0');
  EXPECT_THAT(
      EncodeGraph(graph),
      ::testing::EndsWith("\6\1I\2\0\6\1I\2\1\6\3"s + "99S\6\4Mark\6\3 1I\3\x2C\1\6\3 2D"s + "\5"s +
                          std::string(7, '\0') + "\x80\xFF\x3F"s + "\6\3 3D"s + zero + "\6\3 4D"s +
                          zero + "\6\3 5D"s + zero + "\6\3 6I\2\0\6\3 7S\6\1M\6\3 8I\2\0"s +
                          "\6\3 9I\2\0"s + kEmptySection + "\0\0\0\0"s));
}

struct BadFile {
  const char* what;
  std::string bytes;
  std::string text;
  const char* place;
};

TEST(GraphFile, RefusesBadFilesWithTextFileAndPlace) {
  using namespace std::string_literals;
  constexpr std::int32_t kMany = 2'000'000'000;
  const std::string many = "\4\0\x94\x35\x77"s;
  const std::string long_text = "\xC\0\x94\x35\x77"s;
  const std::string magic = Head().substr(0, 11);
  std::string deep;
  for (int i = 0; i < 1'000'000; ++i) deep += Head() + Raw(1);
  const BadFile rows[] = {
      {"empty", "", "Not a valid graph file", "byte 0, version text"},
      {"text", "time,value\n1,2\n", "Not a valid graph file", "byte 0, version text"},
      {"long magic", long_text + "xyvk0", "Not a valid graph file", "byte 0, version text"},
      {"other magic", Head(0, 0, "xyvw06.01") + Raw(0), "Not a valid graph file", "version text"},
      {"newer", Head(0, 0, "xyvk16.01") + Raw(0), "Wrong Graph version", "version text"},
      {"no version", Head(0, 0, "xyvk") + Raw(0), "Wrong Graph version", "version text"},
      {"endless title", magic + "\6\3" + "13S" + long_text, kUnexpectedEnd,
       "byte 16, Appearance section"},
      {"tag as value", magic + "\6\3 2Z", kConversionError, "Appearance section"},
      {"many DataSets", Head(kMany) + Raw(0), kUnexpectedEnd, "count of marks"},
      {"DataSets below none", Head(-1) + Raw(0), kUnexpectedValue, "count of marks"},
      {"many marks", Head(0, kMany) + Raw(0), kUnexpectedEnd, "count of marks"},
      {"rubbish as DataSet", Head(1) + std::string(40, '\6'), kConversionError, "Series section 1"},
      {"many points",
       Head(1) + kEmptySection + kEmptySection + "\6\3 1I" + many + "\6\3 2I\2\2\6\1D" + Raw(0),
       kUnexpectedEnd, "DataSet section 1"},
      {"no points", Head(1) + kEmptySection + kEmptySection + "\6\3 3I\2\0\6\3 2I\2\2\6\1D"s,
       kPointCountMissing, "DataSet section 1"},
      {"no counts", Head(), kUnexpectedEnd, "count of child graphs"},
      {"many children", Head() + Raw(kMany), kUnexpectedEnd, "count of child graphs"},
      {"fewer children", Head() + Raw(-1), kUnexpectedValue, "count of child graphs"},
      {"bad child", Head() + Raw(2) + Head() + Raw(1) + Head() + Raw(0) + std::string(60, 'x'),
       "Not a valid graph file", "version text of child graph 2"},
      {"deep", deep, kNestedTooDeep, "count of child graphs of child graph 1.1.1"},
  };
  for (const BadFile& row : rows) {
    SCOPED_TRACE(row.what);
    try {
      DecodeGraph(row.bytes, "dir/bad.tgr");
      ADD_FAILURE() << "was read";
    } catch (const FileError& error) {
      EXPECT_EQ(error.Text(), row.text);
      EXPECT_THAT(error.what(), StartsWith(row.text + ": dir/bad.tgr, byte "));
      EXPECT_THAT(error.what(), HasSubstr(row.place));
    }
  }
}

TEST(GraphFile, AcceptsWhatItDoesNotKnow) {
  std::string bytes;
  SectionWriter writer(bytes);
  writer.WritePlainString("xyvk05.99");
  writer.WriteString(70, "", "?");
  writer.WriteFont(71, "", {});
  writer.WriteFloat(72, "", 1);
  writer.WriteInteger(36, "", 7);
  writer.WriteInteger(35, "", -9);
  writer.WriteString(13, "", "kept");
  bytes += kEmptySection + Head().substr(11 + 6, 5 * 6);
  writer.WriteCount(1);
  writer.WriteCount(2);
  bytes += kEmptySection;
  writer.WriteInteger(9, "", 1);
  writer.WriteString(10, "", "gone/away.csv");
  bytes += kEmptySection;
  writer.WritePointBlockHeader(0);
  for (const std::int32_t id : {9, 4}) {
    writer.WriteInteger(1, "", id);
    bytes += kEmptySection;
  }
  const auto graph = DecodeGraph(bytes + Raw(0) + "anything behind", "old.tgr");
  EXPECT_EQ(graph->GetAppearance().title_of_graph, "kept");
  EXPECT_EQ(graph->CurrentSeries(), nullptr);
  EXPECT_EQ(XSource(*graph), nullptr);
  EXPECT_TRUE(graph->Series(0).Source().active);
  EXPECT_EQ(graph->Series(0).Source().DatasourceInfo, "gone/away.csv");
  EXPECT_EQ(graph->Marks().All().front().id, 4);
}

TEST(GraphFile, LoadsOrRefusesEveryDamagedFile) {
  TxyGraph graph;
  FillGraph(graph, 2);
  const std::string good = EncodeGraph(graph);
  std::size_t refused = 0;
  const auto decode = [&](const std::string& bytes) {
    try {
      DecodeGraph(bytes, "damaged.tgr");
    } catch (const FileError&) {
      ++refused;
    }
  };
  for (std::size_t i = 0; i < good.size(); ++i) {
    constexpr int kChanges[] = {0x01, 0x80, 0xFF};
    std::string bytes = good;
    bytes[i] = static_cast<char>(bytes[i] ^ kChanges[i % std::size(kChanges)]);
    decode(bytes);
  }
  EXPECT_GT(refused, good.size() / 3);
  refused = 0;
  for (std::size_t size = 0; size < good.size(); ++size) decode(good.substr(0, size));
  EXPECT_EQ(refused, good.size());
}

TEST(GraphFile, KeepsTheOldFileWhenSavingFails) {
  const testing::TemporaryFolder folder;
  const auto path = folder.Write("graph.tgr", "old");
  TxyGraph graph;
  TxyGraph* deepest = &graph;
  for (int i = 0; i <= kDeepestChild; ++i) deepest = &deepest->AddChild();
  EXPECT_THROW(SaveGraph(graph, path), Error);
  EXPECT_EQ(testing::ReadFile(path), "old");
  graph.DeleteChild(0);
  EXPECT_THROW(SaveGraph(graph, "/dev/full"), FileError);
  EXPECT_THROW(SaveGraph(graph, folder.File("gone/graph.tgr")), FileError);
  EXPECT_THROW(LoadGraph(folder.File("missing.tgr")), FileError);
  SaveGraph(graph, path);
  ExpectSameGraph(graph, *LoadGraph(path));
}

TEST(GraphFile, KeepsOneDataSetInAFileOfItsOwn) {
  const testing::TemporaryFolder folder;
  const auto path = folder.File("one.tds");
  TxyGraph graph;
  FillGraph(graph, 1);
  SaveDataSetFile(graph, 1, path);
  EXPECT_THROW(SaveDataSetFile(graph, 2, path), Error);
  const auto alone = LoadGraph(path);
  ASSERT_EQ(alone->SeriesCount(), 1u);
  EXPECT_EQ(alone->CurrentSeriesIndex(), 0);
  EXPECT_TRUE(alone->Marks().All().empty() && alone->Children().empty());

  TxyGraph target;
  for (int round = 0; round < 2; ++round) {
    LoadDataSetFile(path, target);
    ASSERT_EQ(target.SeriesCount(), 1u);
    EXPECT_EQ(XValues(target.CurrentSeries()->Points()), XValues(graph.Series(1).Points()));
    EXPECT_EQ(target.CurrentSeries()->Style(), graph.Series(1).Style());
  }
  const std::string before = EncodeGraph(target);
  EXPECT_THROW(LoadDataSetFile(folder.Write("none.tds", Head() + Raw(0)), target), FileError);
  EXPECT_THROW(LoadDataSetFile(folder.Write("bad.tds", "bad"), target), FileError);
  EXPECT_TRUE(EncodeGraph(target) == before);
}

}  // namespace
}  // namespace tarnwick
