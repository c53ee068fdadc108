#include "data/columns/error_columns.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "base/error.h"
#include "base/number_text.h"
#include "data/import/import_file.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

/// "y ± dy" for every DataSet, with " | x ± dx" behind it.
std::string Described(const ImportResult& result) {
  std::string text;
  const auto errors = [](const ErrorRule& rule, const std::string& column) {
    const char* const kinds[] = {"", " +- column ", " +- ", " +- % ", " +- sqrt"};
    const bool number = rule.kind == ErrorKind::Constant || rule.kind == ErrorKind::Percent;
    return kinds[static_cast<std::size_t>(rule.kind)] + column +
           (number || rule.value != 0 ? GeneralText(rule.value) : "");
  };
  for (const auto& series : result.series) {
    text += (text.empty() ? "" : ", ") + series->SeriesName() +
            errors(series->Errors().y, series->Source().YErrorColumn);
  }
  const TDataSeries& first = *result.series.front();
  const std::string x = errors(first.Errors().x, first.Source().XErrorColumn);
  return text + (x.empty() ? "" : " | x" + x);
}

std::string TableOf(const std::string& names) {
  std::string text = names + "\n";
  const auto columns = std::ranges::count(names, ',') + 1;
  for (int row = 1; row < 9; ++row) {
    for (int column = 0; column < columns; ++column) {
      text += column == 0 ? std::to_string(100 * row)
                          : "," + std::to_string(row + 10 * (row * column % 7));
    }
    text += '\n';
  }
  return text;
}

TEST(ErrorColumns, BelongToTheColumnsTheyAreNamedAfterOrStandBehind) {
  const struct {
    const char *names, *expected;
  } kCases[] = {
      {"x,y,dy", "y +- column dy"},
      {"x,y,dx,dy", "y +- column dy | x +- column dx"},
      {"t,dx,dy", "dx, dy"},  // steps
      {"t,rate,drate", "rate +- column drate"},
      {"time,v,dtime,dv", "v, dtime, dv"},  // steps, too
      {"x,y,\xC2\xB1", "y +- column \xC2\xB1"},
      {"t,a [V],b [V],d [A]", "a [V], b [V], d [A]"},  // no error of a
      {"t,U,I,U_err,sigma I", "U +- column U_err, I +- column sigma I"},
      {"t,t err,U,+-", "U +- column +- | x +- column t err"},
      {"t,err,U,error", "U +- column error | x +- column err"},
      {"t,U (mV),std U (mV)", "U (mV) +- column std U (mV)"},
      {"t,a,b,err,std", "a +- column err, b +- column std"},
      {"t,a,std,sem", "a +- column std"},
      {"t,err,a", "a"},               // of X or of a, nobody knows
      {"t,a,rel. err", "a"},          // a part of a
      {"t,a,uncertainty of b", "a"},  // there is no b
      {"t,err", "err"},
  };
  for (const auto& row : kCases) {
    EXPECT_EQ(Described(ImportText(TableOf(row.names), "t")), row.expected) << row.names;
  }
}

// 2, 3, 4, ... are how far 1, 3, 6, 10 go: by "d" differences may be meant, by other letters and by words errors only.
TEST(ErrorColumns, AreNoStepsOfTheColumnWhereTheirNameMayMeanThose) {
  const char* const rows = "\n0,1,0\n1,3,2\n2,6,3\n3,10,4\n4,15,5\n5,21,6\n6,28,7\n7,36,8\n";
  for (const auto& [name, is_error] : std::initializer_list<std::pair<std::string, bool>>{
           {"d_q", false}, {"delta q", false}, {"s_q", true}, {"u(q)", true}, {"e_q", true}}) {
    EXPECT_EQ(Described(ImportText("t,q," + name + rows, "t")),
              (is_error ? "q +- column " : "q, ") + name);
  }
}

TEST(ErrorColumns, AreKnownByTheWaysTheirNamesAreWritten) {
  for (const char* const name :
       {"yerr",    "y_err",       "err_y",   "y.err",     "y err",
        "y-error", "y(err)",      "y [err]", "Y_ERR",     "yErr",
        "sy",      "SY",          "s_y",     "y_se",      "se_y",
        "SE",      "S.E.",        "SE y",    "yse",       "ey",
        "e_y",     "u_y",         "u(y)",    "\xCE\x94y", "\xCE\xB4 y",
        "delta y", "deltay",      "d_y",     "sigma_y",   "\xCF\x83y",
        "ysd",     "sdy",         "std y",   "stdev_y",   "ysem",
        "unc y",   "uncertainty", "y unc.",  "y_err_low", "standard error of y"}) {
    EXPECT_EQ(Described(ImportText(TableOf(std::string("x,y,") + name), "t")),
              std::string("y +- column ") + name);
  }
  for (const char* const name :
       {"error rate", "y error rate", "standard", "sex", "sz", "day", "dz", "delta", "use", "dose",
        "max error", "Se", "yield", "slope", "u(x)", "sx2", "dt"}) {
    EXPECT_EQ(Described(ImportText(TableOf(std::string("x,y,") + name), "t")),
              std::string("y, ") + name);
  }
  const struct {
    const char *names, *expected;
  } kCases[] = {
      {"x,xerr,y,yerr", "y +- column yerr | x +- column xerr"},
      {"x,y,sx,sy", "y +- column sy | x +- column sx"},
      {"x,y,u(x),u(y)", "y +- column u(y) | x +- column u(x)"},
      {"t,signal,yerr,xerr", "signal +- column yerr | x +- column xerr"},
      {"t,yerr,signal", "signal +- column yerr"},
      {"t,a,b,yerr", "a, b +- column yerr"},
      {"t,U (mV),I (mA),sU,sI", "U (mV) +- column sU, I (mA) +- column sI"},
      {"t,flow rate,flowrate_se", "flow rate +- column flowrate_se"},
      {"T,p,sp", "p, sp"},  // by chance, unlike the next
      {"x,a,b,sa,sb", "a +- column sa, b +- column sb"},
      {"t,sx,sy,sz", "sx, sy, sz"},
      {"t,Ex,Ey,Ez", "Ex, Ey, Ez"},
      {"t,ex,ey", "ex, ey"},
      {"t,U,ey", "U +- column ey"},
      {"t,ET,EC", "ET, EC"},
      {"V (mL),E (V),pH", "E (V), pH"},
      {"t,NE,SE,SW", "NE, SE, SW"},
      {"As,Se,Cd", "Se, Cd"},
  };
  for (const auto& row : kCases) {
    EXPECT_EQ(Described(ImportText(TableOf(row.names), "t")), row.expected) << row.names;
  }
}

TEST(ErrorColumns, OfALetterHaveValuesOfErrors) {
  const struct {
    const char *text, *expected;
  } kCases[] = {
      {"x,y,sy\n1,5,1\n2,6,-1\n3,8,-2\n4,9,1\n", "y, sy"},
      {"x,y,sy\n1,5,60\n2,6,70\n3,8,80\n4,9,90\n", "y, sy"},
      {"t,T,\xCE\x94T\n1,5,1\n2,6,2\n3,8,1\n4,9,3\n5,12,0\n", "T, \xCE\x94T"},  // steps
      {"x,y,yerr\n1,5,0\n2,6,0\n3,8,0\n4,9,0\n", "y"},
  };
  for (const auto& row : kCases) {
    EXPECT_EQ(Described(ImportText(row.text, "t")), row.expected) << row.text;
  }
}

TEST(ErrorColumns, AreTakenAsTheUserSays) {
  const struct {
    std::vector<std::string> y, errors;
    const char *x_error, *expected;
  } kCases[] = {
      {{}, {"none"}, nullptr, "U, I"},
      {{}, {" 0.5 "}, "2%", "U +- 0.5, I +- 0.5 | x +- % 2"},
      {{}, {"sqrt"}, "#1", "I +- sqrt | x +- column U"},
      {{"I"}, {}, nullptr, "I +- column I_err"},
      {{"I"}, {"u"}, nullptr, "I +- column U"},
      {{"I", "U"}, {"5%", "I_err"}, nullptr, "I +- % 5, U +- column I_err"},
      {{}, {"I_err"}, nullptr, "U, I +- column I_err"},
      {{"U", "I"},
       {"t"},
       nullptr,
       "The errors of Y are given 1 time for 2 DataSets (\"U\" and \"I\"): one for each is needed, "
       "in "
       "their order"},
      {{"I", "U"}, {"#3"}, nullptr, "I +- column I_err, U"},
      {{"I"}, {"J_err"}, nullptr, "There is no column \"J_err\": t, columns: t, U, I, I_err"},
      {{}, {"0"}, nullptr, "An error is a number above 0, not \"0\""},
      {{}, {"-5%"}, nullptr, "An error is a number above 0, not \"-5%\""},
      {{}, {""}, nullptr, "An error is a number above 0, not \"\""},
      {{}, {}, "sqrt", "The square root of counts is an error of Y, not of X"},
  };
  for (const auto& row : kCases) {
    std::string described;
    try {
      ImportOptions options;
      options.y_columns = row.y;
      for (const std::string& text : row.errors) options.y_errors.push_back(ParseErrorOption(text));
      if (row.x_error != nullptr) options.x_errors = ParseErrorOption(row.x_error);
      described = Described(ImportText(TableOf("t,U,I,I_err"), "t", options));
    } catch (const Error& error) {
      described = error.what();
    }
    EXPECT_EQ(described, row.expected);
  }
}

TEST(ErrorColumns, AreReadAgainAndToldOf) {
  const testing::TemporaryFolder folder;
  const auto path =
      folder.Write("t.csv", "t,U,U_err\n1,5,0.1\n2,6,0\n3,7,-1\n4,8,\n5,9,n/a\n6,none,1\n");
  const ImportResult result = ImportFile(path);
  TDataSeries& series = *result.series.at(0);
  EXPECT_EQ(result.errors_note, "\"U_err\" is taken as the error of \"U\"");
  ImportOptions scaled;
  scaled.y_expression = "1000*Y";
  EXPECT_EQ(
      ImportFile(path, scaled).errors_note,
      "\"U_err\" is taken as the error of \"U\", as read: no expression of X or Y is applied to "
      "errors");
  EXPECT_EQ(result.reports.at(0).ErrorsText(),
            "4 rows give no usable error of Y (1 empty, 1 not a number, 1 zero, 1 negative)");
  EXPECT_EQ(series.PointCount(), 5);
  TDataSeries* const all[] = {&series};
  folder.Write("t.csv", "U_err,U,t\n0.25,5,1\n");
  EXPECT_EQ(RefreshAll(all).at(0).ErrorsText(), "");
  EXPECT_EQ(YErrorAt(series, series.Points().Front()), 0.25);
  folder.Write("t.csv", "U,t\n5,1\n");
  EXPECT_EQ(RefreshAll(all).at(0).ErrorsText(), "no column gives the errors of Y");
}

}  // namespace
}  // namespace tarnwick
