#pragma once
// FrmEcranResol: between the start-up form and FrmPartie, a warning that the
// screen is too small. It stays invisible unless its timer finds a screen
// below 700 pixels high and the check not switched off by OptResol.

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "records/program.h"

namespace ostrane {

inline constexpr int kSmallestScreenHeight = 700;  // pixels

// Whether the warning is shown: the check is on and the screen is too small.
bool ScreenCheckWarns(uint8_t optResol, int screenHeightPixels);

// The top of a centred form, in twips: a third of the free height less 500.
int ScreenCheckTop(int screenHeightTwips, int formHeightTwips);

class FrmEcranResol {
 public:
  static constexpr const char* kText1 = "Le programme a détecté un problème d'affichage.";
  static constexpr const char* kText2 =
      "Le réglage de la taille du texte de votre écran est incompatible avec ce logiciel.";
  static constexpr const char* kText3 =
      "Si vous ne modifiez pas ce réglage l'affichage du programme risque d'être incorrect.";
  static constexpr const char* kChkResolution =
      "Ignorer la vérification de l'affichage lors des prochains lancements";
  static constexpr const char* kDocument = "lecran.rtf";
  static constexpr int kTimResoInterval = 100;  // ms

  struct View {
    bool visible = false;
    std::string Caption;
    std::string LblVer;
    bool ChkResolution = false;
    bool unloaded = false;
  };

  struct Links {
    std::function<int()> screenHeight;   // the screen's height in pixels, asked when the timer fires
    std::function<void()> loadFrmPartie;
    std::function<void()> endProgram;    // CmdQuitter and the hidden Foc
  };

  FrmEcranResol(Program& program, Links links);
  ~FrmEcranResol();
  FrmEcranResol(const FrmEcranResol&) = delete;
  FrmEcranResol& operator=(const FrmEcranResol&) = delete;

  // The document for Rtb1 ("lecran.rtf" of the start directory; a missing
  // one is not handled) and TimReso started.
  void Form_Load();
  std::filesystem::path Document() const { return program_.CheminApp / kDocument; }

  // Ticked: OptResol = 1, FrmPartie, and this form goes.
  void ChkResolution_Click(bool ticked);
  // FrmPartie, OptResol left alone.
  void CmdContinuer_Click();
  void CmdQuitter_Click();
  void Foc_Click() { CmdQuitter_Click(); }

  const View& view() const { return view_; }

  std::function<void()> changed;

 private:
  void TimReso_Timer();
  void PassOn();

  Program& program_;
  Links links_;
  std::unique_ptr<Timer> timReso_;
  View view_;
};

}  // namespace ostrane
