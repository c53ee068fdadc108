// What a typed formula means: names that become parameters, the variable that was meant, the word of a caption.
#include "fit/model/typed_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/word_list.h"
#include "fit/model/fit_settings.h"

namespace tarnwick {
namespace {

using ::testing::ElementsAreArray;
using Names = std::vector<std::string>;

FitSettings Model(const std::string& expression, const Names& parameters = {}) {
  FitSettings model;
  model.Expression = expression;
  for (const std::string& name : parameters) model.parameters.push_back(MadeParameter(name));
  return model;
}

TEST(TypedModel, MakesParametersOfUnknownNamesInTheirOrder) {
  const struct {
    const char* expression;
    Names known, made;
  } rows[] = {{"a*x+b", {}, {"a", "b"}},
              {"b*x+a", {}, {"b", "a"}},
              {"A*exp(-x/Tau)+A", {}, {"A", "Tau"}},
              {"a*x+b", {"b"}, {"a"}},
              {"a*x", {"a"}, {}},
              {"sin(pi*x)", {}, {}},
              {"y1*x^y2+_z", {}, {"y1", "y2", "_z"}}};
  for (const auto& row : rows) {
    FitSettings model = Model(row.expression, row.known);
    EXPECT_THAT(MakeParameters(model), ElementsAreArray(row.made)) << row.expression;
    ASSERT_EQ(model.parameters.size(), row.known.size() + row.made.size());
    for (std::size_t i = row.known.size(); i < model.parameters.size(); ++i) {
      const ParameterSettings& made = model.parameters[i];
      EXPECT_EQ(made.Name, row.made[i - row.known.size()]);
      EXPECT_EQ(made.Description, "Parameter " + made.Name);
      EXPECT_EQ(made.Value, 1);
      EXPECT_TRUE(made.Vary);
    }
  }
  // Of a template those come last.
  FitSettings model = Model("h+a");
  model.templates = {{"h", "q*x", ""}};
  EXPECT_THAT(MakeParameters(model), ElementsAreArray(Names{"a", "q"}));
}

TEST(TypedModel, TakesTheVariableThatWasMeant) {
  const struct {
    const char* expression;
    Names names;
    const char* missed;
    const char* variable;  // in the end
  } rows[] = {{"a*t+b", {"t"}, "t", "t"},
              {"a*T+b", {"t"}, "t", "t"},
              {"a*x+t", {"t"}, "", "x"},
              {"a*X+t", {"t"}, "", "x"},
              {"a*tt+b", {"t"}, "", "x"},
              {"a*t+b", {}, "", "x"},
              {"a*t+b", {"", "s", "t"}, "t", "t"},
              {"a*t+s", {"s", "t"}, "s", "s"},
              {"a+b", {""}, "", "x"}};
  for (const auto& row : rows) {
    FitSettings model = Model(row.expression);
    EXPECT_EQ(MissedVariable(model, row.names), row.missed) << row.expression;
    EXPECT_EQ(ChooseVariable(model, row.names), *row.missed != '\0') << row.expression;
    EXPECT_EQ(model.XVarName, row.variable) << row.expression;
  }
  const Names t = {"t"};
  FitSettings taken = Model("a*t", {"t"});  // a parameter of that name is no variable
  EXPECT_FALSE(ChooseVariable(taken, t));
  EXPECT_EQ(taken.XVarName, "x");
  FitSettings hidden = Model("a*t+h");
  hidden.templates = {{"h", "x", ""}};
  EXPECT_EQ(MissedVariable(hidden, t), "");
}

TEST(TypedModel, TellsWhetherTheFormulaDependsOnX) {
  const struct {
    const char* expression;
    Names parameters;
    bool ignores;
  } rows[] = {{"a+b", {"a", "b"}, true},
              {"a", {"a"}, false},
              {"a+b*x", {"a", "b"}, false},
              {"a+b*xx", {"a", "b"}, true},
              {"1", {}, false}};
  for (const auto& row : rows)
    EXPECT_EQ(IgnoresX(Model(row.expression, row.parameters), row.expression), row.ignores)
        << row.expression;
  FitSettings held = Model("a+b", {"a", "b"});
  held.parameters[1].Vary = false;
  EXPECT_FALSE(IgnoresX(held, "a+b"));
}

TEST(TypedModel, FindsTheWordOfACaption) {
  const std::pair<const char*, const char*> rows[] = {
      {"t (s)", "t"}, {"time", "time"}, {"sin of it", "sin"}, {"2 t", ""}, {"", ""},
      {"(s) t", ""},  {" t", ""},       {"a_1/b", "a_1"},     {"'t'", ""}, {"T[K]", "T"}};
  for (const auto& [caption, word] : rows) EXPECT_EQ(WordOf(caption), word) << caption;
  EXPECT_EQ(TakenAsParameters({"a", "b", "c"}), "Taken as parameters: a, b and c.");
  EXPECT_EQ(TakenAsVariable("t"), "t is taken for the variable, as X is named.");
}

}  // namespace
}  // namespace tarnwick
