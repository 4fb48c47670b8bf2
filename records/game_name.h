#pragma once
// FrmPartie: before each game, the name of the game and the program's
// options. Its closing writes the options into memory and loads the main
// form: it is the only way to a game. Texts are UTF-8; a character is a
// code point.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "records/program.h"

namespace ostrane {

// laChaine with the first occurrence of old_car replaced by new_car; the text
// after it is kept as it is. An empty old_car, or a laChaine that is empty or
// only spaces, gives laChaine unchanged.
std::string sChangeCaractere(std::string_view laChaine, std::string_view old_car, std::string_view new_car);

// The characters a game's name may hold.
inline constexpr std::string_view kNameCharacters =
    " -aàäAbBcçCdDeéèêëEfFgGhHiïîIjJkKlLmMnNoöôOpPqQrRsStTuùüûUvVwWxXyYzZ0123456789";

// The name offered for game number `numPartie`: "Partie tabli 01".
std::string DefaultGameName(int numPartie);

class FrmPartie {
 public:
  static constexpr int kMaxNameLength = 15;
  static constexpr int kNamePlacesExamined = 10;
  static constexpr const char* kExplanation1 = "Ce logiciel trouvera pour vous le meilleur score qu'il est possible";
  static constexpr const char* kExplanation2 = "de réaliser aux différents tirages d'une partie de tablinor.";
  static constexpr const char* kChkMess = "Afficher les messages d'aide";
  static constexpr const char* kChkSons = "Jouer les sons";
  static constexpr const char* kChrDuree = "Affichage de la durée de la partie";
  static constexpr const char* kChkDef23 =
      "Vérification manuelle : afficher la définition des mots de 2 et 3 lettres.";
  static constexpr const char* kChkCadre = "Encadrer la 1ere lettre du mot suggéré.";
  // The captions of OptAff(2) to OptAff(4).
  static constexpr const char* kOptAff[3] = {"Classique", "Chocolat", "Relief"};

  enum class Check { ChkMess, ChkSons, ChrDuree, ChkDef23, ChkCadre };
  enum class Focus { None, TxtNom, CmdFoc };

  struct View {
    bool visible = false;
    std::string TxtNom;
    std::string Lbl0;  // "Nom de la partie:" or "Donnez un nom à cette partie:"
    bool CmdQEnabled = false;
    bool ChkMess = false, ChkSons = false, ChrDuree = false, ChkDef23 = false, ChkCadre = false;
    int OptAff = 0;  // the selected board picture, 2 to 4; 0 when none is
    Focus focus = Focus::None;
    bool unloaded = false;
  };

  // `loadMainForm` is called as the form unloads.
  FrmPartie(Program& program, std::function<void()> loadMainForm);
  ~FrmPartie();
  FrmPartie(const FrmPartie&) = delete;
  FrmPartie& operator=(const FrmPartie&) = delete;

  // Takes NomPartie and the options into the controls, then starts TimDeb
  // (200 ms), which shows the form and offers the next default name.
  void Form_Load();
  // The text of TxtNom as typed or pasted (cut to 15 characters). The first
  // character that may not stand among the first ten is taken out, again and
  // again until none is left; then CmdQ and Lbl(0) follow the length.
  void TxtNom_Change(std::string_view text);
  // Keeps the name and closes.
  void CmdQ_Click();
  // The hidden default button (Enter): CmdQ when it is enabled, otherwise a
  // message and back to the name.
  void CmdFoc_Click();
  // Asks, then offers the default name and options.
  void CmdDefaut_Click();
  // A tick box clicked into the given state.
  void Check_Click(Check box, bool ticked);
  // OptAff(index) chosen.
  void OptAff_Click(int index);
  // Writes the controls into the program's options and loads the main form.
  void Form_Unload();

  const View& view() const { return view_; }

 private:
  void TimDeb_Timer();

  Program& program_;
  std::function<void()> loadMainForm_;
  std::unique_ptr<Timer> timDeb_;
  View view_;
  bool loaded_ = false;  // the form-level flag that lets the option buttons store
};

}  // namespace ostrane
