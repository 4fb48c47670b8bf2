#pragma once
// FrmBoiteI, "Informations": the small box of the guided tour. The game flow
// sets IntEtapeVisite, shows the box modal and waits for it to close; the
// box shows the text of that step and closes. Which step comes when, and
// BytVisite, are the caller's business.

#include <optional>
#include <string>

#include "records/program.h"

namespace ostrane {

class FrmBoiteI {
 public:
  static constexpr const char* kCaption = "Informations";
  static constexpr const char* kChkInfo = "Ne plus afficher les messages d'informations.";
  static constexpr const char* kLblInfoQuar = "Fermez cette fenêtre puis cliquez sur ''Débuter une partie''.";
  // The pale yellow ground of the box and of LblInfo.
  static constexpr int kGroundRed = 255, kGroundGreen = 255, kGroundBlue = 192;

  // What the box shows. Sizes and places are in twips, as changes to the
  // layout of the form; zero means "as laid out".
  struct View {
    std::string LblInfo;
    bool LblInfoBisVisible = false;
    bool LblInfoBisBold = true;
    std::string LblInfoBis;
    bool LblInfoTerVisible = false;
    std::string LblInfoTer;  // the word of step 4
    bool LblInfoQuarVisible = false;
    bool ChkInfoVisible = true;
    bool ChkInfo = false;

    int LblInfoFontPoints = 0;         // 8 in step 1
    int LblInfoRaise = 0;              // moved up by: 120 in steps 1 and 10
    std::optional<int> LblInfoTop;     // 840 in step 3, 360 in step 4
    bool LblInfoCentred = false;       // step 3 and the second page of step 10
    int LblInfoExtraHeight = 0;        // 330 in step 10
    int FraExtraHeight = 0;            // 300 in step 10
    bool Lowered = false;              // step 2: LblInfo and Fra lower, CmdQ moved up with them
    std::optional<int> BelowJetons;    // step 2: 240 below the bottom edge of FrmJetons

    bool unloaded = false;
  };

  // `lblSolution` and `lblPts` are the captions of the main form's labels,
  // for steps 4 and 5.
  FrmBoiteI(Program& program, std::string lblSolution = {}, std::string lblPts = {})
      : program_(program), lblSolution_(std::move(lblSolution)), lblPts_(std::move(lblPts)) {}

  // Sets the controls and the text of step IntEtapeVisite. Another step
  // leaves StrMsg as it was and shows that.
  void Form_Load();
  // A tick turns the tour off (OptMessages "Non"); taking it away does not
  // bring it back.
  void ChkInfo_Click(bool ticked);
  // Closes the box; in step 10 the first press shows a second page.
  void CmdQ_Click();
  // The window closed by its close box: the box goes, whatever it shows;
  // only CmdQ turns the page of step 10.
  void Form_Unload();

  const View& view() const { return view_; }

 private:
  Program& program_;
  std::string lblSolution_, lblPts_;
  View view_;
};

}  // namespace ostrane
