#include "game/frm_plateau.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>
#include <vector>

#include "game/frm_boite_d.h"
#include "game/frm_jetons.h"
#include "game/layout.h"
#include "game/texts.h"
#include "lexicon/fatal.h"
#include "lexicon/lexicon.h"
#include "lexicon/tables.h"
#include "records/about.h"
#include "records/best_scores.h"
#include "records/final_score.h"
#include "records/guided_tour.h"
#include "records/options.h"
#include "records/program.h"

#ifndef OSTRANE_WEB_DICTIONARY
#define OSTRANE_WEB_DICTIONARY "https://fr.wiktionary.org/w/index.php?search="
#endif
#ifndef OSTRANE_WEB_DICTIONARY_HOME
#define OSTRANE_WEB_DICTIONARY_HOME "https://fr.wiktionary.org/"
#endif

namespace ostrane {

std::string ChercheWebAddress(std::string_view word) {
  if (word.empty()) return OSTRANE_WEB_DICTIONARY_HOME;
  std::string address = OSTRANE_WEB_DICTIONARY;
  for (const char c : word) address += char(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  return address;
}

namespace {

using layout::kPlateauHeight;
using layout::kPlateauLeft;
using layout::kPlateauTop;
using layout::kPlateauWidth;
using layout::kTileHeight;
using layout::kTileWidth;

const std::string kCrLfText(kCrLf);

// The start bags of OptPioche 1 to 3.
constexpr const char* kShortBags[] = {"", "AACEEEEEEIMNRSSSTU", "AACEEEFIKNNNNNNRTWWZ",
                                      "AAAABEEEGIILLNNOST?"};

std::string Upper(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) c = UpperAscii(c);
  return upper;
}

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = LowerAscii(c);
  return lower;
}

int FirstCode(const std::string& text) { return text.empty() ? 0 : static_cast<unsigned char>(text[0]); }

// Rounding to the nearest whole number, halves to the even neighbour.
int RoundHalfEven(double value) { return int(std::nearbyint(value)); }

// Two digits, "0" in front of one.
std::string TwoDigits(int value) {
  std::string text = std::to_string(value);
  return value < 10 ? "0" + text : text;
}

// The leading number of a text, as Val reads it: 0 when there is none.
long LeadingNumber(const std::string& text) {
  size_t i = 0;
  while (i < text.size() && text[i] == ' ') ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
  long value = 0;
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) value = value * 10 + (text[i] - '0');
  return negative ? -value : value;
}

// Characters of a UTF-8 text.
size_t CharCount(std::string_view text) {
  size_t count = 0;
  for (const char c : text)
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++count;
  return count;
}

// Length of the longest word the lexicon holds.
int LongestWord(const Lexicon& lexicon) {
  int longest = lexicon.Dico.LgMaxArbre();
  for (int length = 10; length <= 15; ++length)
    if (lexicon.LongWords(size_t(length)).UBound() > 0) longest = std::max(longest, length);
  return longest;
}

}  // namespace

FrmPlateau::FrmPlateau(Program& program, Forms& forms) : program_(program), forms_(forms) {
  ObjMots.SubDico(program_.lexicon);
  ObjMots.SetMessageBoxes(&program_.host.boxes);

  Timers& timers = program_.host.timers;
  TimDeb = timers.Create([this] { TimDeb_Timer(); });
  TimCligno = timers.Create([this] { TimCligno_Timer(); });
  TimerEpie = timers.Create([this] { TimerEpie_Timer(); });
  TimFrmFin = timers.Create([this] { TimFrmFin_Timer(); });
  TimScore = timers.Create([this] { TimScore_Timer(); });
  TimChrono = timers.Create([this] { TimChrono_Timer(); });
  TimPasseEnDupli = timers.Create([this] { TimPasseEnDupli_Timer(); });

  Randomize = [this] {
    const DateTime now = program_.host.clock.Now();
    program_.engine.Random.Seed(uint64_t(now.hour * 3600 + now.minute * 60 + now.second));
  };

  // The controls as the form is designed.
  CmdNew.caption = "Débuter la partie";
  CmdGame.caption = texts::kNouvelle;
  CmdGame.tip = texts::kNouvelleTip;
  CmdArret.caption = texts::kArreter;
  CmdArret.tip = texts::kArreterTip;
  CmdArret.visible = false;
  CmdSolution.enabled = false;
  CmdValider.caption = "Valider le mot";
  CmdValider.tip = "Valider le mot et compter les points";
  CmdValider.enabled = false;
  CmdRanger.caption = "Ranger les jetons dans le chevalet";
  CmdRanger.enabled = false;
  CmdChercheWeb.caption = "Dictionnaire en ligne";
  CmdCacher.caption = "V";
  CmdMax.caption = "WState2";
  CmdMin.caption = "WState0";
  CmdEndRnd.caption = "Fin du tour";
  CmdArretBis.caption = "FinPartieBis";
  CmdCtrl.enabled = false;
  TxtHisto.text = "";
  LblIndic.bold = true;  // the invitation stands in bold; the summary of a solution does not
  LblLTitre.text = "Lettres qu'il reste à piocher";
  LblLTitre.visible = false;
  LblLetReste.visible = false;
  LblPtsJoueur.text = "0";
  LblTirage.text = "0";
  LblDuree.text = "0:00:00";
  LblTimer.text = "00:00:00";
  LblTpsDemarrage.text = "00";
  LblA1.text = texts::kEntrezUnMot;
  LblDef.text = "Définition:";
  LblDef.visible = false;
  LblWait.text = "Recherche de la meilleure solution possible. Patientez     ";
  PicDef.visible = false;
  PicWait.visible = false;
  ImgXY.visible = false;
  ImgB.visible = false;
  Iabc[0].visible = false;
  Iabc[2].visible = false;
  Iabc[3].visible = false;
  FraTools.caption = "              Outils (cliquez pour déplacer)       ";
  FraTools.left = layout::kFraToolsLeft;
  FraTools.top = layout::kFraToolsTop;
  FraTools.width = layout::kFraToolsWidth;
  FraTools.height = layout::kFraToolsHeight;
  static constexpr const char* kPioche[] = {"Normal (102 jetons)", "Courte et facile", "Courte et difficile",
                                            "Tablinor au 1er tir."};
  for (size_t i = 0; i < 4; ++i) OptPioche[i].caption = kPioche[i];
  static constexpr const char* kJok[] = {"", "Normal (aléatoire)", "Un au démarrage", "Deux au démarrage"};
  for (size_t i = 0; i < 4; ++i) OptJok[i].caption = kJok[i];
  OptJok[0].visible = false;
  for (int i = 0; i < 7; ++i) {
    Tile& tile = PicGamer[size_t(i)];
    tile.enabled = false;
    tile.visible = false;
    tile.left = layout::RackLeft(i);
    tile.top = layout::RackTop();
  }
}

FrmPlateau::~FrmPlateau() = default;

void FrmPlateau::ShowMessage(const std::string& text, BoxStyle style) {
  program_.StrMsg = text;
  program_.ShowMessage(style);
}

void FrmPlateau::ShowBoiteI() {
  FrmBoiteI box(program_, LblSolution.text, LblPts.text);
  box.Form_Load();
  forms_.Show(box);
}

// ================================================================ the form

void FrmPlateau::Form_Load() {
  program_.host.events.DoEvents();
  OptJok[size_t(std::clamp<int>(program_.IntJok, 1, 3))].value = true;
  OptPioche[size_t(std::clamp<int>(program_.IntPioche, 0, 3))].value = true;
  BlnChangePartie = 0;
  LblNomP.text = program_.NomPartie;
  CmdAbout.tip = "A propos de " + program_.TitreProg;
  BytChronoDemande = 0;
  VarHeures = 0;
  if (!program_.options.OptDuree) LblDuree.foreColor = Color::Grey(0x80);
  VarTirage = 0;
  caption = program_.TitreProg;
  LblVer.text = "Version " + program_.VersionProg;
  IntPasJeton = int16_t((layout::kRegletteWidth - 3) / 7);
  ObjPlateau = std::make_unique<ClsPlateau>(program_.lexicon, program_.engine);
  DrawGrille();
  CmdSonPicture = program_.options.OptSons ? SonPicture::ImgHP1 : SonPicture::ImgHP2;
  TimerEpie->SetInterval(kTimerEpie);
  TimChrono->SetEnabled(false);
  TimChrono->SetInterval(kTimChrono);
  TimPasseEnDupli->SetEnabled(false);
  TimPasseEnDupli->SetInterval(kTimPasseEnDupli);
  program_.host.events.DoEvents();
  TimDeb->SetInterval(kTimDeb);

  // The load time: what stands in the seconds of "hh:mm:ss" of the end time
  // (never set, so 0) less the start time, which reads the start's own seconds.
  if (program_.HeureDepart != 0) {
    const double seconds = std::fabs(0.0 - double(program_.HeureDepart)) * 86400.0;
    const long whole = std::lround(seconds);
    LblTpsDemarrage.text = TwoDigits(int(whole % 60)) + " sec";
  }
}

void FrmPlateau::TimDeb_Timer() {
  TimDeb->SetInterval(0);
  if (takeUp_) {
    ResumeGame();
    return;
  }
  LblNomP.text = program_.NomPartie;
  LblDuree.foreColor = program_.options.OptDuree ? Color::Rgb(0x00, 0x80, 0x80) : Color::Grey(0x80);

  std::string& sac = program_.StrSac;
  sac.clear();
  for (size_t i = 0; i + 2 < StrPioche.size(); i += 3) {
    const int count = (StrPioche[i] - '0') * 10 + (StrPioche[i + 1] - '0');
    sac.append(size_t(count), StrPioche[i + 2]);
  }
  if (program_.IntPioche >= 1 && program_.IntPioche <= 3) sac = kShortBags[program_.IntPioche];
  SubAfficheSac();

  enabled = true;
  MousePointer = Pointer::Default;
  if (program_.options.OptMessages == "Oui") {
    program_.IntEtapeVisite = 1;
    ShowBoiteI();
  }
  LblIndic.text = "Pour commencer," + kCrLfText + "cliquez sur" + kCrLfText + "''Débuter une partie''.";
  Changed();
}

FrmPlateau::Unload FrmPlateau::Form_Unload() {
  if (BlnChangePartie == 0) {
    if (program_.BlnSacVide == 0 && IntNbCoups >= 2) {
      ShowMessage(texts::kAbandon, kYesNoDefaultNo);
    } else {
      ShowMessage(texts::kQuitter, kYesNo);
    }
    if (program_.IntReponse == Answer::No) return Unload::Cancelled;
    CmdEnregistre_Click();
    RemoveJournal();
    return Unload::EndProgram;
  }
  return Unload::ToPartie;
}

// ================================================================ the game

void FrmPlateau::CmdNew_Click() {
  CmdNew.enabled = false;
  if (IntNbCoups > 1) SetFocus(Focus::Foc);
  LblIndic.text = "";
  CmdGame.visible = false;
  CmdArret.visible = true;
  CmdArret.caption = texts::kArreter;
  CmdArret.tip = texts::kArreterTip;
  CmdSolution.enabled = true;
  VarTirage = 1;
  LblTirage.text = "01";
  program_.BlnSacVide = 0;
  IntNbCoups = 0;
  TxtHisto.text = "";
  BlnAbandon = 0;
  if (program_.options.OptDuree) BytChronoDemande = 1;
  if (Randomize) Randomize();
  for (Tile& tile : PicGamer) tile.Tag = "";
  for (Chevalet& place : TabChevalet) place = Chevalet{"", -1};
  LblPtsJoueur.text = "0";
  TopsTotal = 0;
  TurnTop = -1;
  ObjPlateau = std::make_unique<ClsPlateau>(program_.lexicon, program_.engine);
  DrawGrille();
  LblLetReste.visible = true;
  LblLTitre.visible = true;

  SubTirage();
  if (ended) return;
  SubActiveChevalet();
  CmdSolution_Click();
  enabled = true;
  Changed();
  if (IntNbCoups > 1) SetFocus(Focus::Foc);
  if (program_.options.OptMessages == "Oui" && program_.BytVisite == 3) {
    program_.IntEtapeVisite = 4;
    ShowBoiteI();
  }
  if (LngNbSolutions != 0) StartBlink();
}

FrmPlateau::Unload FrmPlateau::CmdGame_Click() {
  RemoveJournal();
  BlnChangePartie = -1;
  return Form_Unload();
}

void FrmPlateau::SubActiveChevalet() {
  for (Tile& tile : PicGamer) tile.enabled = true;
}

void FrmPlateau::SubAfficheSac() {
  const std::string& sac = program_.StrSac;
  if (sac.size() < 34) {
    LblLetReste.text = kCrLfText + sac;
    return;
  }
  const size_t n = size_t(RoundHalfEven(double(sac.size()) / 3.0));
  LblLetReste.text = sac.substr(0, n) + kCrLfText + sac.substr(n, n) + kCrLfText + sac.substr(2 * n);
}

void FrmPlateau::SubTirage() {
  if (onDrawing) onDrawing();
  if (Randomize) Randomize();
  if (program_.StrSac.empty()) {
    program_.BlnSacVide = -1;
  } else {
    program_.IntNbSac = int16_t(program_.StrSac.size());
    FrmJetons::MainForm main;
    main.SubAfficheSac = [this] { SubAfficheSac(); };
    main.ShowBoiteI = [this] { ShowBoiteI(); };
    main.Hide = [this] { visible = false; };
    FrmJetons jetons(program_, std::move(main));
    forms_.Show(jetons);
    if (jetons.ended) {
      ended = true;
      RemoveJournal();
      forms_.EndProgram();
      return;
    }
    for (int k = 0; k <= program_.IntNbTire; ++k) {
      if (k >= 7) FatalIndex("PicGamer", k);
      Tile& tile = PicGamer[size_t(k)];
      if (!tile.Tag.empty()) continue;
      const std::string& letter = program_.TabTirage[size_t(k)];
      const int index = letter == "?" ? 26 : FirstCode(letter) - 65;
      if (index < 0 || index > 26) FatalIndex("ImgLet", index);
      tile.face = TileFace{TileFace::Picture::ImgLet, index, TileFace::Tint::None};
      int place = 0;
      while (place < kRackBound && !TabChevalet[size_t(place)].StrLettre.empty()) ++place;
      if (place == kRackBound) continue;
      tile.Tag = Lower(letter);
      TabChevalet[size_t(place)] = Chevalet{tile.Tag, int16_t(k)};
      tile.left = layout::kRegletteLeft + IntPasJeton * place + 2;
      tile.top = layout::RackTop();
    }
    if (std::any_of(PicGamer.begin(), PicGamer.end(), [](const Tile& tile) { return !tile.Tag.empty(); }))
      SaveJournal();
  }
  if (program_.options.OptMessages == "Oui" && program_.BytVisite == 2) {
    program_.BytVisite = 3;
    program_.IntEtapeVisite = 3;
    ShowBoiteI();
  }
  PicWait.visible = true;
  for (Tile& tile : PicGamer)
    if (!tile.Tag.empty()) tile.visible = true;
  // The panel and the tiles drawn are on the screen before the search.
  Changed();
}

void FrmPlateau::CmdSolution_Click() {
  SetFocus(Focus::TxtHisto);
  PicDef.visible = false;
  enabled = false;
  if (!ObjPlateau) {
    Changed();
    return;
  }
  MousePointer = Pointer::Hourglass;
  // The window shows the disabled form, the hourglass and the waiting panel,
  // and takes no input, for as long as the search runs.
  Changed();

  std::string rack;
  for (const Tile& tile : PicGamer) {
    if (tile.Tag.empty()) continue;
    rack += FirstCode(tile.Tag) < 97 ? std::string("?") : tile.Tag;
  }
  ObjPlateau->SetYield(
      YieldHook{[](void* events) { static_cast<EventPump*>(events)->DoEvents(); }, &program_.host.events});
  ObjPlateau->SetMessageBoxes(&program_.host.boxes);
  // With the exact analysis, a search too rich for its tables stops, and the
  // turn's top is known.
  ObjPlateau->SetStopAtLimit(bool(ExactBest));
  const std::string exactRack = rack;
  LngNbSolutions = ObjPlateau->TrouveSolution(rack);
  std::optional<ClsWord> exact;
  bool exactDown = false;
  if (ExactBest) {
    exact = ExactBest(exactRack, exactDown);
    TurnTop = exact ? exact->CountP : 0;
  }
  const bool tooMany = ExactBest && ObjPlateau->LimitReached() && exact;

  FrmBoiteD boite(program_);
  // The box's load gives the main form back and resets the status panel.
  MousePointer = Pointer::Default;
  enabled = true;
  LblA11.backColor = Color::Grey(192);
  LblA11.foreColor = Color::ButtonText();
  LblA11.text = "";

  std::string summary;
  Proposition.reset();
  if (LngNbSolutions != 0) {
    for (size_t i = 0; i < boite.Lbl.size(); ++i) boite.Lbl[i].visible = true;
    boite.Fra.visible = true;
    boite.LblMsg.visible = false;
    std::optional<ClsWord> w;
    if (exact && (tooMany || program_.settings.proposeExact)) {
      // The exact top, proposed as the designed best play is.
      w = exact;
      program_.engine.BytSens = exactDown ? 1 : 0;
    } else {
      w = ObjPlateau->SubSortie(5);
    }
    if (!w)
      Fatal("Erreur d'exécution 91" + kCrLfText + "Variable objet non définie (CmdSolution_Click).      ");
    const std::string direction = program_.engine.BytSens == 0 ? " Horizontal" : " Vertical";

    std::string letter, number;
    for (char l = 'A'; l <= 'O'; ++l) {
      const size_t at = w->Place.find(l);
      if (at == std::string::npos) continue;
      if (at == 0) {
        letter = w->Place.substr(0, 1);
        number = w->Place.substr(1);
      } else {
        number = w->Place.substr(0, at);
        letter = w->Place.substr(at);
      }
      break;
    }
    summary = "Position: " + letter + "-" + number;
    boite.Lbl[3].text = letter + "-" + number + " " + direction;
    SubPositionSolution(number, letter);
    const std::string upper = Upper(w->Express);
    LblSolution.text = upper;
    summary = "Solution: " + upper + kCrLfText + summary;
    if (program_.options.OptDef23 == 1 && w->Express.size() < 4) {
      if (const auto definition = program_.lexicon.DefM23.FindForSolution(upper)) {
        boite.LblDef.text = "Définition: " + *definition;
        boite.heightTwips = FrmBoiteD::kGrownHeight;
        boite.topTwips = FrmBoiteD::kGrownTop;
        boite.LblDef.visible = true;
        boite.ChkShowDef.visible = true;
      }
    }
    boite.Lbl[1].text = upper;
    summary += direction;
    ImgXYPicture = program_.engine.BytSens != 0 ? Arrow::ImgClassicVer : Arrow::ImgClassicHor;
    summary += kCrLfText + "Nombre de points: " + std::to_string(w->CountP);
    if (tooMany) summary = std::string(texts::kTropDeSolutions) + kCrLfText + summary;
    boite.Lbl[5].text = std::to_string(w->CountP);
    Proposition = std::move(w);
  } else {
    boite.LblMsg.text = texts::kPasDeSolution;
    boite.LblMsg.visible = true;
    LblIndic.text = kCrLfText + texts::kPasDeSolution;
  }

  MousePointer = Pointer::Default;
  // The form is given back by the box's load; the panel stands through the
  // pause of the first plays, during which nothing else happens.
  Changed();
  if (IntNbCoups < 2 && Sleep) Sleep(1000);
  PicWait.visible = false;
  Changed();
  if (program_.options.OptSons) SubJoueSon(3);
  forms_.Show(boite);
  LblIndic.bold = false;
  LblIndic.text = summary;
}

void FrmPlateau::SubPositionSolution(const std::string& number, const std::string& letter) {
  if (program_.options.OptCadre == 0) return;
  const int column = int(LeadingNumber(number)) - 1;
  const int row = letter.empty() ? -65 : FirstCode(letter) - 65;
  const int x = 19 + 36 * column;
  const int y = 19 + 36 * row;
  LinVx.x1 = LinVx.x2 = x;
  LinVy.y1 = LinVy.y2 = y;
  LinVy.x2 = LinVx.x1;
  LinVx.y2 = LinVy.y1;
  ImgXYLeft = x - layout::kImgXYWidth / 2;
  ImgXYTop = y - layout::kImgXYHeight / 2 + 1;
  LinVy.x2 -= 19;
  LinVx.y2 -= 19;
  LinVy.visible = number != "1";
  LinVx.visible = letter != "A";
  if (IntNbCoups == 0) {
    if (number == "8") {
      program_.engine.BytSens = 1;
      if (letter == "H") program_.engine.BytSens = 0;
    }
  }
  ImgXY.visible = true;
}

// ---------------------------------------------------------- tiles on board

bool FrmPlateau::TileAcrossPlateau(int i) const {
  const Tile& tile = PicGamer[size_t(i)];
  return tile.left >= kPlateauLeft && tile.left + kTileWidth <= kPlateauLeft + kPlateauWidth;
}

bool FrmPlateau::TileInsidePlateau(int i) const {
  const Tile& tile = PicGamer[size_t(i)];
  return TileAcrossPlateau(i) && tile.top >= kPlateauTop &&
         tile.top + kTileHeight <= kPlateauTop + kPlateauHeight;
}

int FrmPlateau::TileColumn(int i) const {
  const double pitch = (kPlateauWidth - 2) / 15.0;
  return RoundHalfEven((PicGamer[size_t(i)].left - kPlateauLeft) / pitch);
}

int FrmPlateau::TileRow(int i) const {
  const double pitch = (kPlateauHeight - 2) / 15.0;
  return RoundHalfEven((PicGamer[size_t(i)].top - kPlateauTop) / pitch);
}

ClsWord FrmPlateau::SubEvalueProposition() {
  CmdValider.enabled = false;
  ClsWord result;
  if (!ObjPlateau) return result;
  ClsPlateau work(program_.lexicon, program_.engine);
  ClsPlateau& board = *ObjPlateau;

  struct Placed {
    int column, row;
    std::string letter;
  };
  std::vector<Placed> list;
  for (int i = 0; i < 7; ++i) {
    const Tile& tile = PicGamer[size_t(i)];
    if (tile.Tag.empty() || !TileAcrossPlateau(i)) continue;
    list.push_back(Placed{TileColumn(i), TileRow(i), tile.Tag});
  }
  if (list.empty()) return result;
  // A blank left without a letter ("Nul") puts its whole tag into the word
  // it stands in, and no word of the lexicon takes it: such a proposal is
  // never lawful. The board square only keeps a tag's first letter, so the
  // tag is looked at here.
  for (const Placed& placed : list)
    if (placed.letter.size() != 1) return result;

  auto occupied = [](const ClsPlateau& on, int x, int y) { return on.Square(x, y) != 0; };
  bool horizontal = true;
  if (list.size() == 1) {
    if (board.SubWordFirst()) return result;
    const int c = list[0].column, r = list[0].row;
    int direction = 0;  // undecided, 1 across, 2 down
    if ((c + 1 <= 14 && occupied(board, c + 1, r)) || (c - 1 >= 0 && occupied(board, c - 1, r)))
      direction = 1;
    if ((r - 1 >= 0 && occupied(board, c, r - 1)) || (r + 1 <= 14 && occupied(board, c, r + 1)))
      direction = 2;
    if (direction == 0) return result;
    horizontal = direction == 1;
  } else {
    if (list[1].row == list[0].row) {
      horizontal = true;
    } else if (list[1].column == list[0].column) {
      horizontal = false;
    } else {
      return result;
    }
    for (size_t k = 2; k < list.size(); ++k) {
      if (horizontal ? list[k].row != list[0].row : list[k].column != list[0].column) return result;
    }
  }

  for (const Placed& placed : list) work.SubCase(placed.column, placed.row, placed.letter);

  if (board.SubWordFirst()) {
    if (!occupied(work, 7, 7)) return result;
  } else {
    bool touches = false;
    for (const Placed& p : list) {
      const int c = p.column, r = p.row;
      if ((c - 1 >= 0 && occupied(board, c - 1, r)) || (c + 1 <= 14 && occupied(board, c + 1, r)) ||
          (r - 1 >= 0 && occupied(board, c, r - 1)) || (r + 1 <= 14 && occupied(board, c, r + 1))) {
        touches = true;
        break;
      }
    }
    if (!touches) return result;
  }

  const bool transposed = !horizontal;
  if (transposed) {
    board.SubPlat();
    work.SubPlat();
    for (Placed& p : list) std::swap(p.column, p.row);
  }
  auto turnBack = [&] {
    if (transposed) board.SubPlat();
  };

  const int row = list[0].row;
  int start = list[0].column;
  while (start - 1 >= 0 && (occupied(board, start - 1, row) || occupied(work, start - 1, row))) --start;

  std::string word;
  int count = int(list.size());
  for (int c = start; c <= 14; ++c) {
    const char onBoard = board.Square(c, row), laid = work.Square(c, row);
    if (onBoard == 0 && laid == 0) break;
    if (onBoard != 0) {
      word += onBoard;
    } else {
      word += laid;
      --count;
    }
  }
  if (count != 0) {
    turnBack();
    return result;
  }

  if (!ObjMots.SubWordIsTrue(Upper(word))) {
    if (int(word.size()) <= LongestWord(program_.lexicon)) turnBack();
    return result;
  }

  for (int c = start; c <= 14; ++c) {
    const char onBoard = board.Square(c, row), laid = work.Square(c, row);
    if (onBoard == 0 && laid == 0) break;
    if (laid == 0) continue;
    board.SetSquare(c, row, laid);
    int top = row;
    while (top - 1 >= 0 && occupied(board, c, top - 1)) --top;
    const std::string position = std::to_string(c + 1) + char(65 + top);
    const std::string cross = board.GetMot(position);
    board.SetSquare(c, row, 0);
    if (cross.size() > 1 && !ObjMots.SubWordIsTrue(cross)) {
      turnBack();
      return result;
    }
  }

  const std::string position = std::string(1, char(row + 65)) + std::to_string(start + 1);
  result = board.SubScoreH(word, position, transposed ? 1 : 0);
  turnBack();
  CmdValider.enabled = true;
  return result;
}

void FrmPlateau::CmdValider_Click() {
  SetFocus(Focus::Foc);
  enabled = false;
  PicDef.visible = false;
  LblIndic.text = "";
  program_.engine.LngSens = 0;
  LinVx.visible = false;
  LinVy.visible = false;
  ImgXY.visible = false;
  Changed();

  ClsWord w = SubEvalueProposition();
  const std::string upper = Upper(w.Express);

  bool allOnBoardSide = true;
  for (const Tile& tile : PicGamer)
    if (tile.left + kTileWidth > layout::kSeparatorX) allOnBoardSide = false;
  if (w.CountP > 56 && allOnBoardSide && program_.options.OptMessages == "Oui") {
    ShowMessage(" " + kCrLfText + "  Bravo ! Avec  le  mot " + upper + " ," + kCrLfText +
                    "vous venez de réaliser un tablinor.      " + kCrLfText + " ",
                kOkOnly);
  }

  const bool vertical = !w.Place.empty() && w.Place[0] >= '0' && w.Place[0] <= '9';
  const int column = ObjPlateau->SubColumn(w.Place);
  const int row = ObjPlateau->SubTrouverLigne(w.Place);
  for (size_t i = 1; i <= w.Express.size(); ++i) {
    const int c = vertical ? column : column + int(i) - 1;
    const int r = vertical ? row + int(i) - 1 : row;
    for (int k = 0; k < 7; ++k) {
      if (!TileInsidePlateau(k) || TileColumn(k) != c || TileRow(k) != r) continue;
      Tile& tile = PicGamer[size_t(k)];
      const int code = FirstCode(tile.Tag);
      if (code >= 'a' && code <= 'z')
        tile.face = TileFace{TileFace::Picture::ImgLet, code - 97, TileFace::Tint::None};
      tile.Tag = "";
      break;
    }
  }

  CmdValider.enabled = false;
  CmdRanger.enabled = false;
  for (Tile& tile : PicGamer) tile.enabled = false;
  if (ObjPlateau->SubWordFirst()) ObjPlateau->SubWordFirst(false);
  LblPtsJoueur.text = std::to_string(LeadingNumber(LblPtsJoueur.text) + w.CountP);
  if (TurnTop >= 0) TopsTotal += TurnTop;
  const int top = TurnTop;
  TurnTop = -1;
  SubAjoutHisto(w);
  if (onValidated) onValidated(w, top);
  ObjPlateau->SubCaserWord(w);
  DrawGrille();
  if (program_.options.OptMessages == "Oui") {
    program_.IntEtapeVisite = 5;
    ShowBoiteI();
  }
  LblPts.text = "0";
  LblPtsBis.text = "pts";

  CmdRAZ_Click();
  SaveJournal();
  DrawAndGoOn();
}

void FrmPlateau::DrawAndGoOn() {
  SubTirage();
  if (ended) return;

  bool anyTile = false;
  for (const Tile& tile : PicGamer)
    if (!tile.Tag.empty()) anyTile = true;
  if (!anyTile) {
    PicWait.visible = false;
    LblPtsJoueur.text = std::to_string(LeadingNumber(LblPtsJoueur.text));
    SunFindePartie();
    Changed();
    frmFini_ = std::make_unique<FrmFini>(LblPtsJoueur.text, [this] {
      CmdGame.enabled = true;
      TimScore->SetInterval(kTimScore);
    });
    TimFrmFin->SetInterval(kTimFrmFin);
  } else {
    SubActiveChevalet();
    enabled = true;
    SetFocus(Focus::TxtHisto);  // its last line brought into view
    ++TxtHistoScroll;
    SetFocus(Focus::Foc);
    Changed();
    CmdSolution_Click();
  }
  if (LngNbSolutions != 0) StartBlink();
}

void FrmPlateau::SubAjoutHisto(const ClsWord& word) {
  ++IntNbCoups;
  const std::string n = TwoDigits(VarTirage);
  LblTirage.text = n;
  const std::string upper = Upper(word.Express);
  LblSolution.text = "''" + upper + "''";
  std::string line = n + " " + upper;
  if (upper.size() < 15) line.append(15 - upper.size(), ' ');
  const std::string points = std::to_string(word.CountP);
  if (points.size() < 3) line.append(3 - points.size(), ' ');
  line += points;
  TxtHisto.text = TxtHisto.text.empty() ? line : TxtHisto.text + kCrLfText + line;
  ++VarTirage;
}

void FrmPlateau::CmdRanger_Click() {
  SetFocus(Focus::Foc);
  PicDef.visible = false;
  for (int i = 0; i < 7; ++i) {
    Tile& tile = PicGamer[size_t(i)];
    if (tile.Tag.empty() || !TileInsidePlateau(i)) continue;
    int place = 0;
    while (place < kRackBound && !TabChevalet[size_t(place)].StrLettre.empty()) ++place;
    if (place == kRackBound) continue;
    tile.left = layout::kRegletteLeft + IntPasJeton * place + 2;
    tile.top = layout::RackTop();
    TabChevalet[size_t(place)] = Chevalet{tile.Tag, int16_t(i)};
    if (FirstCode(tile.Tag) < 97) {
      tile.face = TileFace{TileFace::Picture::ImgLet, 26, TileFace::Tint::None};
      tile.Tag = "?";
    } else {
      SubPeintLettre(tile.Tag);
      tile.face = PicTemp;
    }
  }
  CmdValider.enabled = false;
  CmdRanger.enabled = false;
  LblPts.text = "";
  LblPtsBis.text = "";
}

void FrmPlateau::CmdRAZ_Click() {
  std::string back;
  for (int i = 0; i < 7; ++i) {
    TabChevalet[size_t(i)] = Chevalet{"", 0};
    Tile& tile = PicGamer[size_t(i)];
    back += tile.Tag;
    tile.Tag = "";
    tile.visible = false;
  }
  std::string& sac = program_.StrSac;
  sac += Upper(back);
  SngNbLettres = float(sac.size());
  const int n = int(SngNbLettres);
  for (int i = 1; i <= n; ++i) {
    if (i >= int(TabLettres.size())) FatalIndex("TabLettres", i);
    TabLettres[size_t(i)] = sac.substr(size_t(i - 1), 1);
  }
  TriAlpha();
  sac.clear();
  for (int i = 1; i <= n; ++i) sac += TabTriees[size_t(i)];
  SubAfficheSac();
}

void FrmPlateau::TriAlpha() {
  const int n = int(SngNbLettres);
  if (n >= int(TabLettres.size())) FatalIndex("TabLettres", n);
  auto code = [](const std::string& s, size_t p) {
    return p <= s.size() ? int(static_cast<unsigned char>(s[p - 1])) : 257;
  };
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n - 1; ++j) {
      if (j == i) continue;
      std::string& a = TabLettres[size_t(i)];
      std::string& b = TabLettres[size_t(j)];
      for (size_t p = 1;; ++p) {
        const int ca = code(a, p), cb = code(b, p);
        if (ca < cb) {
          std::swap(a, b);
          break;
        }
        if (ca > cb) break;
        if (p >= a.size()) {
          if (b.size() > a.size()) std::swap(a, b);
          break;
        }
        if (p >= b.size()) break;
      }
    }
  }
  for (int i = 1; i <= n; ++i) TabTriees[size_t(i)] = TabLettres[size_t(i)];
}

// ============================================================= end of game

void FrmPlateau::SunFindePartie() {
  RemoveJournal();
  CmdSolution.enabled = false;
  CmdGame.visible = true;
  CmdArret.visible = false;
  TimChrono->SetEnabled(false);
  BytChronoDemande = 0;
  if (program_.options.OptSons) SubJoueSon(6);
  for (Tile& tile : PicGamer) tile.enabled = false;
  MousePointer = Pointer::Default;
  CmdArret.caption = texts::kNouvelle;
  CmdArret.tip = texts::kNouvelleTip;
  LblIndic.foreColor = Color::ButtonText();
  enabled = true;
  SetFocus(Focus::TxtHisto);  // its last line brought into view
  ++TxtHistoScroll;
  SetFocus(Focus::Foc);
}

void FrmPlateau::TimFrmFin_Timer() {
  TimFrmFin->SetInterval(0);
  LblIndic.text = kCrLfText + "Fin de la partie.";
  Changed();
  if (!frmFini_) return;
  std::unique_ptr<FrmFini> fini = std::move(frmFini_);
  fini->Form_Load();
  forms_.Show(*fini);
  Changed();
}

void FrmPlateau::TimScore_Timer() {
  TimScore->SetInterval(0);
  BestScoreStepDone = true;
  const ScoreStepResult step = TimScoreStep(program_, LblPtsJoueur.text);
  if (step.openBest) {
    enabled = false;
    FrmBest best(program_, [this](bool on) { enabled = on; });
    best.Form_Load();
    forms_.Show(best);
  }
  Changed();
}

void FrmPlateau::CmdArret_Click() {
  ShowMessage(texts::kAbandon, kYesNoDefaultNo);
  if (program_.IntReponse == Answer::No) return;
  LblIndic.text = "";
  PicDef.visible = false;
  ArretPartie();
}

void FrmPlateau::ArretPartie() {
  RemoveJournal();
  SetFocus(Focus::Foc);
  if (CmdArret.caption != texts::kNouvelle) {
    BlnAbandon = -1;
    if (program_.BlnSacVide == 0 && IntNbCoups >= 2) {
      LblLetReste.text = "";
      CmdArretBis_Click();
      BytChronoDemande = 0;
      LblDuree.text = "0:00:00";
    } else {
      BytChronoDemande = 0;
      LblDuree.text = "0:00:00";
      CmdArretBis_Click();
    }
  } else {
    CmdArret.caption = texts::kArreter;
    CmdArret.tip = texts::kArreterTip;
    BytChronoDemande = 0;
    CmdNew_Click();
    LblLetReste.text = "";
  }
}

void FrmPlateau::CmdArretBis_Click() {
  TimChrono->SetEnabled(false);
  CmdArret.visible = false;
  CmdSolution.enabled = false;
  TxtHisto.text = "";
  LblPtsJoueur.text = "0";
  program_.host.events.DoEvents();
  if (ObjPlateau && ObjPlateau->SubCherche()) ObjPlateau->SubLaisseBTon(true);
  for (Tile& tile : PicGamer) {
    tile.enabled = false;
    if (BlnAbandon == -1) tile.visible = false;
  }
  CmdGame.visible = true;
  CmdGame.enabled = true;
  CmdValider.enabled = false;
  CmdRanger.enabled = false;
  LblTirage.text = "0";
  VarTirage = 0;
  const int image = program_.options.OptImage;
  if (image >= 2 && image <= 4) {
    Plateau.image = image;
    Plateau.squares.fill("");
    ++Plateau.revision;
  }
  MousePointer = Pointer::Default;
  enabled = true;
  SetFocus(Focus::Foc);
  if (BlnAbandon == -1) {
    LblIndic.text = "Pour commencer une nouvelle" + kCrLfText + "partie, cliquez sur le bouton" + kCrLfText +
                    "''Nouvelle partie''";
  } else {
    LblIndic.text = kCrLfText + "Partie terminée.";
  }
  LinVx.visible = false;
  LinVy.visible = false;
  ImgXY.visible = false;
  IntCligno = 9;
  SetFocus(Focus::Foc);
}

// ===================================================== the game kept on disk

SavedGame FrmPlateau::Snapshot() const {
  SavedGame game;
  game.NomPartie = program_.NomPartie;
  for (int row = 0; row < 15; ++row) {
    std::string& line = game.lignes[size_t(row)];
    for (int column = 0; column < 15; ++column) {
      const char square = ObjPlateau ? ObjPlateau->Square(column, row) : 0;
      line += square == 0 ? '.' : square;
    }
  }
  if (ObjPlateau) {
    game.SubWordFirst = ObjPlateau->SubWordFirst();
    const ClsPlateau::OwnRowMemory memory = ObjPlateau->GetOwnRowMemory();
    game.ownRowColumn = memory.column;
    game.ownRowRow = memory.row;
    game.ownRowSet = memory.set;
  }
  game.StrSac = program_.StrSac;
  game.LblPtsJoueur = LblPtsJoueur.text;
  game.IntNbCoups = IntNbCoups;
  game.VarTirage = VarTirage;
  game.LblTirage = LblTirage.text;
  for (size_t start = 0; start < TxtHisto.text.size();) {
    const size_t end = TxtHisto.text.find(kCrLf, start);
    game.TxtHisto.push_back(
        TxtHisto.text.substr(start, end == std::string::npos ? std::string::npos : end - start));
    if (end == std::string::npos) break;
    start = end + kCrLf.size();
  }
  game.BlnSacVide = program_.BlnSacVide;
  game.BytChronoDemande = BytChronoDemande;
  game.BytChronoActif = BytChronoActif;
  game.VarSecondes = VarSecondes;
  game.VarMinutes = VarMinutes;
  game.VarHeures = VarHeures;
  game.LblTimer = LblTimer.text;
  game.LblDuree = LblDuree.text;
  for (const Chevalet& place : TabChevalet) {
    if (place.StrLettre.empty() || place.IntJeton < 0 || place.IntJeton > 6) continue;
    game.Chevalet += PicGamer[size_t(place.IntJeton)].Tag;
  }
  game.randomState = program_.engine.Random.State();
  game.TopsTotal = TopsTotal;
  if (!program_.wordList.Embedded()) {
    game.wordListKey = program_.wordList.key;
    game.wordListFile = program_.wordList.file.string();
  }
  return game;
}

void FrmPlateau::TakeUp(SavedGame game) {
  program_.NomPartie = game.NomPartie;
  takeUp_ = std::move(game);
}

void FrmPlateau::SaveJournal() {
  if (journal && !journal->Save(Snapshot()) && !journalFailed_) {
    // Once: the game in progress is not kept on disk.
    journalFailed_ = true;
    if (onJournalFailure) {
      onJournalFailure();
    } else {
      ShowMessage(texts::kJournalImpossible, kOkOnly);
    }
  }
  if (onTurnBoundary) onTurnBoundary();
}

void FrmPlateau::RemoveJournal() {
  if (journal) journal->Remove();
}

void FrmPlateau::ResumeGame() {
  const SavedGame game = std::move(*takeUp_);
  takeUp_.reset();

  // What TimDeb does for every game, but for the tour's first step and the
  // invitation to begin, which are for a game still to start.
  LblNomP.text = program_.NomPartie;
  LblDuree.foreColor = program_.options.OptDuree ? Color::Rgb(0x00, 0x80, 0x80) : Color::Grey(0x80);
  ApplyKept(game);
}

void FrmPlateau::Restore(const SavedGame& game, bool finished) {
  // The end of the game, when it came, is taken back with the last play.
  TimFrmFin->SetInterval(0);
  TimScore->SetInterval(0);
  frmFini_.reset();
  BestScoreStepDone = false;
  // What the player laid and did not validate goes; the marks of the last
  // proposal too.
  for (Tile& tile : PicGamer) {
    tile.Tag.clear();
    tile.visible = false;
    tile.enabled = false;
  }
  LinVx.visible = LinVy.visible = ImgXY.visible = false;
  IntCligno = 9;
  PicDef.visible = false;
  LblPts.text = "0";
  LblPtsBis.text = "pts";
  LblIndic.text = "";
  CmdValider.enabled = false;
  CmdRanger.enabled = false;
  Proposition.reset();
  program_.engine.LngSens = 0;
  program_.NomPartie = game.NomPartie;
  LblNomP.text = program_.NomPartie;
  ApplyKept(game, finished);
  if (!ended && !finished) SaveJournal();
}

void FrmPlateau::ApplyKept(const SavedGame& game, bool finished) {
  program_.StrSac = game.StrSac;
  program_.BlnSacVide = game.BlnSacVide;
  SubAfficheSac();
  enabled = true;
  MousePointer = Pointer::Default;

  // The game under way, as CmdNew_Click starts it, with its values as kept.
  CmdNew.enabled = false;
  LblIndic.text = "";
  CmdGame.visible = false;
  CmdArret.visible = true;
  CmdArret.caption = texts::kArreter;
  CmdArret.tip = texts::kArreterTip;
  CmdSolution.enabled = true;
  VarTirage = game.VarTirage;
  LblTirage.text = game.LblTirage;
  IntNbCoups = game.IntNbCoups;
  TxtHisto.text.clear();
  for (const std::string& line : game.TxtHisto)
    TxtHisto.text += (TxtHisto.text.empty() ? "" : kCrLfText) + line;
  BlnAbandon = 0;
  BytChronoDemande = game.BytChronoDemande;
  BytChronoActif = game.BytChronoActif;
  VarSecondes = game.VarSecondes;
  VarMinutes = game.VarMinutes;
  VarHeures = game.VarHeures;
  LblTimer.text = game.LblTimer;
  LblDuree.text = game.LblDuree;
  // A game start leaves the rack's tiles numbered -1, a rack returned 0.
  for (Tile& tile : PicGamer) tile.Tag = "";
  for (Chevalet& place : TabChevalet) place = Chevalet{"", int16_t(IntNbCoups == 0 ? -1 : 0)};
  LblPtsJoueur.text = game.LblPtsJoueur;
  TopsTotal = game.TopsTotal;
  TurnTop = -1;
  if (!game.TxtHisto.empty()) {
    // The last play's word, as the history step shows it.
    const std::string& line = game.TxtHisto.back();
    std::string word = line.substr(std::min(line.find(' ') + 1, line.size()), 15);
    word.erase(word.find_last_not_of(' ') + 1);
    LblSolution.text = "''" + word + "''";
  }
  ObjPlateau = std::make_unique<ClsPlateau>(program_.lexicon, program_.engine);
  for (int row = 0; row < 15; ++row)
    for (int column = 0; column < 15; ++column) {
      const char square = game.lignes[size_t(row)][size_t(column)];
      if (square != '.') ObjPlateau->SetSquare(column, row, square);
    }
  ObjPlateau->SubWordFirst(game.SubWordFirst);
  ObjPlateau->SetOwnRowMemory({game.ownRowColumn, game.ownRowRow, game.ownRowSet});
  program_.engine.Random.Seed(game.randomState);
  DrawGrille();
  LblLetReste.visible = true;
  LblLTitre.visible = true;
  ++TxtHistoScroll;

  if (game.Chevalet.empty() && finished) {
    // A game that ran out, shown at its end.
    for (Tile& tile : PicGamer) tile.visible = false;
    SunFindePartie();
    LblIndic.text = kCrLfText + "Fin de la partie.";
    BestScoreStepDone = true;
    Changed();
    return;
  }
  if (game.Chevalet.empty()) {
    // Kept after a validation: the turn's draw is still to come.
    DrawAndGoOn();
    if (!ended) Changed();
    return;
  }

  // Kept after the draw: the same tiles on the rack, as SubTirage laid them.
  const int drawn = int(game.Chevalet.size());
  program_.IntNbSac = int16_t(program_.StrSac.size() + size_t(drawn));
  program_.IntNbTire = int16_t(drawn - 1);
  for (int k = 0; k < drawn; ++k) {
    const std::string tag(1, game.Chevalet[size_t(k)]);
    program_.TabTirage[size_t(k)] = Upper(tag);
    Tile& tile = PicGamer[size_t(k)];
    tile.face =
        TileFace{TileFace::Picture::ImgLet, tag == "?" ? 26 : FirstCode(tag) - 97, TileFace::Tint::None};
    tile.Tag = tag;
    TabChevalet[size_t(k)] = Chevalet{tag, int16_t(k)};
    tile.left = layout::kRegletteLeft + IntPasJeton * k + 2;
    tile.top = layout::RackTop();
    tile.visible = true;
  }
  PicWait.visible = true;
  SubActiveChevalet();
  CmdSolution_Click();
  enabled = true;
  if (LngNbSolutions != 0) StartBlink();
  Changed();
}

// ============================================================ clock, blink

void FrmPlateau::TimerEpie_Timer() {
  ++IntImageEpie;
  Iabc[1].visible = Iabc[2].visible = Iabc[3].visible = false;
  if (IntImageEpie < 1 || IntImageEpie > 3) FatalIndex("Iabc", IntImageEpie);
  Iabc[size_t(IntImageEpie)].visible = true;
  if (IntImageEpie == 3) IntImageEpie = 0;

  if (BytChronoActif != 1) {
    if (BytChronoDemande == 1) BytChronoActif = 1;
    if (BytChronoActif != 1) {
      Changed();
      return;
    }
  }
  if (BytChronoDemande == 0) {
    BytChronoActif = 0;
    VarSecondes = 0;
    VarMinutes = 0;
  }
  if (BytChronoActif == 1) {
    ++VarSecondes;
    const std::string seconds = TwoDigits(VarSecondes);
    std::string minutes = TwoDigits(VarMinutes);
    if (minutes == "0") minutes = "00";
    if (seconds == "59") VarSecondes = -1;
    if (VarSecondes == -1) ++VarMinutes;
    if (minutes == "59" && seconds == "59") {
      VarMinutes = 0;
      ++VarHeures;
    }
    LblTimer.text = TwoDigits(VarHeures) + ":" + minutes + ":" + seconds;
    LblTimer_Change();
  }
  Changed();
}

void FrmPlateau::LblTimer_Change() {
  const std::string& timer = LblTimer.text;
  LblDuree.text = timer.size() <= 7 ? timer : timer.substr(timer.size() - 7);
}

void FrmPlateau::StartBlink() {
  IntCligno = 0;
  TimCligno->SetInterval(kTimCligno);
}

void FrmPlateau::TimCligno_Timer() {
  if (IntCligno > 8 || program_.BlnSacVide != 0) {
    IntCligno = 0;
    ImgXY.visible = false;
    TimCligno->SetInterval(0);
    Changed();
    return;
  }
  ++IntCligno;
  ImgXY.visible = !ImgXY.visible;
  if (IntCligno > 3) {
    IntCligno = 0;
    ImgXY.visible = true;
    TimCligno->SetInterval(0);
  }
  // With OptCadre at 0 the suggestion is not framed: neither the lines nor
  // the arrow appear, and the blink changes nothing that shows.
  if (program_.options.OptCadre == 0) ImgXY.visible = false;
  Changed();
}

void FrmPlateau::TimChrono_Timer() {
  // Only after the best scores have closed; what it works out goes nowhere.
  if (program_.BestNouveau < 0) (void)program_.host.clock.Now();
}

void FrmPlateau::TimPasseEnDupli_Timer() {
  TimPasseEnDupli->SetEnabled(false);
  CmdEndRnd_Click();
}

void FrmPlateau::CmdEndRnd_Click() {
  program_.host.events.DoEvents();
  TimChrono->SetEnabled(false);
  MousePointer = Pointer::Default;
}

// ==================================================== the small commands

void FrmPlateau::CmdEnregistre_Click() { SaveOptions(program_); }

void FrmPlateau::CmdSon_Click() {
  if (!program_.options.OptSons) {
    program_.options.OptSons = true;
    CmdSonPicture = SonPicture::ImgHP1;
    SubJoueSon(3);
  } else {
    program_.options.OptSons = false;
    CmdSonPicture = SonPicture::ImgHP2;
  }
}

void FrmPlateau::SubJoueSon(int index) {
  if (!program_.options.OptSons) return;
  switch (index) {
    case 1:
    case 2:
    case 3:
    case 5:
    case 6:
      program_.host.sounds.Play(100 + index);
      break;
    default:
      break;
  }
}

void FrmPlateau::CmdMeilleur_Click() {
  SetFocus(Focus::Foc);
  PicDef.visible = false;
  program_.BestNouveau = 0;
  enabled = false;
  FrmBest best(program_, [this](bool on) { enabled = on; });
  best.Form_Load();
  forms_.Show(best);
}

FrmPlateau::Unload FrmPlateau::CmdQuitte_Click() {
  SetFocus(Focus::Foc);
  return Form_Unload();
}

void FrmPlateau::CmdAide_Click() { program_.host.shell.Open("z_a_aide.htm"); }

void FrmPlateau::CmdChercheWeb_Click() {
  // The word the player is looking at: the one typed in the word box, else
  // the play proposed, else none.
  std::string word = TxtCtrl.text;
  if (word.empty() && Proposition) word = Proposition->Express;
  ChercheWebOpened = program_.host.shell.Open(ChercheWebAddress(word));
}

void FrmPlateau::CmdAbout_Click() {
  FrmAbout about(program_, [this](bool on) { enabled = on; });
  about.Form_Load();
  forms_.Show(about);
}

void FrmPlateau::OptPioche_Click(int index) {
  if (index < 0 || index > 3) FatalIndex("OptPioche", index);
  for (OptionButton& option : OptPioche) option.value = false;
  OptPioche[size_t(index)].value = true;
  program_.IntPioche = int16_t(index);
}

void FrmPlateau::OptJok_Click(int index) {
  if (index < 1 || index > 3) FatalIndex("OptJok", index);
  for (OptionButton& option : OptJok) option.value = false;
  OptJok[size_t(index)].value = true;
  program_.IntJok = int16_t(index);
}

void FrmPlateau::CmdCacher_Click() {
  SetFocus(Focus::Foc);
  if (BlnOutilsPlies != 0) {
    BlnOutilsPlies = 0;
    FraTools.top = layout::kFraToolsTop;
    FraTools.left = layout::kFraToolsLeft;
    FraTools.height = layout::kFraToolsHeight;
    FraTools.width = layout::kFraToolsWidth;
  } else {
    BlnOutilsPlies = 1;
    FraTools.top = layout::kFraToolsFoldedTop;
    FraTools.left = layout::kFraToolsFoldedLeft;
    FraTools.height = layout::kFraToolsFoldedHeight;
    FraTools.width = layout::kFraToolsFoldedWidth;
  }
}

void FrmPlateau::Plateau1_DragDrop(int x, int y) {
  FraTools.left = x;
  FraTools.top = y;
}

// ========================================================== the word check

int FrmPlateau::TxtCtrl_KeyPress(int keyAscii) {
  TxtCtrl.foreColor = Color::Rgb(0, 0, 0);
  const int upper = (keyAscii >= 'a' && keyAscii <= 'z') ? keyAscii - 32 : keyAscii;
  if (upper < 'A' || upper > 'Z') return keyAscii < 32 ? keyAscii : 0;
  if (TxtCtrl.text.size() > 14) return 0;
  return keyAscii;
}

void FrmPlateau::TxtCtrl_Change(const std::string& text) {
  // Only letters get into the box, at most 15 of them: whatever else a paste
  // or a drop brought is left out, so the word test never meets it.
  std::string letters;
  for (const char c : text)
    if (((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z')) && letters.size() < kTxtCtrlMaxLength) letters += c;
  TxtCtrl.text = letters;
  LblA1.text = "";
  const size_t length = CharCount(letters);
  LblN.text = std::to_string(length);
  const bool ready = length >= 2;
  CmdCtrl.enabled = ready;
  CmdCtrl.isDefault = ready;
}

void FrmPlateau::TxtCtrl_GotFocus() {
  TxtCtrl.backColor = Color::Grey(224);
  LblA11.backColor = Color::Grey(224);
  LblN.foreColor = Color::Grey(64);
}

void FrmPlateau::TxtCtrl_LostFocus() {
  TxtCtrl.backColor = Color::Grey(192);
  LblA11.backColor = Color::Grey(192);
  LblA1.foreColor = Color::Grey(128);
  TxtCtrl.foreColor = Color::Grey(128);
  LblN.foreColor = Color::Grey(224);
  LblA1.text = texts::kEntrezUnMot;
  PicDef.visible = false;
  CmdCtrl.isDefault = false;
}

void FrmPlateau::SetFocus(Focus control) {
  if (control == ActiveControl) return;
  const Focus leaving = ActiveControl;
  ActiveControl = control;
  if (leaving == Focus::TxtCtrl) TxtCtrl_LostFocus();
  if (control == Focus::TxtCtrl) TxtCtrl_GotFocus();
}

void FrmPlateau::CmdCtrl_MouseDown() {
  if (!TxtCtrl.text.empty() && TxtCtrl.text.size() < 3 && program_.options.OptDef23 == 1)
    PicDef.visible = true;
}

void FrmPlateau::CmdCtrl_Click() {
  PicDef.visible = false;
  if (TxtCtrl.text.empty()) return;
  TxtCtrl.foreColor = Color::Rgb(0, 0, 0);
  const std::string upper = Upper(TxtCtrl.text);
  if (!ObjMots.SubWordIsTrue(upper)) {
    LblA1.text = "Le mot " + upper + " n'existe pas.";
    LblA1.foreColor = Color::Rgb(192, 0, 0);
    return;
  }
  LblA1.text = "Le mot " + upper + " existe.";
  LblA1.foreColor = Color::Rgb(0, 0, 192);
  if (program_.options.OptDef23 == 1 && TxtCtrl.text.size() < 4) {
    PicDef.visible = true;
    if (const auto definition = program_.lexicon.DefM23.FindForCheck(upper)) {
      if (CharCount(*definition) < 44) {
        LblDef.visible = true;
        LblShowDef.text = kCrLfText + *definition;
      } else {
        LblDef.visible = false;
        LblShowDef.text = *definition;
      }
    }
  }
}

void FrmPlateau::ImgA_Click() {
  ImgA.visible = false;
  ImgB.visible = true;
  program_.options.OptDef23 = 0;
  PicDef.visible = false;
}

// ======================================================= board and faces

void FrmPlateau::DrawGrille() {
  const int option = program_.options.OptImage;
  if (option >= 1 && option <= 4) {
    Plateau.image = option == 1 ? 2 : option;
    Plateau.squares.fill("");
  }
  if (ObjPlateau) {
    for (int row = 0; row < 15; ++row) {
      for (int column = 0; column < 15; ++column) {
        const std::string square = ObjPlateau->SubCase(column, row);
        if (square.empty()) continue;
        Plateau.squares[size_t(row * 15 + column)] = square;
      }
    }
  }
  ++Plateau.revision;
}

void FrmPlateau::SubPeintPose(const std::string& car) {
  const int code = FirstCode(car);
  if (code < 97) return;
  if (code > 122) FatalIndex("ImgLet", code - 97);
  PicTemp = TileFace{TileFace::Picture::ImgLet, code - 97, TileFace::Tint::Blue};
}

void FrmPlateau::SubPeintLettre(const std::string& car) {
  const int code = FirstCode(car);
  if (code < 97) return;
  if (code > 122) FatalIndex("ImgLet", code - 97);
  PicTemp = TileFace{TileFace::Picture::ImgLet, code - 97, TileFace::Tint::Black};
}

void FrmPlateau::SubPeintBlanc(const std::string& car) {
  const int index = FirstCode(car) - 65;
  if (index < 0 || index > 26) FatalIndex("ImgJok", index);
  PicTemp = TileFace{TileFace::Picture::ImgJok, index, TileFace::Tint::DarkRed};
}

}  // namespace ostrane
