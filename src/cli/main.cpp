#include <iostream>

#include "base/whole_file.h"
#include "cli/output/interrupt.h"
#include "cli/run_cli.h"
#include "graph/gif/gif_format.h"

int main(int argc, char** argv) {
  tarnwick::cli::EndOnInterrupt();
  tarnwick::RefuseTooLargeFiles();
  tarnwick::RegisterGifFormat();
  std::ios::sync_with_stdio(false);
  return tarnwick::cli::RunCli(argc, argv, std::cout, std::cerr);
}
