#include <gtest/gtest.h>
#include <sys/types.h>
#include <unistd.h>

#include <QProcess>
#include <QSqlDatabase>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>
#include <chrono>
#include <csignal>
#include <memory>
#include <string>
#include <vector>

#include "both_roads.h"
#include "data/packed/unpack.h"
#include "sources/database/database_supplier.h"
#include "support/cancelling_progress.h"
#include "support/refusal.h"

namespace tarnwick {
namespace {

using testing::AddThroughOdbc;
using testing::CancellingProgress;
using testing::ExpectSameByBothRoads;
using testing::ExpectThinnedShowsEveryExtreme;
using testing::Refusal;

constexpr uid_t kNobody = 65534;
constexpr int kPatienceMs = 30'000;

/// One server for all tests, in a folder of its own, at a local socket. Without it, or the driver, they are skipped.
class Mariadb : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    const QString program = QStandardPaths::findExecutable(
        "mariadbd", {"/usr/sbin", "/usr/bin", "/usr/local/sbin", "/usr/local/bin"});
    if (program.isEmpty() || !QSqlDatabase::drivers().contains("QMYSQL")) return;
    folder_ = std::make_unique<QTemporaryDir>();
    const bool is_root = geteuid() == 0;
    ASSERT_TRUE(!is_root || chown(folder_->path().toUtf8(), kNobody, kNobody) == 0);
    QStringList words = {"--no-defaults", "--datadir=" + folder_->filePath("data")};
    if (is_root) words.append("--user=nobody");
    QProcess make;
    make.start("mariadb-install-db",
               words + QStringList{"--skip-test-db", "--auth-root-authentication-method=normal",
                                   "--skip-log-bin"});
    ASSERT_TRUE(make.waitForFinished(kPatienceMs) && make.exitCode() == 0);
    server_ = std::make_unique<QProcess>();
    server_->setStandardErrorFile(folder_->filePath("log"));
    server_->start(program, words + QStringList{"--skip-networking", "--sql-mode=ANSI_QUOTES",
                                                "--socket=" + folder_->filePath("s"),
                                                "--pid-file=" + folder_->filePath("pid")});
    for (int waited = 0; waited < kPatienceMs && !Try({"CREATE DATABASE lab"}); waited += 100)
      QThread::msleep(100);
    Run({"CREATE USER reader"});
    Run({"GRANT ALL ON lab.* TO reader"});
  }
  static void TearDownTestSuite() {
    if (server_) {
      ::kill(static_cast<pid_t>(server_->processId()), SIGTERM);
      server_->waitForFinished(kPatienceMs);
    }
    server_.reset();
    folder_.reset();
  }
  void SetUp() override {
    if (!server_)
      GTEST_SKIP() << "MariaDB (mariadbd), or the driver QMYSQL of Qt, is not installed";
  }
  static bool Try(const std::vector<std::string>& statements) {
    QProcess client;
    client.start("mariadb", {"--no-defaults", "--user=root", "--socket=" + folder_->filePath("s")});
    if (!client.waitForStarted()) return false;
    for (const std::string& one : statements) client.write((one + ";\n").c_str());
    client.closeWriteChannel();
    return client.waitForFinished(kPatienceMs) && client.exitCode() == 0;
  }
  static void Run(std::vector<std::string> statements) {
    statements.insert(statements.begin(), "USE lab");
    ASSERT_TRUE(Try(statements)) << statements.back();
  }
  static DatabasePlace Place(const std::string& table, const std::string& query = {}) {
    DatabasePlace place =
        ParseDatabaseUrl("mysql://reader@/lab?host=" + folder_->filePath("s").toStdString());
    place.table = table;
    place.query = query;
    return place;
  }

  static std::unique_ptr<QTemporaryDir> folder_;
  static std::unique_ptr<QProcess> server_;
};
std::unique_ptr<QTemporaryDir> Mariadb::folder_;
std::unique_ptr<QProcess> Mariadb::server_;

TEST_F(Mariadb, PicksWhatReadingRowByRowPicks) {
  const std::vector<DatabasePlace> places = {Place("t"), Place("", "SELECT * FROM t WHERE y > 5"),
                                             Place("", "SELECT * FROM t ORDER BY y DESC, x, 3")};
  ExpectSameByBothRoads(false, 2, places, Run);
}

TEST_F(Mariadb, ThinsWithEveryExtreme) {
  std::vector<DatabasePlace> places = {Place("t"), Place("", "SELECT * FROM t WHERE y > 5;")};
  AddThroughOdbc("DRIVER=MariaDB Unicode;UID=reader;DATABASE=lab;SOCKET=" +
                     folder_->filePath("s").toStdString(),
                 places);
  ExpectThinnedShowsEveryExtreme(false, 3, places, Run);
}

TEST_F(Mariadb, NothingIsWrittenWhateverAQueryCalls) {
  Run({"CREATE TABLE w (v int)",
       "delimiter //\nCREATE FUNCTION writes() RETURNS int MODIFIES SQL DATA BEGIN INSERT INTO w "
       "VALUES (1); RETURN 1; END //\ndelimiter "});
  NoProgress unseen;
  const std::string told = Refusal([&] { TDBSupplier(Place("", "SELECT writes() AS x"), unseen); });
  EXPECT_NE(told.find("READ ONLY transaction"), std::string::npos) << told;
  EXPECT_EQ(TDBSupplier(Place("w"), unseen).RowCount(), 0);
}

TEST_F(Mariadb, CancellingReachesTheServer) {
  CancellingProgress cancelled(0);
  const auto begun = std::chrono::steady_clock::now();
  EXPECT_THROW(TDBSupplier(Place("", "SELECT 1 AS x, SLEEP(60) AS y"), cancelled),
               UnpackingCancelled);
  EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(5));
}

}  // namespace
}  // namespace tarnwick
