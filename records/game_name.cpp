#include "records/game_name.h"

#include <vector>

namespace ostrane {
namespace {

// The byte offsets where the characters of a UTF-8 text begin, and its end.
std::vector<size_t> CharacterStarts(std::string_view text) {
  std::vector<size_t> starts;
  for (size_t i = 0; i < text.size(); ++i)
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) starts.push_back(i);
  starts.push_back(text.size());
  return starts;
}

bool IsNameCharacter(std::string_view character) {
  if (character.empty()) return false;
  const size_t found = kNameCharacters.find(character);
  if (found == std::string_view::npos) return false;
  // A whole character of the list, not a piece of one.
  const auto starts = CharacterStarts(kNameCharacters);
  for (size_t i = 0; i + 1 < starts.size(); ++i)
    if (starts[i] == found) return starts[i + 1] - starts[i] == character.size();
  return false;
}

}  // namespace

std::string sChangeCaractere(std::string_view laChaine, std::string_view old_car, std::string_view new_car) {
  if (old_car.empty() || laChaine.find_first_not_of(' ') == std::string_view::npos) return std::string(laChaine);
  const size_t at = laChaine.find(old_car);
  if (at == std::string_view::npos) return std::string(laChaine);
  std::string result(laChaine.substr(0, at));
  result += new_car;
  result += laChaine.substr(at + old_car.size());
  return result;
}

std::string DefaultGameName(int numPartie) {
  return "Partie tabli " + std::string(numPartie < 10 ? "0" : "") + std::to_string(numPartie);
}

FrmPartie::FrmPartie(Program& program, std::function<void()> loadMainForm)
    : program_(program), loadMainForm_(std::move(loadMainForm)) {
  timDeb_ = program_.host.timers.Create([this] { TimDeb_Timer(); });
}

FrmPartie::~FrmPartie() = default;

void FrmPartie::Form_Load() {
  const Options& o = program_.options;
  TxtNom_Change(program_.NomPartie);
  loaded_ = false;
  view_.ChkMess = o.OptMessages == "Oui";
  view_.ChkSons = o.OptSons;
  view_.ChrDuree = o.OptDuree;
  view_.ChkDef23 = o.OptDef23 == 1;
  view_.ChkCadre = o.OptCadre == 1;
  // A picture number without its button selects none.
  view_.OptAff = o.OptImage >= 2 && o.OptImage <= 4 ? o.OptImage : 0;
  loaded_ = true;
  timDeb_->SetInterval(200);
}

void FrmPartie::TimDeb_Timer() {
  timDeb_->SetInterval(0);
  if (view_.unloaded) return;
  view_.visible = true;
  view_.focus = Focus::TxtNom;
  program_.NumPartie = int16_t(program_.NumPartie + 1);
  TxtNom_Change(DefaultGameName(program_.NumPartie));
}

void FrmPartie::TxtNom_Change(std::string_view typed) {
  // The box holds 15 characters at most.
  std::string text(typed);
  {
    const auto starts = CharacterStarts(text);
    if (starts.size() - 1 > size_t(kMaxNameLength)) text.resize(starts[kMaxNameLength]);
  }
  // Each removal puts the text back into the box, which raises this event
  // again: the loop stands for that, until the first ten are clean. Only ten
  // places are examined, so characters 11 to 15 pass unseen.
  for (;;) {
    const auto starts = CharacterStarts(text);
    const size_t count = starts.size() - 1;
    std::string changed = text;
    for (size_t i = 0; i < count && i < size_t(kNamePlacesExamined); ++i) {
      const std::string_view character = std::string_view(text).substr(starts[i], starts[i + 1] - starts[i]);
      if (!IsNameCharacter(character)) {
        changed = sChangeCaractere(text, character, "");
        break;
      }
    }
    if (changed == text) break;
    text = changed;
  }
  view_.TxtNom = text;
  if (CharacterStarts(text).size() - 1 < 2) {
    view_.CmdQEnabled = false;
    view_.Lbl0 = "Donnez un nom à cette partie:";
  } else {
    view_.CmdQEnabled = true;
    view_.Lbl0 = "Nom de la partie:";
  }
}

void FrmPartie::CmdQ_Click() {
  if (view_.unloaded || !view_.CmdQEnabled) return;
  program_.NomPartie = view_.TxtNom;
  Form_Unload();
}

void FrmPartie::CmdFoc_Click() {
  if (view_.unloaded) return;
  if (view_.CmdQEnabled) {
    CmdQ_Click();
    return;
  }
  program_.StrMsg = "Vous devez donner un nom à la partie.      ";
  program_.ShowMessage(kOkOnly);
  view_.focus = Focus::TxtNom;
}

void FrmPartie::CmdDefaut_Click() {
  if (view_.unloaded) return;
  program_.StrMsg = "Appliquer les options par défaut ?      ";
  const Answer answer = program_.ShowMessage(kYesNo);
  view_.focus = Focus::CmdFoc;
  if (answer == Answer::No) return;
  program_.NumPartie = 1;
  TxtNom_Change(DefaultGameName(1));
  view_.ChkSons = view_.ChkMess = view_.ChrDuree = view_.ChkDef23 = view_.ChkCadre = true;
  OptAff_Click(2);
  program_.options.OptImage = 2;
}

void FrmPartie::Check_Click(Check box, bool ticked) {
  switch (box) {
    case Check::ChkMess: view_.ChkMess = ticked; break;
    case Check::ChkSons: view_.ChkSons = ticked; break;
    case Check::ChrDuree: view_.ChrDuree = ticked; break;
    case Check::ChkDef23: view_.ChkDef23 = ticked; break;
    case Check::ChkCadre: view_.ChkCadre = ticked; break;
  }
  view_.focus = Focus::CmdFoc;
}

void FrmPartie::OptAff_Click(int index) {
  if (index < 2 || index > 4) return;
  view_.OptAff = index;
  if (!loaded_) return;
  program_.options.OptImage = int16_t(index);
  view_.focus = Focus::CmdFoc;
}

void FrmPartie::Form_Unload() {
  if (view_.unloaded) return;
  timDeb_->SetInterval(0);
  view_.unloaded = true;
  view_.visible = false;
  Options& o = program_.options;
  o.OptLigne2 = 5;
  o.OptMessages = view_.ChkMess ? "Oui" : "Non";
  o.OptSons = view_.ChkSons;
  o.OptDuree = view_.ChrDuree;
  o.OptDef23 = view_.ChkDef23 ? 1 : 0;
  o.OptCadre = view_.ChkCadre ? 1 : 0;
  if (loadMainForm_) loadMainForm_();
}

}  // namespace ostrane
