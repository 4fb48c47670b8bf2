#pragma once
// The modal forms that the game flow opens. Showing a form returns when the
// form has closed, as a modal form does: the windowed program runs a dialog
// bound to the form's model, a test answers with a script that clicks the
// model's commands. Message boxes go through Program::ShowMessage instead.

namespace ostrane {

class FrmJetons;  // picking of tiles (game/frm_jetons.h)
class FrmJoc;     // the letter of a blank (game/frm_joc.h)
class FrmBoiteD;  // the best play (game/frm_boite_d.h)
class FrmBoiteI;  // the guided tour (records)
class FrmFini;    // end of a game (records)
class FrmBest;    // the thirty best games (records)
class FrmAbout;   // about the program (records)

class Forms {
 public:
  virtual ~Forms() = default;

  // Each shows the form modal and returns once the form reports itself
  // closed (its `closed` flag, or Unloaded() for the records' forms).
  virtual void Show(FrmJetons& form) = 0;
  virtual void Show(FrmJoc& form) = 0;
  virtual void Show(FrmBoiteD& form) = 0;
  virtual void Show(FrmBoiteI& form) = 0;
  virtual void Show(FrmFini& form) = 0;
  virtual void Show(FrmBest& form) = 0;
  virtual void Show(FrmAbout& form) = 0;

  // The program ends now, as when the player leaves from the picking of tiles:
  // the options are already saved. The windowed program quits; a test records
  // the call. If it returns, the models stop their work at once and do nothing
  // more.
  virtual void EndProgram() = 0;
};

}  // namespace ostrane
