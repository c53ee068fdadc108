#include "postgres_server.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QSqlDatabase>
#include <QTemporaryDir>
#include <QThread>
#include <csignal>
#include <fstream>

#include "support/run_statements.h"
#include "support/temporary_folder.h"

namespace tarnwick::testing {
namespace {

constexpr uid_t kNobody = 65534;
constexpr int kPatienceMs = 30'000;

/// Of the newest version that is installed.
std::string FolderOfPrograms() {
  std::string newest;
  std::error_code none;
  for (const auto& entry : std::filesystem::directory_iterator("/usr/lib/postgresql", none)) {
    const std::filesystem::path programs = entry.path() / "bin";
    if (std::filesystem::exists(programs / "initdb")) newest = std::max(newest, programs.string());
  }
  return newest;
}

}  // namespace

PostgresServer::PostgresServer() : programs_(FolderOfPrograms()) {
  if (programs_.empty()) {
    why_not_ = "PostgreSQL (initdb) is not installed";
    return;
  }
  if (!QSqlDatabase::drivers().contains("QPSQL")) {
    why_not_ = "The driver QPSQL of Qt is not installed";
    return;
  }
  QTemporaryDir folder;
  folder.setAutoRemove(false);
  folder_ = folder.path().toStdString();
  std::ofstream(folder_ + "/password") << kPassword << '\n';
  if (geteuid() == 0 && (chown(folder_.c_str(), kNobody, kNobody) != 0 ||
                         chown((folder_ + "/password").c_str(), kNobody, kNobody) != 0)) {
    why_not_ = "The server's folder cannot be given to another user";
    return;
  }
  const int made =
      Begin("initdb", {"-D", folder_ + "/data", "-U", "owner", "-A", "scram-sha-256", "--no-sync",
                       "-E", "UTF8", "--locale=C", "--pwfile=" + folder_ + "/password"})
          ->Wait();
  if (made != 0) {
    why_not_ = "initdb failed: " + ReadFile(folder_ + "/log");
    ADD_FAILURE() << why_not_;
    return;
  }
  Start();
}

PostgresServer::~PostgresServer() {
  if (process_) {
    process_->Signal(SIGINT);
    process_->Wait();
  }
  std::error_code left;
  if (!folder_.empty()) std::filesystem::remove_all(folder_, left);
}

std::unique_ptr<Spawned> PostgresServer::Begin(const std::string& program,
                                               const std::vector<std::string>& arguments) const {
  // The server ends with a test program that is ended from outside.
  std::vector<std::string> words = {"setpriv", "--pdeathsig=INT"};
  if (geteuid() == 0)
    words.insert(words.end(), {"--reuid=65534", "--regid=65534", "--clear-groups"});
  words.push_back(programs_ + '/' + program);
  words.insert(words.end(), arguments.begin(), arguments.end());
  return std::make_unique<Spawned>(words, folder_, folder_ + "/log");
}

void PostgresServer::Start() {
  const std::vector<std::string> words = {"-D", folder_ + "/data",   "-k", folder_,
                                          "-c", "listen_addresses=", "-F"};
  process_ = Begin("postgres", words);
  for (int waited = 0; waited < kPatienceMs; waited += 50) {
    if (Answers()) return;
    // Processes of one that was killed may keep its memory for a moment, which ends a new one at once.
    if (process_->HasEnded()) {
      process_->Wait();
      process_ = Begin("postgres", words);
    }
    QThread::msleep(50);
  }
  why_not_ = "The server does not answer";
  ADD_FAILURE() << why_not_;
}

void PostgresServer::Kill() {
  process_->Signal(SIGKILL);
  process_->Wait();
  process_.reset();
}

void PostgresServer::Name(QSqlDatabase& base) const {
  base.setHostName(QString::fromStdString(folder_));
  base.setUserName("owner");
  base.setPassword(kPassword);
  base.setDatabaseName("postgres");
}

bool PostgresServer::Answers() const {
  bool open = false;
  {
    QSqlDatabase base = QSqlDatabase::addDatabase("QPSQL", "answers");
    Name(base);
    open = base.open();
  }
  QSqlDatabase::removeDatabase("answers");
  return open;
}

std::string PostgresServer::Url() const {
  return "postgresql://owner@/postgres?host=" + folder_;
}

void PostgresServer::Run(const std::vector<std::string>& statements) const {
  RunStatements(
      "QPSQL", [this](QSqlDatabase& base) { Name(base); }, statements);
}

}  // namespace tarnwick::testing
