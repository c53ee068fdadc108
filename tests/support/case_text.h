// The case files of tests: where they are, and the escapes of their texts.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick::testing {

/// A line with "\t", "\r" and "\xHH" as the bytes they stand for; any other character behind "\" is itself.
[[nodiscard]] std::string Unescaped(std::string_view line);

/// The files of this folder of the project that end so, in the order of their names.
[[nodiscard]] std::vector<std::filesystem::path> FilesOf(std::string_view folder,
                                                         std::string_view ending);

}  // namespace tarnwick::testing
