// Ticks and their labels.
#include "graph/axes/tick.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "base/day_number.h"
#include "base/number_text.h"
#include "graph/axes/tick_label.h"

namespace tarnwick {
namespace {

AxisState Linear(double min, double max, double step, int decimals = 1) {
  AxisState axis;
  axis.Min = min;
  axis.Max = max;
  axis.StepSize = step;
  axis.LabelDecimals = decimals;
  return axis;
}

AxisState Logarithmic(double min, double max, int divisions, bool labels = true) {
  AxisState axis = Linear(min, max, 1);
  axis.LogScale = true;
  axis.LogCycleDivisions = divisions;
  axis.DivisionLabels = labels;
  return axis;
}

AxisState Time(const char* min, const char* max, DateTickType type, const char* format) {
  AxisState axis = Linear(*ParseDay(min), *ParseDay(max), 1);
  axis.ShowAsTime = true;
  axis.TickType = type;
  axis.DateTimeFormat = format;
  return axis;
}

/// Labels of the major ticks, "-" for a bare one.
std::string Joined(const std::vector<Tick>& ticks) {
  std::string text;
  for (const Tick& tick : ticks) {
    if (!tick.major) continue;
    if (!text.empty()) text += " ";
    text += tick.label.empty() ? "-" : tick.label;
  }
  return text;
}

std::string Labels(const AxisState& axis) {
  return Joined(MakeTicks(axis, {}));
}

TEST(MakeTicks, LabelsMultiplesDecadesAndCalendarUnits) {
  using enum DateTickType;
  struct Row {
    const char* why;
    AxisState axis;
    const char* labels;
  };
  const Row rows[] = {
      {"plain", Linear(0, 0.6, 0.1), "0.0 0.1 0.2 0.3 0.4 0.5 0.6"},
      {"across zero", Linear(-0.4, 0.4, 0.2), "-0.4 -0.2 0.0 0.2 0.4"},
      {"bounds between steps", Linear(0.13, 0.71, 0.2), "0.2 0.4 0.6"},
      {"step that its size understates", Linear(0, 1, 0.25), "0.00 0.25 0.50 0.75 1.00"},
      {"step beyond the range", Linear(0.1, 0.9, 50, 0), "0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9"},
      {"step far too fine", Linear(0, 10, 1e-9), "0 2 4 6 8 10"},
      {"step not positive", Linear(0, 10, 0), "0 2 4 6 8 10"},
      {"huge", Linear(0, 2e20, 1e20, 0), "0 1E20 2E20"},
      {"last digits", Linear(1e16, 1e16 + 8, 4),
       "1E16 1.0000000000000004E16 1.0000000000000008E16"},
      {"finer than ten last digits", Linear(1e15, 1e15 + 4, 0.2),
       "1E15 1.000000000000002E15 1.000000000000004E15"},
      {"decades", Logarithmic(0.01, 100, 0), "0.01 0.1 1 10 100"},
      {"divisions", Logarithmic(0.2, 50, 2), "0.2 0.5 1 2 5 10 20 50"},
      {"fine divisions", Logarithmic(1, 10, 5), "1.0 1.5 2.0 3.0 5.0 7.0 10"},
      {"bare divisions", Logarithmic(0.1, 10, 1, false), "0.1 - 1 - 10"},
      {"within one division", Logarithmic(2.2, 3.1, 2), "2.2 2.3 2.4 2.5 2.6 2.7 2.8 2.9 3.0 3.1"},
      {"months", Time("2024-01-01", "2024-05-01", Month, "dd-mmm"),
       "01-Jan 01-Feb 01-Mar 01-Apr 01-May"},
      {"quarters", Time("2023-12-15", "2024-08-01", Quarter, "yyyy-mm"), "2024-01 2024-04 2024-07"},
      {"decades of years", Time("1985-01-01", "2011-01-01", Decade, "yyyy"), "1990 2000 2010"},
      {"weeks begin on Sunday", Time("2024-03-03", "2024-03-17", Week, "ddd dd"),
       "Sun 03 Sun 10 Sun 17"},
      {"half hours", Time("2024-03-03 10:00", "2024-03-03 11:00", HalfHour, "hh:nn"),
       "10:00 10:30 11:00"},
      {"too few years", Time("2024-03-10", "2024-06-10", Year, "yyyy"), "01-Apr 01-May 01-Jun"}};
  for (const Row& row : rows) EXPECT_EQ(Labels(row.axis), row.labels) << row.why;
}

TEST(MakeTicks, StandOnFullUnitsOfTheClockForTheUnitAutomatic) {
  constexpr auto kAutomatic = DateTickType::Automatic;
  struct Row {
    AxisState axis;
    const char* labels;
  };
  AxisState beyond = Time("0001-01-01", "0012-06-01", kAutomatic, "yyyy");
  beyond.Min = -700000;
  const Row rows[] = {
      {Time("2024-03-01 10:00:02.4", "2024-03-01 10:00:08", kAutomatic, "ss"), "03 04 05 06 07 08"},
      {Time("2024-02-28 09:00", "2024-03-03", kAutomatic, "dd hh"),
       "28 12 29 00 29 12 01 00 01 12 02 00 02 12 03 00"},
      {Time("2024-01-15", "2024-08-20", kAutomatic, "mm"), "02 03 04 05 06 07 08"},
      {Time("2021-11-20", "2024-02-10", kAutomatic, "mm"), "01 04 07 10 01 04 07 10 01"},
      {Time("1850-06-01", "2000-03-01", kAutomatic, "yyyy"),
       "1860 1880 1900 1920 1940 1960 1980 2000"},
      {beyond, "0002 0004 0006 0008 0010 0012"},
      // Months and weeks: the batch program had ticks of 50 and of 10 days.
      {Time("2024-01-20", "2024-08-10", kAutomatic, "mmm"), "Feb Mar Apr May Jun Jul Aug"},
      {Time("2024-03-01", "2024-05-01", kAutomatic, "dd-mmm"),
       "03-Mar 10-Mar 17-Mar 24-Mar 31-Mar 07-Apr 14-Apr 21-Apr 28-Apr"},
      // Thousandths of whole seconds told nothing.
      {Time("2024-03-01 10:00:00", "2024-03-01 10:00:08", kAutomatic, "hh:nn"),
       "10:00:00 10:00:01 10:00:02 10:00:03 10:00:04 10:00:05 10:00:06 10:00:07 10:00:08"},
      {Time("2024-03-01 10:00:00", "2024-03-01 10:00:01", kAutomatic, "hh:nn:ss.zzz"),
       "10:00:00.000 10:00:00.200 10:00:00.400 10:00:00.600 10:00:00.800 10:00:01.000"},
      // A format of days repeated itself at ticks of hours.
      {Time("2024-03-01", "2024-03-01 06:00", DateTickType::Hour, "dd"),
       "00:00 01:00 02:00 03:00 04:00 05:00 06:00"}};
  for (const Row& row : rows) EXPECT_EQ(Labels(row.axis), row.labels);
}

TEST(MakeTicks, FillsDecadesWithMinorTicks) {
  std::string minor;
  for (const Tick& tick : MakeTicks(Logarithmic(1, 10, 2), {})) {
    if (!tick.major) minor += FixedText(tick.value, 0);
  }
  EXPECT_EQ(minor, "346789");
}

TEST(MakeTicks, StaysBoundedOnAnyRange) {
  constexpr double kMost = std::numeric_limits<double>::max();
  AxisState hardly = Time("2024-01-01", "2024-01-02", DateTickType::Automatic, "c");
  hardly.Max = hardly.Min + 1e-9;  // less than any step of the clock
  const AxisState ranges[] = {Linear(-kMost, kMost, 1e-300),
                              Linear(1e15, 1e15 + 1, 0.001),
                              Linear(0, 5e-324, 5e-324),
                              Linear(0, kMost, 5e307),
                              Logarithmic(5e-324, kMost, 9),
                              Logarithmic(1e-30, 1e30, 9),
                              Time("0001-01-01", "9999-12-31", DateTickType::Minute, "yyyy"),
                              Time("2024-01-01", "2025-01-01", DateTickType::Minute, "c"),
                              hardly};
  for (const AxisState& axis : ranges) {
    const std::vector<Tick> ticks = MakeTicks(axis, {});
    EXPECT_GE(ticks.size(), 2U) << axis.Min << " to " << axis.Max;
    EXPECT_LE(ticks.size(), 500U) << axis.Min << " to " << axis.Max;
    for (std::size_t i = 0; i < ticks.size(); ++i) {
      EXPECT_TRUE(ticks[i].value >= axis.Min && ticks[i].value <= axis.Max);
      EXPECT_TRUE(i == 0 || ticks[i - 1].value < ticks[i].value) << ticks[i].value;
    }
  }
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  for (const AxisState& axis :
       {Linear(1, 1, 1), Linear(2, 1, 1), Linear(kNaN, 1, 1),
        Linear(0, std::numeric_limits<double>::infinity(), 1), Logarithmic(-1, 1, 2)}) {
    EXPECT_TRUE(MakeTicks(axis, {}).empty()) << axis.Min << " to " << axis.Max;
  }
}

TEST(DecimalsFor, CountsDigitsAfterThePoint) {
  struct Row {
    double x;
    int decimals;
  };
  constexpr Row kRows[] = {{0.5, 1}, {0.05, 2}, {0.2, 1}, {0.1, 1}, {1, 0},   {5, 0},
                           {10, -1}, {150, -2}, {0, 0},   {-3, 0},  {1e-9, 9}};
  for (const Row& row : kRows) EXPECT_EQ(DecimalsFor(row.x), row.decimals) << row.x;
}

TEST(TickLabelText, FollowsTheFormat) {
  using enum LabelFormat;
  struct Row {
    LabelFormat format;
    double value;
    int decimals;
    const char* text;
  };
  constexpr Row kRows[] = {{General, 0.25, 0, "0.25"},
                           {General, 3e-8, 0, "3E-8"},
                           {Scientific, 0.0015, 1, "1.5E-3"},
                           {Scientific, 12345, 2, "1.23E4"},
                           {Fixed, 2.5, 3, "2.500"},
                           {Fixed, -0.001, 1, "0.0"},
                           {Thousands, 1234567.5, 1, "1 234 567.5"},
                           {Thousands, -123, 0, "-123"},
                           {Thousands, -1234, 0, "-1 234"},
                           {Engineering, 1500, 0, "1.5k"},
                           {Engineering, 2e-6, 0, "2\u00b5"},
                           {Engineering, -0.25, 0, "-250m"},
                           {Engineering, 1e18, 0, "1E18"},
                           {Engineering, 0, 0, "0"},
                           {Percent, 0.125, 3, "12.5%"},
                           {Hexadecimal, 255, 0, "FF"},
                           {Hexadecimal, -16, 0, "-10"},
                           {Fixed, 1e300, 2, "1E300"}};
  for (const Row& row : kRows) {
    AxisState axis = Linear(0, 1, 1, row.decimals);
    axis.AdjustDecPlaces = false;
    axis.Label_format = row.format;
    EXPECT_EQ(TickLabelText(axis, row.value), row.text);
  }
}

TEST(Superscript, RaisesEveryDigit) {
  EXPECT_EQ(Superscript("-9876543210"), "⁻⁹⁸⁷⁶⁵⁴³²¹⁰");
}

TEST(CompactLabels, TakesOutACommonPowerWhenThatIsShorter) {
  struct Row {
    AxisState axis;
    const char *labels, *factor;
  };
  const Row rows[] = {{Linear(0, 40000, 20000, 0), "0 20 40", "\u00d710\u00b3"},
                      {Linear(0, 1000, 500, 0), "0.0 0.5 1.0", "\u00d710\u00b3"},
                      {Linear(0, 0.0004, 0.0002, 4), "0 200 400", "\u00d710\u207b\u2076"},
                      {Linear(-3e7, 0, 1.5e7, 0), "-30 -15 0", "\u00d710\u2076"},
                      {Linear(0, 10, 5, 0), "0 5 10", ""},
                      {Linear(1000.1, 1000.3, 0.1), "1000.1 1000.2 1000.3", ""}};
  for (const Row& row : rows) {
    const CompactLabelSet compact = CompactLabels(row.axis, MakeTicks(row.axis, {}));
    std::string text;
    for (const std::string& label : compact.labels) text += (text.empty() ? "" : " ") + label;
    EXPECT_EQ(text, row.labels);
    EXPECT_EQ(compact.factor, row.factor) << row.labels;
  }
}

TEST(PowerLabels, SplitMantissaAndExponent) {
  EXPECT_TRUE(WantsPowerLabels(Logarithmic(1e-3, 1e4, 1)));
  EXPECT_TRUE(WantsPowerLabels(Logarithmic(1e7, 1e8, 1)));
  EXPECT_FALSE(WantsPowerLabels(Logarithmic(1e-2, 1e3, 1)));
  EXPECT_FALSE(WantsPowerLabels(Logarithmic(1e-4, 1e1, 1)));
  EXPECT_FALSE(WantsPowerLabels(Logarithmic(1e2, 1e6, 1)));
  const std::vector<PowerLabel> labels =
      PowerLabels({{1e-3, "0.001", true}, {2e5, "200000", true}, {3, "", true}});
  EXPECT_EQ(labels[0].base + "^" + labels[0].exponent, "10^-3");
  EXPECT_EQ(labels[1].base + "^" + labels[1].exponent, "2\u00d710^5");
  EXPECT_EQ(labels[2].base + labels[2].exponent, "");
}

}  // namespace
}  // namespace tarnwick
