#include <gtest/gtest.h>

#include "data/series/data_series.h"
#include "data/series/data_series_file.h"
#include "support/field_lines.h"
#include "support/project_paths.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

// What files rely on: a number or a letter that changes here makes older files unreadable.
TEST(DataSeriesFields, AreThoseOfTheFile) {
  const auto file = testing::SourceFolder() / "tests/data/series/data_series_fields.txt";
  EXPECT_EQ(testing::FieldLines(DataSeriesFields(), TDataSeries()), testing::ReadFile(file));
}

}  // namespace
}  // namespace tarnwick
