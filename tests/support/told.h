// What a part of the program makes of many inputs, told in lines and compared with a file of sections "== name".
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick::testing {

/// The lines of section `name` of `file`, which is given from tests/ on.
std::vector<std::string> Written(const std::filesystem::path& file, std::string_view name);

/// Expects these lines to be the section `name` of `file`, or like it line by line. A failure shows the section as it would
/// have to stand there: to be taken over when it has been read and found right.
using Alike = std::function<bool(const std::string& told, const std::string& written)>;
void ExpectTold(const std::filesystem::path& file, std::string_view name,
                const std::vector<std::string>& told, const Alike& alike = std::equal_to<>());

}  // namespace tarnwick::testing
