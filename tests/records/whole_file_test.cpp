// Files replaced whole: a process killed at any moment of a write leaves the
// old file or the new one, never half of one or an empty one; and the files of
// the start directory ("Option.ret", "bestsco.ret", the journal) are written
// that way.
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "records/game_journal.h"
#include "records/options.h"
#include "records/text_files.h"
#include "tests/support/test_support.h"

namespace ostrane {
namespace {

TEST(WholeFile, AKillAtAnyMomentLeavesTheOldFileOrTheNewOne) {
  test::TempDir dir;
  const std::filesystem::path file = dir.path() / "bestsco.ret";
  const std::string before(4 << 20, 'a'), after(4 << 20, 'b');
  int old = 0, fresh = 0;
  for (int round = 0; round < 40; ++round) {
    test::WriteFile(file, before);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      WriteWholeFile(file, after);
      _exit(0);
    }
    // From the very start of the write to after its end.
    std::this_thread::sleep_for(std::chrono::microseconds(round * round * 20));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    const std::string found = test::ReadFile(file);
    ASSERT_TRUE(found == before || found == after) << "round " << round << ": " << found.size() << " bytes";
    (found == before ? old : fresh)++;
  }
  EXPECT_EQ(old + fresh, 40);
}

TEST(WholeFile, TheStartDirectorysFilesAreReplacedWhole) {
  test::TempDir dir;
  // The options, the best scores and the journal leave no temporary file
  // behind, and a failed write leaves the file that was there.
  const std::filesystem::path options = dir.path() / kOptionsFileName;
  ASSERT_TRUE(WriteOptions(options, Options{}));
  const std::filesystem::path best = dir.path() / "bestsco.ret";
  ASSERT_FALSE(DiskFiles().Replace(best, "31     Partie tabli 07      02/03/26   20:15\r\n"));
  GameJournal journal(dir.path() / kJournalFileName);
  SavedGame game;
  game.lignes.fill(std::string(15, '.'));
  game.StrSac = StartBag(1);
  ASSERT_TRUE(journal.Save(game));
  for (const auto& entry : std::filesystem::directory_iterator(dir.path()))
    EXPECT_NE(entry.path().extension(), ".tmp") << entry.path();
  // A folder where the temporary file would go: nothing is written.
  std::filesystem::create_directory(TemporaryFileOf(options));
  EXPECT_FALSE(WriteOptions(options, Options{"Non", 5, 120, false, true, 3, 1, 1, 0}));
  EXPECT_EQ(test::ReadFile(options).substr(0, 5), "Oui\r\n");
  // A best-score file marked read-only is not replaced: no access (75).
  std::filesystem::permissions(best, std::filesystem::perms::owner_read);
  if (::access(best.c_str(), W_OK) != 0) {  // (root may write anyway)
    EXPECT_EQ(DiskFiles().Replace(best, "").number, kErrPathFileAccess);
    EXPECT_EQ(test::ReadFile(best).size(), 46u);
  }
}

}  // namespace
}  // namespace ostrane
