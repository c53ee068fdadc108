#include "data/fields/missing_values.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarnwick {
namespace {

TEST(MissingValues, MatchTextsAndNumbers) {
  const struct {
    const char* list;
    const char* field;
    bool matches;
  } rows[] = {
      {"-9999", "-9999.0", true},
      {"-9999", " -9.999e3 ", true},
      {"-9999", "-9999.9", false},
      {"-9999", "9999", false},
      {"  NA   -99.9\t-- ", "na", true},
      {"  NA   -99.9\t-- ", "--", true},
      {"  NA   -99.9\t-- ", "-99,90", true},
      {"NA", "NAN", false},
      {"nan", "NaN", true},
      {"\"not measured\" 7", "Not Measured", true},
      {"\"not measured\" 7", "not", false},
      {"\"not measured\" 7", "7.0", true},
      {"\"open 7", "\"open", true},
      {"9.96921e36", "9.969209968386869e+36", true},
      {"", "", false},
      {"\"\"", " ", true},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(MissingValues(row.list).Matches(row.field), row.matches)
        << row.list << " | " << row.field;
  }
  const MissingValues of_columns("99@#3 NA@#10 7@#x");
  EXPECT_TRUE(of_columns.Matches("99.0", 3));
  EXPECT_TRUE(of_columns.Matches("na", 10));
  EXPECT_FALSE(of_columns.Matches("99.0", 10));
  EXPECT_FALSE(of_columns.Matches("NA", 1));
  EXPECT_FALSE(of_columns.MatchesNumber(99));
  EXPECT_TRUE(of_columns.Matches("7@#x", 0));
  EXPECT_TRUE(MissingValues(MissingInColumn(-0.99, 4)).MatchesNumber(-0.99, 4));
  EXPECT_TRUE(MissingValues(" \t").Empty());
  EXPECT_TRUE(MissingValues("NA -9999").MatchesNumber(-9999));
  EXPECT_FALSE(MissingValues("NA -9999").MatchesNumber(-9999.5));
}

std::vector<double> Repeated(double value, std::size_t count, std::vector<double> others) {
  others.resize(others.size() + count, value);
  return others;
}

TEST(MissingValues, AreSuggestedWhereTheyStandApart) {
  using Texts = std::vector<std::string>;
  std::vector<double> continuous;
  std::vector<double> dense;
  for (int i = -9999; i <= 500; ++i) continuous.push_back(i);
  for (int i = 0; i <= 12000; ++i) dense.push_back(i / 10.0);  // 99.9, 999 and 999.9 among them
  std::vector<double> lengths;
  for (int i = 0; i < 25; ++i) lengths.push_back(120 + i);
  const struct {
    const char* what;
    std::vector<double> values;
    Texts missing;
  } rows[] = {
      {"few rows", {-9999, 3.3, 3.5}, {"-9999"}},
      {"radiation", {-9999.9, -10.5, 350, 1000, -9999.9}, {"-9999.9"}},
      {"nothing below zero", {-999, 0, 120, 500, -999}, {"-999"}},
      {"two kinds", {-9999, -99.9, 1, 2, 3}, {"-9999", "-99.9"}},
      {"above", {999.9, 12, 14, 13, 999.9}, {"999.9"}},
      {"powers of ten", {1e30, 5, 6, -7}, {"1E30"}},
      {"inliers beside", Repeated(-9999, 7, dense), {"-9999"}},
      {"all of it", Repeated(-99, 5, {}), {"-99"}},
      {"mostly", Repeated(-9999, 1000, std::vector<double>(30, 5.5)), {"-9999"}},
      {"continuous", continuous, {}},
      {"small", {-9, 99, 0.1, 0.2, 0.1}, {}},
      {"a series", {9, 99, 999, 9999}, {}},
      {"decades", {1e14, 1e16, 1e18, 1e20, 1e22}, {}},
      {"ends of a scale", {-999, 0, 1, 2, 999}, {}},
      {"near", {950, 1010, 999, 999.9}, {}},
      {"almost nothing else", Repeated(-9999, 100, {1.0}), {}},
      {"nine in a table of lengths", Repeated(-9, 5, std::vector<double>(lengths)), {"-9"}},
      {"what stands for infinity",
       {-1.79769e308, 5, 1.79769e308, -7, 6},
       {"-1.79769E308", "1.79769E308"}},
      {"nine once", Repeated(-9, 1, std::vector<double>(lengths)), {}},
      {"nine beside one value", Repeated(-9, 5, std::vector<double>(30, 5.5)), {}},
      {"a power of ten below", {-1e9, -5, 5, -1e9}, {"-1000000000"}},
      {"once it may be a value", {-1e9, -5, 5, 6}, {}},
      {"powers of ten", {-1e9, -1e8, -1e9, -1e7}, {}},
      {"nothing", {}, {}},
  };
  for (const auto& row : rows) EXPECT_EQ(SuggestMissing(row.values), row.missing) << row.what;
}

TEST(MissingValues, AreSuggestedOfOneColumn) {
  std::vector<double> heights, angles, shares;
  for (int i = 0; i < 30; ++i) {
    heights.push_back(0.5 + i * 0.3);
    angles.push_back(i * 12);
    shares.push_back(i * 0.01);
  }
  const struct {
    const char* what;
    std::vector<double> values;
    std::vector<double> missing;
  } rows[] = {
      {"two nines", Repeated(99, 4, heights), {99}},
      {"with decimals", Repeated(99.99, 4, heights), {99.99}},
      {"beside angles", Repeated(999, 4, angles), {999}},
      {"three nines below", Repeated(-9.99, 4, shares), {-9.99}},
      {"less than one", Repeated(-0.99, 4, shares), {-0.99}},
      {"once", Repeated(99, 1, heights), {}},
      {"one nine", Repeated(9, 4, shares), {}},
      {"nearer than the others to each other", Repeated(999, 4, Repeated(600, 1, angles)), {}},
      {"few others", Repeated(99, 4, {1.0, 2.0, 3.0}), {}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(SuggestMissingOfColumn(row.values), row.missing) << row.what;
  }
}

}  // namespace
}  // namespace tarnwick
