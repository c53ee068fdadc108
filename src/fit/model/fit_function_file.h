// Fitting-function files (.tfn): one stored model and nothing else. Knows files and their one error text; nothing of
// expressions, which whoever uses the model compiles.
#pragma once

#include <filesystem>

#include "fit/model/fit_settings.h"
#include "stream/section_writer.h"

namespace tarnwick {

inline constexpr const char* kWrongFileFormat = "Wrong File Format!";

/// The name under which a model asked to be saved as `chosen` is saved: the ending becomes ".tfn".
std::filesystem::path FitFunctionPath(std::filesystem::path chosen);

/// Reads either writer mode. Throws FileError: "Wrong File Format!" with file and place, or the system's reason.
FitSettings LoadFitFunction(const std::filesystem::path& path);

/// Writes the file whole or not at all. Throws FileError.
void SaveFitFunction(const std::filesystem::path& path, const FitSettings& settings,
                     WriterMode mode = WriterMode::Typed);

}  // namespace tarnwick
