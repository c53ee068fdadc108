// Where lines come from, as one text that a DataSet's description keeps. Knows the form of that text; opens nothing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarnwick {

struct LinePlace {
  enum class Kind : std::uint8_t {
    Pipe,    ///< a named pipe that somebody writes to
    Tcp,     ///< a server that is called
    Listen,  ///< a port of this machine that somebody calls
    Serial   ///< a serial port
  };
  Kind kind = Kind::Pipe;
  std::string address;     ///< of a pipe its file, of a serial port its device; else a host
  std::uint16_t port = 0;  ///< of Tcp and Listen
  std::uint32_t baud = 0;  ///< of Serial

  /// "pipe:/run/sensor", "tcp:HOST:5000", "listen:127.0.0.1:5000", "serial:/dev/ttyUSB0?baud=9600"; ParseLinePlace reads it back.
  std::string Text() const;
  bool operator==(const LinePlace&) const = default;
};

/// What nobody else can reach: the address that a port is opened at unless another is named.
inline constexpr std::string_view kOwnMachine = "127.0.0.1";
inline constexpr std::uint32_t kUsualBaud = 9600;

/// The place that the user names: as Text() writes it, "listen:PORT" for this machine alone, a serial port without "?baud=" at
/// kUsualBaud, an address with colons in brackets. A file is found from any folder then. Throws Error for what names none.
LinePlace ParseLinePlace(std::string_view text);

}  // namespace tarnwick
