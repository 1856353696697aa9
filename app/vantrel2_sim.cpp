// vantrel2-sim: runs the program against the simulated client.
#include <fstream>
#include <iostream>

#include "app/runner.h"

int main(int argc, char** argv) {
  v2::RunnerOptions options;
  std::string error;
  if (!v2::ParseRunnerArgs(argc, argv, options, error)) {
    std::cerr << "vantrel2-sim: " << error << "\n"
              << "usage: vantrel2-sim [--script FILE] [--screen-name NAME] "
                 "[--clock \"YYYY-MM-DD HH:MM:SS\"] [--program-dir DIR] "
                 "[--user-store FILE] [--uptime SECONDS] [--raw]\n";
    return 2;
  }
  v2::Runner runner(options, std::cout, std::cerr);
  if (!options.script) return runner.RunInteractive();
  if (*options.script == "-") return runner.RunScript(std::cin);
  std::ifstream file(*options.script, std::ios::binary);
  if (!file) {
    std::cerr << "vantrel2-sim: cannot open " << *options.script << "\n";
    return 2;
  }
  return runner.RunScript(file);
}
