#include "fit/model/model_report.h"

#include <initializer_list>

#include "base/number_text.h"

namespace tarnwick {

namespace {

constexpr const char* kRule = "_______________________________";
constexpr const char* kLongRule = "_______________________________________________";

const char* YesNo(bool value) {
  return value ? "Yes" : "No";
}

std::string Number(double value) {
  return GeneralText(value);
}

std::string MarginLine(const char* name, double margin, bool used) {
  return std::string(name) + " = " + Number(margin) + "; used = " + YesNo(used);
}

std::string MarginOrNone(double margin, bool used) {
  return used ? Number(margin) : "NONE";
}

std::string Heading(const char* what, std::size_t i, const std::string& description) {
  return std::string("*** ") + what + " # " + std::to_string(i) + " (" + description + ") ***";
}

void Append(std::vector<std::string>& lines, std::initializer_list<std::string> more) {
  lines.insert(lines.end(), more);
}

void AppendSettings(std::vector<std::string>& lines, const FitSettings& s) {
  Append(lines, {"   C F   S E T T I N G S", kRule, "Status = " + std::string(NameOf(s.Status)),
                 "XVarName = " + s.XVarName, "Expression = " + s.Expression,
                 "NPoints = " + std::to_string(s.NPoints), "Tolerance = " + Number(s.Tolerance),
                 "ProcType = " + std::string(NameOf(s.ProcType)),
                 MarginLine("LeftMargin", s.LeftMargin, s.LeftMarginUsed),
                 MarginLine("RightMargin", s.RightMargin, s.RightMarginUsed),
                 "IterMax = " + std::to_string(s.IterMax),
                 "Number of defined parameters: " + std::to_string(s.parameters.size()), kRule});
}

void AppendParameters(std::vector<std::string>& lines,
                      const std::vector<ParameterSettings>& parameters) {
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const ParameterSettings& one = parameters[i];
    std::string line = "       " + one.Name + " = " + Number(one.Value);
    if (!one.Units.empty()) line += " " + one.Units;
    if (one.Vary) line += " -> varied";
    if (one.Printed) line += " -> printed";
    Append(lines, {Heading("Prm", i + 1, one.Description), line});
  }
  lines.emplace_back("***");
}

void AppendTemplates(std::vector<std::string>& lines,
                     const std::vector<TemplateSettings>& templates) {
  if (templates.empty()) return;
  Append(lines, {"Number of defined templates: " + std::to_string(templates.size()), kRule});
  for (std::size_t i = 0; i < templates.size(); ++i) {
    const TemplateSettings& one = templates[i];
    Append(lines,
           {Heading("Tmpl", i + 1, one.Description), "       " + one.Name + " = " + one.Text});
  }
}

}  // namespace

std::vector<std::string> Report(TCurFit& model) {
  std::vector<std::string> lines;
  const FitSettings settings = model.Settings();
  AppendSettings(lines, settings);
  AppendParameters(lines, settings.parameters);
  AppendTemplates(lines, settings.templates);
  Append(lines, {kLongRule, "G E N E R A T E D   V A R I A B L E S", kLongRule});
  std::size_t i = 0;
  for (const TGeneratedVariable& one : model.GeneratedVariables()) {
    const bool text = one.ResultType() == WordKind::String;
    lines.push_back("Var # " + std::to_string(++i) + ": Name = " + one.Name() +
                    "; Value = " + (text ? std::string(one.AsString()) : Number(one.Value())));
  }
  // A model without an expression compiles nothing: the parser's text is then one of long ago.
  Append(lines, {kLongRule, "E X P R E S S I O N",
                 settings.Expression.empty() ? std::string() : model.CurrentText()});
  return lines;
}

std::vector<std::string> SettingsText(const TCurFit& model) {
  const FitSettings s = model.Settings();
  std::vector<std::string> lines = {
      "CURVE FITTING SETTINGS",
      "======================================", "Expression = " + s.Expression,
      "X Var Name = " + s.XVarName + "; Margins : from " +
          MarginOrNone(s.LeftMargin, s.LeftMarginUsed) + " to " +
          MarginOrNone(s.RightMargin, s.RightMarginUsed)};
  for (std::size_t i = 0; i < s.parameters.size(); ++i) {
    const ParameterSettings& one = s.parameters[i];
    Append(lines, {Heading("Prm", i + 1, one.Description + ", " + one.Units),
                   "Name = " + one.Name + "; Value = " + Number(one.Value) +
                       "; Vary = " + YesNo(one.Vary)});
  }
  return lines;
}

std::string_view NameOf(FitStatus status) {
  switch (status) {
    case FitStatus::cf_None:
      return "cf_None";
    case FitStatus::cf_Function:
      return "cf_Function";
    case FitStatus::cf_FinResult:
      return "cf_FinResult";
    case FitStatus::cf_EveryStep:
      return "cf_EveryStep";
  }
  return "Unknown";
}

std::string_view NameOf(FitProcType type) {
  switch (type) {
    case FitProcType::cfp_Powell:
      return "cfp_Powell";
    case FitProcType::cfp_Simplex:
      return "cfp_Simplex";
    case FitProcType::cfp_ConjGrad:
      return "cfp_ConjGrad";
    case FitProcType::cfp_Newton:
      return "cfp_Newton";
    case FitProcType::cfp_SimplexPowell:
      return "Unknown";
  }
  return "Unknown";
}

}  // namespace tarnwick
