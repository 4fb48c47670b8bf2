#pragma once
// The modal forms of the game, each a dialog bound to its model: the picking
// of tiles (FrmJetons), the letter of a blank (FrmJoc), the best play
// (FrmBoiteD), the guided tour (FrmBoiteI), the end of a game (FrmFini), the
// thirty best games (FrmBest), the about box (FrmAbout) and the contact form
// (FrmMail). A dialog shows the model, forwards clicks and keys, and closes
// when the model says it has.

#include <QDialog>

#include <array>
#include <functional>

#include "app/gui/bind.h"
#include "game/frm_boite_d.h"
#include "game/frm_jetons.h"
#include "game/frm_joc.h"
#include "records/about.h"
#include "records/best_scores.h"
#include "records/final_score.h"
#include "records/guided_tour.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QSpacerItem;
class QTextBrowser;
class QToolButton;
class QVBoxLayout;

namespace ostrane::gui {

// A dialog bound to a model that says when it has closed.
class ModelDialog : public QDialog, public Refreshable {
  Q_OBJECT
 public:
  explicit ModelDialog(QWidget* parent);
  // Shows the dialog modal until the model has closed.
  void RunModal();
  void Refresh() override;

 protected:
  virtual bool ModelClosed() const = 0;
  virtual void Show() {}  // copies the model onto the widgets
  // The window's close box; by default it is not a way out.
  virtual void CloseBox() {}
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  // Escape; by default nothing.
  virtual void Escape() {}
  // Runs a model command, then shows the result (and closes if it closed).
  void Forward(const std::function<void()>& command);

 private:
  bool closing_ = false;
};

// A dialog left by its close box and by Escape as by its own button, through
// the model's Foc_Click; closed when the model's view is unloaded.
template <class Model>
class FocDialog : public ModelDialog {
 public:
  FocDialog(Model& model, QWidget* parent) : ModelDialog(parent), model_(model) {}

 protected:
  bool ModelClosed() const override { return model_.view().unloaded; }
  void CloseBox() override { Forward([this] { model_.Foc_Click(); }); }
  void Escape() override { Forward([this] { model_.Foc_Click(); }); }

  Model& model_;
};

// FrmJetons: 27 tile buttons, the picked row and the four commands. Letters
// typed on the keyboard press their buttons, Backspace undoes, Enter
// validates.
class JetonsDialog : public ModelDialog {
  Q_OBJECT
 public:
  JetonsDialog(FrmJetons& model, const Program& program, QWidget* parent);
  QToolButton* CmdJeton(int index) const { return cmdJeton_[size_t(index)]; }
  QLabel* ImgJ(int index) const { return imgJ_[size_t(index)]; }
  QLabel* LblTirage() const { return lblTirage_; }
  QPushButton* CmdAnnuler() const { return cmdAnnuler_; }
  QPushButton* CmdValider() const { return cmdValider_; }
  QPushButton* CmdInfo() const { return cmdInfo_; }
  QPushButton* CmdQ() const { return cmdQ_; }
  FrmJetons& Model() { return model_; }

  // The open picker, for the tour box that stands below it.
  static JetonsDialog* Current();

 protected:
  bool ModelClosed() const override { return model_.closed; }
  void Show() override;
  void keyPressEvent(QKeyEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  FrmJetons& model_;
  const Program& program_;
  std::array<QToolButton*, FrmJetons::kBlank + 1> cmdJeton_{};
  std::array<QLabel*, FrmJetons::kBlank + 1> count_{};
  std::array<QLabel*, 8> imgJ_{};
  std::array<TileFace, 8> shownImgJ_{};
  QWidget* letters_;
  QLabel* lblTirage_;
  QPushButton* cmdAnnuler_;
  QPushButton* cmdValider_;
  QPushButton* cmdInfo_;
  QPushButton* cmdQ_;
  bool placed_ = false;
};

// FrmJoc: "Quelle lettre voulez-vous attribuer au joker ?" and one letter.
class JocDialog : public ModelDialog {
  Q_OBJECT
 public:
  JocDialog(FrmJoc& model, QWidget* mainWindow);
  QLineEdit* TxtJok() const { return txtJok_; }

 protected:
  bool ModelClosed() const override { return model_.closed; }
  void Show() override;
  void CloseBox() override { Forward([this] { model_.Close(); }); }
  void mousePressEvent(QMouseEvent* event) override;

 private:
  FrmJoc& model_;
  QLabel* lblJoc_;
  QLineEdit* txtJok_;
};

// FrmBoiteD: the best play, its position, its points, a short word's
// definition.
class BoiteDDialog : public ModelDialog {
  Q_OBJECT
 public:
  BoiteDDialog(FrmBoiteD& model, QWidget* parent);
  QLabel* Lbl(int index) const { return lbl_[size_t(index)]; }
  QLabel* LblMsg() const { return lblMsg_; }
  QLabel* LblDef() const { return lblDef_; }
  QCheckBox* ChkShowDef() const { return chkShowDef_; }
  QPushButton* CmdQ() const { return cmdQ_; }

 protected:
  bool ModelClosed() const override { return model_.closed; }
  void Show() override;
  void CloseBox() override { Forward([this] { model_.Foc_Click(); }); }
  void Escape() override { Forward([this] { model_.Foc_Click(); }); }

 private:
  FrmBoiteD& model_;
  std::array<QLabel*, 6> lbl_{};
  QWidget* fra_;
  QLabel* lblMsg_;
  QLabel* lblDef_;
  QCheckBox* chkShowDef_;
  QPushButton* cmdQ_;
};

// FrmBoiteI, "Informations": one step of the guided tour.
class BoiteIDialog : public ModelDialog {
  Q_OBJECT
 public:
  BoiteIDialog(FrmBoiteI& model, QWidget* parent);
  QLabel* LblInfo() const { return lblInfo_; }
  QLabel* LblInfoBis() const { return lblInfoBis_; }
  QLabel* LblInfoTer() const { return lblInfoTer_; }
  QCheckBox* ChkInfo() const { return chkInfo_; }
  QPushButton* CmdQ() const { return cmdQ_; }
  QWidget* Fra() const { return fra_; }

  // The frame's own margin above its first line, and the space between the
  // heading and the text as the box is laid out; the steps move the text
  // from there by the model's offsets (15 twips a pixel).
  static constexpr int kFraTopMargin = 10;
  static constexpr int kInfoGap = 10;

 protected:
  bool ModelClosed() const override { return model_.view().unloaded; }
  void Show() override;
  void CloseBox() override { Forward([this] { model_.Form_Unload(); }); }
  // Escape closes the box as its close box does, on any page.
  void Escape() override { CloseBox(); }

 private:
  void ApplyOffsets();

  FrmBoiteI& model_;
  QWidget* fra_;
  QVBoxLayout* inner_;
  QSpacerItem* gapAboveInfo_;   // heading to text, or the frame's top to the text
  QSpacerItem* belowInfo_;      // the extra height of LblInfo
  QSpacerItem* fraExtra_;       // the extra height of Fra
  QLabel* lblInfoBis_;
  QLabel* lblInfoHead_;  // the first line of LblInfo, when the word of step 4 stands under it
  QLabel* lblInfo_;
  QLabel* lblInfoTer_;
  QLabel* lblInfoQuar_;
  QCheckBox* chkInfo_;
  QPushButton* cmdQ_;
  bool placed_ = false;
};

// FrmFini: the final score.
class FiniDialog : public FocDialog<FrmFini> {
  Q_OBJECT
 public:
  FiniDialog(FrmFini& model, QWidget* parent);
  QLabel* LblScore() const { return lblScore_; }
  QPushButton* CmdQuit() const { return cmdQuit_; }

 protected:
  void Show() override;

 private:
  QLabel* lblScore_;
  QPushButton* cmdQuit_;
};

// FrmBest: "Les 30 meilleures parties".
class BestDialog : public FocDialog<FrmBest> {
  Q_OBJECT
 public:
  BestDialog(FrmBest& model, QWidget* parent);
  QListWidget* LstSco() const { return lstSco_; }
  QPushButton* CmdEff() const { return cmdEff_; }
  QPushButton* CmdFerme() const { return cmdFerme_; }

 protected:
  void Show() override;

 private:
  QListWidget* lstSco_;
  QLabel* lblEmpty_;
  QPushButton* cmdEff_;
  QPushButton* cmdFerme_;
};

// FrmMail: a subject and a message for the program's authors, handed to the
// mail program.
class MailDialog : public QDialog {
  Q_OBJECT
 public:
  MailDialog(Shell& shell, QWidget* parent);
  QLineEdit* TxtSujet() const { return txtSujet_; }
  QPlainTextEdit* TxtMessage() const { return txtMessage_; }
  QPushButton* CmdEnvoyer() const { return cmdEnvoyer_; }

 private:
  QLineEdit* txtSujet_;
  QPlainTextEdit* txtMessage_;
  QPushButton* cmdEnvoyer_;
};

// FrmAbout: version, purpose, notice, the program's document.
class AboutDialog : public FocDialog<FrmAbout> {
  Q_OBJECT
 public:
  AboutDialog(FrmAbout& model, Shell& shell, const QString& startDirectory, QWidget* parent);
  QPushButton* CmdFerme() const { return cmdFerme_; }
  QPushButton* CmdMail() const { return cmdMail_; }
  QPushButton* CmdSite() const { return cmdSite_; }
  // Where the program keeps its files, said under the version (hidden when empty).
  void SetWhereFilesAre(const QString& sentence);
  QLabel* LblFiles() const { return lblFiles_; }

 protected:
  void Show() override;

 private:
  QLabel* lblVer_;
  QLabel* lblU_;
  QLabel* lblS_;
  QLabel* lblT_;
  QLabel* lblFiles_;
  QTextBrowser* rtb1_;
  QPushButton* cmdFerme_;
  QPushButton* cmdMail_;
  QPushButton* cmdSite_;
};

}  // namespace ostrane::gui
