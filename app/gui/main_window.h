#pragma once
// The main window (FrmPlateau): the board with its tiles, the rack, the side
// panel of the game, the word check under the board, the tools frame over
// it, the waiting panel and the definition panel. It shows the model and
// forwards gestures and clicks: tile presses, moves and releases go to the
// drag rules, every button to its command.

#include <QImage>
#include <QPointer>
#include <QWidget>

#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "app/gui/bind.h"
#include "board_view/drag_rules.h"
#include "board_view/painters.h"
#include "game/frm_plateau.h"

class QCheckBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QRubberBand;
class QToolButton;

namespace ostrane::gui {

class MainWindow;

// Plateau1: the board picture the model describes, the guide lines and the
// arrow.
class BoardWidget : public QWidget {
  Q_OBJECT
 public:
  BoardWidget(FrmPlateau& model, QWidget* parent);
  void Refresh();
  const QImage& Picture() const { return plateau1_; }
  QLabel* ImgXY() const { return imgXY_; }

  // A play shown over the board without being laid: its new tiles drawn
  // pale on their squares (a blank with its letter in dark red).
  struct Ghost {
    int column = 0, row = 0;
    char letter = 'A';
    bool blank = false;
  };
  void SetGhost(std::vector<Ghost> ghost);
  const std::vector<Ghost>& GhostShown() const { return ghost_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Render();
  FrmPlateau& model_;
  view::Painters painters_;
  QImage plateau1_;
  int revision_ = -1;
  QLabel* imgXY_;
  FrmPlateau::Arrow arrow_ = FrmPlateau::Arrow::ImgClassicHor;
  Line linVx_, linVy_;
  std::vector<Ghost> ghost_;
};

// One of the seven tiles PicGamer(i). Presses, moves and releases go to the
// drag rules; the tile stands where the model puts it.
class TileWidget : public QWidget {
  Q_OBJECT
 public:
  TileWidget(MainWindow& window, int index, QWidget* parent);
  void Refresh();
  int Index() const { return index_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  MainWindow& window_;
  int index_;
  TileFace face_;
  QImage image_;
};

// The tools frame FraTools: folds, moves when dropped on the board, holds
// the start-bag and jokers options and the window state buttons.
class ToolsFrame : public QWidget {
  Q_OBJECT
 public:
  ToolsFrame(MainWindow& window, QWidget* parent);
  void Refresh();
  QToolButton* CmdCacher() const { return cmdCacher_; }
  QToolButton* CmdMax() const { return cmdMax_; }
  QToolButton* CmdMin() const { return cmdMin_; }
  QRadioButton* OptPioche(int index) const { return optPioche_[size_t(index)]; }
  QRadioButton* OptJok(int index) const { return optJok_[size_t(index)]; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  MainWindow& window_;
  QLabel* caption_;
  QToolButton* cmdCacher_;
  QToolButton* cmdMax_;
  QToolButton* cmdMin_;
  QWidget* fra3_;
  QWidget* fra1_;
  std::array<QRadioButton*, 4> optPioche_{};
  std::array<QRadioButton*, 4> optJok_{};
  QLabel* lblTpsDemarrage_;
  QRubberBand* outline_ = nullptr;
  QPoint pressAt_;
  bool dragging_ = false;
};

class MainWindow : public QWidget, public Refreshable {
  Q_OBJECT
 public:
  explicit MainWindow(FrmPlateau& model);
  ~MainWindow() override;

  void Refresh() override;
  // Shows the window for the first time, centred on the screen.
  void Open();

  FrmPlateau& Model() { return model_; }
  TileDrag& Drag() { return drag_; }
  // The client area: the form's own coordinates (846 x 602).
  QWidget* Client() const { return client_; }
  BoardWidget* Board() const { return board_; }
  TileWidget* Tile(int i) const { return tiles_[size_t(i)]; }
  ToolsFrame* Tools() const { return tools_; }

  QPushButton* CmdNew() const { return cmdNew_; }
  QPushButton* CmdGame() const { return cmdGame_; }
  QPushButton* CmdArret() const { return cmdArret_; }
  QPushButton* CmdSolution() const { return cmdSolution_; }
  QPushButton* CmdValider() const { return cmdValider_; }
  QPushButton* CmdRanger() const { return cmdRanger_; }
  QPushButton* CmdMeilleur() const { return cmdMeilleur_; }
  QPushButton* CmdChercheWeb() const { return cmdChercheWeb_; }
  QPushButton* CmdAide() const { return cmdAide_; }
  QPushButton* CmdAbout() const { return cmdAbout_; }
  QPushButton* CmdSon() const { return cmdSon_; }
  QPushButton* CmdQuitte() const { return cmdQuitte_; }
  QPushButton* CmdCtrl() const { return cmdCtrl_; }
  QLineEdit* TxtCtrl() const { return txtCtrl_; }
  QPlainTextEdit* TxtHisto() const { return txtHisto_; }
  // The hidden focus sink Foc: an empty widget that takes the focus.
  QWidget* Foc() const { return foc_; }
  QLabel* LblPtsJoueur() const { return lblPtsJoueur_; }
  QLabel* LblNomP() const { return lblNomP_; }
  QLabel* LblPts() const { return lblPts_; }
  QLabel* LblIndic() const { return lblIndic_; }
  QLabel* LblLetReste() const { return lblLetReste_; }
  QLabel* LblA1() const { return lblA1_; }
  QLabel* LblShowDef() const { return lblShowDef_; }
  QWidget* PicDef() const { return picDef_; }
  QWidget* PicWait() const { return picWait_; }
  QLabel* Iabc(int i) const { return iabc_[size_t(i)]; }
  QLabel* ImgA() const { return imgA_; }

  // Runs a command of the model, then shows what it changed. A command that
  // closes the form reports what comes next through `unload`.
  void Forward(const std::function<void()>& command);
  void ForwardUnload(const std::function<FrmPlateau::Unload()>& command);

  // What the closing of the form leads to (the program's flow acts on it).
  std::function<void(FrmPlateau::Unload)> unload;

  // The pause of the first plays, as the platform's Sleep: the window shows
  // the model, takes no input and cannot be closed while `wait` lets the
  // time go by (a local event loop of that length when empty); its timers
  // and its painting go on.
  void Pause(int milliseconds, const std::function<void(int milliseconds)>& wait = nullptr);
  // Whether the player's input is refused now: the form is disabled (a
  // search runs) or pausing.
  bool InputRefused() const { return !model_.enabled || pausing_ > 0; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildSidePanel();
  void BuildWordCheck();
  void BuildPanels();
  void ApplyWindowState();
  void ApplyFocus();

  FrmPlateau& model_;
  TileDrag drag_;
  QWidget* client_;
  BoardWidget* board_;
  QWidget* reglette_;
  std::array<TileWidget*, 7> tiles_{};
  ToolsFrame* tools_;
  QWidget* blocker_;
  QWidget* foc_;
  QObject* gate_;  // refuses the player's input to this window while InputRefused()
  int pausing_ = 0;

  QLabel *lblNomP_, *lblVer_, *lblPtsJoueur_, *lblTirage_, *lblDuree_;
  QPlainTextEdit* txtHisto_;
  QLabel *lblIndic_, *lblPts_, *lblPtsBis_, *lblSolution_, *lblLTitre_, *lblLetReste_;
  QPushButton *cmdNew_, *cmdGame_, *cmdArret_, *cmdSolution_, *cmdValider_, *cmdRanger_;
  QPushButton *cmdMeilleur_, *cmdChercheWeb_, *cmdAide_, *cmdAbout_, *cmdSon_, *cmdQuitte_;
  QLineEdit* txtCtrl_;
  QPushButton* cmdCtrl_;
  QLabel *lblN_, *lblA1_;
  QWidget* lblA11_;
  QLabel *imgA_, *imgB_, *lblImgCaption_;
  QWidget* picDef_;
  QLabel *lblDef_, *lblShowDef_;
  QWidget* picWait_;
  QLabel* lblWait_;
  std::array<QLabel*, 4> iabc_{};

  bool opened_ = false;
  int appliedWindowState_ = 0;
  FrmPlateau::Focus appliedFocus_ = FrmPlateau::Focus::Other;
  int historyScroll_ = 0;
  FrmPlateau::SonPicture sonPicture_ = FrmPlateau::SonPicture::ImgHP2;
  bool sonShown_ = false;
};

}  // namespace ostrane::gui
