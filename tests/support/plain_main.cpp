#include "support/run_tests.h"
#include "support/runtime_folder.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  const tarnwick::testing::RuntimeFolder runtime_folder;
  return tarnwick::testing::RunTests();
}
