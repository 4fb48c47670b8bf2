// The start-up form: its steps in order on a scripted clock, the progress
// texts and the picture's offsets, the options read or defaulted, the
// second copy, and the load-time label.
#include <gtest/gtest.h>

#include "records/start_up.h"
#include "tests/records/record_fakes.h"
#include "tests/support/test_support.h"

namespace ostrane {
namespace {

// 160473 different words of four letters, in order: a word list as long as
// the program's own, so that the tree build reports the same percentages.
const std::string& FullLengthDico() {
  static const std::string bytes = [] {
    std::vector<std::string> words;
    words.reserve(160473);
    for (int n = 0; n < 160473; ++n) {
      std::string w(4, 'A');
      int v = n;
      for (int i = 3; i >= 0; --i, v /= 26) w[size_t(i)] = char('A' + v % 26);
      words.push_back(w);
    }
    return test::ListBytes(words);
  }();
  return bytes;
}

struct Snapshot {
  long time;
  bool visible;
  std::string info;
  bool bold;
  std::string charge;
  int left;
  bool operator==(const Snapshot&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Snapshot& s) {
  return out << s.time << " " << s.visible << " [" << s.info << "] " << s.bold << " [" << s.charge << "] " << s.left;
}

class StartUp : public test::ProgramFixture {
 protected:
  std::unique_ptr<Frm11Dem> Make(std::string dico = "") {
    Frm11Dem::Links links;
    links.read = [this, dico](std::string_view name) -> std::string {
      reads_.emplace_back(name);
      if (name == "DICO") return dico.empty() ? test::ListBytes({"AA", "ABC"}) : dico;
      if (name == "M23") return "AA\xA7" "AA$une definition\r\nZUT\xA7" "ZUT$zut";
      return test::ListBytes({std::string(size_t(std::stoi(std::string(name.substr(3)))), 'B')});
    };
    links.loadNext = [this] { nextAt_.push_back(timers_.Now()); };
    links.endProgram = [this] { ++ends_; };
    auto form = std::make_unique<Frm11Dem>(program_, lexicon_, links);
    Frm11Dem* raw = form.get();
    form->changed = [this, raw] {
      const auto& v = raw->view();
      snapshots_.push_back({timers_.Now(), v.visible, v.LblInfo2, v.LblInfo2Bold, v.LblCharge, v.ImgProgressLeft});
    };
    return form;
  }
  std::vector<std::string> reads_;
  std::vector<long> nextAt_;
  std::vector<Snapshot> snapshots_;
  int ends_ = 0;
};

TEST_F(StartUp, ChainOfStepsWithItsTextsAndOffsets) {
  auto form = Make(FullLengthDico());
  clock_.now = DateTime{2024, 3, 7, 12, 34, 56};
  ASSERT_TRUE(form->Form_Load(dir_, false));
  EXPECT_EQ(program_.CheminApp, dir_);
  EXPECT_EQ(form->view().LblVerA, "Version 1.23");
  EXPECT_EQ(form->view().pointer, Pointer::Hourglass);
  EXPECT_EQ(form->view().ImgProgressLeft, -3960);
  EXPECT_FALSE(form->view().visible);
  EXPECT_EQ(program_.HeureDepart, TimeOfDayFraction(clock_.now));

  timers_.Advance(1000);

  std::vector<Snapshot> expected = {
      {100, true, "", true, "", -3960},
      {200, true, "Initialisation", true, "", -3960},
      {200, true, "Chargement des mots du dictionnaire...", false, "", -3960},
  };
  const char* tree[] = {"00", "06", "13", "19", "25", "31", "38", "44",
                        "50", "56", "63", "69", "75", "81", "87", "94"};
  int left = -3960;
  for (const char* percent : tree) {
    left += 220;
    expected.push_back({200, true, "Chargement des mots du dictionnaire...", false, std::string(percent) + " %", left});
  }
  EXPECT_EQ(left, -440);
  for (int i = 0; i < 6; ++i) {
    left += 50;
    expected.push_back({220 + 20 * i, true, "Chargement des mots du dictionnaire...", false,
                        std::to_string(95 + i) + " %", left});
  }
  EXPECT_EQ(left, -140);
  expected.push_back({390, false, "Chargement des mots du dictionnaire...", false, "100 %", -140});
  EXPECT_EQ(snapshots_, expected);

  EXPECT_EQ(nextAt_, std::vector<long>{390});
  EXPECT_TRUE(form->view().unloaded);
  EXPECT_EQ(reads_, (std::vector<std::string>{"DICO", "DIC10", "DIC11", "DIC12", "DIC13", "DIC14", "DIC15", "M23"}));
  // Events run at the start of the tree, after its caption, at each
  // ten-thousandth word and at its end.
  EXPECT_EQ(events_.count, 1 + 1 + 16 + 1);
  EXPECT_EQ(lexicon_.Dico.NbMotsDico(), 160473);
  EXPECT_TRUE(lexicon_.LongWords(13).Contains("BBBBBBBBBBBBB"));
  EXPECT_EQ(lexicon_.DefM23.FindForCheck("AA"), std::optional<std::string>("une definition"));
  EXPECT_EQ(timers_.Running(), 0);
}

TEST_F(StartUp, NothingHappensBeforeItsTime) {
  auto form = Make();
  ASSERT_TRUE(form->Form_Load(dir_, false));
  timers_.Advance(99);
  EXPECT_FALSE(form->view().visible);
  timers_.Advance(1);
  EXPECT_TRUE(form->view().visible);
  EXPECT_TRUE(reads_.empty());
  timers_.Advance(99);
  EXPECT_TRUE(reads_.empty());
  timers_.Advance(1);
  EXPECT_EQ(reads_.size(), 1u);
  timers_.Advance(189);
  EXPECT_TRUE(nextAt_.empty());
  timers_.Advance(1);
  EXPECT_EQ(nextAt_, std::vector<long>{390});
}

TEST_F(StartUp, OptionsReadOrDefaultedSilently) {
  WriteFile(kOptionsFileName,
            "Non\r\n3\r\n120\r\nSonNo\r\nDureeYes\r\nImg plateau 4\r\nDef mots 23 0\r\nEncadrement 1\r\nResolutionE 1\r\n");
  auto form = Make();
  ASSERT_TRUE(form->Form_Load(dir_, false));
  EXPECT_EQ(program_.options.OptMessages, "Non");
  EXPECT_FALSE(program_.options.OptSons);
  EXPECT_EQ(program_.options.OptImage, 4);
  EXPECT_EQ(program_.options.OptResol, 1);

  // A short file: every default, no word, no file made.
  WriteFile(kOptionsFileName, "Non\r\n3\r\n");
  auto second = Make();
  ASSERT_TRUE(second->Form_Load(dir_, false));
  EXPECT_EQ(program_.options, Options{});
  std::filesystem::remove(dir_ / kOptionsFileName);
  auto third = Make();
  program_.options.OptImage = 3;
  ASSERT_TRUE(third->Form_Load(dir_, false));
  EXPECT_EQ(program_.options, Options{});
  EXPECT_FALSE(Exists(kOptionsFileName));
  EXPECT_TRUE(boxes_.shown.empty());
}

TEST_F(StartUp, StartValuesOfTheGameFlow) {
  program_.IntJok = 3;
  program_.IntPioche = 2;
  program_.IntJetonsHaut = 40;
  program_.IntJetonsGauche = 50;
  program_.BytVisite = 3;
  auto form = Make();
  ASSERT_TRUE(form->Form_Load(dir_, false));
  EXPECT_EQ(program_.IntJok, 1);
  EXPECT_EQ(program_.IntPioche, 0);
  EXPECT_EQ(program_.IntJetonsHaut, 0);
  EXPECT_EQ(program_.IntJetonsGauche, 0);
  EXPECT_EQ(program_.BytVisite, 1);
  EXPECT_EQ(program_.TitreProg, "Ostrane");
}

TEST_F(StartUp, SecondCopyIsToldAndEndsBeforeAnything) {
  WriteFile(kOptionsFileName,
            "Non\r\n3\r\n120\r\nSonNo\r\nDureeYes\r\nImg plateau 4\r\nDef mots 23 0\r\nEncadrement 1\r\nResolutionE 1\r\n");
  auto form = Make();
  EXPECT_FALSE(form->Form_Load(dir_, true));
  ASSERT_EQ(boxes_.shown.size(), 1u);
  EXPECT_EQ(boxes_.shown[0].text, "Le programme est déja lancé.");
  EXPECT_EQ(boxes_.shown[0].style.icon, Icon::Warning);
  EXPECT_EQ(ends_, 1);
  EXPECT_EQ(program_.options, Options{});  // nothing read
  EXPECT_EQ(program_.HeureDepart, 0);
  timers_.Advance(10000);
  EXPECT_FALSE(form->view().visible);
  EXPECT_TRUE(reads_.empty());
}

TEST(LoadTime, ShowsTheSecondsOfTheStartForEverySecondOfTheDay) {
  for (int s = 1; s < 86400; ++s) {
    const DateTime t{2024, 1, 1, s / 3600, s / 60 % 60, s % 60};
    const auto text = LoadTimeText(TimeOfDayFraction(t));
    char expected[16];
    std::snprintf(expected, sizeof expected, "%02d sec", s % 60);
    ASSERT_EQ(text, std::optional<std::string>(expected)) << s;
  }
}

TEST(LoadTime, NoStartTimeLeavesTheLabelAndAnEndTimeWouldCount) {
  EXPECT_EQ(LoadTimeText(0), std::nullopt);
  const float start = TimeOfDayFraction({2024, 1, 1, 10, 0, 0});
  const float end = TimeOfDayFraction({2024, 1, 1, 10, 0, 7});
  EXPECT_EQ(LoadTimeText(start, end), std::optional<std::string>("07 sec"));
  EXPECT_FLOAT_EQ(TimeOfDayFraction({2024, 1, 1, 12, 0, 0}), 0.5f);
}

TEST(LoadTime, StartFormPlace) {
  const FormPlace p = StartFormPlace(15360, 11520, 6000, 3000);
  EXPECT_EQ(p.left, 4680);
  EXPECT_EQ(p.top, 2340);
  EXPECT_EQ(StartFormPlace(3000, 1000, 2000, 1000).top, 120);  // negative: near the top
}

}  // namespace
}  // namespace ostrane
