#include "app/fit/function_files.h"

#include <string_view>

#include "base/error.h"
#include "base/prompt.h"
#include "desk/prompts/file_chooser.h"
#include "desk/prompts/file_trouble.h"
#include "fit/model/fit_function_file.h"

namespace tarnwick {

FitSettings ReadFunction(const std::filesystem::path& file) {
  try {
    return LoadFitFunction(file);
  } catch (const FileError& error) {
    // The fixed text stands alone: the file is the one just chosen.
    if (error.Text() == kWrongFileFormat) throw Error(kWrongFileFormat);
    throw;
  }
}

bool LoadFunction(const FunctionFiles& files, FitSettings& model) {
  const auto chosen = files.chooser.FunctionToLoad(files.folder);
  if (!chosen) return false;
  const std::filesystem::path file = FitFunctionPath(*chosen);
  try {
    model = ReadFunction(file);
  } catch (const Error& error) {
    if (error.what() == std::string_view(kWrongFileFormat)) {
      model.parameters.clear();
      model.templates.clear();
    }
    files.prompt.Tell(error.what());
    return false;
  }
  files.current.name = file.filename();
  return true;
}

bool SaveFunction(const FunctionFiles& files, const FitSettings& model) {
  const auto chosen = files.chooser.FunctionToSave(files.folder / files.current.name);
  if (!chosen) return false;
  const std::filesystem::path file = FitFunctionPath(*chosen);
  if (!MayReplace(file, files.prompt)) return false;
  try {
    SaveFitFunction(file, model);
  } catch (const Error& error) {
    files.prompt.Tell(error.what());
    return false;
  }
  files.current.name = file.filename();
  return true;
}

}  // namespace tarnwick
