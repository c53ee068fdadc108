// Ctrl+C while the batch program waits: it must end, say so and leave nothing.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <thread>

#include "support/project_paths.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

TEST(Interrupt, EndsTheWaitForStandardInput) {
  const testing::TemporaryFolder folder;
  const std::string out = folder.File("out.tgr").string();
  const std::string program = (testing::ProgramFolder() / "tarnwick-cli").string();
  std::array<int, 2> input{};
  std::array<int, 2> errors{};
  ASSERT_EQ(::pipe2(input.data(), O_CLOEXEC), 0);
  ASSERT_EQ(::pipe2(errors.data(), O_CLOEXEC), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    ::signal(SIGINT, SIG_DFL);
    ::dup2(input[0], STDIN_FILENO);
    ::dup2(errors[1], STDERR_FILENO);
    ::execl(program.c_str(), "tarnwick-cli", "import", "-", "-o", out.c_str(), nullptr);
    ::_exit(127);
  }
  ::close(errors[1]);
  // Once it waits in read(0, ...) the handler stands.
  const std::string call = "/proc/" + std::to_string(child) + "/syscall";
  for (int i = 0; i < 500 && testing::ReadFile(call).rfind("0 0x0 ", 0) != 0; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  ::kill(child, SIGINT);
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 1);
  std::array<char, 200> text{};
  const ssize_t length = ::read(errors[0], text.data(), text.size());
  EXPECT_EQ(std::string(text.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0))),
            "tarnwick-cli: cancelled\n");
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
  for (const int end : {input[0], input[1], errors[0]}) ::close(end);
}

}  // namespace
}  // namespace tarnwick
