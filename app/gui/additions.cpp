#include "app/gui/additions.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QToolButton>

#include <algorithm>

#include "app/gui/analysis_window.h"
#include "app/gui/main_window.h"
#include "app/gui/qt_forms.h"
#include "app/gui/score_sheet.h"
#include "app/gui/word_list_window.h"
#include "board_view/replay.h"
#include "game/game_export.h"
#include "game/game_record.h"
#include "game/layout.h"
#include "lexicon/lexicon.h"
#include "records/program.h"
#include "records/text_files.h"

namespace ostrane::gui {
namespace {

QString Text(const std::string& s) { return QString::fromUtf8(s.data(), int(s.size())); }
std::string Bytes(const QString& s) { return s.toUtf8().toStdString(); }

constexpr qint64 kLargestGameFile = 1 << 20;

}  // namespace

Additions::Additions(MainWindow& window, Program& program, QtForms& forms, const Lexicon& lexicon, GameRecord& record)
    : QObject(&window), window_(window), program_(program), forms_(forms), lexicon_(lexicon), record_(record) {
  // Under the rack, at the left of the version's line: the one free place of
  // the panel.
  more_ = new QToolButton(window.Client());
  more_->setObjectName(QStringLiteral("Plus"));
  more_->setText(QStringLiteral("Plus ▾"));
  more_->setToolTip(QStringLiteral("Les commandes ajoutées : analyse du tirage, annuler un coup, enregistrer…"));
  more_->setAutoRaise(true);
  more_->setPopupMode(QToolButton::InstantPopup);
  more_->setGeometry(layout::kRegletteLeft, layout::kRegletteTop + layout::kRegletteHeight + 1, 70, 16);
  QFont small = more_->font();
  small.setPointSizeF(small.pointSizeF() * 0.85);
  more_->setFont(small);
  menu_ = new QMenu(more_);
  more_->setMenu(menu_);
  more_->show();

  Add(QStringLiteral("Analyse du tirage…"), QKeySequence(Qt::Key_F5), &Additions::OpenAnalysis);
  exact_ = menu_->addAction(QStringLiteral("Proposer le meilleur coup exact"));
  exact_->setCheckable(true);
  connect(exact_, &QAction::toggled, this, [this](bool on) {
    if (program_.settings.proposeExact == on) return;
    program_.settings.proposeExact = on;
    WriteSettings(program_.SettingsFile(), program_.settings);
    if (analysis_) analysis_->Refresh();
  });
  menu_->addSeparator();
  Add(QStringLiteral("Annuler le dernier coup"), QKeySequence(Qt::CTRL | Qt::Key_Z), &Additions::Undo);
  Add(QStringLiteral("Corriger le tirage"), QKeySequence(Qt::CTRL | Qt::Key_T), &Additions::CorrectDraw);
  menu_->addSeparator();
  Add(QStringLiteral("Enregistrer la partie…"), QKeySequence(Qt::CTRL | Qt::Key_S), &Additions::SaveGame);
  Add(QStringLiteral("Ouvrir une partie…"), QKeySequence(Qt::CTRL | Qt::Key_O), &Additions::OpenGame);
  Add(QStringLiteral("Exporter en texte…"), QKeySequence(Qt::CTRL | Qt::Key_E), &Additions::ExportText);
  Add(QStringLiteral("Feuille de partie (PDF)…"), QKeySequence(Qt::CTRL | Qt::Key_P), &Additions::ScoreSheet);
  Add(QStringLiteral("Imprimer la feuille de partie…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P),
      &Additions::PrintScoreSheet);
  menu_->addSeparator();
  Add(QStringLiteral("Liste de mots…"), QKeySequence(Qt::CTRL | Qt::Key_L), &Additions::OpenWordList);
  // The menu shows what can be done now; the keys always reach the commands,
  // which look for themselves.
  connect(menu_, &QMenu::aboutToShow, this, &Additions::UpdateCommands);
  connect(menu_, &QMenu::aboutToHide, this, [this] {
    for (QAction* action : menu_->actions()) action->setEnabled(true);
  });
  exact_->setChecked(program_.settings.proposeExact);
  window_.TxtCtrl()->installEventFilter(this);
}

bool Additions::eventFilter(QObject* target, QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const QKeySequence pressed(key->keyCombination());
    for (QAction* action : menu_->actions())
      if (!action->shortcut().isEmpty() && action->shortcut() == pressed) {
        event->ignore();  // not taken by the box: the window's command runs
        return true;
      }
  }
  return QObject::eventFilter(target, event);
}

Additions::~Additions() = default;

QAction* Additions::Add(const QString& caption, const QKeySequence& key, void (Additions::*command)()) {
  QAction* action = menu_->addAction(caption);
  action->setShortcut(key);
  action->setShortcutContext(Qt::WindowShortcut);
  window_.addAction(action);
  connect(action, &QAction::triggered, this, [this, command] { (this->*command)(); });
  return action;
}

QAction* Additions::Command(const QString& caption) const {
  for (QAction* action : menu_->actions())
    if (action->text() == caption) return action;
  return nullptr;
}

AnalysisWindow* Additions::Analysis() const { return analysis_.data(); }

void Additions::UpdateCommands() {
  exact_->setChecked(program_.settings.proposeExact);
  const bool idle = !window_.InputRefused();
  const bool playing = window_.Model().ObjPlateau && window_.Model().BlnAbandon == 0 && record_.Plays() + int(!record_.Turns().empty()) > 0;
  Command(QStringLiteral("Annuler le dernier coup"))->setEnabled(idle && record_.CanUndo());
  Command(QStringLiteral("Corriger le tirage"))->setEnabled(idle && record_.CanCorrectDraw());
  for (const char* caption : {"Enregistrer la partie…", "Exporter en texte…", "Feuille de partie (PDF)…",
                              "Imprimer la feuille de partie…"})
    Command(QString::fromUtf8(caption))->setEnabled(idle && playing);
  Command(QStringLiteral("Ouvrir une partie…"))->setEnabled(idle);
}

void Additions::Tell(const QString& text) {
  program_.StrMsg = Bytes(text);
  program_.ShowMessage(kOkOnly);
}

QString Additions::Folder() const { return Text(program_.CheminApp.string()); }

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

void Additions::OpenWordList() {
  if (window_.InputRefused() || !wordLists) return;
  WordListWindow dialog(&window_, *wordLists);
  wordListWindow_ = &dialog;
  dialog.tell = [this](const QString& text) { Tell(text); };
  bool reopen = false;
  dialog.applyNow = [&] {
    if (!window_.Model().CmdNew.enabled || !reopenForWordList) return false;  // a game has begun
    reopen = true;
    dialog.accept();
    return true;
  };
  dialog.exec();
  wordListWindow_ = nullptr;
  if (reopen) reopenForWordList();
}

void Additions::Undo() {
  if (window_.InputRefused() || !record_.CanUndo()) return;
  window_.Forward([this] { record_.Undo(); });
}

void Additions::CorrectDraw() {
  if (window_.InputRefused() || !record_.CanCorrectDraw()) return;
  window_.Forward([this] { record_.CorrectDraw(); });
}

void Additions::SaveGame() {
  if (window_.InputRefused() || record_.Turns().empty()) return;
  const QString suggested = QDir(Folder()).filePath(Text(program_.NomPartie) + QStringLiteral(".ostrane"));
  const QString file = QFileDialog::getSaveFileName(&window_, QStringLiteral("Enregistrer la partie"), suggested,
                                                    QStringLiteral("Parties d'Ostrane (*.ostrane)"));
  if (!file.isEmpty()) SaveGameTo(file);
}

bool Additions::SaveGameTo(const QString& file) {
  if (WriteWholeFile(file.toStdString(), FormatGameFile(record_.File())) != 0) {
    Tell(QStringLiteral("La partie n'a pas pu être enregistrée dans « %1 ».").arg(QFileInfo(file).fileName()));
    return false;
  }
  return true;
}

void Additions::OpenGame() {
  if (window_.InputRefused()) return;
  const QString file = QFileDialog::getOpenFileName(&window_, QStringLiteral("Ouvrir une partie"), Folder(),
                                                    QStringLiteral("Parties d'Ostrane (*.ostrane);;Tous les fichiers (*)"));
  if (!file.isEmpty()) OpenGameFrom(file);
}

bool Additions::OpenGameFrom(const QString& file) {
  const QString name = QFileInfo(file).fileName();
  QFile in(file);
  if (!in.open(QIODevice::ReadOnly)) {
    Tell(QStringLiteral("Le fichier « %1 » ne peut pas être lu.").arg(name));
    return false;
  }
  if (in.size() > kLargestGameFile) {
    Tell(QStringLiteral("Le fichier « %1 » est trop grand pour être une partie d'Ostrane.").arg(name));
    return false;
  }
  const QByteArray bytes = in.readAll();
  std::string error;
  const std::optional<GameFile> game = ParseGameFile(std::string_view(bytes.constData(), size_t(bytes.size())), error);
  std::optional<Replayed> replayed;
  if (game) replayed = Replay(lexicon_, &lexicon_.Graph(), program_.options, *game, error);
  if (!replayed) {
    // The game in progress stays as it was.
    Tell(QStringLiteral("La partie « %1 » ne peut pas être ouverte.\n%2").arg(name, Text(error)));
    return false;
  }
  FrmPlateau& form = window_.Model();
  if (record_.Plays() > 0 && form.BlnAbandon == 0 && !form.BestScoreStepDone) {
    program_.StrMsg = "La partie en cours sera remplacée par celle qui est ouverte. Continuer ?";
    if (program_.ShowMessage(kYesNo) == Answer::No) return false;
  }
  program_.NomPartie = game->name;
  window_.Forward([&] {
    form.Restore(replayed->state, replayed->finished);
    record_.Adopt(*game, replayed->turns);
  });
  return true;
}

void Additions::ExportText() {
  if (window_.InputRefused() || record_.Turns().empty()) return;
  const QString suggested = QDir(Folder()).filePath(Text(program_.NomPartie) + QStringLiteral(".txt"));
  const QString file = QFileDialog::getSaveFileName(&window_, QStringLiteral("Exporter la partie en texte"),
                                                    suggested, QStringLiteral("Texte (*.txt)"));
  if (!file.isEmpty()) ExportTextTo(file);
}

bool Additions::ExportTextTo(const QString& file) {
  if (WriteWholeFile(file.toStdString(), GameText(record_.File())) != 0) {
    Tell(QStringLiteral("Le texte de la partie n'a pas pu être écrit dans « %1 ».").arg(QFileInfo(file).fileName()));
    return false;
  }
  return true;
}

void Additions::ScoreSheet() {
  if (window_.InputRefused() || record_.Turns().empty()) return;
  const QString suggested = QDir(Folder()).filePath(Text(program_.NomPartie) + QStringLiteral(".pdf"));
  const QString file = QFileDialog::getSaveFileName(&window_, QStringLiteral("Feuille de partie"), suggested,
                                                    QStringLiteral("PDF (*.pdf)"));
  if (!file.isEmpty()) ScoreSheetTo(file);
}

bool Additions::ScoreSheetTo(const QString& file) {
  QString error;
  if (!WriteScoreSheet(file, record_.File(), window_.Board()->Picture(), error)) {
    Tell(error);
    return false;
  }
  return true;
}

void Additions::PrintScoreSheet() {
  if (window_.InputRefused() || record_.Turns().empty()) return;
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(QStringLiteral("Feuille de partie — %1").arg(Text(program_.NomPartie)));
  QPrintDialog dialog(&printer, &window_);
  dialog.setWindowTitle(QStringLiteral("Imprimer la feuille de partie"));
  if (dialog.exec() != QDialog::Accepted) return;
  PaintScoreSheet(printer, record_.File(), window_.Board()->Picture());
}

}  // namespace ostrane::gui
