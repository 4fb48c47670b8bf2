#pragma once
// The records tests' program: the shared fake host, a fresh start folder,
// and real files that fail on demand with a given error number.

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

#include "lexicon/lexicon.h"
#include "records/program.h"
#include "records/text_files.h"
#include "tests/support/fake_host.h"
#include "tests/support/test_support.h"

namespace ostrane::test {

class FailingFiles : public TextFiles {
 public:
  FileError Read(const std::filesystem::path& f, std::string& bytes) override {
    return failRead ? FileError::Of(*failRead) : DiskFiles().Read(f, bytes);
  }
  FileError Append(const std::filesystem::path& f, const std::string& bytes) override {
    ++appends;
    return failAppend ? FileError::Of(*failAppend) : DiskFiles().Append(f, bytes);
  }
  FileError Replace(const std::filesystem::path& f, const std::string& bytes) override {
    ++replaces;
    return failReplace ? FileError::Of(*failReplace) : DiskFiles().Replace(f, bytes);
  }
  FileError Remove(const std::filesystem::path& f) override {
    return failRemove ? FileError::Of(*failRemove) : DiskFiles().Remove(f);
  }
  std::optional<int> failRead, failAppend, failReplace, failRemove;
  int appends = 0, replaces = 0;
};

// A program with an empty lexicon in a fresh start folder.
class ProgramFixture : public ::testing::Test {
 protected:
  ProgramFixture() {
    program_.CheminApp = dir_.path();
    fake_.clock.now = DateTime{2024, 3, 7, 9, 5, 42};
  }
  void Write(const std::string& name, const std::string& bytes) { WriteFile(dir_.path() / name, bytes); }
  std::string Read(const std::string& name) const { return ReadFile(dir_.path() / name); }
  bool Exists(const std::string& name) const { return std::filesystem::exists(dir_.path() / name); }

  TempDir dir_;
  Lexicon lexicon_;
  FakeHost fake_;
  Program program_{lexicon_, fake_.host};
};

}  // namespace ostrane::test
