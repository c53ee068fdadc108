#include <iostream>

#include "cli/interrupt.h"
#include "cli/run_cli.h"

int main(int argc, char** argv) {
  tarnwick::cli::EndOnInterrupt();
  std::ios::sync_with_stdio(false);
  return tarnwick::cli::RunCli(argc, argv, std::cout, std::cerr);
}
