// The start-up form: its steps in order on a scripted clock, the progress
// texts and the picture's offsets, the options read or defaulted, the
// second copy, and the load-time label.
#include "records/start_up.h"

#include <gtest/gtest.h>

#include "tests/records/record_fakes.h"

namespace ostrane::test {
namespace {

class StartUp : public ProgramFixture {
 protected:
  // The form, its word list given as `dico`; each change it reports is kept
  // as "time visible [info] bold [charge] left".
  std::unique_ptr<Frm11Dem> Make(std::string dico = ListBytes({"AA", "ABC"})) {
    Frm11Dem::Links links;
    links.read = [this, dico](std::string_view name) -> std::string {
      reads_.emplace_back(name);
      if (name == "DICO") return dico;
      if (name == "M23")
        return "AA\xA7"
               "AA$une definition\r\nZUT\xA7"
               "ZUT$zut";
      return ListBytes({std::string(size_t(std::stoi(std::string(name.substr(3)))), 'B')});
    };
    links.loadNext = [this] { nextAt_.push_back(fake_.timers.Now()); };
    links.endProgram = [this] { ++ends_; };
    auto form = std::make_unique<Frm11Dem>(program_, lexicon_, links);
    form->changed = [this, raw = form.get()] {
      const auto& v = raw->view();
      seen_.push_back(std::to_string(fake_.timers.Now()) + " " + std::to_string(v.visible) + " [" +
                      v.LblInfo2 + "] " + std::to_string(v.LblInfo2Bold) + " [" + v.LblCharge + "] " +
                      std::to_string(v.ImgProgressLeft));
    };
    return form;
  }
  std::vector<std::string> reads_, seen_;
  std::vector<long> nextAt_;
  int ends_ = 0;
};

TEST_F(StartUp, ChainOfStepsWithItsTextsAndOffsets) {
  // 160473 different words of four letters: a word list as long as the
  // program's own, so that the tree build reports the same percentages.
  std::vector<std::string> words(160473, "AAAA");
  for (int n = 0; n < 160473; ++n)
    for (int i = 3, v = n; i >= 0; --i, v /= 26) words[size_t(n)][size_t(i)] = char('A' + v % 26);
  auto form = Make(ListBytes(words));
  fake_.clock.now = DateTime{2024, 3, 7, 12, 34, 56};
  ASSERT_TRUE(form->Form_Load(dir_.path(), false));
  EXPECT_EQ(program_.CheminApp, dir_.path());
  EXPECT_EQ(form->view().LblVerA, "Version 1.23");
  EXPECT_EQ(form->view().pointer, Pointer::Hourglass);
  EXPECT_FALSE(form->view().visible);
  EXPECT_EQ(program_.HeureDepart, TimeOfDayFraction(fake_.clock.now));
  fake_.timers.Advance(1000);

  const std::string loading = " 1 [Chargement des mots du dictionnaire...] 0 [";
  std::vector<std::string> expected = {"100 1 [] 1 [] -3960", "200 1 [Initialisation] 1 [] -3960",
                                       "200" + loading + "] -3960"};
  int left = -3960;
  for (const char* percent :
       {"00", "06", "13", "19", "25", "31", "38", "44", "50", "56", "63", "69", "75", "81", "87", "94"})
    expected.push_back("200" + loading + percent + " %] " + std::to_string(left += 220));
  for (int i = 0; i < 6; ++i)
    expected.push_back(std::to_string(220 + 20 * i) + loading + std::to_string(95 + i) + " %] " +
                       std::to_string(left += 50));
  expected.push_back("390 0 [Chargement des mots du dictionnaire...] 0 [100 %] -140");
  EXPECT_EQ(seen_, expected);
  EXPECT_EQ(nextAt_, std::vector<long>{390});
  EXPECT_TRUE(form->view().unloaded);
  EXPECT_EQ(reads_,
            (std::vector<std::string>{"DICO", "DIC10", "DIC11", "DIC12", "DIC13", "DIC14", "DIC15", "M23"}));
  // Events run at the start of the tree, after its caption, at each
  // ten-thousandth word and at its end.
  EXPECT_EQ(fake_.events.count, 1 + 1 + 16 + 1);
  EXPECT_EQ(lexicon_.Dico.NbMotsDico(), 160473);
  EXPECT_TRUE(lexicon_.LongWords(13).Contains("BBBBBBBBBBBBB"));
  EXPECT_EQ(lexicon_.DefM23.FindForCheck("AA"), std::optional<std::string>("une definition"));
  EXPECT_EQ(fake_.timers.Running(), 0);
}

TEST_F(StartUp, OptionsAreReadOrDefaultedSilentlyAndASecondCopyEndsBeforeAnything) {
  const std::string options =
      "Non\r\n3\r\n120\r\nSonNo\r\nDureeYes\r\nImg plateau 4\r\nDef mots 23 0\r\nEncadrement "
      "1\r\nResolutionE 1\r\n";
  Write(kOptionsFileName, options);
  program_.IntJok = 3;
  program_.IntPioche = 2;
  program_.BytVisite = 3;
  ASSERT_TRUE(Make()->Form_Load(dir_.path(), false));
  EXPECT_EQ(program_.options,
            (Options{.OptMessages = "Non", .OptSons = false, .OptImage = 4, .OptDef23 = 0, .OptResol = 1}));
  EXPECT_EQ(program_.IntJok + program_.IntPioche * 10 + program_.BytVisite * 100,
            101);                           // the game flow afresh
  Write(kOptionsFileName, "Non\r\n3\r\n");  // short: every default, no word
  ASSERT_TRUE(Make()->Form_Load(dir_.path(), false));
  EXPECT_EQ(program_.options, Options{});
  EXPECT_TRUE(fake_.boxes.shown.empty());

  Write(kOptionsFileName, options);
  program_.HeureDepart = 0;
  reads_.clear();
  auto form = Make();
  EXPECT_FALSE(form->Form_Load(dir_.path(), true));
  ASSERT_EQ(fake_.boxes.shown.size(), 1u);
  EXPECT_EQ(fake_.boxes.shown[0].text, "Le programme est déja lancé.");
  EXPECT_EQ(fake_.boxes.shown[0].style.icon, Icon::Warning);
  EXPECT_EQ(ends_, 1);
  EXPECT_EQ(program_.options, Options{});  // nothing read
  EXPECT_EQ(program_.HeureDepart, 0);
  fake_.timers.Advance(10000);
  EXPECT_FALSE(form->view().visible);
  EXPECT_TRUE(reads_.empty());
}

TEST(LoadTime, ShowsTheSecondsOfTheStartForEverySecondOfTheDayAndTheStartFormIsCentred) {
  for (int s = 1; s < 86400; ++s) {
    char expected[16];
    std::snprintf(expected, sizeof expected, "%02d sec", s % 60);
    ASSERT_EQ(LoadTimeText(TimeOfDayFraction({2024, 1, 1, s / 3600, s / 60 % 60, s % 60})),
              std::optional<std::string>(expected))
        << s;
  }
  EXPECT_EQ(LoadTimeText(0), std::nullopt);  // no start time leaves the label
  EXPECT_EQ(
      LoadTimeText(TimeOfDayFraction({2024, 1, 1, 10, 0, 0}), TimeOfDayFraction({2024, 1, 1, 10, 0, 7})),
      std::optional<std::string>("07 sec"));
  const FormPlace p = StartFormPlace(15360, 11520, 6000, 3000);
  EXPECT_EQ(p.left + p.top * 10000, 4680 + 2340 * 10000);
  EXPECT_EQ(StartFormPlace(3000, 1000, 2000, 1000).top, 120);  // negative: near the top
}

}  // namespace
}  // namespace ostrane::test
