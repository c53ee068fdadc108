// The numbers of a fit as figures with their names, and as people read them: rounded as the errors tell, in lines, in a
// table. Panel, print, clipboard and batch program all go by it. Knows results; no graph and no widget.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "fit/model/fit_record.h"

namespace tarnwick {

/// A value and its standard error with the same decimals, two significant digits of the error: "398.2", "1.5". A value that
/// this would leave hardly a digit has three of its own: "0.0312", "40". Without a usable error the value has six digits and
/// the error is empty.
struct RoundedValue {
  std::string value;
  std::string error;
  int exponent = 0;  ///< power of ten taken out of both; 0 for none
};
RoundedValue Rounded(double value, double error);

/// "398.2 ± 1.5", "(1.204 ± 0.012)×10⁻⁹", and the units behind.
std::string PlusMinusText(double value, double error, const std::string& units);

/// One parameter of a fitted model; the error is undefined where there is none.
struct FittedParameter {
  ParameterSettings settings;
  double error = 0;
  bool at_bound = false;
};
std::vector<FittedParameter> FittedParameters(const FitSettings& model, const FitResult& result);

/// The value, rounded as its error tells: "1.204×10⁻⁹".
std::string ValueText(const FittedParameter& parameter);
/// Why a parameter has no error: "fixed", "at its bound" or "not determined"; empty when it has one.
std::string WithoutErrorText(const FittedParameter& parameter);
/// What of a parameter stands in its error column: rounded, or why it has none.
std::string ErrorText(const FittedParameter& parameter);

enum class FigureKind { Measure, Count };

/// One statistic of a fit under both its names.
struct FitFigure {
  const char* key = "";  ///< in documents and lists: "r_squared"
  std::string label;     ///< in tables for people: "R²"; empty where those leave it out
  double value = 0;      ///< undefined where the data cannot tell
  int asked_for = 0;     ///< 1 for the one that tables for people begin with
  FigureKind kind = FigureKind::Measure;
};
/// All statistics, in the order of documents.
std::vector<FitFigure> FiguresOf(const FitStatistics& statistics);

/// Label and value of each statistic that has one, the most asked for first; of a fit that failed what it went through; of a
/// DataSet's share in a fit of several those that are its own.
std::vector<std::pair<std::string, std::string>> FigureTexts(const FitResult& result);

/// Everything, for a notebook or a letter.
std::string FitAsText(const std::string& data_set, const FitSettings& model,
                      const FitResult& result);
/// Parameters, statistics and correlations in all digits, columns kept apart by tabs, for a spreadsheet.
std::string FitAsTable(const FitSettings& model, const FitResult& result);

/// What changed of its own DataSet since the last fit, in a sentence, or that a file held one that is damaged; empty where there
/// is nothing to say. FitChangedText looks at those fitted with it, too.
std::string ChangedText(const LastFit& last);

/// What the DataSets of one fit have in common: "k and b have one value in all."
std::string SharedText(const FitOfSeveral& together);

/// What the sum of squares is called: "χ²" where errors are absolute.
const char* NameOfSum(const FitWeighting& weighting);

/// What weights and standard errors are founded on: "unit weights, errors scaled by the residuals".
std::string ErrorModelText(const FitStatistics& statistics);

}  // namespace tarnwick
