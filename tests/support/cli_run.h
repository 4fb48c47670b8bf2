#pragma once
// Runs the built ostrane-cli as a user runs it, and keeps what it said.

#include <string>
#include <vector>

namespace ostrane::test {

struct CliRun {
  int status = -1;  // the exit status, -1 when it did not exit normally
  std::string out, err;
};

CliRun RunCli(const std::vector<std::string>& args);

}  // namespace ostrane::test
