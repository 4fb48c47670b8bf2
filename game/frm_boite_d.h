#pragma once
// FrmBoiteD, the box of the best play: the word, its position and direction,
// its points, and for a short word its definition. The main form's
// CmdSolution_Click fills it and shows it modal.

#include <array>
#include <string>

#include "game/controls.h"

namespace ostrane {

struct Program;

class FrmBoiteD {
 public:
  // Height of the box, in twips, once a definition is shown, and where it
  // then stands from the top of the screen.
  static constexpr int kGrownHeight = 3060;
  static constexpr int kGrownTop = 140;

  // Loads the box: its caption is the program's name.
  explicit FrmBoiteD(Program& program);

  std::string caption;
  // Lbl(0), Lbl(2), Lbl(4): "Meilleure suggestion: ", "Position: ", "Points: ";
  // Lbl(1), Lbl(3), Lbl(5): the word, its position and direction, its points.
  std::array<Label, 6> Lbl;
  Label LblMsg;  // "Pas de solution possible."
  Control Fra;
  Label LblDef;  // "Définition: " and the definition
  CheckBox ChkShowDef;
  // 0 while the box keeps its designed height and place; kGrownHeight and
  // kGrownTop once it shows a definition.
  int heightTwips = 0;
  int topTwips = 0;
  Button CmdQ;
  bool closed = false;

  // Ticking or unticking: definitions off from now on (OptDef23 = 0).
  void ChkShowDef_Click();
  void CmdQ_Click() { closed = true; }
  void Foc_Click() { closed = true; }

 private:
  Program& program_;
};

}  // namespace ostrane
