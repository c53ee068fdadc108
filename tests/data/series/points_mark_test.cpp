#include "data/series/points_mark.h"

#include <gtest/gtest.h>

#include "base/undefined.h"

namespace tarnwick {
namespace {

// Two DataSets have one mark where a fit would take the same from them: as written and read again, not after any change.
TEST(PointsMark, IsOfAllThatAFitTakesAndOfNothingElse) {
  const struct {
    const char* what;
    void (*change)(TDataSeries&);
    bool same;
  } rows[] = {
      {"nothing", [](TDataSeries&) {}, true},
      {"the name", [](TDataSeries& s) { s.SetSeriesName("other"); }, true},
      {"the sign of zero", [](TDataSeries& s) { s.SetY(2, -0.0); }, true},
      {"no value once more", [](TDataSeries& s) { s.SetY(3, -kUndefined); }, true},
      {"Y", [](TDataSeries& s) { s.SetY(2, 1e-300); }, false},
      {"Y of two exchanged", [](TDataSeries& s) { s.SetY(1, 0), s.SetY(2, 5); }, false},
      {"X", [](TDataSeries& s) { s.ShiftX(1e-9); }, false},
      {"another point", [](TDataSeries& s) { s.AddPoint(9, 0); }, false},
      {"the base line's height", [](TDataSeries& s) { s.SetZeroValue(1); }, false},
      {"its slope", [](TDataSeries& s) { s.SetBaseLineSlope(1); }, false},
      {"errors",
       [](TDataSeries& s) {
         PointErrors errors;
         errors.y = {ErrorKind::Constant, 1};
         s.SetErrors(errors);
       },
       false},
      {"a curve instead", [](TDataSeries& s) { s.SetRegressionType(RegressionType::Spline); },
       false},
  };
  for (const auto& row : rows) {
    TDataSeries first, changed;
    for (TDataSeries* const series : {&first, &changed}) {
      const double y[] = {5, 0, kUndefined};
      for (int i = 0; i < 3; ++i) series->AddPoint(i, y[i]);
    }
    row.change(changed);
    EXPECT_EQ(MarkOf(changed) == MarkOf(first), row.same) << row.what;
  }
}

}  // namespace
}  // namespace tarnwick
