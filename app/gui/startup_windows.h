#pragma once
// The windows on the road to a game: the start-up window with its progress
// (Frm11Dem), the screen check (FrmEcranResol) and the game's name and
// options (FrmPartie). Each shows its model's view and forwards clicks.

#include <QDialog>
#include <QWidget>

#include <array>

#include "app/gui/bind.h"

#include "records/game_name.h"
#include "records/screen_check.h"
#include "records/start_up.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTextBrowser;

namespace ostrane::gui {

// Twips of the forms' own measures, 15 to a pixel.
inline constexpr int kTwipsPerPixel = 15;

class StartupWindow : public QWidget, public Refreshable {
  Q_OBJECT
 public:
  explicit StartupWindow(Frm11Dem& model);
  void Refresh() override;

  QLabel* LblInfo2() const { return lblInfo2_; }
  QLabel* LblCharge() const { return lblCharge_; }
  QLabel* LblVerA() const { return lblVerA_; }
  QLabel* ImgProgress() const { return imgProgress_; }

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  Frm11Dem& model_;
  QLabel* lblInfo2_;
  QLabel* lblCharge_;
  QLabel* lblVerA_;
  QWidget* progressFrame_;
  QLabel* imgProgress_;
  bool placed_ = false;
};

class ScreenCheckWindow : public QDialog, public Refreshable {
  Q_OBJECT
 public:
  explicit ScreenCheckWindow(FrmEcranResol& model, const QString& startDirectory);
  void Refresh() override;

  QCheckBox* ChkResolution() const { return chkResolution_; }
  QPushButton* CmdContinuer() const { return cmdContinuer_; }
  QPushButton* CmdQuitter() const { return cmdQuitter_; }
  QTextBrowser* Rtb1() const { return rtb1_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  FrmEcranResol& model_;
  QLabel* lblVer_;
  QTextBrowser* rtb1_;
  QCheckBox* chkResolution_;
  QPushButton* cmdContinuer_;
  QPushButton* cmdQuitter_;
};

class GameNameWindow : public QDialog, public Refreshable {
  Q_OBJECT
 public:
  explicit GameNameWindow(FrmPartie& model);
  void Refresh() override;

  QLineEdit* TxtNom() const { return txtNom_; }
  QLabel* Lbl0() const { return lbl0_; }
  QPushButton* CmdQ() const { return cmdQ_; }
  QPushButton* CmdDefaut() const { return cmdDefaut_; }
  QCheckBox* Check(FrmPartie::Check box) const;
  QRadioButton* OptAff(int index) const { return optAff_[size_t(index - 2)]; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  FrmPartie& model_;
  QLabel* lbl0_;
  QLineEdit* txtNom_;
  std::array<QCheckBox*, 5> checks_{};
  std::array<QRadioButton*, 3> optAff_{};
  QPushButton* cmdDefaut_;
  QPushButton* cmdQ_;
  FrmPartie::Focus appliedFocus_ = FrmPartie::Focus::None;
};

}  // namespace ostrane::gui
