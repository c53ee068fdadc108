#include "desk/widgets/wrapped_label.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

TEST(WrappedLabel, IsAsHighAsItsLinesAlsoWhereItWasNarrowBefore) {
  WrappedLabel label("The points are weighted by their errors of Y, since they have some of them.");
  label.show();
  label.resize(600, 10);
  const int wide = label.height();
  label.resize(80, 10);
  EXPECT_GT(label.height(), 3 * wide);
  label.resize(600, 10);
  EXPECT_EQ(label.height(), wide);
}

}  // namespace
}  // namespace tarnwick
