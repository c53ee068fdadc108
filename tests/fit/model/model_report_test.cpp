#include "fit/model/model_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/odd_model.h"

namespace tarnwick {
namespace {

using testing::ElementsAre;

TEST(ModelReport, ShowsEverySetting) {
  TCurFit fresh;
  EXPECT_THAT(
      Report(fresh),
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
  const std::vector<std::string> report = Report(fit);
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
      SettingsText(fit),
      ElementsAre("CURVE FITTING SETTINGS", "======================================",
                  "Expression = c:=a*LOR+b", "X Var Name = t; Margins : from -1.5 to NONE",
                  "*** Prm # 1 (Height, \xC2\xB5V) ***", "Name = a; Value = 2.5; Vary = Yes",
                  "*** Prm # 2 (Zero, ) ***", "Name = b; Value = -1E-300; Vary = No"));
}

}  // namespace
}  // namespace tarnwick
