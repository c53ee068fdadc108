#include <gtest/gtest.h>

#include <QProcess>
#include <memory>

namespace tarnwick::testing {
namespace {

constexpr int kPatience = 10000;  // ms

class PrivateBus final : public ::testing::Environment {
 public:
  void SetUp() override {
    daemon_ = std::make_unique<QProcess>();
    daemon_->start("dbus-daemon", {"--session", "--nofork", "--print-address"});
    ASSERT_TRUE(daemon_->waitForReadyRead(kPatience)) << "dbus-daemon does not start";
    qputenv("DBUS_SESSION_BUS_ADDRESS", daemon_->readLine().trimmed());
  }
  void TearDown() override {
    daemon_->terminate();
    daemon_->waitForFinished(kPatience);
    daemon_.reset();
  }

 private:
  std::unique_ptr<QProcess> daemon_;
};

// What registers itself with the framework has no other place.
const auto* const kBus = ::testing::AddGlobalTestEnvironment(new PrivateBus);

}  // namespace
}  // namespace tarnwick::testing
