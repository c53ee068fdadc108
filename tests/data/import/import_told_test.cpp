#include "data/import/import_told.h"

#include <gtest/gtest.h>

#include "data/import/whole_data.h"

namespace tarnwick {
namespace {

struct Loaded {
  std::int32_t every = 1;
  std::int64_t y_empty = 0;
  std::int64_t replaced = 0;
  bool loaded = true;
};

LoadReport ReportOf(const Loaded& row) {
  LoadReport report;
  report.loaded = row.loaded;
  report.sampled_every = row.every;
  report.replaced = row.replaced;
  for (std::int64_t i = 0; i < row.y_empty; ++i) report.AddSkipped(SkipReason::YMissing, 7 + i);
  return report;
}

TEST(ImportTold, SaysOnceWhatHoldsForAll) {
  struct Row {
    std::vector<Loaded> loaded;
    std::vector<std::string> notes;
    const char* sentence;
  };
  const Row rows[] = {
      {{{}, {}}, {}, ""},
      {{{2000}, {2000}}, {}, "Every 2000th row is shown."},
      {{{2}, {1, 3, 1}},
       {"days come first"},
       "\"a\": every 2nd row is shown; \"b\": 3 rows skipped (Y empty; first at line 7); \"b\": 1 "
       "row "
       "replaced by later ones at the same X; days come first."},
      {{{1, 2}, {}, {1, 2}}, {}, "\"a\" and \"c\": 2 rows skipped (Y empty; first at line 7)."},
      {{{1, 2}, {1, 2}, {1, 2}, {1, 2}, {}},
       {},
       "\"a\", \"b\" and 2 more: 2 rows skipped (Y empty; first at line 7)."},
      {{{1, 1}, {1, 2}, {1, 9}, {1, 3}, {}},
       {},
       "4 of 5 DataSets have skipped rows, most of all \"c\": 9 rows skipped (Y empty; first at "
       "line 7)."},
      {{{1, 1}, {1, 0, 0, false}}, {}, "1 row skipped (Y empty; first at line 7)."}};
  const std::vector<std::string> names = {"a", "b", "c", "d", "e"};
  for (const Row& row : rows) {
    std::vector<LoadReport> reports;
    for (const Loaded& one : row.loaded) reports.push_back(ReportOf(one));
    EXPECT_EQ(Sentence(TellImport(reports, names, row.notes)), row.sentence);
  }
}

TEST(ImportTold, SomeRowsAreShownWhereReadingAgainGivesMore) {
  using enum DataSourceKind;
  struct Row {
    DataSourceKind kind;
    const char* place;
    std::int32_t every;
    bool all;
    bool thinned;
    bool some;
  };
  constexpr Row kRows[] = {
      {Text, "a", 1, false, false, false}, {Text, "a", 2, false, false, true},
      {Text, "a", 2, true, false, false},  {Text, "a", 1, true, true, true},
      {Text, "", 2, false, false, false},  {Manual, "a", 2, false, false, false},
  };
  for (const Row& row : kRows) {
    TDSInfo info;
    info.DataSource = row.kind;
    info.DatasourceInfo = row.place;
    info.RowSamplingFrequency = row.every;
    info.AllRows = row.all;
    info.ThinnedAtSource = row.thinned;
    EXPECT_EQ(ShowsSomeRows(info), row.some) << &row - kRows;
  }
}

}  // namespace
}  // namespace tarnwick
