// A JSON value as commands put answers together: objects keep the order in which their members were named. Knows nothing of
// files; the library behind it stands in json.cpp alone.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

namespace tarnwick::cli {

struct JsonMember;

class Json {
 public:
  using Items = std::vector<Json>;
  using Members = std::vector<JsonMember>;
  using Value = std::variant<std::nullptr_t, bool, std::int64_t, std::uint64_t, double, std::string,
                             Items, Members>;

  Json(std::nullptr_t /*null*/);
  template <std::integral Number>
  Json(Number number);
  Json(double number);
  Json(std::string text);
  Json(std::string_view text);
  Json(const char* text);
  Json(const std::vector<std::string>& texts);
  /// The object with these members.
  Json(std::initializer_list<JsonMember> members);

  static Json Array();
  static Json Object();

  const Value& Get() const { return value_; }

  /// The item added to an array.
  Json& Append(Json item);
  /// The member of an object, null when it is new.
  Json& operator[](std::string_view name);

 private:
  Value value_;
};

struct JsonMember {
  std::string name;
  Json value;
};

// Here, where members are known: what makes a value must be able to take it back.
inline Json::Json(std::nullptr_t /*null*/) : value_(nullptr) {}

template <std::integral Number>
Json::Json(Number number) {
  if constexpr (std::is_same_v<Number, bool>) {
    value_ = number;
  } else if constexpr (std::is_signed_v<Number>) {
    value_ = static_cast<std::int64_t>(number);
  } else {
    value_ = static_cast<std::uint64_t>(number);
  }
}

inline Json::Json(double number) : value_(number) {}

/// A number as JSON: undefined is null, infinities are the strings "INF" and "-INF".
Json JsonNumber(double value);
/// The same, null when there is no value.
Json JsonNumber(const std::optional<double>& value);

/// Writes the value indented by two blanks a level, every number in its shortest form, bytes that are no UTF-8 replaced.
void WriteJson(const Json& value, std::ostream& out);

/// A number, text, truth value or null for people: a text as it stands, null as `null_text`, the rest as JSON.
std::string PlainText(const Json& value, std::string_view null_text);

}  // namespace tarnwick::cli
