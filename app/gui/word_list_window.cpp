#include "app/gui/word_list_window.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStandardPaths>
#include <QVBoxLayout>

#include "records/word_lists.h"

namespace ostrane::gui {
namespace {

QString Text(const std::string& s) { return QString::fromUtf8(s.data(), int(s.size())); }

// "la liste …" at the head of a sentence.
QString Sentence(const std::string& s) {
  QString text = Text(s);
  if (!text.isEmpty()) text[0] = text[0].toUpper();
  return text;
}

}  // namespace

WordListWindow::WordListWindow(QWidget* parent, WordLists& lists) : QDialog(parent), lists_(lists) {
  setWindowTitle(QStringLiteral("Liste de mots"));
  setObjectName(QStringLiteral("ListeDeMots"));
  auto* layout = new QVBoxLayout(this);
  auto* heading = new QLabel(QStringLiteral("<b>Liste en service</b>"), this);
  inUse_ = new QLabel(this);
  inUse_->setAccessibleDescription(QStringLiteral("Liste en service"));
  inUse_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  chosen_ = new QLabel(this);
  chosen_->setAccessibleDescription(QStringLiteral("Liste de la prochaine partie"));
  chosen_->setStyleSheet(QStringLiteral("color: #7a4b00;"));
  auto* help = new QLabel(
      QStringLiteral("Un fichier texte, un mot par ligne, en UTF-8, UTF-16 ou Windows-1252. Les accents et la casse "
                     "sont ignorés (é se lit E, œ se lit OE) ; les lignes qui ne sont pas des mots de 2 à 15 lettres "
                     "sont comptées et laissées de côté. Une nouvelle liste sert dès la partie suivante, ou tout de "
                     "suite si aucune partie n'est commencée."),
      this);
  help->setWordWrap(true);
  help->setStyleSheet(QStringLiteral("color: #5a5046;"));
  help->setFixedWidth(460);
  help->setMinimumHeight(help->heightForWidth(460));
  file_ = new QPushButton(QStringLiteral("Choisir un fichier…"), this);
  embedded_ = new QPushButton(QStringLiteral("Revenir à la liste intégrée"), this);
  auto* close = new QPushButton(QStringLiteral("Fermer"), this);
  close->setDefault(true);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(file_);
  buttons->addWidget(embedded_);
  buttons->addStretch(1);
  buttons->addWidget(close);
  layout->addWidget(heading);
  layout->addWidget(inUse_);
  layout->addWidget(chosen_);
  layout->addSpacing(6);
  layout->addWidget(help);
  layout->addSpacing(6);
  layout->addLayout(buttons);
  connect(file_, &QPushButton::clicked, this, &WordListWindow::ChooseFile);
  connect(embedded_, &QPushButton::clicked, this, &WordListWindow::ChooseEmbedded);
  connect(close, &QPushButton::clicked, this, &QDialog::accept);
  Refresh();
}

void WordListWindow::Refresh() {
  inUse_->setText(Sentence(lists_.InUse()) + QLatin1Char('.'));
  chosen_->setVisible(lists_.ChoiceWaits());
  chosen_->setText(QStringLiteral("Pour la prochaine partie : %1.").arg(Text(lists_.Chosen())));
  embedded_->setEnabled(lists_.Chosen() != "la liste intégrée");
}

void WordListWindow::ChooseFile() {
  QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  const QString file = QFileDialog::getOpenFileName(
      this, QStringLiteral("Choisir une liste de mots"), folder,
      QStringLiteral("Listes de mots (*.txt *.lst *.dic *.csv);;Tous les fichiers (*)"));
  if (!file.isEmpty()) ChooseFrom(file);
}

bool WordListWindow::ChooseFrom(const QString& file) {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  const bool chosen = lists_.Choose(file.toStdString());
  QApplication::restoreOverrideCursor();
  if (!chosen) {
    if (tell) tell(Text(lists_.Told()));
    Refresh();
    return false;
  }
  Chosen();
  return true;
}

void WordListWindow::ChooseEmbedded() {
  lists_.Choose({});
  Chosen();
}

void WordListWindow::Chosen() {
  const bool waits = lists_.ChoiceWaits();
  if (waits && applyNow && applyNow()) return;  // the program puts it in service, and says so
  Refresh();
  if (!tell) return;
  if (waits) {
    tell(QStringLiteral("%1 servira à partir de la prochaine partie.").arg(Sentence(lists_.Chosen())));
  } else {
    tell(QStringLiteral("%1 est en service.").arg(Sentence(lists_.InUse())));
  }
}

}  // namespace ostrane::gui
