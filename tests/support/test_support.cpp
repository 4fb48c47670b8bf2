#include "tests/support/test_support.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>

#include "data/embedded_lexicon.h"
#include "lexicon/fatal.h"

namespace ostrane::test {

const Lexicon& RealLexicon() { return EmbeddedLexicon(); }

std::string ListBytes(const std::vector<std::string>& words) {
  std::string bytes;
  for (const std::string& word : words) bytes += word + "\r\n";
  bytes.append((4 - bytes.size() % 4) % 4, '\0');
  return bytes;
}

Lexicon SmallLexicon(const std::vector<std::string>& words) {
  std::vector<std::string> shortWords;
  std::map<size_t, std::vector<std::string>> longWords;
  for (const std::string& word : words) {
    if (word.size() <= 9)
      shortWords.push_back(word);
    else
      longWords[word.size()].push_back(word);
  }
  std::sort(shortWords.begin(), shortWords.end(), [](const std::string& a, const std::string& b) {
    return a.size() != b.size() ? a.size() < b.size() : a < b;
  });
  Lexicon lexicon;
  lexicon.Dico.DictionaryOrg(ListBytes(shortWords));
  for (size_t length = 10; length <= 15; ++length) {
    std::vector<std::string>& list = longWords[length];
    std::sort(list.begin(), list.end());
    lexicon.LongWords(length).Load(ListBytes(list));
  }
  return lexicon;
}

TempDir::TempDir() {
  const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
  const std::string name = info ? std::string(info->test_suite_name()) + "-" + info->name() : "run";
  path_ = std::filesystem::temp_directory_path() / ("ostrane-test-" + std::to_string(getpid()) + "-" + name);
  std::filesystem::remove_all(path_);
  std::filesystem::create_directories(path_);
}

TempDir::~TempDir() {
  std::error_code ec;
  std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ec);
  std::filesystem::remove_all(path_, ec);
}

std::string ReadFile(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

void WriteFile(const std::filesystem::path& file, const std::string& bytes) {
  std::ofstream(file, std::ios::binary) << bytes;
}

namespace {
FatalHandler previousHandler;
}

FatalCatcher::FatalCatcher() {
  previousHandler = SetFatalHandler([](const std::string& text) { throw FatalCalled(text); });
}

FatalCatcher::~FatalCatcher() { SetFatalHandler(previousHandler); }

}  // namespace ostrane::test
