// The batch program as whole processes: what a small question costs from starting to ending, beside an empty program.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

const std::string kProgram = TARNWICK_BIN_DIR "/tarnwick-cli";

/// A folder of files to ask about, gone at the end.
class Files {
 public:
  Files() {
    std::string pattern = (std::filesystem::temp_directory_path() / "batch_bench_XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    folder_ = pattern;
    std::ofstream table(Table());
    table << "x,y\n";
    for (int i = 0; i < 100'000; ++i) table << i * 0.001 << ',' << (i * 7919) % 10'007 << '\n';
  }
  ~Files() { std::filesystem::remove_all(folder_); }
  Files(const Files&) = delete;
  Files& operator=(const Files&) = delete;

  [[nodiscard]] std::string Table() const { return (folder_ / "table.csv").string(); }
  [[nodiscard]] std::string Graph() const { return (folder_ / "graph.tgr").string(); }

 private:
  std::filesystem::path folder_;
};

/// Runs a program to its end, its answer going nowhere.
void Run(const std::vector<std::string>& words) {
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t pid = 0;
  const int failed = posix_spawnp(&pid, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  if (failed != 0 || waitpid(pid, &status, 0) != pid || status != 0) {
    throw std::runtime_error("failed: " + words.front() + ' ' + words.back());
  }
}

void BM_Process(benchmark::State& state, const std::vector<std::string>& words) {
  for (auto _ : state) Run(words);
}

[[maybe_unused]] const bool kRegistered = [] {
  static const Files files;
  Run({kProgram, "import", TARNWICK_EXAMPLES_DIR "/decay.dat", "-o", files.Graph()});
  const std::pair<const char*, std::vector<std::string>> rows[] = {
      {"batch/empty program", {"/bin/true"}},
      {"batch/info of a small graph (at most 15 ms)", {kProgram, "info", files.Graph(), "--json"}},
      {"batch/import of 1e5 rows (at most 20 ms)", {kProgram, "import", files.Table(), "--json"}},
      {"batch/every one of 1e5 rows", {kProgram, "total", files.Table(), "--every", "1"}},
  };
  for (const auto& [name, words] : rows) {
    benchmark::RegisterBenchmark(name, BM_Process, words)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
  }
  return true;
}();

}  // namespace
