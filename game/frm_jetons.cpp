#include "game/frm_jetons.h"

#include "game/texts.h"
#include "lexicon/fatal.h"
#include "records/options.h"
#include "records/program.h"

namespace ostrane {
namespace {

constexpr int kTimDeb = 250;

// The face of a picked tile: its letter's picture, entry 26 for the blank.
TileFace PickedFace(const std::string& letter) {
  const int index = letter == "?" ? 26 : static_cast<unsigned char>(letter[0]) - 65;
  return TileFace{TileFace::Picture::ImgLet, index, TileFace::Tint::None};
}

}  // namespace

std::string JetonCaption(int index) {
  if (index == FrmJetons::kBlank) return "?";
  return std::string(1, char('A' + index - 1));
}

FrmJetons::FrmJetons(Program& program, MainForm mainForm) : program_(program), main_(std::move(mainForm)) {
  for (int k = 1; k <= kBlank; ++k) CmdJeton[size_t(k)].caption = JetonCaption(k);
  CmdJeton[0].visible = false;
  CmdAnnuler.enabled = false;
  CmdValider.enabled = false;

  // Form_Load.
  program_.IntNbTire = 0;
  if (program_.IntNbSac > 7) {
    IntNbATirer = 7;
    if (program_.StrSac.size() < 14) BlnFinSac = 1;
  } else {
    IntNbATirer = program_.IntNbSac;
  }
  DisableLettersNotInBag();
  top = program_.IntJetonsHaut;
  left = program_.IntJetonsGauche;
  timDeb_ = program_.host.timers.Create([this] { TimDeb_Timer(); });
  timDeb_->SetInterval(kTimDeb);
}

FrmJetons::~FrmJetons() = default;

void FrmJetons::DisableLettersNotInBag() {
  for (int k = 1; k <= kBlank; ++k) {
    if (program_.StrSac.find(JetonCaption(k)) == std::string::npos) CmdJeton[size_t(k)].enabled = false;
  }
}

void FrmJetons::TimDeb_Timer() {
  timDeb_->SetInterval(0);
  enabled = true;
  if (program_.options.OptMessages == "Oui" && program_.BytVisite == 1) {
    program_.BytVisite = 2;
    program_.IntEtapeVisite = 2;
    if (main_.ShowBoiteI) main_.ShowBoiteI();
  }
  if (changed) changed();
}

void FrmJetons::CmdJeton_Click(int index) {
  if (index < 1 || index > kBlank) FatalIndex("CmdJeton", index);
  const int16_t n = program_.IntNbTire;
  if (n < 0 || n >= 7) FatalIndex("TabTirage", n);
  const std::string letter = CmdJeton[size_t(index)].caption;
  program_.TabTirage[size_t(n)] = letter;
  const size_t place = program_.StrSac.find(letter);
  program_.TabRangTirage[size_t(n)] = place == std::string::npos ? int16_t(0) : int16_t(place + 1);
  LblTirage.text += letter;

  if (!program_.StrSac.empty() && place != std::string::npos) program_.StrSac.erase(place, 1);
  if (main_.SubAfficheSac) main_.SubAfficheSac();

  program_.IntNbTire = int16_t(n + 1);
  ImgJ[size_t(program_.IntNbTire)] = PickedFace(letter);
  CmdAnnuler.enabled = true;

  if (program_.IntNbTire == IntNbATirer) {
    CmdValider.enabled = true;
    for (int k = 1; k <= kBlank; ++k) CmdJeton[size_t(k)].enabled = false;
  }
  if (BlnFinSac == 1) CmdValider.enabled = true;
  DisableLettersNotInBag();
}

void FrmJetons::CmdAnnuler_Click() {
  const int16_t n = program_.IntNbTire;
  if (n < 1 || n > 7) FatalIndex("ImgJ", n);
  ImgJ[size_t(n)] = TileFace{};
  program_.IntNbTire = int16_t(n - 1);

  const size_t i = size_t(program_.IntNbTire);
  const std::string letter = program_.TabTirage[i];
  const size_t place = size_t(program_.TabRangTirage[i]);
  if (place >= 1 && place - 1 <= program_.StrSac.size()) program_.StrSac.insert(place - 1, letter);
  if (main_.SubAfficheSac) main_.SubAfficheSac();

  for (int k = 1; k <= kBlank; ++k) {
    if (CmdJeton[size_t(k)].caption == letter) CmdJeton[size_t(k)].enabled = true;
  }
  for (int k = 1; k < kBlank; ++k) {
    if (program_.StrSac.find(JetonCaption(k)) != std::string::npos) CmdJeton[size_t(k)].enabled = true;
  }
  Button& blank = CmdJeton[kBlank];
  if (program_.StrSac.find('?') != std::string::npos) {
    blank.enabled = true;
  } else {
    blank.enabled = false;
    blank.caption = "?";
  }

  if (program_.IntNbTire == 0) CmdAnnuler.enabled = false;
  CmdValider.enabled = false;
}

void FrmJetons::CmdValider_Click() {
  program_.IntNbTire = int16_t(program_.IntNbTire - 1);
  Form_Unload();
}

void FrmJetons::Form_Unload() {
  timDeb_->SetInterval(0);
  program_.IntJetonsHaut = top;
  program_.IntJetonsGauche = left;
  closed = true;
}

void FrmJetons::CmdInfo_Click() {
  program_.IntEtapeVisite = 10;
  if (main_.ShowBoiteI) main_.ShowBoiteI();
}

void FrmJetons::CmdQ_Click() {
  program_.StrMsg = texts::kAbandon;
  if (program_.ShowMessage(kYesNoDefaultNo) == Answer::No) return;
  if (main_.Hide) main_.Hide();
  enabled = false;
  SaveOptions(program_);
  ended = true;
  closed = true;
}

}  // namespace ostrane
