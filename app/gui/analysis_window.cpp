#include "app/gui/analysis_window.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/gui/main_window.h"
#include "board_view/drag_rules.h"
#include "game/layout.h"
#include "records/program.h"

namespace ostrane::gui {
namespace {

QString Text(const std::string& s) { return QString::fromUtf8(s.data(), int(s.size())); }

QString Position(const ExactPlay& p) {
  // As the best play's box writes it: the row's letter, "-", the column.
  return QStringLiteral("%1-%2").arg(QChar('A' + p.row)).arg(p.column + 1);
}

QTableWidgetItem* Cell(const QString& text, Qt::Alignment align = Qt::AlignLeft | Qt::AlignVCenter) {
  auto* item = new QTableWidgetItem(text);
  item->setTextAlignment(align);
  item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
  return item;
}

}  // namespace

AnalysisWindow::AnalysisWindow(MainWindow& main, Program& program, const WordGraph& graph)
    : QDialog(&main, Qt::Tool), main_(main), board_(main.Board()), program_(program), analysis_(main.Model(), graph) {
  setObjectName(QStringLiteral("Analyse"));
  setWindowTitle(QStringLiteral("Analyse du tirage"));
  setAttribute(Qt::WA_DeleteOnClose, false);
  auto* layout = new QVBoxLayout(this);

  rack_ = new QLabel(this);
  rack_->setObjectName(QStringLiteral("Tirage"));
  QFont bold = rack_->font();
  bold.setBold(true);
  rack_->setFont(bold);
  layout->addWidget(rack_);
  proposal_ = new QLabel(this);
  proposal_->setObjectName(QStringLiteral("Proposition"));
  proposal_->setWordWrap(true);
  proposal_->setMinimumHeight(2 * proposal_->fontMetrics().lineSpacing() + 2);
  layout->addWidget(proposal_);
  tops_ = new QLabel(this);
  tops_->setObjectName(QStringLiteral("Tops"));
  tops_->setWordWrap(true);
  tops_->setMinimumHeight(2 * tops_->fontMetrics().lineSpacing() + 2);
  layout->addWidget(tops_);

  auto* filter = new QHBoxLayout;
  filter->addWidget(new QLabel(QStringLiteral("Mot avec :"), this));
  letters_ = new QLineEdit(this);
  letters_->setObjectName(QStringLiteral("FiltreMot"));
  letters_->setAccessibleName(QStringLiteral("Mot contenant"));
  letters_->setToolTip(QStringLiteral("Les coups dont le mot contient ces lettres"));
  letters_->setMinimumWidth(70);
  letters_->setMaxLength(15);
  letters_->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[A-Za-z]*")), letters_));
  filter->addWidget(letters_, 1);
  filter->addWidget(new QLabel(QStringLiteral("Longueur :"), this));
  length_ = new QSpinBox(this);
  length_->setObjectName(QStringLiteral("FiltreLongueur"));
  length_->setAccessibleName(QStringLiteral("Longueur"));
  length_->setRange(0, 15);
  length_->setSpecialValueText(QStringLiteral("toutes"));
  filter->addWidget(length_);
  layout->addLayout(filter);

  table_ = new QTableWidget(0, 6, this);
  table_->setObjectName(QStringLiteral("Coups"));
  table_->setHorizontalHeaderLabels({QStringLiteral("Rang"), QStringLiteral("Mot"), QStringLiteral("Position"),
                                     QStringLiteral("Sens"), QStringLiteral("Points"), QStringLiteral("Jetons")});
  table_->horizontalHeaderItem(0)->setToolTip(QStringLiteral("Le rang du coup, du meilleur au moins bon"));
  table_->horizontalHeaderItem(5)->setToolTip(QStringLiteral("Le nombre de jetons posés"));
  table_->verticalHeader()->hide();
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setSelectionMode(QAbstractItemView::SingleSelection);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  table_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
  table_->setMinimumSize(340, 360);
  layout->addWidget(table_, 1);

  auto* pages = new QHBoxLayout;
  previous_ = new QPushButton(QStringLiteral("◀"), this);
  previous_->setToolTip(QStringLiteral("Les coups précédents"));
  previous_->setAccessibleName(QStringLiteral("Précédents"));
  next_ = new QPushButton(QStringLiteral("▶"), this);
  next_->setToolTip(QStringLiteral("Les coups suivants"));
  next_->setAccessibleName(QStringLiteral("Suivants"));
  page_ = new QLabel(this);
  page_->setAlignment(Qt::AlignCenter);
  pages->addWidget(previous_);
  pages->addWidget(page_, 1);
  pages->addWidget(next_);
  layout->addLayout(pages);

  proposeExact_ = new QCheckBox(QStringLiteral("Proposer le meilleur coup exact"), this);
  proposeExact_->setObjectName(QStringLiteral("ProposerExact"));
  proposeExact_->setToolTip(
      QStringLiteral("La commande Solution propose le coup qui rapporte le plus, au lieu de la proposition "
                     "habituelle du programme."));
  layout->addWidget(proposeExact_);

  auto* buttons = new QHBoxLayout;
  lay_ = new QPushButton(QStringLiteral("Poser le coup"), this);
  lay_->setObjectName(QStringLiteral("Poser"));
  auto* close = new QPushButton(QStringLiteral("Fermer"), this);
  buttons->addWidget(lay_);
  buttons->addStretch(1);
  buttons->addWidget(close);
  layout->addLayout(buttons);

  connect(letters_, &QLineEdit::textChanged, this, [this] {
    analysis_.SetFilter(letters_->text().toStdString(), length_->value());
    Fill();
  });
  connect(length_, &QSpinBox::valueChanged, this, [this] {
    analysis_.SetFilter(letters_->text().toStdString(), length_->value());
    Fill();
  });
  connect(previous_, &QPushButton::clicked, this, [this] {
    analysis_.SetPage(analysis_.Page() - 1);
    Fill();
  });
  connect(next_, &QPushButton::clicked, this, [this] {
    analysis_.SetPage(analysis_.Page() + 1);
    Fill();
  });
  connect(table_, &QTableWidget::itemSelectionChanged, this, [this] {
    const auto rows = table_->selectionModel()->selectedRows();
    ghost_ = rows.isEmpty() ? -1 : table_->item(rows.first().row(), 0)->data(Qt::UserRole).toInt();
    ShowGhost();
  });
  connect(table_, &QTableWidget::cellDoubleClicked, this,
          [this](int row, int) { Lay(table_->item(row, 0)->data(Qt::UserRole).toInt()); });
  connect(lay_, &QPushButton::clicked, this, [this] {
    if (ghost_ >= 0) Lay(ghost_);
  });
  connect(proposeExact_, &QCheckBox::toggled, this, [this](bool on) {
    program_.settings.proposeExact = on;
    WriteSettings(program_.SettingsFile(), program_.settings);
  });
  connect(close, &QPushButton::clicked, this, &QDialog::close);
  Refresh();
}

AnalysisWindow::~AnalysisWindow() {
  if (board_) board_->SetGhost({});
}

void AnalysisWindow::hideEvent(QHideEvent* event) {
  if (board_) board_->SetGhost({});
  ghost_ = -1;
  QDialog::hideEvent(event);
}

void AnalysisWindow::Refresh() {
  if (proposeExact_->isChecked() != program_.settings.proposeExact) {
    const QSignalBlocker block(proposeExact_);
    proposeExact_->setChecked(program_.settings.proposeExact);
  }
  if (!isVisible()) return;
  // The list follows the board and the rack; the tiles moved on the board
  // before validation are still the rack's.
  if (main_.Model().enabled && analysis_.Update()) {
    ghost_ = -1;
    ShowGhost();
    Fill();
  } else if (table_->rowCount() == 0 && !analysis_.Plays().empty()) {
    Fill();
  }
  const int score = analysis_.Score(), tops = analysis_.Tops(), percent = analysis_.Percent();
  tops_->setText(percent < 0 ? QStringLiteral("Votre score : %1 points. Aucun coup joué n'est encore compté.").arg(score)
                             : QStringLiteral("Votre score : %1 points sur %2 aux tops des coups joués (%3 % du top).")
                                   .arg(score)
                                   .arg(tops)
                                   .arg(percent));
}

void AnalysisWindow::Fill() {
  const std::string rack = analysis_.Rack();
  QString shown;
  for (const char c : rack) shown += c == '?' ? QChar('?') : QChar(c - 'a' + 'A');
  rack_->setText(rack.empty() ? QStringLiteral("Aucun tirage sur le chevalet.")
                              : QStringLiteral("Tirage : %1 (%2 coups)").arg(shown).arg(analysis_.Plays().size()));
  const std::optional<Analysis::Standing> standing = analysis_.Proposal();
  if (standing) {
    QString text = QStringLiteral("Proposé : %1 en %2, %3 points")
                       .arg(Text(standing->word), Text(standing->place))
                       .arg(standing->points);
    if (standing->claimed != standing->points) text += QStringLiteral(" (annoncés : %1)").arg(standing->claimed);
    text += QStringLiteral(", rang %1 sur %2.").arg(standing->rank).arg(analysis_.Plays().size());
    proposal_->setText(text);
  } else {
    proposal_->setText(QStringLiteral("Pas de proposition pour ce tirage."));
  }

  const std::vector<int> rows = analysis_.PageRows();
  table_->setRowCount(int(rows.size()));
  const std::vector<ExactPlay>& plays = analysis_.Plays();
  const int proposed = standing ? standing->index : -1;
  for (int r = 0; r < int(rows.size()); ++r) {
    const int index = rows[size_t(r)];
    const ExactPlay& p = plays[size_t(index)];
    auto* rank = Cell(QString::number(index + 1), Qt::AlignRight | Qt::AlignVCenter);
    rank->setData(Qt::UserRole, index);
    table_->setItem(r, 0, rank);
    table_->setItem(r, 1, Cell(Text(p.Shown()) + (index == proposed ? QStringLiteral("  ◆ proposé") : QString())));
    table_->setItem(r, 2, Cell(Position(p)));
    auto* direction = Cell(p.down ? QStringLiteral("↓") : QStringLiteral("→"), Qt::AlignCenter);
    direction->setToolTip(QString::fromStdString(Analysis::Direction(p)));
    table_->setItem(r, 3, direction);
    table_->setItem(r, 4, Cell(QString::number(p.points), Qt::AlignRight | Qt::AlignVCenter));
    table_->setItem(r, 5, Cell(QString::number(p.tiles), Qt::AlignRight | Qt::AlignVCenter));
    if (index == proposed)
      for (int c = 0; c < 6; ++c) table_->item(r, c)->setBackground(QColor(255, 244, 200));
  }
  page_->setText(QStringLiteral("Page %1 / %2 (%3 coups)").arg(analysis_.Page() + 1).arg(analysis_.PageCount()).arg(analysis_.Kept().size()));
  previous_->setEnabled(analysis_.Page() > 0);
  next_->setEnabled(analysis_.Page() + 1 < analysis_.PageCount());
  lay_->setEnabled(false);
}

void AnalysisWindow::ShowGhost() {
  std::vector<BoardWidget::Ghost> ghost;
  if (ghost_ >= 0 && ghost_ < int(analysis_.Plays().size())) {
    const ExactPlay& p = analysis_.Plays()[size_t(ghost_)];
    for (int i = 0; i < p.length; ++i)
      if ((p.laid >> i) & 1u) ghost.push_back({p.X(i), p.Y(i), p.letters[i], bool((p.blank >> i) & 1u)});
  }
  if (board_) board_->SetGhost(std::move(ghost));
  lay_->setEnabled(ghost_ >= 0 && main_.Model().enabled && main_.Model().CmdSolution.enabled);
}

void AnalysisWindow::Lay(int index) {
  FrmPlateau& form = main_.Model();
  if (index < 0 || index >= int(analysis_.Plays().size()) || !form.enabled || !form.CmdSolution.enabled) return;
  const ExactPlay play = analysis_.Plays()[size_t(index)];
  main_.Forward([&] {
    // The tiles on the board go back to the rack first, each to a free place.
    for (int k = 0; k < 7; ++k) {
      if (!form.TileAcrossPlateau(k) || form.PicGamer[size_t(k)].Tag.empty()) continue;
      int place = 0;
      while (place < 6 && !form.TabChevalet[size_t(place)].StrLettre.empty()) ++place;
      DragTile(main_.Drag(), k, layout::RackLeft(place) + layout::kTileWidth / 2, layout::RackTop() + layout::kTileHeight / 2);
    }
    LayWord(form, main_.Drag(), play.ToWord(analysis_.Board().data()), [this](char letter) {
      if (presetBlank) presetBlank(letter);
    });
  });
  if (board_) board_->SetGhost({});
  ghost_ = -1;
  table_->clearSelection();
}

}  // namespace ostrane::gui
