#include "app/gui/dialogs.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QFrame>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTextBrowser>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

#include "app/gui/mail_link.h"
#include "app/gui/rich_text.h"
#include "app/gui/startup_windows.h"
#include "records/about.h"
#include "board_view/faces.h"
#include "board_view/painters.h"
#include "records/program.h"

namespace ostrane::gui {
namespace {

QRect Available() { return QGuiApplication::primaryScreen()->availableGeometry(); }

// Centred across; `top` from the top of the screen, or a third of the free
// height when negative.
void PlaceOnScreen(QWidget* w, int top = -1) {
  const QRect screen = Available();
  const QSize size = w->sizeHint().expandedTo(w->size());
  const int left = screen.left() + std::max(0, (screen.width() - size.width()) / 2);
  if (top < 0) top = std::max(0, (screen.height() - size.height()) / 3);
  w->move(left, screen.top() + top);
}

QFont Scaled(QFont font, double factor, bool bold = false) {
  font.setPointSizeF(font.pointSizeF() * factor);
  font.setBold(bold);
  return font;
}

QPixmap Face(const TileFace& face) {
  if (face.picture == TileFace::Picture::None) return QPixmap::fromImage(view::FaceSet::Shared().EmptySlot());
  return QPixmap::fromImage(view::FaceImage(face));
}

void SetChecked(QCheckBox* box, bool value) {
  if (box->isChecked() != value) {
    const QSignalBlocker block(box);
    box->setChecked(value);
  }
}

constexpr const char* kPaleYellow = "#ffffc0";

}  // namespace

// ================================================================ base

ModelDialog::ModelDialog(QWidget* parent) : QDialog(parent) {
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

void ModelDialog::RunModal() {
  Refresh();
  if (ModelClosed()) return;
  setModal(true);
  exec();
}

void ModelDialog::Refresh() {
  if (closing_) return;
  Show();
  if (isVisible()) {
    // A longer text makes the dialog grow, never cut.
    const QSize hint = sizeHint();
    if (hint.width() > width() || hint.height() > height()) resize(size().expandedTo(hint));
  }
  if (ModelClosed() && isVisible()) {
    closing_ = true;
    done(QDialog::Accepted);
    closing_ = false;
  }
}

void ModelDialog::Forward(const std::function<void()>& command) {
  command();
  Refreshable::RefreshAll();
}

void ModelDialog::closeEvent(QCloseEvent* event) {
  if (ModelClosed()) {
    event->accept();
    return;
  }
  event->ignore();
  CloseBox();
}

void ModelDialog::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    Escape();
    return;
  }
  QDialog::keyPressEvent(event);
}

// ================================================================ FrmJetons

namespace {
JetonsDialog* g_currentJetons = nullptr;
}

JetonsDialog* JetonsDialog::Current() { return g_currentJetons; }

JetonsDialog::JetonsDialog(FrmJetons& model, const Program& program, QWidget* parent)
    : ModelDialog(parent), model_(model), program_(program) {
  setObjectName(QStringLiteral("FrmJetons"));
  setWindowTitle(QStringLiteral("Tirage des jetons"));
  auto* layout = new QVBoxLayout(this);
  layout->setSpacing(10);

  auto* hint = new QLabel(QStringLiteral("Cliquez sur les jetons piochés, ou tapez leurs lettres au clavier."), this);
  hint->setStyleSheet(QStringLiteral("color: #404040;"));
  layout->addWidget(hint);

  letters_ = new QWidget(this);
  auto* grid = new QGridLayout(letters_);
  grid->setSpacing(4);
  grid->setContentsMargins(0, 0, 0, 0);
  const view::FaceSet& faces = view::FaceSet::Shared();
  QFont small = Scaled(font(), 0.85);
  for (int k = 1; k <= FrmJetons::kBlank; ++k) {
    auto* button = new QToolButton(letters_);
    button->setObjectName(QStringLiteral("CmdJeton%1").arg(k));
    const QImage& face = faces.ImgLet(k == FrmJetons::kBlank ? 26 : k - 1);
    button->setIcon(QIcon(QPixmap::fromImage(face)));
    button->setIconSize(QSize(view::kFaceSize, view::kFaceSize));
    button->setFixedSize(46, 46);
    button->setAutoRaise(false);
    button->setFocusPolicy(Qt::NoFocus);
    cmdJeton_[size_t(k)] = button;
    auto* count = new QLabel(letters_);
    count->setAlignment(Qt::AlignCenter);
    count->setFont(small);
    count->setStyleSheet(QStringLiteral("color: #606060;"));
    count_[size_t(k)] = count;
    const int row = (k - 1) / 9, column = (k - 1) % 9;
    grid->addWidget(button, row * 2, column, Qt::AlignCenter);
    grid->addWidget(count, row * 2 + 1, column, Qt::AlignCenter);
    connect(button, &QToolButton::clicked, this, [this, k] { Forward([this, k] { model_.CmdJeton_Click(k); }); });
  }
  layout->addWidget(letters_);

  auto* pickedFrame = new QFrame(this);
  pickedFrame->setFrameShape(QFrame::StyledPanel);
  pickedFrame->setStyleSheet(QStringLiteral("QFrame { background: #e9dcc0; border-radius: 4px; }"));
  auto* picked = new QHBoxLayout(pickedFrame);
  picked->setSpacing(3);
  auto* pickedTitle = new QLabel(QStringLiteral("Tirage :"), pickedFrame);
  pickedTitle->setFont(Scaled(font(), 1.0, true));
  picked->addWidget(pickedTitle);
  for (int i = 1; i <= 7; ++i) {
    imgJ_[size_t(i)] = new QLabel(pickedFrame);
    imgJ_[size_t(i)]->setObjectName(QStringLiteral("ImgJ%1").arg(i));
    imgJ_[size_t(i)]->setFixedSize(view::kFaceSize, view::kFaceSize);
    picked->addWidget(imgJ_[size_t(i)]);
  }
  picked->addSpacing(10);
  lblTirage_ = new QLabel(pickedFrame);
  lblTirage_->setObjectName(QStringLiteral("LblTirage"));
  lblTirage_->setFont(FixedFont(11));
  lblTirage_->setMinimumWidth(80);
  picked->addWidget(lblTirage_, 1);
  layout->addWidget(pickedFrame);

  auto* row = new QHBoxLayout;
  cmdAnnuler_ = new QPushButton(QStringLiteral("Annuler"), this);
  cmdAnnuler_->setObjectName(QStringLiteral("CmdAnnuler"));
  cmdAnnuler_->setToolTip(QStringLiteral("Remettre le dernier jeton dans le sac"));
  cmdValider_ = new QPushButton(QStringLiteral("Valider"), this);
  cmdValider_->setObjectName(QStringLiteral("CmdValider"));
  cmdInfo_ = new QPushButton(QStringLiteral("Informations"), this);
  cmdInfo_->setObjectName(QStringLiteral("CmdInfo"));
  cmdQ_ = new QPushButton(QStringLiteral("Quitter"), this);
  cmdQ_->setObjectName(QStringLiteral("CmdQ"));
  for (QPushButton* b : {cmdAnnuler_, cmdValider_, cmdInfo_, cmdQ_}) {
    b->setAutoDefault(false);
    b->setFocusPolicy(Qt::NoFocus);
  }
  QFont bold = cmdValider_->font();
  bold.setBold(true);
  cmdValider_->setFont(bold);
  row->addWidget(cmdAnnuler_);
  row->addWidget(cmdValider_);
  row->addStretch(1);
  row->addWidget(cmdInfo_);
  row->addWidget(cmdQ_);
  layout->addLayout(row);

  connect(cmdAnnuler_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdAnnuler_Click(); }); });
  connect(cmdValider_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdValider_Click(); }); });
  connect(cmdInfo_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdInfo_Click(); }); });
  connect(cmdQ_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdQ_Click(); }); });
  g_currentJetons = this;
  connect(this, &QObject::destroyed, [] { g_currentJetons = nullptr; });
}

void JetonsDialog::Show() {
  if (g_currentJetons != this && !model_.closed) g_currentJetons = this;
  if (model_.closed && g_currentJetons == this) g_currentJetons = nullptr;
  SetEnabled(letters_, model_.enabled);
  for (int k = 1; k <= FrmJetons::kBlank; ++k) {
    const Button& state = model_.CmdJeton[size_t(k)];
    QToolButton* button = cmdJeton_[size_t(k)];
    SetEnabled(button, state.enabled);
    SetVisible(button, state.visible);
    const QString caption = ModelText(state.caption);
    if (button->text() != caption) button->setText(caption);
    button->setToolTip(caption);
    const char letter = k == FrmJetons::kBlank ? '?' : char('A' + k - 1);
    const auto left = std::count(program_.StrSac.begin(), program_.StrSac.end(), letter);
    SetText(count_[size_t(k)], left > 0 ? QStringLiteral("×%1").arg(left) : QString());
  }
  for (int i = 1; i <= 7; ++i) {
    if (shownImgJ_[size_t(i)] == model_.ImgJ[size_t(i)] && !imgJ_[size_t(i)]->pixmap().isNull()) continue;
    shownImgJ_[size_t(i)] = model_.ImgJ[size_t(i)];
    imgJ_[size_t(i)]->setPixmap(Face(model_.ImgJ[size_t(i)]));
  }
  SetText(lblTirage_, ModelText(model_.LblTirage.text));
  for (auto [button, state] : {std::pair{cmdAnnuler_, &model_.CmdAnnuler}, std::pair{cmdValider_, &model_.CmdValider},
                               std::pair{cmdInfo_, &model_.CmdInfo}, std::pair{cmdQ_, &model_.CmdQ}})
    Bind(button, *state);
  SetEnabled(cmdAnnuler_, model_.enabled && model_.CmdAnnuler.enabled);
  SetEnabled(cmdValider_, model_.enabled && model_.CmdValider.enabled);
  SetEnabled(cmdQ_, model_.enabled || model_.CmdQ.enabled);
  if (!placed_) {
    adjustSize();
    const QRect screen = Available();
    const int top = model_.top != 0 ? model_.top : std::max(0, (screen.height() - height()) / 3) + screen.top();
    const int left = model_.left != 0 ? model_.left : screen.left() + (screen.width() - width()) / 2;
    move(left, top);
    placed_ = true;
  }
}

void JetonsDialog::moveEvent(QMoveEvent* event) {
  QDialog::moveEvent(event);
  if (!placed_ || !isVisible()) return;
  model_.left = x();
  model_.top = y();
}

void JetonsDialog::mousePressEvent(QMouseEvent* event) {
  // The picker moves when dragged by its background; it comes back there at
  // the next draw.
  if (event->button() == Qt::LeftButton && windowHandle()) windowHandle()->startSystemMove();
}

void JetonsDialog::keyPressEvent(QKeyEvent* event) {
  if (!model_.enabled) return;
  const QString text = event->text().toUpper();
  int k = 0;
  if (text.size() == 1 && text[0] >= QLatin1Char('A') && text[0] <= QLatin1Char('Z'))
    k = text[0].unicode() - 'A' + 1;
  else if (text == QLatin1String("?") || event->key() == Qt::Key_Space)
    k = FrmJetons::kBlank;
  if (k != 0) {
    if (cmdJeton_[size_t(k)]->isEnabled()) cmdJeton_[size_t(k)]->click();
    return;
  }
  if (event->key() == Qt::Key_Backspace) {
    if (cmdAnnuler_->isEnabled()) cmdAnnuler_->click();
    return;
  }
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (cmdValider_->isEnabled()) cmdValider_->click();
    return;
  }
  ModelDialog::keyPressEvent(event);
}

// ================================================================ FrmJoc

JocDialog::JocDialog(FrmJoc& model, QWidget* mainWindow) : ModelDialog(mainWindow), model_(model) {
  setObjectName(QStringLiteral("FrmJoc"));
  setWindowTitle(QStringLiteral("Joker"));
  setStyleSheet(QStringLiteral("QDialog { background: #fff3d6; }"));
  auto* layout = new QVBoxLayout(this);
  lblJoc_ = new QLabel(this);
  lblJoc_->setAlignment(Qt::AlignCenter);
  lblJoc_->setFont(Scaled(font(), 1.1, true));
  lblJoc_->setStyleSheet(QStringLiteral("color: #940000;"));
  layout->addWidget(lblJoc_);
  txtJok_ = new QLineEdit(this);
  txtJok_->setObjectName(QStringLiteral("TxtJok"));
  txtJok_->setMaxLength(1);
  txtJok_->setAlignment(Qt::AlignCenter);
  txtJok_->setFont(Scaled(font(), 2.2, true));
  txtJok_->setFixedWidth(60);
  layout->addWidget(txtJok_, 0, Qt::AlignHCenter);
  connect(txtJok_, &QLineEdit::textEdited, this, [this](const QString& text) {
    Forward([this, text] { model_.TxtJok_Change(text.toStdString()); });
  });
  adjustSize();
  if (mainWindow) {
    // From the main form's client area, wherever the window puts it.
    QWidget* client = mainWindow->findChild<QWidget*>(QStringLiteral("Client"));
    const QPoint origin = (client ? client : mainWindow)->mapToGlobal(QPoint(0, 0));
    move(origin.x() + model_.leftFromMain, origin.y() + model_.topFromMain);
  }
}

void JocDialog::Show() {
  SetText(lblJoc_, ModelText(model_.LblJoc.text));
  const QString text = ModelText(model_.TxtJok.text);
  if (txtJok_->text() != text) txtJok_->setText(text);
  txtJok_->setFocus();
}

void JocDialog::mousePressEvent(QMouseEvent* event) {
  // The box moves when dragged by its background.
  if (event->button() == Qt::LeftButton && windowHandle()) windowHandle()->startSystemMove();
}

// ================================================================ FrmBoiteD

BoiteDDialog::BoiteDDialog(FrmBoiteD& model, QWidget* parent) : ModelDialog(parent), model_(model) {
  setObjectName(QStringLiteral("FrmBoiteD"));
  auto* layout = new QVBoxLayout(this);
  layout->setSpacing(10);
  auto* fra = new QFrame(this);
  fra_ = fra;
  fra->setFrameShape(QFrame::StyledPanel);
  fra_->setStyleSheet(QStringLiteral("QFrame { background: #f7f1e1; border: 1px solid #c8b890; border-radius: 5px; }"
                                     "QLabel { border: none; background: transparent; }"));
  auto* grid = new QGridLayout(fra_);
  grid->setHorizontalSpacing(12);
  grid->setVerticalSpacing(8);
  for (int i = 0; i < 6; ++i) {
    lbl_[size_t(i)] = new QLabel(fra_);
    lbl_[size_t(i)]->setObjectName(QStringLiteral("Lbl%1").arg(i));
    grid->addWidget(lbl_[size_t(i)], i / 2, i % 2, (i % 2 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
  }
  lbl_[1]->setFont(Scaled(font(), 1.8, true));
  lbl_[1]->setStyleSheet(QStringLiteral("color: #0036b8;"));
  lbl_[3]->setFont(Scaled(font(), 1.15, true));
  lbl_[5]->setFont(Scaled(font(), 1.4, true));
  lbl_[5]->setStyleSheet(QStringLiteral("color: #940000;"));
  layout->addWidget(fra_);
  lblMsg_ = new QLabel(this);
  lblMsg_->setObjectName(QStringLiteral("LblMsg"));
  lblMsg_->setAlignment(Qt::AlignCenter);
  lblMsg_->setFont(Scaled(font(), 1.3, true));
  lblMsg_->setMinimumWidth(320);
  layout->addWidget(lblMsg_);
  lblDef_ = new QLabel(this);
  lblDef_->setObjectName(QStringLiteral("LblDef"));
  lblDef_->setWordWrap(true);
  lblDef_->setMaximumWidth(420);
  lblDef_->setStyleSheet(QStringLiteral("color: #303030; font-style: italic;"));
  layout->addWidget(lblDef_);
  chkShowDef_ = new QCheckBox(this);
  chkShowDef_->setObjectName(QStringLiteral("ChkShowDef"));
  layout->addWidget(chkShowDef_);
  cmdQ_ = new QPushButton(QStringLiteral("OK"), this);
  cmdQ_->setObjectName(QStringLiteral("CmdQ"));
  cmdQ_->setDefault(true);
  cmdQ_->setMinimumWidth(90);
  layout->addWidget(cmdQ_, 0, Qt::AlignHCenter);
  connect(cmdQ_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdQ_Click(); }); });
  connect(chkShowDef_, &QCheckBox::clicked, this, [this] { Forward([this] { model_.ChkShowDef_Click(); }); });
}

void BoiteDDialog::Show() {
  setWindowTitle(ModelText(model_.caption));
  for (int i = 0; i < 6; ++i) {
    const Label& state = model_.Lbl[size_t(i)];
    QString text = ModelText(state.text);
    if (i % 2 == 0) text = text.trimmed();
    SetText(lbl_[size_t(i)], text);
    SetVisible(lbl_[size_t(i)], state.visible);
  }
  Bind(fra_, model_.Fra);
  SetText(lblMsg_, ModelText(model_.LblMsg.text));
  SetVisible(lblMsg_, model_.LblMsg.visible);
  SetText(lblDef_, ModelText(model_.LblDef.text));
  SetVisible(lblDef_, model_.LblDef.visible);
  SetText(chkShowDef_, ModelText(model_.ChkShowDef.caption));
  SetVisible(chkShowDef_, model_.ChkShowDef.visible);
  SetChecked(chkShowDef_, model_.ChkShowDef.value);
  if (!isVisible()) {
    adjustSize();
    // Centred across; a quarter of the free height down, or near the top
    // once the box has grown for a definition.
    const QRect screen = Available();
    PlaceOnScreen(this, model_.topTwips != 0 ? model_.topTwips / kTwipsPerPixel + 40
                                             : (screen.height() - height()) / 4);
  }
}

// ================================================================ FrmBoiteI

BoiteIDialog::BoiteIDialog(FrmBoiteI& model, QWidget* parent) : ModelDialog(parent), model_(model) {
  setObjectName(QStringLiteral("FrmBoiteI"));
  setWindowTitle(ModelText(FrmBoiteI::kCaption));
  setStyleSheet(QStringLiteral("QDialog { background: %1; }").arg(QLatin1String(kPaleYellow)));
  setMinimumWidth(440);
  auto* layout = new QVBoxLayout(this);
  layout->setSpacing(8);
  auto* frame = new QFrame(this);
  fra_ = frame;
  frame->setObjectName(QStringLiteral("Fra"));
  frame->setFrameShape(QFrame::Box);
  frame->setStyleSheet(QStringLiteral("QFrame { border: 1px solid #b8a860; background: %1; }"
                                      "QLabel { border: none; }")
                           .arg(QLatin1String(kPaleYellow)));
  // No spacing of its own: the gaps are spacers, so that a step can move the
  // text by its offsets.
  inner_ = new QVBoxLayout(frame);
  inner_->setContentsMargins(14, kFraTopMargin, 14, 12);
  inner_->setSpacing(0);
  lblInfoBis_ = new QLabel(frame);
  lblInfoBis_->setObjectName(QStringLiteral("LblInfoBis"));
  lblInfoBis_->setFont(Scaled(font(), 1.3, true));
  lblInfoBis_->setStyleSheet(QStringLiteral("color: #1f5c44;"));
  inner_->addWidget(lblInfoBis_);
  gapAboveInfo_ = new QSpacerItem(0, kInfoGap, QSizePolicy::Minimum, QSizePolicy::Fixed);
  inner_->addItem(gapAboveInfo_);
  lblInfoHead_ = new QLabel(frame);
  lblInfoHead_->setObjectName(QStringLiteral("LblInfoHead"));
  lblInfoHead_->setWordWrap(true);
  inner_->addWidget(lblInfoHead_);
  lblInfoTer_ = new QLabel(frame);
  lblInfoTer_->setObjectName(QStringLiteral("LblInfoTer"));
  lblInfoTer_->setAlignment(Qt::AlignCenter);
  lblInfoTer_->setFont(Scaled(font(), 1.6, true));
  lblInfoTer_->setStyleSheet(QStringLiteral("color: #0036b8;"));
  lblInfoTer_->setContentsMargins(0, 4, 0, 4);
  inner_->addWidget(lblInfoTer_);
  lblInfo_ = new QLabel(frame);
  lblInfo_->setObjectName(QStringLiteral("LblInfo"));
  lblInfo_->setWordWrap(true);
  lblInfo_->setMinimumWidth(400);
  inner_->addWidget(lblInfo_);
  belowInfo_ = new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Fixed);
  inner_->addItem(belowInfo_);
  lblInfoQuar_ = new QLabel(ModelText(FrmBoiteI::kLblInfoQuar), frame);
  lblInfoQuar_->setWordWrap(true);
  lblInfoQuar_->setFont(Scaled(font(), 1.0, true));
  lblInfoQuar_->setContentsMargins(0, 8, 0, 0);
  inner_->addWidget(lblInfoQuar_);
  fraExtra_ = new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Fixed);
  inner_->addItem(fraExtra_);
  layout->addWidget(frame);
  auto* row = new QHBoxLayout;
  chkInfo_ = new QCheckBox(ModelText(FrmBoiteI::kChkInfo), this);
  chkInfo_->setObjectName(QStringLiteral("ChkInfo"));
  row->addWidget(chkInfo_, 1);
  cmdQ_ = new QPushButton(QStringLiteral("OK"), this);
  cmdQ_->setObjectName(QStringLiteral("CmdQ"));
  cmdQ_->setDefault(true);
  cmdQ_->setMinimumWidth(90);
  row->addWidget(cmdQ_);
  layout->addLayout(row);
  connect(chkInfo_, &QCheckBox::clicked, this, [this](bool ticked) { Forward([this, ticked] { model_.ChkInfo_Click(ticked); }); });
  connect(cmdQ_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdQ_Click(); }); });
}

void BoiteIDialog::Show() {
  const FrmBoiteI::View& v = model_.view();
  SetText(lblInfoBis_, ModelText(v.LblInfoBis).trimmed());
  SetVisible(lblInfoBis_, v.LblInfoBisVisible);
  QFont bis = lblInfoBis_->font();
  if (bis.bold() != v.LblInfoBisBold) {
    bis.setBold(v.LblInfoBisBold);
    lblInfoBis_->setFont(bis);
  }
  // The text: a leading line break of the tour's steps leaves a blank line
  // under the heading, as the box is laid out. The word of step 4 stands on
  // the blank line under the text's first line.
  QString text = ModelText(v.LblInfo);
  const qsizetype firstBreak = text.indexOf(QLatin1Char('\n'));
  if (v.LblInfoTerVisible && firstBreak > 0) {
    SetText(lblInfoHead_, text.left(firstBreak));
    text = text.mid(firstBreak + 1);
    if (text.startsWith(QLatin1Char('\n'))) text = text.mid(1);
    SetVisible(lblInfoHead_, true);
  } else {
    SetVisible(lblInfoHead_, false);
  }
  SetText(lblInfo_, text);
  lblInfo_->setAlignment(v.LblInfoCentred ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter);
  // The step's type size, as it stands (8 points in step 1).
  QFont info = font();
  if (v.LblInfoFontPoints > 0) info.setPointSizeF(v.LblInfoFontPoints);
  if (lblInfo_->font() != info) lblInfo_->setFont(info);
  if (lblInfoHead_->font() != info) lblInfoHead_->setFont(info);
  SetText(lblInfoTer_, ModelText(v.LblInfoTer));
  SetVisible(lblInfoTer_, v.LblInfoTerVisible);
  SetVisible(lblInfoQuar_, v.LblInfoQuarVisible);
  SetVisible(chkInfo_, v.ChkInfoVisible);
  SetChecked(chkInfo_, v.ChkInfo);
  ApplyOffsets();
  if (!placed_) {
    adjustSize();
    JetonsDialog* jetons = JetonsDialog::Current();
    if (v.BelowJetons && jetons && jetons->isVisible()) {
      const QRect frame = jetons->frameGeometry();
      const QRect screen = Available();
      const int top = std::min(frame.bottom() + *v.BelowJetons / kTwipsPerPixel, screen.bottom() - height());
      move(frame.left() + (frame.width() - width()) / 2, std::max(screen.top(), top));
    } else {
      const QRect screen = Available();
      move(screen.left() + (screen.width() - width()) / 2, screen.top() + (screen.height() - height()) / 2);
    }
    placed_ = true;
  } else if (isVisible()) {
    adjustSize();
  }
}

void BoiteIDialog::ApplyOffsets() {
  // What the layout can take of the step's placings, in pixels: the text
  // raised (steps 1 and 10) or set at a top of its own inside the frame
  // (steps 3 and 4), LblInfo and the frame made taller (step 10).
  const FrmBoiteI::View& v = model_.view();
  int gap = kInfoGap - v.LblInfoRaise / kTwipsPerPixel;
  if (v.LblInfoTop) {
    // Nothing stands above the text in these steps but the frame's margin.
    const int above = lblInfoBis_->isVisibleTo(this) ? lblInfoBis_->sizeHint().height() : 0;
    gap = *v.LblInfoTop / kTwipsPerPixel - kFraTopMargin - above;
  }
  gap = std::max(0, gap);
  const int below = v.LblInfoExtraHeight / kTwipsPerPixel;
  const int extra = v.FraExtraHeight / kTwipsPerPixel;
  if (gapAboveInfo_->sizeHint().height() != gap || belowInfo_->sizeHint().height() != below ||
      fraExtra_->sizeHint().height() != extra) {
    gapAboveInfo_->changeSize(0, gap, QSizePolicy::Minimum, QSizePolicy::Fixed);
    belowInfo_->changeSize(0, below, QSizePolicy::Minimum, QSizePolicy::Fixed);
    fraExtra_->changeSize(0, extra, QSizePolicy::Minimum, QSizePolicy::Fixed);
    inner_->invalidate();
  }
}

// ================================================================ FrmFini

FiniDialog::FiniDialog(FrmFini& model, QWidget* parent) : FocDialog(model, parent) {
  setObjectName(QStringLiteral("FrmFini"));
  setWindowTitle(QStringLiteral("Ostrane"));
  setMinimumWidth(300);
  auto* layout = new QVBoxLayout(this);
  layout->setSpacing(12);
  auto* title = new QLabel(QStringLiteral("Fin de la partie."), this);
  title->setAlignment(Qt::AlignCenter);
  title->setFont(Scaled(font(), 1.2, true));
  title->setStyleSheet(QStringLiteral("color: #1f5c44;"));
  layout->addWidget(title);
  lblScore_ = new QLabel(this);
  lblScore_->setObjectName(QStringLiteral("LblScore"));
  lblScore_->setAlignment(Qt::AlignCenter);
  lblScore_->setFont(Scaled(font(), 2.4, true));
  lblScore_->setStyleSheet(QStringLiteral("color: #940000;"));
  layout->addWidget(lblScore_);
  cmdQuit_ = new QPushButton(QStringLiteral("OK"), this);
  cmdQuit_->setObjectName(QStringLiteral("CmdQuit"));
  cmdQuit_->setDefault(true);
  cmdQuit_->setMinimumWidth(90);
  layout->addWidget(cmdQuit_, 0, Qt::AlignHCenter);
  connect(cmdQuit_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdQuit_Click(); }); });
}

void FiniDialog::Show() {
  SetText(lblScore_, ModelText(model_.view().LblScore));
  SetPointer(this, model_.view().pointer);
  if (!isVisible()) {
    adjustSize();
    const QRect screen = Available();
    PlaceOnScreen(this, (screen.height() - height()) / 2);
  }
}

// ================================================================ FrmBest

BestDialog::BestDialog(FrmBest& model, QWidget* parent) : FocDialog(model, parent) {
  setObjectName(QStringLiteral("FrmBest"));
  setWindowTitle(ModelText(FrmBest::kCaption));
  auto* layout = new QVBoxLayout(this);
  auto* title = new QLabel(ModelText(FrmBest::kCaption), this);
  title->setAlignment(Qt::AlignCenter);
  title->setFont(Scaled(font(), 1.3, true));
  title->setStyleSheet(QStringLiteral("color: #1f5c44;"));
  layout->addWidget(title);

  const QFont fixed = FixedFont(10);
  // The header over the columns of a line: rank (3), two blanks, score (7),
  // name (18), three blanks, date (8), three blanks, time (5).
  const auto column = [](const char* text, int width) {
    QString s = ModelText(text);
    while (s.size() < width) s += QLatin1Char(' ');
    return s;
  };
  const QString header = column(FrmBest::kHeaders[0], 5) + column(FrmBest::kHeaders[1], 7) +
                         column(FrmBest::kHeaders[2], 21) + column(FrmBest::kHeaders[3], 11) +
                         ModelText(FrmBest::kHeaders[4]);
  auto* lbl = new QLabel(header, this);
  lbl->setObjectName(QStringLiteral("Lbl"));
  QFont headerFont = fixed;
  headerFont.setBold(true);
  lbl->setFont(headerFont);
  lbl->setContentsMargins(6, 0, 0, 0);
  lbl->setStyleSheet(QStringLiteral("color: #5a4a30;"));
  layout->addWidget(lbl);

  lstSco_ = new QListWidget(this);
  lstSco_->setObjectName(QStringLiteral("LstSco"));
  lstSco_->setFont(fixed);
  lstSco_->setAlternatingRowColors(true);
  lstSco_->setSelectionMode(QAbstractItemView::SingleSelection);
  {
    // The new game stands out whether or not the list has the focus.
    QPalette pal = lstSco_->palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
      pal.setColor(group, QPalette::Highlight, QColor(0, 54, 184));
      pal.setColor(group, QPalette::HighlightedText, Qt::white);
    }
    lstSco_->setPalette(pal);
  }
  const QFontMetrics metrics(fixed);
  lstSco_->setMinimumSize(metrics.horizontalAdvance(QString(49, QLatin1Char('M'))) + 30,
                          metrics.height() * 16);
  layout->addWidget(lstSco_, 1);
  lblEmpty_ = new QLabel(this);
  layout->addWidget(lblEmpty_);
  lblEmpty_->hide();

  auto* row = new QHBoxLayout;
  cmdEff_ = new QPushButton(QStringLiteral("Effacer la liste"), this);
  cmdEff_->setObjectName(QStringLiteral("CmdEff"));
  cmdFerme_ = new QPushButton(QStringLiteral("Fermer"), this);
  cmdFerme_->setObjectName(QStringLiteral("CmdFerme"));
  cmdFerme_->setDefault(true);
  row->addWidget(cmdEff_);
  row->addStretch(1);
  row->addWidget(cmdFerme_);
  layout->addLayout(row);
  connect(cmdEff_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdEff_Click(); }); });
  connect(cmdFerme_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdFerme_Click(); }); });
}

void BestDialog::Show() {
  const FrmBest::View& v = model_.view();
  QStringList lines;
  for (const std::string& line : v.LstSco) lines << ModelText(line);
  bool same = lstSco_->count() == lines.size();
  for (int i = 0; same && i < lines.size(); ++i) same = lstSco_->item(i)->text() == lines[i];
  if (!same) {
    lstSco_->clear();
    lstSco_->addItems(lines);
  }
  SetVisible(lstSco_, v.LstScoVisible || !v.LstSco.empty() || v.visible);
  if (lstSco_->currentRow() != v.ListIndex) {
    lstSco_->setCurrentRow(v.ListIndex);
    if (v.ListIndex >= 0) lstSco_->scrollToItem(lstSco_->item(v.ListIndex));
  }
  SetEnabled(cmdEff_, v.CmdEffEnabled);
  SetPointer(this, v.pointer);
  if (v.focus == FrmBest::Focus::LstSco && !lstSco_->hasFocus()) lstSco_->setFocus();
  if (v.focus == FrmBest::Focus::Foc && lstSco_->hasFocus()) cmdFerme_->setFocus();
  if (!isVisible()) {
    adjustSize();
    const QRect screen = Available();
    PlaceOnScreen(this, (screen.height() - height()) / 2);
  }
}

// ================================================================ FrmMail

MailDialog::MailDialog(Shell& shell, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("FrmMail"));
  setWindowTitle(QStringLiteral("Écrire aux auteurs"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel(QStringLiteral("Sujet :"), this));
  txtSujet_ = new QLineEdit(this);
  txtSujet_->setObjectName(QStringLiteral("TxtSujet"));
  layout->addWidget(txtSujet_);
  layout->addWidget(new QLabel(QStringLiteral("Message :"), this));
  txtMessage_ = new QPlainTextEdit(this);
  txtMessage_->setObjectName(QStringLiteral("TxtMessage"));
  txtMessage_->setMinimumSize(380, 180);
  layout->addWidget(txtMessage_, 1);
  auto* note = new QLabel(QStringLiteral("Le message sera ouvert dans votre logiciel de courrier."), this);
  note->setStyleSheet(QStringLiteral("color: #606060;"));
  layout->addWidget(note);
  auto* row = new QHBoxLayout;
  row->addStretch(1);
  cmdEnvoyer_ = new QPushButton(QStringLiteral("Envoyer"), this);
  cmdEnvoyer_->setObjectName(QStringLiteral("CmdEnvoyer"));
  auto* cmdFermer = new QPushButton(QStringLiteral("Fermer"), this);
  row->addWidget(cmdEnvoyer_);
  row->addWidget(cmdFermer);
  layout->addLayout(row);
  connect(cmdFermer, &QPushButton::clicked, this, &QDialog::reject);
  connect(cmdEnvoyer_, &QPushButton::clicked, this, [this, &shell] {
    QString body = txtMessage_->toPlainText();
    body.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    SubOuvreCourrier(shell, ProgramContactAddress(), "", "", txtSujet_->text().toStdString(), body.toStdString());
    accept();
  });
}

// ================================================================ FrmAbout

AboutDialog::AboutDialog(FrmAbout& model, Shell& shell, const QString& startDirectory, QWidget* parent)
    : FocDialog(model, parent) {
  setObjectName(QStringLiteral("FrmAbout"));
  setWindowTitle(QStringLiteral("A propos de Ostrane"));
  auto* layout = new QVBoxLayout(this);
  auto* top = new QHBoxLayout;
  auto* icon = new QLabel(this);
  icon->setPixmap(QPixmap::fromImage(view::FaceSet::Shared().Icon()));
  top->addWidget(icon, 0, Qt::AlignTop);
  auto* texts = new QVBoxLayout;
  auto* name = new QLabel(QStringLiteral("Ostrane"), this);
  name->setFont(Scaled(font(), 1.8, true));
  name->setStyleSheet(QStringLiteral("color: #1f5c44;"));
  texts->addWidget(name);
  lblU_ = new QLabel(this);
  lblU_->setFont(Scaled(font(), 1.05, true));
  texts->addWidget(lblU_);
  lblVer_ = new QLabel(this);
  lblVer_->setObjectName(QStringLiteral("LblVer"));
  texts->addWidget(lblVer_);
  top->addLayout(texts, 1);
  layout->addLayout(top);
  lblS_ = new QLabel(this);
  lblS_->setWordWrap(true);
  lblT_ = new QLabel(this);
  lblT_->setWordWrap(true);
  for (QLabel* l : {lblS_, lblT_}) {
    l->setStyleSheet(QStringLiteral("color: #404040;"));
    l->setMaximumWidth(520);
    layout->addWidget(l);
  }
  lblFiles_ = new QLabel(this);
  lblFiles_->setObjectName(QStringLiteral("LblFichiers"));
  lblFiles_->setWordWrap(true);
  lblFiles_->setMaximumWidth(520);
  lblFiles_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  lblFiles_->setStyleSheet(QStringLiteral("color: #1f5c44;"));
  lblFiles_->hide();
  layout->addWidget(lblFiles_);
  rtb1_ = new QTextBrowser(this);
  rtb1_->setObjectName(QStringLiteral("Rtb1"));
  rtb1_->setOpenExternalLinks(true);
  // The program's own document about itself.
  rtb1_->setHtml(RtfToHtml(ReadDocument(startDirectory, QString::fromUtf8(FrmAbout::kDocument))));
  rtb1_->setMinimumSize(500, 200);
  layout->addWidget(rtb1_, 1);
  auto* row = new QHBoxLayout;
  cmdSite_ = new QPushButton(QStringLiteral("Site internet"), this);
  cmdSite_->setObjectName(QStringLiteral("CmdSite"));
  cmdMail_ = new QPushButton(QStringLiteral("Écrire aux auteurs"), this);
  cmdMail_->setObjectName(QStringLiteral("CmdMail"));
  cmdFerme_ = new QPushButton(QStringLiteral("Fermer"), this);
  cmdFerme_->setObjectName(QStringLiteral("CmdFerme"));
  cmdFerme_->setDefault(true);
  row->addWidget(cmdSite_);
  row->addWidget(cmdMail_);
  row->addStretch(1);
  row->addWidget(cmdFerme_);
  layout->addLayout(row);
  connect(cmdFerme_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdFerme_Click(); }); });
  connect(cmdSite_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdSite_Click(); }); });
  connect(cmdMail_, &QPushButton::clicked, this, [this, &shell] {
    if (!model_.CmdMail_Click()) return;
    MailDialog mail(shell, this);
    mail.exec();
  });
}

void AboutDialog::SetWhereFilesAre(const QString& sentence) {
  lblFiles_->setText(sentence);
  lblFiles_->setAccessibleName(sentence);
  lblFiles_->setVisible(!sentence.isEmpty());
}

void AboutDialog::Show() {
  const FrmAbout::View& v = model_.view();
  SetText(lblVer_, ModelText(v.LblVer));
  SetText(lblU_, ModelText(v.LblU));
  SetText(lblS_, ModelText(v.LblS));
  SetText(lblT_, ModelText(v.LblT));
  if (!isVisible()) {
    adjustSize();
    PlaceOnScreen(this);
  }
}

}  // namespace ostrane::gui
