#pragma once
// "Analyse du tirage": the plays of the rack on the stand with their exact
// points, ranked, beside the main window. A click shows a play on the board
// as a ghost; a double click (or "Poser le coup") lays its tiles from the
// rack as the player would drag them, so that the validation scores it.
// The window also tells where the designed proposal stands, the player's
// score against the tops of the turns played, and holds the option that has
// the solution propose the exact top.

#include <QDialog>
#include <QPointer>

#include <functional>

#include "app/gui/bind.h"
#include "game/analysis.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QTableWidget;

namespace ostrane {
struct Program;
}

namespace ostrane::gui {

class BoardWidget;
class MainWindow;

class AnalysisWindow : public QDialog, public Refreshable {
  Q_OBJECT
 public:
  AnalysisWindow(MainWindow& main, Program& program, const WordGraph& graph);
  ~AnalysisWindow() override;

  void Refresh() override;
  // Lays the play of row index `index` of the analysis (its rank - 1).
  void Lay(int index);

  Analysis& Model() { return analysis_; }
  QTableWidget* Table() const { return table_; }
  QLineEdit* Letters() const { return letters_; }
  QSpinBox* Length() const { return length_; }
  QPushButton* Previous() const { return previous_; }
  QPushButton* Next() const { return next_; }
  QLabel* PageLabel() const { return page_; }
  QLabel* ProposalLabel() const { return proposal_; }
  QLabel* TopsLabel() const { return tops_; }
  QCheckBox* ProposeExact() const { return proposeExact_; }
  QPushButton* LayButton() const { return lay_; }

  // Where a blank's letter is given without asking, for a play laid from
  // the list (the drag rules ask it at each drop of a blank).
  std::function<void(char letter)> presetBlank;

 protected:
  void hideEvent(QHideEvent* event) override;

 private:
  void Fill();
  void ShowGhost();

  MainWindow& main_;
  QPointer<BoardWidget> board_;  // gone before this window when the main window goes
  Program& program_;
  Analysis analysis_;
  QLabel* rack_;
  QLabel* proposal_;
  QLabel* tops_;
  QLineEdit* letters_;
  QSpinBox* length_;
  QTableWidget* table_;
  QPushButton* previous_;
  QPushButton* next_;
  QLabel* page_;
  QCheckBox* proposeExact_;
  QPushButton* lay_;
  int ghost_ = -1;  // the play shown on the board (its index), -1 for none
};

}  // namespace ostrane::gui
