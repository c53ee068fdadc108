#include "sources/lines/line_channel.h"

#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <iterator>
#include <memory>
#include <string>
#include <system_error>
#include <utility>

#include "base/error.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostAtOnce = std::size_t{64} << 10;
constexpr int kConnectMs = 5000;

struct Speed {
  std::uint32_t baud;
  speed_t code;
};
constexpr Speed kSpeeds[] = {
    {300, B300},       {600, B600},       {1200, B1200},     {2400, B2400},      {4800, B4800},
    {9600, B9600},     {19200, B19200},   {38400, B38400},   {57600, B57600},    {115200, B115200},
    {230400, B230400}, {460800, B460800}, {921600, B921600}, {1000000, B1000000}};

[[noreturn]] void Fail(const LinePlace& place, const std::string& reason) {
  throw Error("Cannot reach " + place.Text() + " (" + reason + ")");
}

[[noreturn]] void FailBySystem(const LinePlace& place, int reason) {
  Fail(place, std::generic_category().message(reason));
}

std::unique_ptr<Descriptor> OpenFile(const LinePlace& place, int flags) {
  auto file =
      std::make_unique<Descriptor>(::open(place.address.c_str(), flags | O_NONBLOCK | O_CLOEXEC));
  if (file->Value() < 0) FailBySystem(place, errno);
  return file;
}

std::unique_ptr<Descriptor> OpenPipe(const LinePlace& place) {
  std::unique_ptr<Descriptor> file = OpenFile(place, O_RDONLY);
  struct stat status {};
  if (::fstat(file->Value(), &status) != 0) FailBySystem(place, errno);
  if (!S_ISFIFO(status.st_mode)) Fail(place, "It is no named pipe");
  return file;
}

std::unique_ptr<Descriptor> OpenSerial(const LinePlace& place) {
  const auto speed = std::ranges::find(kSpeeds, place.baud, &Speed::baud);
  if (speed == std::end(kSpeeds)) Fail(place, "No serial port has this speed");
  std::unique_ptr<Descriptor> file = OpenFile(place, O_RDONLY | O_NOCTTY);
  termios settings{};
  if (::tcgetattr(file->Value(), &settings) != 0) FailBySystem(place, errno);
  // Eight bits, no parity, one stop bit, no control of any kind.
  ::cfmakeraw(&settings);
  settings.c_cflag |= CLOCAL | CREAD;
  settings.c_cflag &= ~static_cast<tcflag_t>(CSTOPB | CRTSCTS);
  ::cfsetspeed(&settings, speed->code);
  if (::tcsetattr(file->Value(), TCSANOW, &settings) != 0) FailBySystem(place, errno);
  return file;
}

using Addresses = std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)>;

Addresses AddressesOf(const LinePlace& place, int flags) {
  addrinfo wanted{};
  wanted.ai_socktype = SOCK_STREAM;
  wanted.ai_flags = flags | AI_NUMERICSERV;
  addrinfo* found = nullptr;
  const std::string port = std::to_string(place.port);
  const int trouble = ::getaddrinfo(place.address.c_str(), port.c_str(), &wanted, &found);
  if (trouble != 0) Fail(place, ::gai_strerror(trouble));
  return {found, &::freeaddrinfo};
}

std::unique_ptr<Descriptor> SocketFor(const addrinfo& address) {
  return std::make_unique<Descriptor>(
      ::socket(address.ai_family, address.ai_socktype | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

/// The system's reason why it is not connected, or 0.
int Connect(const Descriptor& socket, const addrinfo& address, int wake) {
  if (::connect(socket.Value(), address.ai_addr, address.ai_addrlen) == 0) return 0;
  if (errno != EINPROGRESS) return errno;
  std::array<pollfd, 2> waited = {{{socket.Value(), POLLOUT, 0}, {wake, POLLIN, 0}}};
  if (::poll(waited.data(), waited.size(), kConnectMs) <= 0) return ETIMEDOUT;
  if (waited[0].revents == 0) return ECANCELED;
  int reason = 0;
  socklen_t size = sizeof reason;
  ::getsockopt(socket.Value(), SOL_SOCKET, SO_ERROR, &reason, &size);
  return reason;
}

std::unique_ptr<Descriptor> OpenTcp(const LinePlace& place, int wake) {
  const Addresses addresses = AddressesOf(place, 0);
  int reason = ECONNREFUSED;
  for (const addrinfo* address = addresses.get(); address; address = address->ai_next) {
    std::unique_ptr<Descriptor> socket = SocketFor(*address);
    reason = socket->Value() < 0 ? errno : Connect(*socket, *address, wake);
    if (reason == 0) return socket;
  }
  FailBySystem(place, reason);
}

std::unique_ptr<Descriptor> OpenListener(const LinePlace& place) {
  const Addresses addresses = AddressesOf(place, AI_PASSIVE);
  std::unique_ptr<Descriptor> socket = SocketFor(*addresses);
  const int yes = 1;
  if (socket->Value() >= 0)
    ::setsockopt(socket->Value(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  if (socket->Value() < 0 ||
      ::bind(socket->Value(), addresses->ai_addr, addresses->ai_addrlen) != 0 ||
      ::listen(socket->Value(), 1) != 0) {
    FailBySystem(place, errno);
  }
  return socket;
}

}  // namespace

void LineChannel::Open(int wake) {
  // A pipe is never without a reader: who began to write meanwhile would be ended, and what he wrote lost.
  if (place_.kind != LinePlace::Kind::Pipe) source_.reset();
  has_writer_ = false;
  switch (place_.kind) {
    case LinePlace::Kind::Pipe:
      source_ = OpenPipe(place_);
      break;
    case LinePlace::Kind::Tcp:
      source_ = OpenTcp(place_, wake);
      has_writer_ = true;
      break;
    case LinePlace::Kind::Listen:
      if (!listener_) listener_ = OpenListener(place_);
      break;
    case LinePlace::Kind::Serial:
      source_ = OpenSerial(place_);
      has_writer_ = true;
      break;
  }
}

void LineChannel::Close() {
  source_.reset();
  listener_.reset();
  has_writer_ = false;
}

ChannelEvent LineChannel::Read(std::string& bytes, int wake, int milliseconds) {
  const int handle = source_ ? source_->Value() : listener_->Value();
  std::array<pollfd, 2> waited = {{{handle, POLLIN, 0}, {wake, POLLIN, 0}}};
  if (::poll(waited.data(), waited.size(), milliseconds) <= 0 || waited[0].revents == 0)
    return ChannelEvent::Nothing;
  if (source_) return ReadNow(bytes);
  Accept();
  return ChannelEvent::Nothing;
}

void LineChannel::Accept() {
  auto caller = std::make_unique<Descriptor>(
      ::accept4(listener_->Value(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
  if (caller->Value() < 0) return;  // it has gone again
  source_ = std::move(caller);
  has_writer_ = true;
}

ChannelEvent LineChannel::ReadNow(std::string& bytes) {
  const std::size_t before = bytes.size();
  bytes.resize(before + kMostAtOnce);
  const ssize_t got = ::read(source_->Value(), bytes.data() + before, kMostAtOnce);
  bytes.resize(before + static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
  if (got > 0) {
    has_writer_ = true;
    return ChannelEvent::Bytes;
  }
  const bool waits = got < 0 && (errno == EAGAIN || errno == EINTR);
  return waits ? ChannelEvent::Nothing : ChannelEvent::Gone;
}

}  // namespace tarnwick
