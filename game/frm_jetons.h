#pragma once
// FrmJetons, the picking of tiles: one button a letter and one for the blank.
// The player clicks in the tiles drawn from the real bag; each click takes the
// tile out of StrSac at once, and an undo puts it back at its exact place.
// Shown modal by the main form's SubTirage; the picks stay in the program's
// TabTirage, TabRangTirage and IntNbTire.

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "game/controls.h"
#include "records/host.h"

namespace ostrane {

struct Program;

class FrmJetons {
 public:
  static constexpr int kBlank = 27;  // CmdJeton(27) is "?"

  // What the picker asks of the main form.
  struct MainForm {
    std::function<void()> SubAfficheSac;  // StrSac changed: show it
    std::function<void()> ShowBoiteI;     // show the tour box for IntEtapeVisite
    std::function<void()> Hide;           // the main form goes away (leaving the game)
  };

  // Loads the form: IntNbTire = 0, IntNbATirer and BlnFinSac from IntNbSac and
  // StrSac, the buttons of letters that the bag lacks disabled, the place
  // from IntJetonsHaut and IntJetonsGauche, TimDeb armed with 250 ms. The form
  // stays disabled until TimDeb fires.
  FrmJetons(Program& program, MainForm mainForm);
  ~FrmJetons();
  FrmJetons(const FrmJetons&) = delete;
  FrmJetons& operator=(const FrmJetons&) = delete;

  // ---------------------------------------------------------------- state
  int16_t IntNbATirer = 0;  // tiles to pick
  int16_t BlnFinSac = 0;    // 1: picking may stop early, near the end of the bag

  bool enabled = false;
  // Where the form stands on the screen; 0 means "as designed": a third of
  // the free height, and centred across. The window keeps these up to date
  // when the form is moved; the unload stores them for the next draw.
  int left = 0, top = 0;

  std::array<Button, kBlank + 1> CmdJeton;  // 1 to 26: "A" to "Z"; 27: "?"; 0 unused
  // The picked row ImgJ(1) to ImgJ(7): the face of the tile picked there, or
  // Picture::None for the picture of a free place (ImgMod(0)).
  std::array<TileFace, 8> ImgJ{};
  Label LblTirage;  // the picked letters as text
  Button CmdAnnuler, CmdValider, CmdInfo, CmdQ;

  bool closed = false;  // the form has unloaded: the window goes
  bool ended = false;   // the player left the program from here

  // ------------------------------------------------------------- commands
  void TimDeb_Timer();
  void CmdJeton_Click(int index);
  void CmdAnnuler_Click();
  void CmdValider_Click();
  void CmdInfo_Click();
  void CmdQ_Click();
  // Whether the window may close now: only CmdValider and CmdQ close it.
  bool CanClose() const { return closed; }

  // Called after every change that a timer made, so that the window follows.
  std::function<void()> changed;

 private:
  void Form_Unload();
  void DisableLettersNotInBag();

  Program& program_;
  MainForm main_;
  std::unique_ptr<Timer> timDeb_;
};

// "A" to "Z" for 1 to 26, "?" for 27.
std::string JetonCaption(int index);

}  // namespace ostrane
