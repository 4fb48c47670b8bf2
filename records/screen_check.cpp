#include "records/screen_check.h"

namespace ostrane {

bool ScreenCheckWarns(uint8_t optResol, int screenHeightPixels) {
  return optResol != 1 && screenHeightPixels < kSmallestScreenHeight;
}

int ScreenCheckTop(int screenHeightTwips, int formHeightTwips) {
  return (screenHeightTwips - formHeightTwips) / 3 - 500;
}

FrmEcranResol::FrmEcranResol(Program& program, Links links) : program_(program), links_(std::move(links)) {
  timReso_ = program_.host.timers.Create([this] { TimReso_Timer(); });
}

FrmEcranResol::~FrmEcranResol() = default;

void FrmEcranResol::Form_Load() { timReso_->SetInterval(kTimResoInterval); }

void FrmEcranResol::TimReso_Timer() {
  timReso_->SetInterval(0);
  if (view_.unloaded) return;
  const int height = links_.screenHeight ? links_.screenHeight() : kSmallestScreenHeight;
  if (ScreenCheckWarns(program_.options.OptResol, height)) {
    view_.Caption = program_.TitreProg;
    view_.LblVer = "Version " + program_.VersionProg;
    view_.visible = true;
    if (changed) changed();
    return;
  }
  PassOn();
}

void FrmEcranResol::PassOn() {
  if (view_.unloaded) return;
  timReso_->SetInterval(0);
  view_.unloaded = true;
  view_.visible = false;
  if (changed) changed();
  if (links_.loadFrmPartie) links_.loadFrmPartie();
}

void FrmEcranResol::ChkResolution_Click(bool ticked) {
  view_.ChkResolution = ticked;
  if (!ticked) return;
  program_.options.OptResol = 1;
  PassOn();
}

void FrmEcranResol::CmdContinuer_Click() { PassOn(); }

void FrmEcranResol::CmdQuitter_Click() {
  if (view_.unloaded) return;
  timReso_->SetInterval(0);
  view_.unloaded = true;
  if (links_.endProgram) links_.endProgram();
}

}  // namespace ostrane
