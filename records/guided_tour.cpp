#include "records/guided_tour.h"

namespace ostrane {
namespace {

constexpr const char* kCrLf = "\r\n";
constexpr const char* kHowItWorks = "Comment ça marche ?      ";

}  // namespace

void FrmBoiteI::Form_Load() {
  std::string& msg = program_.StrMsg;
  switch (program_.IntEtapeVisite) {
    case 1:
      view_.ChkInfoVisible = false;
      view_.LblInfoQuarVisible = true;
      view_.LblInfoFontPoints = 8;
      view_.LblInfoRaise = 120;
      view_.LblInfoBisVisible = true;
      view_.LblInfoBisBold = false;
      view_.LblInfoBis = kHowItWorks;
      msg = std::string(kCrLf) +
            "''Ostrane'' est un logiciel qui trouvera pour vous le meilleur score qu'il est possible de "
            "réaliser lors d'un tirage au jeu de tablinor." +
            kCrLf +
            "Cet utilitaire va reproduire à l'identique le plateau de jeu sur lequel vous jouez seul ou avec "
            "d'autres partenaires. Pour cela vous n'aurez qu'à lui indiquer les jetons piochés par les "
            "différents joueurs.";
      break;
    case 2:
      view_.ChkInfoVisible = false;
      view_.Lowered = true;
      view_.BelowJetons = 240;
      msg = std::string("Vous venez de commencer une partie de tablinor.") + kCrLf +
            "Pour que le programme puisse proposer une solution, vous devez sélectionner les lettres qui "
            "correspondent aux jetons piochés par le premier joueur.";
      break;
    case 3:
      view_.LblInfoTop = 840;
      view_.LblInfoCentred = true;
      msg = "Le programme va maintenant rechercher la meilleure solution possible.";
      break;
    case 4:
      view_.LblInfoTop = 360;
      view_.LblInfoTerVisible = true;
      view_.LblInfoTer = lblSolution_;
      msg = std::string("Le meilleur mot trouvé est:") + kCrLf + kCrLf +
            "Pour placer ce mot, vous devez, à l'aide de la souris, faire glisser les jetons, du chevalet, "
            "vers le tableau de jeu." +
            kCrLf + "La première lettre du mot sera positionnée sur la case fléchée en rouge." + kCrLf +
            "Vous restez toute fois libre de placer un mot différent de celui qui est proposé.";
      break;
    case 5:
      msg = std::string(kCrLf) + "Le mot " + lblSolution_ + " a été validé et rapporte " + lblPts_ + " points." +
            kCrLf + kCrLf +
            "Pour continuer la partie, le joueur suivant doit indiquer au programme les lettres qu'il a "
            "piochées.";
      break;
    case 10:
      view_.ChkInfoVisible = false;
      view_.LblInfoExtraHeight = 330;
      view_.LblInfoRaise = 120;
      view_.FraExtraHeight = 300;
      view_.LblInfoBisVisible = true;
      view_.LblInfoBisBold = false;
      view_.LblInfoBis = kHowItWorks;
      msg = std::string(kCrLf) +
            "''Ostrane'' est un logiciel qui trouvera pour vous le meilleur score qu'il   est possible de "
            "réaliser lors d'un tirage au jeu de tablinor." +
            kCrLf +
            "En effet, cet utilitaire va reproduire à l'identique le plateau sur lequel vous jouez (seul ou "
            "avec d'autres partenaires)." +
            kCrLf + "Il vous suffira d'indiquer, à chaque tour, les jetons piochés par les différents joueurs.";
      break;
    default:
      break;
  }
  view_.LblInfo = msg;
}

void FrmBoiteI::ChkInfo_Click(bool ticked) {
  view_.ChkInfo = ticked;
  if (ticked) program_.options.OptMessages = "Non";
}

void FrmBoiteI::Form_Unload() { view_.unloaded = true; }

void FrmBoiteI::CmdQ_Click() {
  if (view_.unloaded) return;
  if (program_.IntEtapeVisite != 10) {
    view_.unloaded = true;
    return;
  }
  program_.IntEtapeVisite = 0;
  view_.LblInfoCentred = true;
  view_.LblInfoBis = "A noter:";
  view_.LblInfo = std::string(kCrLf) + kCrLf + "- Le jeton du joker est représenté" + kCrLf +
                  "par le point d'interrogation '' ? ''." + kCrLf + kCrLf + "- Une fois que les jetons ont été" +
                  kCrLf + "été sélectionnés, cliquez sur la" + kCrLf + "commande '' Valider ''.              ";
}

}  // namespace ostrane
