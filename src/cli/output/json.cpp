#include "cli/output/json.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

#include "base/number_text.h"
#include "base/undefined.h"

namespace tarnwick::cli {
namespace {

/// A value that is neither array nor object. Names come from files: bytes that are no UTF-8 must not stop the answer.
template <class Value>
std::string Scalar(const Value& value) {
  return nlohmann::json(value).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

/// The shortest form, which the library misses now and then.
std::string Scalar(double number) {
  return std::isfinite(number) ? ShortestText(number) : Scalar(nullptr);
}

void Write(const Json& value, std::size_t depth, std::ostream& out);

void WriteElement(const Json& item, std::size_t depth, std::ostream& out) {
  Write(item, depth, out);
}
void WriteElement(const JsonMember& member, std::size_t depth, std::ostream& out) {
  out << Scalar(member.name) << ": ";
  Write(member.value, depth, out);
}

template <class Elements>
void WriteElements(const Elements& elements, std::size_t depth, std::ostream& out) {
  if (elements.empty()) return;
  const char* before = "\n";
  for (const auto& element : elements) {
    out << before << std::string(2 * depth + 2, ' ');
    WriteElement(element, depth + 1, out);
    before = ",\n";
  }
  out << '\n' << std::string(2 * depth, ' ');
}

struct Writer {
  std::size_t depth;
  std::ostream& out;

  void operator()(const Json::Items& items) const {
    out << '[';
    WriteElements(items, depth, out);
    out << ']';
  }
  void operator()(const Json::Members& members) const {
    out << '{';
    WriteElements(members, depth, out);
    out << '}';
  }
  void operator()(const auto& scalar) const { out << Scalar(scalar); }
};

void Write(const Json& value, std::size_t depth, std::ostream& out) {
  std::visit(Writer{depth, out}, value.Get());
}

}  // namespace

Json::Json(std::string text) : value_(std::move(text)) {}
Json::Json(std::string_view text) : value_(std::string(text)) {}
Json::Json(const char* text) : value_(std::string(text)) {}
Json::Json(const std::vector<std::string>& texts) : value_(Items(texts.begin(), texts.end())) {}
Json::Json(std::initializer_list<JsonMember> members) : value_(Members(members)) {}

Json Json::Array() {
  Json array(nullptr);
  array.value_ = Items();
  return array;
}

Json Json::Object() {
  Json object(nullptr);
  object.value_ = Members();
  return object;
}

Json& Json::Append(Json item) {
  return std::get<Items>(value_).emplace_back(std::move(item));
}

Json& Json::operator[](std::string_view name) {
  auto& members = std::get<Members>(value_);
  for (JsonMember& member : members) {
    if (member.name == name) return member.value;
  }
  return members.emplace_back(JsonMember{std::string(name), nullptr}).value;
}

Json JsonNumber(double value) {
  if (IsUndefined(value)) return nullptr;
  if (std::isinf(value)) return value > 0 ? "INF" : "-INF";
  return value;
}

Json JsonNumber(const std::optional<double>& value) {
  return value ? JsonNumber(*value) : Json(nullptr);
}

void WriteJson(const Json& value, std::ostream& out) {
  Write(value, 0, out);
}

std::string PlainText(const Json& value, std::string_view null_text) {
  if (std::holds_alternative<std::nullptr_t>(value.Get())) return std::string(null_text);
  if (const auto* text = std::get_if<std::string>(&value.Get())) return *text;
  if (const auto* number = std::get_if<double>(&value.Get())) return ShortestText(*number);
  std::string text;
  std::visit(
      [&text](const auto& scalar) {
        if constexpr (!std::is_class_v<std::remove_cvref_t<decltype(scalar)>>)
          text = Scalar(scalar);
      },
      value.Get());
  return text;
}

}  // namespace tarnwick::cli
