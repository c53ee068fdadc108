#include "fit/model/fit_function_file.h"

#include <string>

#include "base/error.h"
#include "base/mapped_file.h"
#include "base/whole_file.h"
#include "fit/model/curve_fit_file.h"
#include "stream/stream_error.h"

namespace tarnwick {

std::filesystem::path FitFunctionPath(std::filesystem::path chosen) {
  return chosen.replace_extension(".tfn");
}

FitSettings LoadFitFunction(const std::filesystem::path& path) {
  const MappedFile file(path);
  ValueReader values(file.Bytes());
  try {
    return ReadStoredModel(values);
  } catch (const StreamError& error) {
    throw FileError(kWrongFileFormat, path.string(),
                    "byte " + std::to_string(values.Position()) + ", " + error.what());
  }
}

void SaveFitFunction(const std::filesystem::path& path, const FitSettings& settings,
                     WriterMode mode) {
  WriteWholeFile(path, StoredModel(settings, mode));
}

}  // namespace tarnwick
