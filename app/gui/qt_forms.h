#pragma once
// The modal forms of the game as dialogs: showing a form runs its dialog
// modal over the main window and returns once the model says it closed.

#include <QPointer>
#include <QString>
#include <QWidget>

#include <deque>
#include <functional>

#include "game/forms.h"

namespace ostrane {
struct Program;
}

namespace ostrane::gui {

class QtForms final : public Forms {
 public:
  QtForms(Program& program, QString startDirectory) : program_(program), startDirectory_(std::move(startDirectory)) {}

  void SetMainWindow(QWidget* window) { main_ = window; }

  void Show(FrmJetons& form) override;
  void Show(FrmJoc& form) override;
  void Show(FrmBoiteD& form) override;
  void Show(FrmBoiteI& form) override;
  void Show(FrmFini& form) override;
  void Show(FrmBest& form) override;
  void Show(FrmAbout& form) override;
  void EndProgram() override;

  // What ending the program does (the windowed program quits).
  std::function<void()> onEnd;
  // Letters given to the next blanks dropped on the board without asking (a
  // play laid from the analysis), first first.
  std::deque<char> presetBlanks;
  // The about box's sentence on where the program keeps its files.
  QString whereFilesAre;

 private:
  Program& program_;
  QString startDirectory_;
  QPointer<QWidget> main_;
};

}  // namespace ostrane::gui
