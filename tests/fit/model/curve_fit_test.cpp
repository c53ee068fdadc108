#include "fit/model/curve_fit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <string>

#include "base/undefined.h"
#include "expr/words/parser_exception.h"
#include "fit/model/model_copy.h"
#include "model/odd_model.h"

namespace tarnwick {
namespace {

TEST(CurveFit, TellsOfRealChangesOnly) {
  struct Row {
    const char* name;
    std::function<void(TCurFit&)> edit;
    bool tells;
    bool modified;
    bool keeps_result;
  };
  const double nan = kUndefined;
  const Row rows[] = {
      {"x name", [](TCurFit& f) { f.SetXVarName("t"); }, true, true, false},
      {"same x name", [](TCurFit& f) { f.SetXVarName("x"); }, false, false, true},
      {"no x name", [](TCurFit& f) { f.SetXVarName(""); }, false, false, true},
      {"expression", [](TCurFit& f) { f.SetExpression("x"); }, true, true, false},
      {"no expression", [](TCurFit& f) { f.SetExpression(""); }, false, false, true},
      {"status", [](TCurFit& f) { f.SetStatus(FitStatus::cf_Function); }, true, false, true},
      {"method", [](TCurFit& f) { f.SetProcType(FitProcType::cfp_Newton); }, true, true, false},
      {"unused left margin", [](TCurFit& f) { f.SetLeftMargin(1); }, false, false, true},
      {"used right margin", [](TCurFit& f) { f.SetRightMargin(7); }, true, true, false},
      {"same right margin", [](TCurFit& f) { f.SetRightMargin(9); }, false, false, true},
      {"left margin used", [](TCurFit& f) { f.SetLeftMarginUsed(true); }, true, true, false},
      {"tolerance", [](TCurFit& f) { f.SetTolerance(1); }, true, true, false},
      {"tolerance 0", [](TCurFit& f) { f.SetTolerance(0); }, false, false, true},
      {"no tolerance", [=](TCurFit& f) { f.SetTolerance(nan); }, false, false, true},
      {"iterations", [](TCurFit& f) { f.SetIterMax(1); }, true, true, false},
      {"iterations -1", [](TCurFit& f) { f.SetIterMax(-1); }, false, false, true},
      {"points 0", [](TCurFit& f) { f.SetNPoints(0); }, false, false, true},
      {"value", [](TCurFit& f) { f.Param(1).SetValue(4); }, true, true, false},
      {"same value", [](TCurFit& f) { f.Param(1).SetValue(3); }, false, false, true},
      {"undefined again", [=](TCurFit& f) { f.Param(2).SetValue(nan); }, false, false, true},
      {"vary", [](TCurFit& f) { f.Param(1).SetVary(true); }, true, true, false},
      {"same vary", [](TCurFit& f) { f.Param(1).SetVary(false); }, false, false, true},
      {"name", [](TCurFit& f) { f.Param(1).SetName("q"); }, true, true, false},
      {"no name", [](TCurFit& f) { f.Param(1).SetName(""); }, false, false, true},
      {"parameter", [](TCurFit& f) { f.AddParameter(Parameter("c")); }, true, true, false},
      {"delete", [](TCurFit& f) { f.DeleteParameter(2); }, true, true, false},
      {"delete none", [](TCurFit& f) { f.DeleteParameter(3); }, false, false, true},
      {"points of the DataSet", [](TCurFit& f) { f.DataChanged(); }, false, true, false},
      {"template",
       [](TCurFit& f) {
         f.AddTemplate({"a", "b", ""});
       },
       false, false, false},
      {"end of a fit", [](TCurFit& f) { f.Change(MarkModified::No); }, true, false, true},
      {"reset", [](TCurFit& f) { Reset(f); }, true, true, false},
  };
  for (const Row& row : rows) {
    TCurFit fit;
    fit.AddParameter(Parameter("a", 3));
    fit.AddParameter(Parameter("b", nan));
    fit.SetRightMarginUsed(true);
    fit.SetRightMargin(9);
    fit.Change(MarkModified::No);
    fit.SetResult(std::make_shared<const FitResult>());
    int told = 0;
    fit.SetOnChange([&told] { ++told; });
    row.edit(fit);
    EXPECT_EQ(told, row.tells ? 1 : 0) << row.name;
    EXPECT_EQ(fit.Modified(), row.modified) << row.name;
    EXPECT_EQ(fit.Result() != nullptr, row.keeps_result) << row.name;
  }
}

TEST(CurveFit, RefusesASecondParameterOfOneName) {
  TCurFit fit;
  fit.AddParameter(Parameter("a"));
  fit.AddParameter(Parameter("b"));
  const auto message = [](const std::function<void()>& edit) -> std::string {
    try {
      edit();
    } catch (const Error& error) {
      return error.what();
    }
    return "none";
  };
  EXPECT_EQ(message([&] { fit.AddParameter(Parameter("A")); }), "Parameter \"A\" Already Defined!");
  EXPECT_EQ(message([&] { fit.Param(2).SetName("A"); }), "Parameter \"A\" Already Defined!");
  EXPECT_EQ(fit.NParams(), 2);
  EXPECT_EQ(fit.Param(2).Name(), "b");
}

TEST(CurveFit, AppliesTemplatesFromTheLastToTheFirst) {
  struct Row {
    const char* expression;
    std::vector<TemplateSettings> templates;
    const char* compiled;
  };
  const Row rows[] = {
      {"a*LOR", {{"lor", "1/(1+x^2)", ""}}, "a*1/(1+x^2)"},
      {"f+F+1", {{"f", "x", ""}}, "x+x+1"},
      {"g", {{"h", "2*x", ""}, {"g", "h+H", ""}}, "2*x+2*x"},
      {"h", {{"h", "g", ""}, {"g", "x", ""}}, "g"},
      {"f+f", {{"f", "f+f", ""}}, "f+f+f+f"},  // what is put in is not searched again
      {"x", {{"", "x", ""}, {"none", "y", ""}}, "x"},
      {"xx", {{"xx", "", ""}, {"xx", "x", ""}}, "x"},
  };
  for (const Row& row : rows) {
    TCurFit fit;
    fit.SetExpression(row.expression);
    for (const TemplateSettings& one : row.templates) fit.AddTemplate(one);
    fit.Prepare();
    EXPECT_EQ(fit.CurrentText(), row.compiled) << row.expression;
  }
  TCurFit fit;
  fit.SetExpression("f");
  for (int i = 0; i < 40; ++i) fit.AddTemplate({"f", "f+f", ""});
  EXPECT_THROW(fit.Prepare(), Error);
}

TEST(CurveFit, EvaluatesWithThePresentValues) {
  TCurFit fit;
  EXPECT_TRUE(IsUndefined(fit.Value(1)));
  fit.SetXVarName("t");
  fit.SetExpression("A*t+min");
  fit.AddParameter(Parameter("a", 3));
  fit.AddParameter(Parameter("min", 1));
  fit.Prepare();
  EXPECT_EQ(fit.Value(2), 7);
  fit.Param(1).SetValue(5);
  EXPECT_EQ(fit.Value(2), 11);
  TCurFit other;
  other.AddParameter(Parameter("p", -1));
  fit.CopyValues(other);
  EXPECT_EQ(fit.Value(2), 11);
  other.AddParameter(Parameter("q", -2));
  fit.CopyValues(other);
  EXPECT_EQ(fit.Value(2), -4);
  fit.AddParameter(Parameter("last", 6));
  fit.AddParameter(Parameter("very last", 8));
  fit.DeleteParameter(3);
  ASSERT_EQ(fit.NParams(), 3);
  EXPECT_EQ(fit.Param(3).Name(), "very last");
  fit.DeleteParameter(3);
  EXPECT_EQ(fit.Param(2).Name(), "min");
  // A deleted parameter's value is gone, and the built-in word that it hid is there again.
  fit.DeleteParameter(2);
  EXPECT_TRUE(IsUndefined(fit.Value(2)));
  fit.SetExpression("a*min(t,1)");
  fit.Prepare();
  EXPECT_EQ(fit.Value(2), -1);
  fit.SetExpression("a*(");
  EXPECT_THROW(fit.Prepare(), EParserException);
}

}  // namespace
}  // namespace tarnwick
