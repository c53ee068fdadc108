#include "cli/output.h"

#include <cmath>

#include "base/undefined.h"

namespace tarnwick::cli {

Json JsonNumber(double value) {
  if (IsUndefined(value)) return nullptr;
  if (std::isinf(value)) return value > 0 ? "INF" : "-INF";
  return value;
}

Json JsonNumber(const std::optional<double>& value) {
  return value ? JsonNumber(*value) : Json(nullptr);
}

void Output::Document(const Json& document) {
  // Names come from files: bytes that are no UTF-8 must not stop the answer.
  out_ << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace tarnwick::cli
