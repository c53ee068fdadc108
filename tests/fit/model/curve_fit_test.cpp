#include "fit/model/curve_fit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <string>

#include "base/undefined.h"
#include "expr/words/parser_exception.h"
#include "fit/model/curve_fit_file.h"
#include "stream/stream_error.h"

namespace tarnwick {
namespace {

using testing::ElementsAre;

// Every field away from its default.
FitSettings OddSettings() {
  FitSettings s;
  s.XVarName = "t";
  s.Expression = "a*LOR+b";
  s.Status = FitStatus::cf_FinResult;
  s.LeftMarginUsed = true;
  s.LeftMargin = -1.5;
  s.RightMargin = 1.0 / 3;
  s.NPoints = 70000;
  s.CurveShown = false;
  s.CurveColor = Color::FromRgb(1, 2, 3);
  s.CurveStyle = 2;
  s.CurveWidth = 5;
  s.Tolerance = 1e-12;
  s.IterMax = 1000;
  s.ProcType = FitProcType::cfp_Newton;
  s.parameters = {{"a", 2.5, 0.1, 1e-9, true, true, "Height", "\xC2\xB5V"},
                  {"b", -1e-300, 0, 0, false, false, std::string(300, 'd'), ""}};
  s.templates = {{"lor", "1/(1+t^2)", "Lorentzian"}};
  return s;
}

std::unique_ptr<TDBLParameter> Parameter(const std::string& name, double value = 0) {
  ParameterSettings settings;
  settings.Name = name;
  settings.Value = value;
  return std::make_unique<TDBLParameter>(settings);
}

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
      {"end of a fit", [](TCurFit& f) { f.Change(false); }, true, false, true},
      {"reset", [](TCurFit& f) { f.Reset(); }, true, true, false},
  };
  for (const Row& row : rows) {
    TCurFit fit;
    fit.AddParameter(Parameter("a", 3));
    fit.AddParameter(Parameter("b", nan));
    fit.SetRightMarginUsed(true);
    fit.SetRightMargin(9);
    fit.Change(false);
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
  fit.DeleteParameter(3);
  EXPECT_EQ(fit.NParams(), 2);
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

TEST(CurveFit, ReportsItself) {
  TCurFit fresh;
  EXPECT_THAT(
      fresh.Report(),
      ElementsAre("   C F   S E T T I N G S", "_______________________________", "Status = cf_None",
                  "XVarName = x", "Expression = ", "NPoints = 150", "Tolerance = 3E-8",
                  "ProcType = cfp_Powell", "LeftMargin = 0; used = No",
                  "RightMargin = 0; used = No", "IterMax = 200", "Number of defined parameters: 0",
                  "_______________________________", "***",
                  "_______________________________________________",
                  "G E N E R A T E D   V A R I A B L E S",
                  "_______________________________________________",
                  "_______________________________________________", "E X P R E S S I O N", ""));
  TCurFit fit;
  FitSettings settings = OddSettings();
  settings.Expression = "c:=a*LOR+b";
  settings.parameters[1].Description = "Zero";
  settings.ProcType = FitProcType::cfp_SimplexPowell;
  fit.SetSettings(settings, true);
  fit.Prepare();
  fit.Value(1);
  const std::vector<std::string> report = fit.Report();
  EXPECT_THAT(
      std::vector<std::string>(report.begin() + 7, report.end()),
      ElementsAre(
          "ProcType = Unknown", "LeftMargin = -1.5; used = Yes",
          "RightMargin = 0.333333333333333; used = No", "IterMax = 1000",
          "Number of defined parameters: 2", "_______________________________",
          "*** Prm # 1 (Height) ***", "       a = 2.5 \xC2\xB5V -> varied -> printed",
          "*** Prm # 2 (Zero) ***", "       b = -1E-300", "***", "Number of defined templates: 1",
          "_______________________________", "*** Tmpl # 1 (Lorentzian) ***",
          "       lor = 1/(1+t^2)", "_______________________________________________",
          "G E N E R A T E D   V A R I A B L E S",
          "_______________________________________________", "Var # 1: Name = c; Value = 1.25",
          "_______________________________________________", "E X P R E S S I O N",
          "c:=a*1/(1+t^2)+b"));
  EXPECT_THAT(
      fit.SettingsText(),
      ElementsAre("CURVE FITTING SETTINGS", "======================================",
                  "Expression = c:=a*LOR+b", "X Var Name = t; Margins : from -1.5 to NONE",
                  "*** Prm # 1 (Height, \xC2\xB5V) ***", "Name = a; Value = 2.5; Vary = Yes",
                  "*** Prm # 2 (Zero, ) ***", "Name = b; Value = -1E-300; Vary = No"));
}

TEST(CurveFit, ComesBackFromItsStoredForm) {
  const FitSettings settings = OddSettings();
  for (const WriterMode mode : {WriterMode::Typed, WriterMode::Text}) {
    TCurFit fit;
    fit.SetSettings(settings, true);
    TCurFit back;
    back.AddParameter(Parameter("gone"));
    back.LoadFromStream(fit.SaveToStream(mode), TCurFit::Compile::No);
    EXPECT_EQ(back.Settings(), settings);
    EXPECT_FALSE(back.Modified());
    TCurFit assigned;
    assigned.Assign(fit);
    EXPECT_EQ(assigned.Settings(), settings);
    EXPECT_DOUBLE_EQ(assigned.Value(2), 0.5);
  }
  const std::string text = StoredModel({}, WriterMode::Text);
  EXPECT_TRUE(
      text.starts_with("\x06\x09"
                       "CurFit39S\x06\x01"
                       "0"))
      << text;
  EXPECT_TRUE(
      text.ends_with("\x06\x06"
                     "End 0S\x06\x05"
                     "false"))
      << text;
}

TEST(CurveFit, PassesOverStoredValuesOutOfRange) {
  FitSettings wrong;
  wrong.Status = static_cast<FitStatus>(4);
  wrong.ProcType = static_cast<FitProcType>(5);
  wrong.Tolerance = -1;
  wrong.IterMax = 0;
  wrong.NPoints = 0;
  EXPECT_EQ(ReadStoredModel(StoredModel(wrong, WriterMode::Typed)), FitSettings());
  FitSettings twice;
  twice.parameters.resize(3);
  twice.parameters[1].Name = "p";
  twice.parameters[2].Name = "";
  TCurFit fit;
  fit.LoadFromStream(StoredModel(twice, WriterMode::Typed), TCurFit::Compile::No);
  EXPECT_EQ(fit.NParams(), 1);
}

TEST(CurveFit, SurvivesDamageAnywhere) {
  const std::string whole = StoredModel(OddSettings(), WriterMode::Typed);
  const auto refused = [](const std::string& bytes) {
    TCurFit fit;
    fit.AddParameter(Parameter("gone"));
    try {
      fit.LoadFromStream(bytes, TCurFit::Compile::Yes);
    } catch (const StreamError&) {
      EXPECT_EQ(fit.NParams(), 0);
      return true;
    } catch (const Error&) {
      return false;
    }
    EXPECT_LE(fit.NParams(), 2);
    return false;
  };
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_TRUE(refused(whole.substr(0, size))) << size;
  }
  EXPECT_TRUE(refused(whole + '\0'));
  for (std::size_t i = 0; i < whole.size(); ++i) {
    for (const int change : {0x01, 0x80, 0xFF}) {
      std::string damaged = whole;
      damaged[i] = static_cast<char>(damaged[i] ^ change);
      refused(damaged);
    }
  }
}

}  // namespace
}  // namespace tarnwick
