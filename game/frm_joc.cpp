#include "game/frm_joc.h"

#include "game/layout.h"
#include "lexicon/tables.h"
#include "records/program.h"

namespace ostrane {

FrmJoc::FrmJoc(Program& program) : program_(program) {
  leftFromMain = layout::kFormWidth / 6;
  topFromMain = int(layout::kFormHeight / 4.5);
  LblJoc.text = std::string("Quelle lettre voulez-vous") + std::string(kCrLf) + "attribuer au joker ?";
  timQuit_ = program_.host.timers.Create([this] { TimQuit_Timer(); });
}

FrmJoc::~FrmJoc() = default;

void FrmJoc::TxtJok_Change(const std::string& text) {
  std::string upper = text.substr(0, 1);
  for (char& c : upper) c = UpperAscii(c);
  TxtJok.text = upper;
  if (!upper.empty() && upper[0] >= 'A' && upper[0] <= 'Z') {
    program_.StrJoker = upper;
    timQuit_->SetInterval(kTimQuitInterval);
  } else {
    TxtJok.text.clear();
  }
}

void FrmJoc::TimQuit_Timer() {
  timQuit_->SetInterval(0);
  if (TxtJok.text.empty()) program_.StrJoker = "Nul";
  closed = true;
  if (changed) changed();
}

}  // namespace ostrane
