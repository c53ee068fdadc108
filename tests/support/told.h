// What a part of the program makes of many inputs, told in lines and compared with a file of sections "== name".
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick::testing {

/// Expects these lines to be the section `name` of `file`, which is given from tests/ on. A failure shows the section as it
/// would have to stand there: to be taken over when it has been read and found right.
void ExpectTold(const std::filesystem::path& file, std::string_view name,
                const std::vector<std::string>& told);

}  // namespace tarnwick::testing
