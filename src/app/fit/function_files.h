// Fitting functions read and written at the user's wish. Knows how he is asked and which file he works on; no window.
#pragma once

#include <filesystem>
#include <optional>

#include "fit/model/fit_settings.h"

namespace tarnwick {

class FileChooser;
class Prompt;

/// The file that a model was read from or written to last.
struct FunctionFile {
  std::filesystem::path name = "noname.tfn";
};

/// What reading and writing works with.
struct FunctionFiles {
  FileChooser& chooser;
  Prompt& prompt;
  std::filesystem::path folder;  ///< where the dialogs begin
  FunctionFile& current;
};

/// Reads a file. Throws Error: "Wrong File Format!", or the system's reason.
FitSettings ReadFunction(const std::filesystem::path& file);

/// Puts the function of a chosen file into `model`; its ending is taken for ".tfn". Of a file that holds none the user is told;
/// parameters and templates are gone then, as reading begins with that. False: nothing was read.
bool LoadFunction(const FunctionFiles& files, FitSettings& model);

/// Writes the model under a chosen name, whose ending becomes ".tfn", and asks before it replaces a file; tells when that
/// fails. False: nothing was written.
bool SaveFunction(const FunctionFiles& files, const FitSettings& model);

}  // namespace tarnwick
