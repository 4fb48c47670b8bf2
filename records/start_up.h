#pragma once
// Frm11Dem: where the program starts. It takes the start directory, reads
// "Option.ret", then builds the lexicon through a chain of one-shot timers so
// that the window repaints between the steps, showing the progress, and at
// the end hands over to the screen check.
//
//   TimReg   100 ms  the window becomes visible
//   Tim1a9   100 ms  "Initialisation", the word tree, "00 %" ... "94 %"
//   Tim10..Tim15 20 ms each  the lists of 10 to 15 letters, "95 %" ... "100 %"
//   Tim23    20 ms  the definitions
//   TimFin   50 ms  FrmEcranResol is loaded and this form goes
//
// The single-instance lock is the window's business; this form only gets
// its outcome and says "Le programme est déja lancé.".

#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "lexicon/lexicon.h"
#include "records/form_link.h"
#include "records/program.h"

namespace ostrane {

inline constexpr const char* kAlreadyRunningText = "Le programme est déja lancé.";

// The time of day as a fraction of a day, as a 32-bit float: HeureDepart.
float TimeOfDayFraction(const DateTime& when);

// The text of the main form's LblTpsDemarrage: the last two characters of
// (heureFin - heureDepart) shown as a time "hh:mm:ss", and " sec". Nothing
// ever sets the end time, so with heureFin 0 this is in effect the seconds of
// the clock at start, and it is meant to stay so. No text (the label is left
// as it is) when heureDepart is 0.
std::optional<std::string> LoadTimeText(float heureDepart, float heureFin = 0);

// Where the start-up form stands, in twips: centred across, a third of the
// free height less 500 down, and 120 from the top when that is negative.
struct FormPlace {
  int left = 0, top = 0;
};
FormPlace StartFormPlace(int screenWidth, int screenHeight, int formWidth, int formHeight);

class Frm11Dem {
 public:
  static constexpr int kImgProgressStart = -3960;  // twips
  static constexpr int kTreeStep = 220;            // at each ten-thousandth word of the tree
  static constexpr int kListStep = 50;             // at each list of long words
  static constexpr int kFrameMargin = 90;          // the window is FraLoad plus this each way
  static constexpr const char* kInitialisation = "Initialisation";
  static constexpr const char* kLoadingWords = "Chargement des mots du dictionnaire...";

  struct View {
    bool visible = false;
    Pointer pointer = Pointer::Default;
    std::string LblVerA;
    std::string LblInfo2;
    bool LblInfo2Bold = true;
    std::string LblCharge;
    int ImgProgressLeft = 0;  // twips
    bool unloaded = false;
  };

  struct Links {
    Lexicon::Reader read;                // the named resources: "DICO", "DIC10".."DIC15", "M23"
    std::function<void()> loadNext;      // load FrmEcranResol and end this form (later, not within the call)
    std::function<void()> endProgram;    // after "Le programme est déja lancé."
  };

  // `lexicon` is the one the program shares (Program::lexicon), filled here.
  Frm11Dem(Program& program, Lexicon& lexicon, Links links);
  ~Frm11Dem();
  Frm11Dem(const Frm11Dem&) = delete;
  Frm11Dem& operator=(const Frm11Dem&) = delete;

  // Steps 1 to 9 of the load: CheminApp, titles, the start values of the
  // game flow, the single-instance outcome, the options (defaults on any
  // failure), HeureDepart, and TimReg started. Returns false when another
  // copy runs: the message has been shown and endProgram called.
  bool Form_Load(const std::filesystem::path& currentDirectory, bool anotherInstanceRunning);

  const View& view() const { return view_; }

  // Called after each change of what the window shows; the progress during
  // the tree build comes right after the program lets events run.
  std::function<void()> changed;

 private:
  enum Step { kTimReg, kTim1a9, kTim10, kTim11, kTim12, kTim13, kTim14, kTim15, kTim23, kTimFin, kSteps };
  void Fire(int step);
  void Arm(int step, int milliseconds) { timers_[size_t(step)]->SetInterval(milliseconds); }
  void Changed() {
    if (changed) changed();
  }

  Program& program_;
  Lexicon& lexicon_;
  Links links_;
  std::array<std::unique_ptr<Timer>, kSteps> timers_;
  View view_;
};

}  // namespace ostrane
