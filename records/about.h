#pragma once
// FrmAbout: the version, what the program is for, and its legal notice.
// Opened from the main form, which it disables until it closes.

#include <filesystem>
#include <functional>
#include <string>

#include "records/form_link.h"
#include "records/program.h"

namespace ostrane {

// The program's web page and the address the contact form writes to,
// settings of the build; empty when the build was given none.
std::string ProgramSiteAddress();
std::string ProgramContactAddress();

class FrmAbout {
 public:
  static constexpr const char* kLblU = "Programme d'aide pour le jeu de tablinor";
  static constexpr const char* kCopyright = "Copyright © les auteurs d'Ostrane";
  static constexpr const char* kLblS =
      "Ostrane est un logiciel libre : vous pouvez le redistribuer et le modifier selon les termes de la "
      "licence publique générale GNU, version 3 ou toute version ultérieure (GPL-3.0-or-later). Il est "
      "fourni sans aucune garantie.";
  static constexpr const char* kLblT =
      "La liste de mots est dérivée du dictionnaire français Dicollecte/Grammalecte v7.0, © 2007–2018 "
      "les contributeurs de Dicollecte, sous licence publique Mozilla 2.0 (MPL 2.0).";
  static constexpr const char* kDocument = "lecran.rtf";  // the rich text delivered with the program
  // Said instead of opening a page or a mail that would lead nowhere.
  static constexpr const char* kNoSite = "Aucun site internet n'est configuré pour cette version d'Ostrane.";
  static constexpr const char* kNoContact =
      "Aucune adresse de contact n'est configurée pour cette version d'Ostrane.";

  struct View {
    std::string LblVer;
    std::string LblU;
    std::string LblS;
    std::string LblT;
    bool unloaded = false;
  };

  FrmAbout(Program& program, EnableMainForm enableMain)
      : program_(program), enableMain_(std::move(enableMain)) {}

  // Disables the main form and fills the labels.
  void Form_Load();
  std::filesystem::path Document() const { return program_.CheminApp / kDocument; }
  // Whether the contact form may open: with no address configured, the
  // player is told so instead.
  bool CmdMail_Click();
  // The program's page in the default browser (a failure is kept quiet), or,
  // with none configured, a word saying so.
  void CmdSite_Click();
  void CmdFerme_Click() { Form_Unload(); }
  void Foc_Click() { Form_Unload(); }
  // Enables the main form again.
  void Form_Unload();

  const View& view() const { return view_; }

 private:
  Program& program_;
  EnableMainForm enableMain_;
  View view_;
};

}  // namespace ostrane
