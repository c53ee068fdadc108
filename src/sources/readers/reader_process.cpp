#include "sources/readers/reader_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include "base/descriptor.h"
#include "base/error.h"
#include "data/packed/unpack.h"

extern char** environ;

namespace tarnwick {
namespace {

constexpr std::string_view kTitle = "Loading data";
constexpr int kPause = 50;        // ms between two looks at whether the user cancelled
constexpr int kQuietPauses = 10;  // before progress is shown
constexpr std::size_t kMostAnswer = std::size_t{8} << 30;
constexpr std::size_t kMostTrouble = 4096;

std::string FindProgram(const ReaderProgram& program, const std::string& file) {
  std::error_code error;  // what cannot be asked is not there
  const std::filesystem::path own =
      std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
  std::vector<std::filesystem::path> folders = {own, own.parent_path() / "lib" / "tarnwick"};
  for (const QString& folder : QCoreApplication::libraryPaths()) {
    folders.emplace_back(folder.toStdString());
  }
  for (const std::filesystem::path& folder : folders) {
    const std::filesystem::path found = folder / program.name;
    if (std::filesystem::is_regular_file(found, error)) return found.string();
  }
  throw FileError("The program that reads " + std::string(program.of_what) + ", " +
                      std::string(program.name) +
                      ", is missing; install Tarnwick again, or build it with that option",
                  file, "");
}

/// A pipe that a child writes to.
class Pipe {
 public:
  explicit Pipe(const std::string& file) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
      throw FileError("No reader can be started", file, std::generic_category().message(errno));
    }
    reading_ = std::make_unique<Descriptor>(ends[0]);
    writing_ = std::make_unique<Descriptor>(ends[1]);
  }

  int ForReading() const { return reading_->Value(); }
  int ForWriting() const { return writing_->Value(); }
  /// The end comes once the child has ended, too.
  void CloseWriting() { writing_.reset(); }

 private:
  std::unique_ptr<Descriptor> reading_;
  std::unique_ptr<Descriptor> writing_;
};

/// A process that is ended with its owner.
class Child {
 public:
  Child(const std::string& program, const std::vector<std::string>& words, int output, int trouble,
        const std::string& file) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, trouble, STDERR_FILENO);
    std::vector<std::string> texts = words;
    texts.insert(texts.begin(), program);
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    const int failed =
        posix_spawn(&id_, program.c_str(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failed == 0) return;
    id_ = -1;
    throw FileError("The reader cannot be started", file, std::generic_category().message(failed));
  }
  ~Child() {
    if (id_ <= 0) return;
    kill(id_, SIGKILL);
    Wait();
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  /// The status of the ended process.
  int Wait() {
    int status = 0;
    while (waitpid(id_, &status, 0) < 0 && errno == EINTR) {
    }
    id_ = -1;
    return status;
  }

 private:
  pid_t id_ = -1;
};

/// What comes through one pipe until its other end is closed.
struct Incoming {
  int descriptor;
  std::size_t most;
  std::string text = {};
  bool open = true;

  void Read(const std::string& file) {
    constexpr std::size_t kPiece = std::size_t{1} << 16;
    const std::size_t before = text.size();
    text.resize(before + kPiece);
    const ssize_t size = read(descriptor, text.data() + before, kPiece);
    text.resize(before + static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    open = size > 0 || (size < 0 && errno == EINTR);
    if (text.size() > most) throw FileError("The reader answers more than can be taken", file, "");
  }
};

void Await(Incoming& answer, Incoming& trouble, const std::string& file, Progress& progress) {
  for (int pauses = 0; answer.open || trouble.open;) {
    std::array<pollfd, 2> ends = {pollfd{answer.open ? answer.descriptor : -1, POLLIN, 0},
                                  pollfd{trouble.open ? trouble.descriptor : -1, POLLIN, 0}};
    if (poll(ends.data(), ends.size(), kPause) == 0) {
      ++pauses;
      if (pauses == kQuietPauses) progress.Begin(kTitle, file, 0);
      const bool going = pauses < kQuietPauses || progress.Advance(0);
      if (!going || progress.Cancelled()) throw UnpackingCancelled("Reading was cancelled");
    }
    if (ends[0].revents != 0) answer.Read(file);
    if (ends[1].revents != 0) trouble.Read(file);
  }
}

std::string FirstLine(const std::string& text) {
  return text.substr(0, text.find('\n'));
}

std::string WhyEnded(int status, const std::string& said) {
  if (WIFEXITED(status) && !said.empty()) return said;
  return "The reader of such files ended before its time: the file is damaged, or holds more than "
         "can be read";
}

}  // namespace

std::string AskReader(const ReaderProgram& program, const std::vector<std::string>& words,
                      const std::string& file, Progress& progress) {
  const std::string found = FindProgram(program, file);
  Pipe output(file);
  Pipe said(file);
  Child child(found, words, output.ForWriting(), said.ForWriting(), file);
  output.CloseWriting();
  said.CloseWriting();
  Incoming answer{output.ForReading(), kMostAnswer};
  Incoming trouble{said.ForReading(), kMostTrouble};
  Await(answer, trouble, file, progress);
  const int status = child.Wait();
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return std::move(answer.text);
  throw FileError(WhyEnded(status, FirstLine(trouble.text)), file, "");
}

}  // namespace tarnwick
