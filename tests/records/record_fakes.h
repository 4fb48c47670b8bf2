#pragma once
// Scripted stand-ins for the platform in the tests of the records forms:
// timers that run only when the test moves time on, message boxes that
// answer from a script and remember what they showed, a fixed clock, and
// files that fail on demand with a given error number.

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "lexicon/lexicon.h"
#include "records/host.h"
#include "records/program.h"
#include "records/text_files.h"

namespace ostrane::test {

class FakeTimers : public Timers {
 public:
  std::unique_ptr<Timer> Create(std::function<void()> onTick) override {
    auto entry = std::make_shared<Entry>();
    entry->tick = std::move(onTick);
    entries_.push_back(entry);
    return std::make_unique<FakeTimer>(entry, *this);
  }

  // Moves time on by `ms`, firing every timer that falls due, in time order
  // (creation order on a tie).
  void Advance(long ms) {
    const long target = now_ + ms;
    for (;;) {
      std::shared_ptr<Entry> next;
      for (const auto& e : entries_)
        if (e->alive && e->enabled && e->interval > 0 && e->due <= target && (!next || e->due < next->due))
          next = e;
      if (!next) break;
      now_ = next->due;
      next->due += next->interval;
      auto tick = next->tick;
      tick();
    }
    now_ = target;
  }
  long Now() const { return now_; }
  // Timers that would still fire.
  int Running() const {
    int count = 0;
    for (const auto& e : entries_) count += e->alive && e->enabled && e->interval > 0;
    return count;
  }

 private:
  struct Entry {
    std::function<void()> tick;
    int interval = 0;
    bool enabled = true;
    long due = 0;
    bool alive = true;
  };
  class FakeTimer : public Timer {
   public:
    FakeTimer(std::shared_ptr<Entry> entry, FakeTimers& owner) : entry_(std::move(entry)), owner_(owner) {}
    ~FakeTimer() override { entry_->alive = false; }
    void SetInterval(int ms) override {
      entry_->interval = ms;
      entry_->due = owner_.now_ + ms;
    }
    int Interval() const override { return entry_->interval; }
    void SetEnabled(bool enabled) override {
      if (enabled && !entry_->enabled) entry_->due = owner_.now_ + entry_->interval;
      entry_->enabled = enabled;
    }
    bool Enabled() const override { return entry_->enabled; }

   private:
    std::shared_ptr<Entry> entry_;
    FakeTimers& owner_;
  };

  std::vector<std::shared_ptr<Entry>> entries_;
  long now_ = 0;
};

struct ShownBox {
  std::string text;
  BoxStyle style;
};

class ScriptedBoxes : public MessageBoxes {
 public:
  Answer MsgBox(const std::string& text, BoxStyle style) override {
    shown.push_back({text, style});
    if (style.buttons == Buttons::Ok) return Answer::Ok;
    if (answers.empty()) return Answer::Yes;
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
  }
  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const auto& box : shown) texts.push_back(box.text);
    return texts;
  }
  std::deque<Answer> answers;  // for Yes/No questions; Yes when empty
  std::vector<ShownBox> shown;
};

class FixedClock : public Clock {
 public:
  DateTime Now() const override { return now; }
  DateTime now{2024, 3, 7, 9, 5, 42};
};

class SilentSounds : public Sounds {
 public:
  void Play(int resourceNumber) override { played.push_back(resourceNumber); }
  std::vector<int> played;
};

class RecordingShell : public Shell {
 public:
  bool Open(const std::string& what) override {
    opened.push_back(what);
    return false;
  }
  std::vector<std::string> opened;
};

class CountingEvents : public EventPump {
 public:
  void DoEvents() override {
    ++count;
    if (hook) hook();
  }
  int count = 0;
  std::function<void()> hook;
};

// Real files, with any operation made to fail by number.
class FailingFiles : public TextFiles {
 public:
  FileError Read(const std::filesystem::path& f, std::string& bytes) override {
    ++reads;
    if (failRead) return FileError::Of(*failRead);
    return DiskFiles().Read(f, bytes);
  }
  FileError Append(const std::filesystem::path& f, const std::string& bytes) override {
    ++appends;
    if (failAppend) return FileError::Of(*failAppend);
    return DiskFiles().Append(f, bytes);
  }
  FileError Replace(const std::filesystem::path& f, const std::string& bytes) override {
    ++replaces;
    if (failReplace) return FileError::Of(*failReplace);
    return DiskFiles().Replace(f, bytes);
  }
  FileError Remove(const std::filesystem::path& f) override {
    ++removes;
    if (failRemove) return FileError::Of(*failRemove);
    return DiskFiles().Remove(f);
  }
  std::optional<int> failRead, failAppend, failReplace, failRemove;
  int reads = 0, appends = 0, replaces = 0, removes = 0;
};

// A program in a fresh start directory, with every platform piece scripted.
class ProgramFixture : public ::testing::Test {
 protected:
  ProgramFixture() : host_{boxes_, timers_, clock_, sounds_, shell_, events_}, program_(lexicon_, host_) {}
  void SetUp() override {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    dir_ = std::filesystem::temp_directory_path() /
           ("ostrane-records-" + std::string(info->test_suite_name()) + "-" + info->name());
    std::filesystem::remove_all(dir_);
    std::filesystem::create_directories(dir_);
    program_.CheminApp = dir_;
  }
  void TearDown() override {
    std::error_code ec;
    std::filesystem::permissions(dir_, std::filesystem::perms::owner_all, ec);
    std::filesystem::remove_all(dir_, ec);
  }

  void WriteFile(const std::string& name, const std::string& bytes) {
    std::ofstream(dir_ / name, std::ios::binary) << bytes;
  }
  std::string ReadFile(const std::string& name) const {
    std::ifstream in(dir_ / name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
  }
  bool Exists(const std::string& name) const { return std::filesystem::exists(dir_ / name); }

  Lexicon lexicon_;
  ScriptedBoxes boxes_;
  FakeTimers timers_;
  FixedClock clock_;
  SilentSounds sounds_;
  RecordingShell shell_;
  CountingEvents events_;
  Host host_;
  Program program_;
  std::filesystem::path dir_;
};

}  // namespace ostrane::test
