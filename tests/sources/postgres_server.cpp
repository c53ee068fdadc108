#include "postgres_server.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QThread>
#include <fstream>

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
  const QString data = QString::fromStdString(folder_ + "/data");
  QProcess make;
  QStringList words =
      AsOtherUser(QString::fromStdString(programs_ + "/initdb"),
                  {"-D", data, "-U", "owner", "-A", "scram-sha-256", "--no-sync", "-E", "UTF8",
                   "--locale=C", "--pwfile=" + QString::fromStdString(folder_ + "/password")});
  make.setWorkingDirectory(QString::fromStdString(folder_));
  make.start(words.takeFirst(), words);
  if (!make.waitForFinished(kPatienceMs) || make.exitCode() != 0) {
    why_not_ = "initdb failed: " + make.readAllStandardError().toStdString();
    ADD_FAILURE() << why_not_;
    return;
  }
  Start();
}

PostgresServer::~PostgresServer() {
  if (process_) {
    ::kill(static_cast<pid_t>(process_->processId()), SIGINT);
    process_->waitForFinished(kPatienceMs);
  }
  std::error_code left;
  if (!folder_.empty()) std::filesystem::remove_all(folder_, left);
}

QStringList PostgresServer::AsOtherUser(const QString& program,
                                        const QStringList& arguments) const {
  QStringList words;
  if (geteuid() == 0) words = {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
  return words + QStringList{program} + arguments;
}

void PostgresServer::Start() {
  QStringList words =
      AsOtherUser(QString::fromStdString(programs_ + "/postgres"),
                  {"-D", QString::fromStdString(folder_ + "/data"), "-k",
                   QString::fromStdString(folder_), "-c", "listen_addresses=", "-F"});
  process_ = std::make_unique<QProcess>();
  process_->setWorkingDirectory(QString::fromStdString(folder_));
  process_->setStandardErrorFile(QString::fromStdString(folder_ + "/log"));
  process_->start(words.takeFirst(), words);
  for (int waited = 0; waited < kPatienceMs; waited += 50) {
    if (Answers()) return;
    QThread::msleep(50);
  }
  why_not_ = "The server does not answer";
  ADD_FAILURE() << why_not_;
}

void PostgresServer::Kill() {
  process_->kill();
  process_->waitForFinished(kPatienceMs);
  process_.reset();
}

bool PostgresServer::Answers() const {
  bool open = false;
  {
    QSqlDatabase base = QSqlDatabase::addDatabase("QPSQL", "answers");
    base.setHostName(QString::fromStdString(folder_));
    base.setUserName("owner");
    base.setPassword(kPassword);
    base.setDatabaseName("postgres");
    open = base.open();
  }
  QSqlDatabase::removeDatabase("answers");
  return open;
}

std::string PostgresServer::Url() const {
  return "postgresql://owner@/postgres?host=" + folder_;
}

void PostgresServer::Run(const std::vector<std::string>& statements) const {
  {
    QSqlDatabase base = QSqlDatabase::addDatabase("QPSQL", "made");
    base.setHostName(QString::fromStdString(folder_));
    base.setUserName("owner");
    base.setPassword(kPassword);
    base.setDatabaseName("postgres");
    ASSERT_TRUE(base.open()) << base.lastError().text().toStdString();
    for (const std::string& statement : statements) {
      QSqlQuery query(base);
      EXPECT_TRUE(query.exec(QString::fromStdString(statement)))
          << query.lastError().text().toStdString();
    }
  }
  QSqlDatabase::removeDatabase("made");
}

}  // namespace tarnwick::testing
