#include "support/spawned.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace tarnwick::testing {

Spawned::Spawned(std::vector<std::string> words, const std::filesystem::path& folder,
                 const std::string& log) {
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, log.c_str(),
                                   O_WRONLY | O_CREAT | O_APPEND, 0600);
  posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
  const int status =
      posix_spawnp(&id_, pointers.front(), &actions, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (status != 0) throw std::system_error(status, std::generic_category(), words.front());
}

Spawned::~Spawned() {
  if (id_ <= 0) return;
  Signal(SIGTERM);
  Wait();
}

void Spawned::Signal(int number) const {
  ::kill(id_, number);
}

bool Spawned::HasEnded() const {
  siginfo_t about{};
  const auto id = static_cast<id_t>(id_);
  // WNOWAIT leaves its end to be waited for.
  return ::waitid(P_PID, id, &about, WEXITED | WNOHANG | WNOWAIT) == 0 && about.si_pid == id_;
}

int Spawned::Wait() {
  int status = 0;
  while (::waitpid(id_, &status, 0) < 0 && errno == EINTR) {
  }
  id_ = 0;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace tarnwick::testing
