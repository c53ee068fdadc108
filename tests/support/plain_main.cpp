#include "support/run_tests.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  return tarnwick::testing::RunTests();
}
