#pragma once
// What the program adds to the designed game, reached without moving any of
// the designed controls: a small "Plus" button under the rack opens a menu of
// the added commands, each also on a key of its own (listed in the help page),
// and the same menu comes with a right click on the window's panel.

#include <QObject>
#include <QPointer>

class QMenu;
class QToolButton;

namespace ostrane {
struct Lexicon;
struct Program;
}  // namespace ostrane

namespace ostrane::gui {

class AnalysisWindow;
class MainWindow;
class QtForms;

class Additions : public QObject {
  Q_OBJECT
 public:
  Additions(MainWindow& window, Program& program, QtForms& forms, const Lexicon& lexicon);
  ~Additions() override;

  QToolButton* MoreButton() const { return more_; }
  QMenu* Menu() const { return menu_; }
  // "Analyse du tirage" (F5): opens the window, or brings it to the front.
  void OpenAnalysis();
  AnalysisWindow* Analysis() const;

 private:
  MainWindow& window_;
  Program& program_;
  QtForms& forms_;
  const Lexicon& lexicon_;
  QToolButton* more_;
  QMenu* menu_;
  QPointer<AnalysisWindow> analysis_;  // a child of the main window
};

}  // namespace ostrane::gui
