#include "sources/lines/line_place.h"

#include <array>
#include <charconv>
#include <filesystem>
#include <optional>
#include <system_error>

#include "base/error.h"
#include "base/text_encoding.h"

namespace tarnwick {
namespace {

using enum LinePlace::Kind;

struct Scheme {
  LinePlace::Kind kind;
  std::string_view name;
};
constexpr std::array<Scheme, 4> kSchemes = {
    {{Pipe, "pipe:"}, {Tcp, "tcp:"}, {Listen, "listen:"}, {Serial, "serial:"}}};
constexpr std::string_view kBaud = "?baud=";

[[noreturn]] void Refuse(std::string_view text) {
  throw Error("No source of lines is named by \"" + std::string(text) +
              "\": pipe:FILE, tcp:HOST:PORT, listen:PORT, listen:ADDRESS:PORT and "
              "serial:DEVICE?baud=9600 name one");
}

template <class Number>
std::optional<Number> WholeNumber(std::string_view text) {
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool all = error == std::errc() && end == text.data() + text.size();
  return all && number > 0 ? std::optional(number) : std::nullopt;
}

std::string Absolute(std::string_view file) {
  std::error_code ignored;  // what has no absolute name is told when it is opened
  const std::filesystem::path absolute = std::filesystem::absolute(file, ignored);
  return absolute.empty() ? std::string(file) : absolute.lexically_normal().string();
}

/// "HOST:PORT", "[ADDRESS]:PORT"; without a host that of `place`.
bool TakeHostAndPort(std::string_view text, LinePlace& place) {
  const std::size_t colon = text.rfind(':');
  const std::optional<std::uint16_t> port =
      WholeNumber<std::uint16_t>(colon == text.npos ? text : text.substr(colon + 1));
  if (!port) return false;
  place.port = *port;
  if (colon != text.npos) {
    std::string_view host = text.substr(0, colon);
    if (host.starts_with('[') && host.ends_with(']')) host = host.substr(1, host.size() - 2);
    place.address = host;
  }
  return !place.address.empty();
}

bool TakeDevice(std::string_view text, LinePlace& place) {
  const std::size_t baud = text.find(kBaud);
  const std::optional<std::uint32_t> stated =
      baud == text.npos ? kUsualBaud : WholeNumber<std::uint32_t>(text.substr(baud + kBaud.size()));
  if (!stated) return false;
  place.baud = *stated;
  place.address = Absolute(text.substr(0, baud));
  return baud != 0;
}

bool TakeRest(std::string_view text, LinePlace& place) {
  if (text.empty()) return false;
  switch (place.kind) {
    case Pipe:
      place.address = Absolute(text);
      return true;
    case Listen:
      place.address = kOwnMachine;
      return TakeHostAndPort(text, place);
    case Tcp:
      return TakeHostAndPort(text, place);
    case Serial:
      return TakeDevice(text, place);
  }
  return false;
}

}  // namespace

std::string LinePlace::Text() const {
  std::string text(kSchemes[static_cast<std::size_t>(kind)].name);
  const bool bracketed = (kind == Tcp || kind == Listen) && address.find(':') != address.npos;
  text += bracketed ? '[' + address + ']' : address;
  if (kind == Tcp || kind == Listen) text += ':' + std::to_string(port);
  if (kind == Serial) text += std::string(kBaud) + std::to_string(baud);
  return text;
}

LinePlace ParseLinePlace(std::string_view text) {
  const std::string lower = LowerAscii(text);
  for (const Scheme& scheme : kSchemes) {
    if (!lower.starts_with(scheme.name)) continue;
    LinePlace place;
    place.kind = scheme.kind;
    if (TakeRest(text.substr(scheme.name.size()), place)) return place;
  }
  Refuse(text);
}

}  // namespace tarnwick
