#pragma once
// FrmJoc, the small box that asks which letter a blank stands for. The answer
// is left in the program's StrJoker: one capital, or "Nul" when the player
// gave none. Shown modal by the drag rules each time a blank lands on the
// board.

#include <functional>
#include <memory>
#include <string>

#include "game/controls.h"
#include "records/host.h"

namespace ostrane {

struct Program;

class FrmJoc {
 public:
  static constexpr int kTimQuitInterval = 250;

  explicit FrmJoc(Program& program);
  ~FrmJoc();
  FrmJoc(const FrmJoc&) = delete;
  FrmJoc& operator=(const FrmJoc&) = delete;

  // Where the box stands, from the main window's left-top corner: a sixth of
  // its width across and its height divided by 4.5 down.
  int leftFromMain = 0, topFromMain = 0;
  Label LblJoc;    // "Quelle lettre voulez-vous" CR LF "attribuer au joker ?"
  TextBox TxtJok;  // at most one character
  bool closed = false;

  // The text of TxtJok as the player changed it.
  void TxtJok_Change(const std::string& text);
  // A quarter second after a letter: ends the box.
  void TimQuit_Timer();
  // The window's own close box ends the box as TimQuit does.
  void Close() { TimQuit_Timer(); }

  std::function<void()> changed;

 private:
  Program& program_;
  std::unique_ptr<Timer> timQuit_;
};

}  // namespace ostrane
