#include "app/gui/additions.h"

#include <QAction>
#include <QScreen>
#include <QMenu>
#include <QShortcut>
#include <QToolButton>

#include <algorithm>

#include "app/gui/analysis_window.h"
#include "app/gui/main_window.h"
#include "app/gui/qt_forms.h"
#include "game/layout.h"
#include "lexicon/lexicon.h"
#include "records/program.h"

namespace ostrane::gui {

Additions::Additions(MainWindow& window, Program& program, QtForms& forms, const Lexicon& lexicon)
    : QObject(&window), window_(window), program_(program), forms_(forms), lexicon_(lexicon) {
  // Under the rack, at the left of the version's line: the one free place of
  // the panel.
  more_ = new QToolButton(window.Client());
  more_->setObjectName(QStringLiteral("Plus"));
  more_->setText(QStringLiteral("Plus ▾"));
  more_->setToolTip(QStringLiteral("Les commandes ajoutées : analyse du tirage…"));
  more_->setAutoRaise(true);
  more_->setPopupMode(QToolButton::InstantPopup);
  more_->setGeometry(layout::kRegletteLeft, layout::kRegletteTop + layout::kRegletteHeight + 1, 70, 16);
  QFont small = more_->font();
  small.setPointSizeF(small.pointSizeF() * 0.85);
  more_->setFont(small);
  menu_ = new QMenu(more_);
  more_->setMenu(menu_);
  more_->show();

  QAction* analysis = menu_->addAction(QStringLiteral("Analyse du tirage…"));
  analysis->setShortcut(QKeySequence(Qt::Key_F5));
  analysis->setShortcutContext(Qt::WindowShortcut);
  window.addAction(analysis);
  connect(analysis, &QAction::triggered, this, &Additions::OpenAnalysis);
  QAction* exact = menu_->addAction(QStringLiteral("Proposer le meilleur coup exact"));
  exact->setCheckable(true);
  connect(menu_, &QMenu::aboutToShow, this, [this, exact] { exact->setChecked(program_.settings.proposeExact); });
  connect(exact, &QAction::toggled, this, [this](bool on) {
    if (program_.settings.proposeExact == on) return;
    program_.settings.proposeExact = on;
    WriteSettings(program_.SettingsFile(), program_.settings);
    if (analysis_) analysis_->Refresh();
  });
}

Additions::~Additions() = default;

AnalysisWindow* Additions::Analysis() const { return analysis_.data(); }

void Additions::OpenAnalysis() {
  if (window_.InputRefused()) return;
  if (!analysis_) {
    analysis_ = new AnalysisWindow(window_, program_, lexicon_.Graph());
    analysis_->presetBlank = [this](char letter) { forms_.presetBlanks.push_back(letter); };
    // Beside the main window, on its right as far as the screen has room.
    analysis_->adjustSize();
    const QRect frame = window_.frameGeometry();
    const QRect screen = window_.screen()->availableGeometry();
    const int left = std::max(screen.left(), std::min(frame.right() + 8, screen.right() - analysis_->width()));
    analysis_->move(left, std::max(screen.top(), frame.top()));
  }
  analysis_->show();
  analysis_->Refresh();
  analysis_->raise();
  analysis_->activateWindow();
}

}  // namespace ostrane::gui
