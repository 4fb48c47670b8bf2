#include "records/start_up.h"

#include <cmath>
#include <cstdio>

namespace ostrane {

float TimeOfDayFraction(const DateTime& when) {
  const double seconds = when.hour * 3600.0 + when.minute * 60.0 + when.second;
  return float(seconds / 86400.0);
}

std::optional<std::string> LoadTimeText(float heureDepart, float heureFin) {
  if (heureDepart == 0) return std::nullopt;
  // A date value shows as its time the fraction of a day behind its whole
  // days, without sign, rounded to the second.
  const double value = double(heureFin) - double(heureDepart);
  const double fraction = std::fabs(value - std::trunc(value));
  long seconds = std::lround(fraction * 86400.0);
  if (seconds >= 86400) seconds -= 86400;
  char text[16];
  std::snprintf(text, sizeof text, "%02ld sec", seconds % 60);
  return std::string(text);
}

FormPlace StartFormPlace(int screenWidth, int screenHeight, int formWidth, int formHeight) {
  FormPlace place;
  place.left = (screenWidth - formWidth) / 2;
  place.top = (screenHeight - formHeight) / 3 - 500;
  if (place.top < 0) place.top = 120;
  return place;
}

Frm11Dem::Frm11Dem(Program& program, Lexicon& lexicon, Links links)
    : program_(program), lexicon_(lexicon), links_(std::move(links)) {
  for (int step = 0; step < kSteps; ++step) timers_[size_t(step)] = program_.host.timers.Create([this, step] { Fire(step); });
}

Frm11Dem::~Frm11Dem() = default;

bool Frm11Dem::Form_Load(const std::filesystem::path& currentDirectory, bool anotherInstanceRunning) {
  program_.CheminApp = currentDirectory;
  program_.TitreProg = "Ostrane";
  program_.VersionProg = "1.23";
  view_.LblVerA = "Version " + program_.VersionProg;

  program_.IntJok = 1;
  program_.IntPioche = 0;
  program_.IntJetonsHaut = 0;
  program_.IntJetonsGauche = 0;
  program_.BytVisite = 1;

  if (anotherInstanceRunning) {
    program_.StrMsg = kAlreadyRunningText;
    program_.ShowMessage(BoxStyle{Buttons::Ok, Icon::Warning, false});
    view_.unloaded = true;
    if (links_.endProgram) links_.endProgram();
    return false;
  }

  view_.pointer = Pointer::Hourglass;
  view_.ImgProgressLeft = kImgProgressStart;
  ReadOptions(program_.OptionsFile(), program_.options);  // every default when it fails
  program_.HeureDepart = TimeOfDayFraction(program_.host.clock.Now());
  Arm(kTimReg, 100);
  return true;
}

void Frm11Dem::Fire(int step) {
  Arm(step, 0);
  if (view_.unloaded) return;
  EventPump& events = program_.host.events;
  switch (step) {
    case kTimReg:
      view_.visible = true;
      Changed();
      Arm(kTim1a9, 100);
      break;

    case kTim1a9: {
      view_.LblInfo2 = kInitialisation;
      Changed();
      lexicon_.Dico = ClsDico{};
      // The tree build: events run at its start, after its caption, at each
      // ten-thousandth word (before the progress moves) and at its end.
      events.DoEvents();
      const std::string dico = links_.read(Lexicon::kDico);
      view_.LblInfo2Bold = false;
      view_.LblInfo2 = kLoadingWords;
      Changed();
      events.DoEvents();
      lexicon_.Dico.DictionaryOrg(dico, [this, &events](int32_t, const std::string& percentText) {
        events.DoEvents();
        view_.LblCharge = percentText;
        view_.ImgProgressLeft += kTreeStep;
        Changed();
      });
      events.DoEvents();
      Arm(kTim10, 20);
      break;
    }

    case kTim10:
    case kTim11:
    case kTim12:
    case kTim13:
    case kTim14:
    case kTim15: {
      const int length = 10 + (step - kTim10);
      lexicon_.LongWords(size_t(length)).Load(links_.read(Lexicon::LongListName(length)));
      view_.LblCharge = std::to_string(95 + (step - kTim10)) + " %";
      view_.ImgProgressLeft += kListStep;
      Changed();
      Arm(step == kTim15 ? kTim23 : step + 1, 20);
      break;
    }

    case kTim23:
      lexicon_.DefM23.Load(links_.read(Lexicon::kDefinitions));
      Arm(kTimFin, 50);
      break;

    case kTimFin:
      view_.unloaded = true;
      view_.visible = false;
      Changed();
      if (links_.loadNext) links_.loadNext();  // last: it may end this form
      break;

    default:
      break;
  }
}

}  // namespace ostrane
