#include "fit/model/fit_record_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/undefined.h"

namespace tarnwick {
namespace {

using ::testing::ElementsAre;
using ::testing::IsNan;

PointsMark SomePoints() {
  return {10, 0xFEDCBA9876543210};
}

FitSettings SomeModel() {
  FitSettings model;
  model.Expression = "a*exp(-b*x)+2*c";
  model.LeftMarginUsed = true;
  model.LeftMargin = 0.1;
  model.parameters = {{"a", 2.5, 0.1, 0.001, true, false, "Height", "mV", 0, 7.5, ""},
                      {"b", 1e-300, 0.1, 0.001, true, false, "", "", 0, 9, ""},
                      {"c", 5, 0.1, 0.001, false, false, "", "", 0, 9, "2*a"},
                      {"a name", 3, 0.1, 0.001, false, false, "", "", 0, 9, ""}};
  return model;
}

FitResult SomeResult() {
  FitResult result;
  result.outcome.why = StopReason::NoFurtherDescent;
  result.outcome.stop_test = "no step improves";
  result.outcome.iterations = 12;
  result.outcome.start_value = 1.0 / 3;
  result.names = {"a", "b"};
  result.start = {1, 2};
  result.values = {2.5, 1e-300};
  result.points_used = 8;
  result.at_bound = {1};
  result.singular_directions = {{1e-17, {1, 0}}};
  result.absent = {{1, {0}, 0.25, 1}};
  result.tied = {{"c", 5, kUndefined}};
  result.newton_sum_of_squares = 0.25;
  result.statistics.weighting = {FitWeights::Counts, FitErrors::Scaled, FitLoss::Cauchy, 1.5};
  result.statistics.standard_errors = {0.5, kUndefined};
  result.statistics.correlation = {1, -0.5, -0.5, 1};
  result.statistics.aicc = kUndefined;
  result.verdict = {false, true, "Settled after 12 iterations, but…", {"first note", "second"}};
  return result;
}

LastFit SomeFit() {
  FitResult result = SomeResult();
  auto together = std::make_shared<FitOfSeveral>();
  together->whole = SomeResult();
  together->whole.verdict.summary = "all in all";
  together->shared = {"b"};
  together->members = {{"Run 1, cold", {true, false, "good", {}}, 8, 0.5, 0.99},
                       {"", {false, false, "bad", {}}, 2, kUndefined, -1}};
  result.together = together;
  LastFit last;
  last.record = std::make_shared<const FitRecord>(
      FitRecord{SomeModel(), std::make_shared<const FitResult>(std::move(result))});
  return last;
}

std::string Written(const LastFit& last, WriterMode mode) {
  std::string bytes;
  SectionWriter writer(bytes, mode);
  WriteLastFit(writer, last, &SomePoints);
  writer.WriteEndOfSection();
  return bytes;
}

LastFit Read(const std::string& bytes, const FitSettings& model = SomeModel(),
             const PointsMark& points = SomePoints()) {
  ValueReader values(bytes);
  SectionReader reader(values);
  LastFitReader fit;
  while (reader.ReadKey() != 0) fit.Take(reader);
  return fit.Finish(model, [&] { return points; });
}

TEST(FitRecordFile, ComesBackAsItWas) {
  const LastFit written = SomeFit();
  for (const WriterMode mode : {WriterMode::Typed, WriterMode::Text}) {
    const LastFit read = Read(Written(written, mode));
    ASSERT_TRUE(read.Holds());
    EXPECT_EQ(read.record->model, written.record->model);
    EXPECT_EQ(Written(read, mode), Written(written, mode));
    const FitResult& result = *read.record->result;
    EXPECT_EQ(result.outcome.why, StopReason::NoFurtherDescent);
    EXPECT_EQ(result.outcome.start_value, 1.0 / 3);
    EXPECT_EQ(result.statistics.weighting, written.record->result->statistics.weighting);
    EXPECT_THAT(result.statistics.standard_errors, ElementsAre(0.5, IsNan()));
    EXPECT_THAT(result.singular_directions.at(0).parameters, ElementsAre(1, 0));
    EXPECT_THAT(result.absent.at(0).through, ElementsAre(0));
    EXPECT_EQ(result.absent.at(0).gain, 0.25);
    EXPECT_EQ(result.tied.at(0).name, "c");
    EXPECT_EQ(result.newton_sum_of_squares, 0.25);
    EXPECT_TRUE(result.verdict.untested);
    EXPECT_THAT(result.verdict.notes, ElementsAre("first note", "second"));
    ASSERT_TRUE(result.together);
    EXPECT_EQ(result.together->whole.verdict.summary, "all in all");
    EXPECT_EQ(result.together->members.at(0).data_set, "Run 1, cold");
    EXPECT_EQ(result.together->members.at(1).verdict.summary, "bad");
  }
}

TEST(FitRecordFile, HoldsOnlyBesideTheModelAndThePointsThatItLeft) {
  const struct {
    const char* name;
    void (*change)(LastFit&, FitSettings&, PointsMark&);
    bool model, points;
  } rows[] = {
      {"none", [](LastFit&, FitSettings&, PointsMark&) {}, false, false},
      {"value", [](LastFit&, FitSettings& m, PointsMark&) { m.parameters[0].Value = 2; }, true,
       false},
      {"function", [](LastFit&, FitSettings& m, PointsMark&) { m.Expression = "x"; }, true, false},
      {"margin", [](LastFit&, FitSettings& m, PointsMark&) { m.LeftMarginUsed = false; }, true,
       false},
      {"parameter gone", [](LastFit&, FitSettings& m, PointsMark&) { m.parameters.pop_back(); },
       true, false},
      {"units", [](LastFit&, FitSettings& m, PointsMark&) { m.parameters[0].Units = "V"; }, false,
       false},
      {"a point", [](LastFit&, FitSettings&, PointsMark& p) { ++p.hash; }, false, true},
      {"fewer points", [](LastFit&, FitSettings&, PointsMark& p) { --p.count; }, false, true},
      {"stale model", [](LastFit& f, FitSettings&, PointsMark&) { f.model_changed = true; }, true,
       false},
      {"stale points", [](LastFit& f, FitSettings&, PointsMark&) { f.points_changed = true; },
       false, true},
  };
  for (const auto& row : rows) {
    LastFit last = SomeFit();
    FitSettings model = SomeModel();
    PointsMark points = SomePoints();
    row.change(last, model, points);
    const LastFit read = Read(Written(last, WriterMode::Typed), model, points);
    ASSERT_TRUE(read.record) << row.name;
    EXPECT_EQ(read.model_changed, row.model) << row.name;
    EXPECT_EQ(read.points_changed, row.points) << row.name;
    EXPECT_EQ(Written(read, WriterMode::Typed) == Written(last, WriterMode::Typed),
              read.Holds() == last.Holds())
        << row.name;
  }
}

TEST(FitRecordFile, DamagedRowsArePassedOverAsAWhole) {
  const struct {
    const char* name;
    std::string from, to;
    bool damaged;
  } rows[] = {
      {"nothing", "", "", false},
      {"a word of later programs", "iterations 12", "iterrations 1", false},
      {"a word that is none", "errors 2", "errors 3", true},
      {"a number that is none", "iterations 12", "iterations -2", true},
      {"too few errors", "standard_errors 0.5 -", "standard_errors 0.5  ", true},
      {"a place outside", "at_bound 1", "at_bound 2", true},
      {"a place outside, of all", "all at_bound 1", "all at_bound 9", true},
      {"a direction outside", "trading 1E-17 1 0", "trading 1E-17 1 7", true},
      {"a term outside", "absent 0.25 1 1 0", "absent 0.25 1 2 0", true},
      {"trust", "trust 1", "trust 3", true},
      {"no name", "varied b", "variet b", true},
      {"a kind of parameter", "2.5 varied a", "2.5 waried a", true},
      {"a tie of none", "method 0", "tie 2*ab", true},
      {"a method that is none", "method 0", "method 5", true},
      {"a method without number", "method 0", "method x", true},
      {"points", "points 10 fedc", "points 10 fedx", true},
      {"a row too many", "rows ", "note ", true},
      {"a member", "member 2 8", "member 2 x", true},
  };
  const std::string whole = Written(SomeFit(), WriterMode::Text);
  for (const auto& row : rows) {
    std::string bytes = whole;
    const std::size_t place = bytes.find(row.from);
    ASSERT_NE(place, std::string::npos) << row.name;
    ASSERT_EQ(row.from.size(), row.to.size()) << row.name;
    const LastFit read = Read(bytes.replace(place, row.from.size(), row.to));
    EXPECT_EQ(read.damaged, row.damaged) << row.name;
    EXPECT_EQ(read.record == nullptr, row.damaged) << row.name;
  }
  EXPECT_FALSE(Read(Written({}, WriterMode::Text)).damaged);
}

}  // namespace
}  // namespace tarnwick
