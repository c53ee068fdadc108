#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <thread>

#include "support/spawned.h"
#include "support/temporary_folder.h"

namespace tarnwick::testing {
namespace {

class PrivateBus final : public ::testing::Environment {
 public:
  void SetUp() override {
    const std::filesystem::path place = folder_.File("bus");
    const std::string address = "unix:path=" + place.string();
    daemon_.emplace(
        std::vector<std::string>{"dbus-daemon", "--session", "--nofork", "--address=" + address},
        folder_.Path(), folder_.File("log"));
    for (int waited = 0; waited < 1000 && !std::filesystem::exists(place); ++waited)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    ASSERT_TRUE(std::filesystem::exists(place)) << ReadFile(folder_.File("log"));
    ::setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
  }
  void TearDown() override { daemon_.reset(); }

 private:
  TemporaryFolder folder_;
  std::optional<Spawned> daemon_;
};

// What registers itself with the framework has no other place.
const auto* const kBus = ::testing::AddGlobalTestEnvironment(new PrivateBus);

}  // namespace
}  // namespace tarnwick::testing
