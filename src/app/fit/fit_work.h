// What the user does with the fitting model of a document's current DataSet: choosing a function, fitting, taking results
// over into the graph. Each is one step to be undone. Knows documents; no window and no menu.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "analysis/fit_job.h"
#include "fit/fit_result.h"
#include "fit/model/fit_settings.h"

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

/// Fits whatever the model's state, and shows the result. Throws as ShowFit.
void FitAgain(Document& document, const FitRunOptions& options, Prompt& prompt);

/// Puts the function of a file in place of the model and draws it. Throws Error: "Wrong File Format!", "No DataSet
/// Found!", or why the function cannot be compiled.
void ApplyFitFunction(Document& document, const std::filesystem::path& file);

}  // namespace tarnwick
