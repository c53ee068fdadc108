#include "fit/model/ties.h"

#include <gtest/gtest.h>

#include <limits>

#include "base/error.h"
#include "fit/model/curve_fit.h"

namespace tarnwick {
namespace {

ParameterSettings Tied(const std::string& name, const std::string& tie) {
  ParameterSettings one;
  one.Name = name;
  one.Tie = tie;
  return one;
}

ParameterSettings Within(const std::string& name, double value, double low, double high) {
  ParameterSettings one;
  one.Name = name;
  one.Value = value;
  one.Vary = true;
  one.Low = low;
  one.High = high;
  return one;
}

constexpr double kNone = std::numeric_limits<double>::infinity();

TEST(Ties, TakeThePlaceOfWordsAlone) {
  const std::vector<ParameterSettings> parameters = {Within("a", 3, -kNone, kNone),
                                                     Tied("e", "2*a"), Tied("F1", "e+1")};
  const std::pair<const char*, const char*> rows[] = {
      {"e*x", "(2*a)*x"},
      {"a+E^2", "a+(2*a)^2"},
      {"1e5*exp(e)+2.e", "1e5*exp((2*a))+2.e"},
      {"f1*f11", "((2*a)+1)*f11"},
      {"if('e'='e',e,1)", "if('e'='e',(2*a),1)"},
      {"Z+z+_a+A1+a_1+e", "Z+z+_a+A1+a_1+(2*a)"},  // names of every letter, and what is none
      {"e0+e9+ee+.5e+0.5e1*e", "e0+e9+ee+.5e+0.5e1*(2*a)"},
      {"1.5.e-3E*9e9", "1.5.e-3E*9e9"},
      {"3e+7E-2*e", "3e+7E-2*(2*a)"},
      {"'e", "'e"},
      {"''e'e'", "''(2*a)'e'"},
      {"e", "(2*a)"},
      {"", ""},
  };
  for (const auto& [text, replaced] : rows) EXPECT_EQ(WithTies(text, parameters), replaced);
  std::vector<ParameterSettings> followed = parameters;
  FollowTies(followed);
  EXPECT_EQ(followed[1].Value, 6);
  EXPECT_EQ(followed[2].Value, 7);
}

TEST(Ties, AModelFollowsItsParameters) {
  TCurFit model;
  FitSettings settings;
  settings.Expression = "h*x+w";
  settings.templates = {{"h", "w", ""}};  // ties come after templates
  settings.parameters = {Within("w", 2, 0, 5), Tied("b", "w^2")};
  settings.parameters[1].Vary = true;
  model.SetSettings(settings, MarkModified::No);
  EXPECT_FALSE(model.Param(2).Vary());
  model.SetExpression("h*x+b");
  model.Prepare();
  EXPECT_EQ(model.Value(10), 24);
  EXPECT_EQ(model.Param(2).Value(), 4);
  model.Param(1).SetValue(3);
  model.UpdateTies();
  EXPECT_EQ(model.Param(2).Value(), 9);
  settings.parameters[0] = Tied("w", "b");
  model.SetSettings(settings, MarkModified::No);
  EXPECT_THROW(model.Prepare(), Error);
}

TEST(Limits, TellWhatCannotHold) {
  const struct {
    std::vector<ParameterSettings> parameters;
    const char* trouble;
  } rows[] = {
      {{Within("a", 1, 0, 2), Tied("b", "max(a,2)/pi")}, ""},
      {{Within("a", 1, 2, 0)}, "The bounds of \"a\" are crossed: 2 is above 0."},
      {{Within("a", 1, 1, 1)}, "The bounds of \"a\" leave no room: hold it fixed instead."},
      {{Within("a", 5, 0, 2)}, "\"a\" starts at 5, outside its bounds (0 to 2)."},
      {{Within("a", -1, 0, kNone)}, "\"a\" starts at -1, outside its bounds (0 and above)."},
      {{Within("a", 5, -kNone, 2)}, "\"a\" starts at 5, outside its bounds (2 and below)."},
      {{Within("a", 2, 0, 2), Within("b", 0, 0, 2), Within("c", 3, -kNone, kNone)}, ""},
      {{Tied("a", "b"), Tied("b", "c+1"), Tied("c", "a")},
       "The tie of \"a\" goes round in a circle."},
      {{Tied("a", "a+1")}, "The tie of \"a\" goes round in a circle."},
      {{Within("a", 1, 0, 2), Tied("b", "2*q")}, "\"b\" is tied to \"q\", which is no parameter."},
      {{Within("a", 1, 0, 2), Tied("b", "2*x")}, "\"b\" is tied to \"x\", which is no parameter."},
      {{Tied("b", "2*(1")}, "The tie of \"b\" cannot be read: Unequal brackets."},
      {{Tied("b", "1 div 0")}, "The tie of \"b\" has no value: Integer division by zero (div)."},
  };
  for (const auto& row : rows) EXPECT_EQ(LimitTrouble(row.parameters), row.trouble);
  std::vector<ParameterSettings> both = {Within("a", 1, 0, 2)};
  both[0].Tie = "3";
  EXPECT_EQ(LimitTrouble(both), "\"a\" is tied and takes no bounds.");
}

}  // namespace
}  // namespace tarnwick
