// What the user does with the fitting model of a document's current DataSet: choosing a function, fitting, taking results
// over into the graph. Each is one step to be undone. Knows documents; no window and no menu.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "analysis/fits/fit_job.h"
#include "app/fit/fit_request.h"
#include "fit/fit_result.h"
#include "fit/model/fit_settings.h"
#include "results/model_comparison.h"

namespace tarnwick {

class Document;
class Prompt;
class TSeries;

/// The current DataSet. Throws Error "No DataSet Found!".
TSeries& CurrentDataSet(Document& document);

/// Makes the model show what `status` says. A final result or every step is fitted for first, where the model or the points
/// changed since its last fit. Throws Error, also when there is no current DataSet, no expression to show or no
/// point to fit; everything is then as before.
void ShowFit(Document& document, FitStatus status, Prompt& prompt);

/// Fits the current DataSet, with those beside it as one, whatever the state of the models, and shows the results. False where
/// the fit of one failed, which is told. Throws Error as ShowFit, and where a parameter cannot be shared or the fit of several
/// fails; everything is then as before.
bool FitAgain(Document& document, const FitRequest& request, Prompt& prompt);

/// Takes all points where the DataSet's last fit did.
FitRunOptions OptionsOfLast(const TSeries& series);

/// Fits each of the models to the current DataSet's points, whose own model stays. Nothing when the user ends it. Throws as
/// CompareModels, and as ShowFit.
std::optional<ModelComparison> CompareFitsOf(Document& document, std::vector<NamedModel> models,
                                             const FitRunOptions& options);

/// The parameters of the current DataSet's model with starting values from all its points; nothing where these tell none.
/// Throws Error as GuessStart.
std::optional<std::vector<ParameterSettings>> GuessStartOf(Document& document);

/// Puts the function of a file in place of the model and draws it. Throws Error: "Wrong File Format!", "No DataSet
/// Found!", or why the function cannot be compiled.
void ApplyFitFunction(Document& document, const std::filesystem::path& file);

}  // namespace tarnwick
