#include "cli/output/output.h"

#include <cmath>

#include "base/error.h"
#include "base/number_text.h"
#include "base/undefined.h"

namespace tarnwick::cli {
namespace {

void Write(const Json& value, std::size_t depth, std::ostream& out);

void WriteString(const Json& text, std::ostream& out) {
  // Names come from files: bytes that are no UTF-8 must not stop the answer.
  out << text.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void WriteMembers(const Json& whole, std::size_t depth, std::ostream& out) {
  const char* before = "\n";
  for (const auto& member : whole.items()) {
    out << before << std::string(2 * depth + 2, ' ');
    if (whole.is_object()) {
      WriteString(member.key(), out);
      out << ": ";
    }
    Write(member.value(), depth + 1, out);
    before = ",\n";
  }
  out << '\n' << std::string(2 * depth, ' ');
}

/// As the library writes a document, but with every number in its shortest form, which the library misses now and then.
void Write(const Json& value, std::size_t depth, std::ostream& out) {
  if (value.is_structured()) {
    out << (value.is_object() ? '{' : '[');
    if (!value.empty()) WriteMembers(value, depth, out);
    out << (value.is_object() ? '}' : ']');
  } else if (value.is_number_float() && std::isfinite(value.get<double>())) {
    out << ShortestText(value.get<double>());
  } else {
    WriteString(value, out);
  }
}

}  // namespace

Json JsonNumber(double value) {
  if (IsUndefined(value)) return nullptr;
  if (std::isinf(value)) return value > 0 ? "INF" : "-INF";
  return value;
}

Json JsonNumber(const std::optional<double>& value) {
  return value ? JsonNumber(*value) : Json(nullptr);
}

void Output::Flush() {
  if (!out_.flush()) throw Error("the answer cannot be written");
}

void Output::Document(const Json& document) {
  Write(document, 0, out_);
  out_ << '\n';
}

}  // namespace tarnwick::cli
