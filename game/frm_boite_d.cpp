#include "game/frm_boite_d.h"

#include "records/program.h"

namespace ostrane {

FrmBoiteD::FrmBoiteD(Program& program) : program_(program) {
  caption = program_.TitreProg;
  static constexpr const char* kCaptions[] = {"Meilleure suggestion: ", "", "Position: ", "", "Points: ", ""};
  for (size_t i = 0; i < Lbl.size(); ++i) {
    Lbl[i].text = kCaptions[i];
    Lbl[i].visible = false;
  }
  Fra.visible = false;
  LblMsg.visible = false;
  LblDef.visible = false;
  ChkShowDef.visible = false;
  ChkShowDef.caption = "Ne pas afficher la définition des mots courts (2 et 3 lettres).";
}

void FrmBoiteD::ChkShowDef_Click() {
  ChkShowDef.value = !ChkShowDef.value;
  program_.options.OptDef23 = 0;
}

}  // namespace ostrane
