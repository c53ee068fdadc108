#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "base/descriptor.h"
#include "sources/lines/line_place.h"
#include "sources/lines/line_rows.h"
#include "sources/lines/line_source.h"
#include "sources/streams/stream_clock.h"
#include "stream_watcher.h"
#include "support/refusal.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::Refusal;
using testing::StreamWatcher;
using testing::TemporaryFolder;

TEST(LinePlace, IsReadBackAsItIsWritten) {
  const std::pair<const char*, const char*> rows[] = {
      {"pipe:/run/sensor", "pipe:/run/sensor"},
      {"TCP:host.example:5000", "tcp:host.example:5000"},
      {"tcp:[::1]:5000", "tcp:[::1]:5000"},
      {"listen:5000", "listen:127.0.0.1:5000"},
      {"listen:0.0.0.0:5000", "listen:0.0.0.0:5000"},
      {"serial:/dev/ttyS0", "serial:/dev/ttyS0?baud=9600"},
      {"serial:/dev/ttyS0?baud=115200", "serial:/dev/ttyS0?baud=115200"},
  };
  for (const auto& [given, text] : rows) {
    EXPECT_EQ(ParseLinePlace(given).Text(), text);
    EXPECT_EQ(ParseLinePlace(text), ParseLinePlace(given));
  }
  for (const char* const wrong :
       {"", "udp:1", "pipe:", "tcp:host", "tcp::5", "listen:0", "listen:70000", "listen:5x",
        "serial:?baud=1", "serial:a?baud="}) {
    EXPECT_THAT(Refusal([&] { ParseLinePlace(wrong); }), ::testing::HasSubstr("No source of lines"))
        << wrong;
  }
}

std::chrono::system_clock::time_point NoonOf1970() {
  return std::chrono::system_clock::time_point(std::chrono::hours(12));
}

TEST(StreamClock, TellsTheDayOfThisPlace) {
  for (const auto& [zone, hours] : {std::pair("<+05>-5", 5.0), {"<-03>3", -3.0}, {"UTC0", 0.0}}) {
    ::setenv("TZ", zone, 1);
    ::tzset();
    EXPECT_DOUBLE_EQ(LocalDay(NoonOf1970()), 25569.5 + hours / 24);
  }
  ::unsetenv("TZ");
  ::tzset();
}

TEST(LineRows, AreCutAsTheDescriptionSays) {
  struct Row {
    const char* name;
    void (*describe)(TDSInfo& info);
    std::string text;
    std::vector<double> x;
    std::vector<double> last_y;  // of each column
    int unreadable = 0;
  };
  const auto usual = [](TDSInfo&) {};
  const Row rows[] = {
      {"two numbers", usual, "1,2\n3;4\r\n5\t6\n7 8\n", {1, 3, 5, 7}, {8}},
      {"one number is Y of the row's number", usual, "7\n8\n", {1, 2}, {8}},
      {"several Y", usual, "1,2\n2,3,4\n", {1, 2}, {3, 4}},
      {"garbage, notes and blank lines", usual, "# up\n\nhello\n1,x\n2,3\n", {2}, {3}, 2},
      {"an unended line waits", usual, "1,2\n3,", {1}, {2}},
      {"the clock",
       [](TDSInfo& i) { i.XDataColumn = kLineClock; },
       "5,6\n",
       {LocalDay(NoonOf1970())},
       {5, 6}},
      {"decimal commas",
       [](TDSInfo& i) {
         i.TextSeparators = ";";
         i.XFormat = i.YFormat = ColumnFormat::DecimalComma;
       },
       "1,5;2,5\n",
       {1.5},
       {2.5}},
      {"a line too long is passed over",
       usual,
       std::string(kLongestLine + 1, '7') + "\n1,2\n",
       {1},
       {2},
       1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    TDSInfo info = LineSourceInfo("listen:5000");
    row.describe(info);
    LineRows lines(info, &NoonOf1970);
    StreamRows got;
    const std::size_t half = row.text.size() / 2;  // as it may come
    lines.Take(std::string_view(row.text).substr(0, half), got);
    lines.Take(std::string_view(row.text).substr(half), got);
    EXPECT_EQ(got.x, row.x);
    std::vector<double> last;
    for (const auto& column : got.y) last.push_back(column.back());
    EXPECT_EQ(last, row.last_y);
    EXPECT_EQ(got.unreadable, row.unreadable);
  }
}

TEST(LineRows, RefuseColumnsThatNoLineHas) {
  TDSInfo info = LineSourceInfo("listen:5000");
  info.YDataColumn = "Voltage";
  EXPECT_THAT(Refusal([&] { LineRows rows(info); }), ::testing::HasSubstr("Y of a line"));
  info.YDataColumn = "Y3";
  EXPECT_EQ(LineColumns(info).y, 2U);
  info.XDataColumn = "time";
  EXPECT_THAT(Refusal([&] { LineColumns(info); }), ::testing::HasSubstr("X of a line"));
}

void Write(int handle, std::string_view text) {
  ASSERT_EQ(WriteAll(handle, text), 0);
}

TEST(LineStream, FollowsAPipeWhoseWriterGoesAndComesBack) {
  const TemporaryFolder folder;
  const std::string pipe = folder.File("sensor").string();
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  StreamWatcher watcher(LineSourceInfo("pipe:" + pipe));
  watcher.stream->Start();
  ASSERT_TRUE(watcher.WaitFor(StreamState::Away)) << "nobody writes yet";
  {
    const Descriptor writer(::open(pipe.c_str(), O_WRONLY));
    Write(writer.Value(), "1,1\n2,2\n3,");
    ASSERT_TRUE(watcher.WaitForPoints(2));
    EXPECT_EQ(watcher.stream->State(), StreamState::Running);
  }
  ASSERT_TRUE(watcher.WaitFor(StreamState::Away));
  const Descriptor writer(::open(pipe.c_str(), O_WRONLY));
  Write(writer.Value(), "4,4\n");
  ASSERT_TRUE(watcher.WaitForPoints(3));
  EXPECT_EQ(watcher.Points(), "1:1 2:2 | 4:4") << "what was cut off is not joined to what comes";
  watcher.stream->Pause();
  Write(writer.Value(), "5,5\n");
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  watcher.stream->Start();
  Write(writer.Value(), "6,6\n");
  ASSERT_TRUE(watcher.WaitForPoints(4));
  EXPECT_EQ(watcher.Points(), "1:1 2:2 | 4:4 | 6:6");
}

/// A socket of this machine, at a free port.
class Server {
 public:
  Server() : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* const plain = reinterpret_cast<sockaddr*>(&address);
    EXPECT_EQ(::bind(socket_.Value(), plain, sizeof address), 0);
    socklen_t size = sizeof address;
    ::getsockname(socket_.Value(), plain, &size);
    port = std::to_string(ntohs(address.sin_port));
  }
  void Listen() const { EXPECT_EQ(::listen(socket_.Value(), 1), 0); }
  std::unique_ptr<Descriptor> Caller() const {
    return std::make_unique<Descriptor>(::accept(socket_.Value(), nullptr, nullptr));
  }
  std::string port;

 private:
  Descriptor socket_;
};

TEST(LineStream, CallsAServerUntilItAnswersAndAgainWhenItWasAway) {
  const Server server;
  StreamWatcher watcher(LineSourceInfo("tcp:127.0.0.1:" + server.port));
  watcher.stream->Start();
  ASSERT_TRUE(watcher.WaitFor(StreamState::Away));
  EXPECT_THAT(watcher.stream->Told(), ::testing::HasSubstr("Connection refused"));
  server.Listen();
  Write(server.Caller()->Value(), "1,1\n2,2\n");
  ASSERT_TRUE(watcher.WaitForPoints(2));
  const auto caller = server.Caller();
  Write(caller->Value(), "3,3\n");
  ASSERT_TRUE(watcher.WaitForPoints(3));
  EXPECT_EQ(watcher.Points(), "1:1 2:2 | 3:3");
}

TEST(LineStream, ListensAndTakesAFloodWithoutLoss) {
  std::string port;
  {
    const Server free_port;
    port = free_port.port;
  }
  StreamWatcher watcher(LineSourceInfo("listen:" + port));
  watcher.stream->Start();
  ASSERT_TRUE(watcher.WaitFor(StreamState::Away)) << watcher.stream->Told();
  const Descriptor caller(::socket(AF_INET, SOCK_STREAM, 0));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(port)));
  ASSERT_EQ(::connect(caller.Value(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  constexpr int kRows = 120'000;  // more than are taken in a second
  std::string text;
  for (int i = 0; i < kRows; ++i) text += std::to_string(i) + "," + std::to_string(i) + "\n";
  Write(caller.Value(), text);
  EXPECT_TRUE(watcher.WaitForPoints(kRows)) << watcher.series.PointCount();
  EXPECT_EQ(watcher.lost + watcher.unreadable, 0);
  watcher.stream->Stop();
  StreamWatcher another(LineSourceInfo("listen:" + port));
  another.stream->Start();
  EXPECT_TRUE(another.Wait([&] {
    return another.stream->Told().find("waits") != std::string::npos;
  })) << "the port is not free again: "
      << another.stream->Told();
}

TEST(LineStream, ReadsASerialPort) {
  const Descriptor device(::posix_openpt(O_RDWR | O_NOCTTY));
  ASSERT_EQ(::grantpt(device.Value()) | ::unlockpt(device.Value()), 0);
  StreamWatcher watcher(
      LineSourceInfo(std::string("serial:") + ::ptsname(device.Value()) + "?baud=115200"));
  watcher.stream->Start();
  ASSERT_TRUE(watcher.WaitFor(StreamState::Running)) << watcher.stream->Told();
  ASSERT_TRUE(watcher.Wait([&] { return watcher.stream->Told().starts_with("Reading"); }));
  Write(device.Value(), "1 10\r\n2 20\r\n");
  EXPECT_TRUE(watcher.Wait([&] { return watcher.Points() == "1:10 2:20"; })) << watcher.Points();
}

TEST(LineStream, SaysWhyAPlaceCannotBeReached) {
  const TemporaryFolder folder;
  const std::string file = folder.Write("plain", "1,2\n").string();
  const std::pair<std::string, const char*> rows[] = {
      {"pipe:" + file, "It is no named pipe"},
      {"pipe:" + file + "2", "No such file"},
      {"serial:" + file, "Inappropriate ioctl"},
      {"serial:" + file + "?baud=77", "No serial port has this speed"},
  };
  for (const auto& [place, told] : rows) {
    StreamWatcher watcher(LineSourceInfo(place));
    watcher.stream->Start();
    EXPECT_TRUE(watcher.WaitFor(StreamState::Away));
    EXPECT_THAT(watcher.stream->Told(), ::testing::HasSubstr(told));
  }
}

}  // namespace
}  // namespace tarnwick
