#include "tests/support/cli_run.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace ostrane::test {
namespace {

std::string Quote(const std::string& arg) {
  std::string quoted = "'";
  for (char c : arg) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

}  // namespace

CliRun RunCli(const std::vector<std::string>& args) {
  static const std::filesystem::path dir = [] {
    auto made = std::filesystem::temp_directory_path() / ("ostrane-cli-run-" + std::to_string(getpid()));
    std::filesystem::create_directories(made);
    return made;
  }();
  std::string command = Quote(OSTRANE_CLI);
  for (const std::string& arg : args) command += " " + Quote(arg);
  const auto errPath = dir / "stderr.txt";
  command += " 2>" + Quote(errPath.string()) + " </dev/null";
  CliRun run;
  FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) return run;
  char buffer[4096];
  size_t n;
  while ((n = fread(buffer, 1, sizeof buffer, pipe)) > 0) run.out.append(buffer, n);
  const int status = pclose(pipe);
  run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  std::ifstream err(errPath, std::ios::binary);
  run.err.assign(std::istreambuf_iterator<char>(err), {});
  return run;
}

}  // namespace ostrane::test
