#include "fit/model/find_parameter.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "base/text_encoding.h"

namespace tarnwick {

const ParameterSettings* FindParameter(const std::vector<ParameterSettings>& parameters,
                                       std::string_view name) {
  const auto found =
      std::ranges::find(parameters, LowerAscii(name),
                        [](const ParameterSettings& one) { return LowerAscii(one.Name); });
  return found == parameters.end() ? nullptr : &*found;
}

ParameterSettings* FindParameter(std::vector<ParameterSettings>& parameters,
                                 std::string_view name) {
  const ParameterSettings* const found = FindParameter(std::as_const(parameters), name);
  return found == nullptr ? nullptr
                          : &parameters[static_cast<std::size_t>(found - parameters.data())];
}

}  // namespace tarnwick
