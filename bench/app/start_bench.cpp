// From starting a program to its mapped window, and the memory it then holds: the empty window, the desktop without and
// with a file, in one run on an X server of their own.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

/// What the program complains of goes nowhere.
pid_t Spawn(const std::vector<std::string>& words, posix_spawn_file_actions_t& actions) {
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  pid_t pid = 0;
  if (posix_spawnp(&pid, arguments[0], &actions, nullptr, arguments.data(), environ) != 0) {
    throw std::runtime_error("cannot start " + words.front());
  }
  return pid;
}

pid_t Spawn(const std::vector<std::string>& words) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  const pid_t pid = Spawn(words, actions);
  posix_spawn_file_actions_destroy(&actions);
  return pid;
}

void End(pid_t pid) {
  kill(pid, SIGTERM);
  waitpid(pid, nullptr, 0);
}

/// An X server without window manager, which tells of every window that is mapped.
class Server {
 public:
  Server() {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], 3);
    pid_ = Spawn({"Xvfb", "-displayfd", "3", "-screen", "0", "1600x1200x24", "-noreset"}, actions);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    std::string number;
    for (char letter = 0; read(ends[0], &letter, 1) == 1 && letter != '\n';) number += letter;
    close(ends[0]);
    if (number.empty()) throw std::runtime_error("no X server");
    setenv("DISPLAY", (":" + number).c_str(), 1);
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    connection_ = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection_)) throw std::runtime_error("no X server at " + number);
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection_);
  }
  ~Server() {
    xcb_disconnect(connection_);
    End(pid_);
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  void WaitFor(std::uint8_t wanted) {
    while (const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event{
        xcb_wait_for_event(connection_), std::free}) {
      if ((event->response_type & 0x7F) == wanted) return;
    }
    throw std::runtime_error("the X server is gone");
  }

 private:
  pid_t pid_ = 0;
  xcb_connection_t* connection_ = nullptr;
  xcb_window_t root_ = 0;
};

double ResidentMegabytes(pid_t pid) {
  std::ifstream status("/proc/" + std::to_string(pid) + "/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) return std::atof(line.c_str() + 6) / 1024;
  }
  return 0;
}

void BM_Start(benchmark::State& state, const std::vector<std::string>& words) {
  static Server server;
  double megabytes = 0;
  for (auto _ : state) {
    const Clock::time_point start = Clock::now();
    const pid_t pid = Spawn(words);
    server.WaitFor(XCB_MAP_NOTIFY);
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
    usleep(100'000);  // what is painted after the mapping counts as memory
    megabytes = ResidentMegabytes(pid);
    End(pid);
    server.WaitFor(XCB_DESTROY_NOTIFY);
  }
  state.counters["MB"] = megabytes;
}

const std::string kDesktop = TARNWICK_BIN_DIR "/tarnwick";

[[maybe_unused]] const bool kRegistered = [] {
  const std::pair<const char*, std::vector<std::string>> rows[] = {
      {"start/empty window (limit 1)", {TARNWICK_BIN_DIR "/empty_window"}},
      {"start/tarnwick (at most 2.5, 45 MB)", {kDesktop}},
      {"start/tarnwick with a file", {kDesktop, TARNWICK_EXAMPLES_DIR "/decay.dat"}},
  };
  for (const auto& [name, words] : rows) {
    benchmark::RegisterBenchmark(name, BM_Start, words)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1)
        ->Repetitions(15)
        ->ReportAggregatesOnly();
  }
  return true;
}();

}  // namespace
