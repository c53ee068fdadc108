#include "graph/files/x_meaning.h"

#include <gtest/gtest.h>

#include "data/import/import_told.h"
#include "graph/files/import_into_graph.h"
#include "graph/xy_graph.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

TEST(XMeaning, DatesBesideNumbersAreTold) {
  const testing::TemporaryFolder folder;
  const auto dates = folder.Write("dates.csv", "t,y\n2024-03-04,1\n2024-03-05,2\n2024-03-06,3\n");
  const auto numbers = folder.Write("numbers.csv", "x,y\n1,1\n2,2\n3,3\n");
  const auto told = [](const auto& first, const auto& second) {
    TxyGraph graph;
    EXPECT_EQ(Sentence(ImportIntoGraph(graph, first).told), "");
    return Sentence(ImportIntoGraph(graph, second).told).substr(0, 34);
  };
  EXPECT_EQ(told(dates, dates), "");
  EXPECT_EQ(told(numbers, numbers), "");
  EXPECT_EQ(told(numbers, dates), "Dates come to an X axis of numbers");
  EXPECT_EQ(told(dates, numbers), "Numbers come to an X axis of dates");
}

}  // namespace
}  // namespace tarnwick
