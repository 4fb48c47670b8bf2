#include "app/gui/qt_forms.h"

#include "app/gui/dialogs.h"
#include "records/program.h"

namespace ostrane::gui {
namespace {

// Shows what the main form looks like now, then runs the dialog.
template <typename Dialog, typename Model>
void Run(Dialog& dialog, Model& model) {
  Refreshable::RefreshAll();
  model.changed = [&dialog] { dialog.Refresh(); };
  dialog.RunModal();
  model.changed = nullptr;
}

template <typename Dialog>
void Run(Dialog& dialog) {
  Refreshable::RefreshAll();
  dialog.RunModal();
}

}  // namespace

void QtForms::Show(FrmJetons& form) {
  JetonsDialog dialog(form, program_, main_);
  Run(dialog, form);
}

void QtForms::Show(FrmJoc& form) {
  if (!presetBlanks.empty()) {
    // The letter is known: given as typed, the box done at once.
    form.TxtJok_Change(std::string(1, presetBlanks.front()));
    presetBlanks.pop_front();
    form.TimQuit_Timer();
    return;
  }
  JocDialog dialog(form, main_);
  Run(dialog, form);
}

void QtForms::Show(FrmBoiteD& form) {
  BoiteDDialog dialog(form, main_);
  Run(dialog);
}

void QtForms::Show(FrmBoiteI& form) {
  BoiteIDialog dialog(form, main_);
  Run(dialog);
}

void QtForms::Show(FrmFini& form) {
  FiniDialog dialog(form, main_);
  Run(dialog);
}

void QtForms::Show(FrmBest& form) {
  BestDialog dialog(form, main_);
  form.changed = [&dialog] { dialog.Refresh(); };
  Run(dialog);
  form.changed = nullptr;
}

void QtForms::Show(FrmAbout& form) {
  AboutDialog dialog(form, program_.host.shell, startDirectory_, main_);
  dialog.SetWhereFilesAre(whereFilesAre);
  Run(dialog);
}

void QtForms::EndProgram() {
  if (onEnd) onEnd();
}

}  // namespace ostrane::gui
