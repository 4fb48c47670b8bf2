#include "app/gui/startup_windows.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLinearGradient>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTextBrowser>
#include <QVBoxLayout>
#include <QWindow>

#include "app/gui/bind.h"
#include "app/gui/rich_text.h"
#include "board_view/faces.h"
#include "board_view/painters.h"

namespace ostrane::gui {
namespace {

constexpr int kStartWidth = 380;
constexpr int kStartHeight = 200;
constexpr int kProgressWidth = -Frm11Dem::kImgProgressStart / kTwipsPerPixel;  // 264

QImage ProgressPicture() {
  QImage image(kProgressWidth, 14, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing);
  QLinearGradient ground(0, 0, kProgressWidth, 0);
  ground.setColorAt(0, QColor(120, 160, 120));
  ground.setColorAt(1, QColor(30, 110, 70));
  p.setPen(Qt::NoPen);
  p.setBrush(ground);
  p.drawRoundedRect(QRectF(0, 1, kProgressWidth, 12), 5, 5);
  p.setPen(QPen(QColor(255, 255, 255, 90), 1));
  for (int x = 12; x < kProgressWidth; x += 12) p.drawLine(x, 3, x - 4, 11);
  return image;
}

QPixmap TitleTiles(const QString& word) {
  const int step = view::kFaceSize + 2;
  const int scale = view::FaceSet::Shared().Scale();
  QPixmap pixmap((step * int(word.size()) - 2) * scale, view::kFaceSize * scale);
  pixmap.setDevicePixelRatio(scale);
  pixmap.fill(Qt::transparent);
  QPainter p(&pixmap);
  view::Painters painters;
  for (int i = 0; i < word.size(); ++i) {
    const std::string letter(1, char(word.at(i).toLower().toLatin1()));
    painters.SubPeintLettre(letter);
    p.drawImage(step * i, 0, painters.PicTemp());
  }
  return pixmap;
}

void CentreOnScreen(QWidget* w, int topPixels) {
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  const int left = screen.left() + (screen.width() - w->width()) / 2;
  w->move(left, screen.top() + std::max(0, topPixels));
}

}  // namespace

// ---------------------------------------------------------------- Frm11Dem

StartupWindow::StartupWindow(Frm11Dem& model) : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint), model_(model) {
  setWindowTitle(QStringLiteral("Ostrane"));
  setFixedSize(kStartWidth, kStartHeight);
  setObjectName(QStringLiteral("Frm11Dem"));

  auto* title = new QLabel(this);
  title->setPixmap(TitleTiles(QStringLiteral("ostrane")));
  title->setGeometry((kStartWidth - title->pixmap().width()) / 2, 22, title->pixmap().width(), view::kFaceSize);

  auto* subtitle = new QLabel(QStringLiteral("Programme d'aide pour le jeu de tablinor"), this);
  subtitle->setAlignment(Qt::AlignCenter);
  subtitle->setGeometry(0, 62, kStartWidth, 18);
  subtitle->setStyleSheet(QStringLiteral("color: #5a4a30;"));

  lblInfo2_ = new QLabel(this);
  lblInfo2_->setObjectName(QStringLiteral("LblInfo2"));
  lblInfo2_->setGeometry(40, 96, 300, 20);
  QFont bold = lblInfo2_->font();
  bold.setBold(true);
  lblInfo2_->setFont(bold);

  progressFrame_ = new QWidget(this);
  progressFrame_->setGeometry(40, 124, kProgressWidth, 14);
  imgProgress_ = new QLabel(progressFrame_);
  imgProgress_->setObjectName(QStringLiteral("ImgProgress"));
  imgProgress_->setPixmap(QPixmap::fromImage(ProgressPicture()));
  imgProgress_->setGeometry(-kProgressWidth, 0, kProgressWidth, 14);

  lblCharge_ = new QLabel(this);
  lblCharge_->setObjectName(QStringLiteral("LblCharge"));
  lblCharge_->setGeometry(40 + kProgressWidth + 6, 120, 50, 20);

  lblVerA_ = new QLabel(this);
  lblVerA_->setObjectName(QStringLiteral("LblVerA"));
  lblVerA_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  lblVerA_->setGeometry(kStartWidth - 180, kStartHeight - 30, 164, 18);
  lblVerA_->setStyleSheet(QStringLiteral("color: #5a4a30;"));
  Refresh();
}

void StartupWindow::Refresh() {
  const Frm11Dem::View& v = model_.view();
  SetText(lblInfo2_, ModelText(v.LblInfo2));
  if (lblInfo2_->font().bold() != v.LblInfo2Bold) {
    QFont f = lblInfo2_->font();
    f.setBold(v.LblInfo2Bold);
    lblInfo2_->setFont(f);
  }
  SetText(lblCharge_, ModelText(v.LblCharge));
  SetText(lblVerA_, ModelText(v.LblVerA));
  imgProgress_->move(v.ImgProgressLeft / kTwipsPerPixel, 0);
  SetPointer(this, v.pointer);
  if (!placed_) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const FormPlace place = StartFormPlace(screen.width() * kTwipsPerPixel, screen.height() * kTwipsPerPixel,
                                           width() * kTwipsPerPixel, height() * kTwipsPerPixel);
    move(screen.left() + place.left / kTwipsPerPixel, screen.top() + place.top / kTwipsPerPixel);
    placed_ = true;
  }
  const bool visible = v.visible && !v.unloaded;
  if (isVisible() != visible) setVisible(visible);
  if (visible) repaint();
}

void StartupWindow::mousePressEvent(QMouseEvent* event) {
  // The window moves when dragged by its background.
  if (event->button() == Qt::LeftButton && windowHandle()) windowHandle()->startSystemMove();
}

void StartupWindow::closeEvent(QCloseEvent* event) {
  // The loading runs to its end; the window goes when the next one comes.
  event->ignore();
}

void StartupWindow::paintEvent(QPaintEvent*) {
  QPainter p(this);
  QLinearGradient ground(0, 0, 0, height());
  ground.setColorAt(0, QColor(252, 246, 228));
  ground.setColorAt(1, QColor(236, 222, 186));
  p.fillRect(rect(), ground);
  p.setPen(QPen(QColor(120, 90, 50), 2));
  p.drawRect(rect().adjusted(1, 1, -1, -1));
  p.setPen(QColor(160, 130, 90));
  p.drawRect(progressFrame_->geometry().adjusted(-2, -2, 1, 1));
}

// ---------------------------------------------------------------- FrmEcranResol

ScreenCheckWindow::ScreenCheckWindow(FrmEcranResol& model, const QString& startDirectory)
    : QDialog(nullptr), model_(model) {
  setObjectName(QStringLiteral("FrmEcranResol"));
  setWindowTitle(QStringLiteral("Ostrane"));
  auto* layout = new QVBoxLayout(this);
  auto* heading = new QLabel(ModelText(FrmEcranResol::kText1), this);
  QFont big = heading->font();
  big.setBold(true);
  big.setPointSizeF(big.pointSizeF() * 1.15);
  heading->setFont(big);
  heading->setStyleSheet(QStringLiteral("color: #940000;"));
  layout->addWidget(heading);
  auto* text2 = new QLabel(ModelText(FrmEcranResol::kText2), this);
  text2->setWordWrap(true);
  layout->addWidget(text2);
  auto* text3 = new QLabel(ModelText(FrmEcranResol::kText3), this);
  text3->setWordWrap(true);
  layout->addWidget(text3);
  rtb1_ = new QTextBrowser(this);
  rtb1_->setObjectName(QStringLiteral("Rtb1"));
  rtb1_->setOpenExternalLinks(true);
  rtb1_->setHtml(RtfToHtml(ReadDocument(startDirectory, QString::fromUtf8(FrmEcranResol::kDocument))));
  rtb1_->setMinimumHeight(190);
  layout->addWidget(rtb1_, 1);
  chkResolution_ = new QCheckBox(ModelText(FrmEcranResol::kChkResolution), this);
  chkResolution_->setObjectName(QStringLiteral("ChkResolution"));
  layout->addWidget(chkResolution_);
  auto* row = new QHBoxLayout;
  lblVer_ = new QLabel(this);
  lblVer_->setStyleSheet(QStringLiteral("color: #606060;"));
  row->addWidget(lblVer_);
  row->addStretch(1);
  cmdContinuer_ = new QPushButton(QStringLiteral("Continuer"), this);
  cmdContinuer_->setObjectName(QStringLiteral("CmdContinuer"));
  cmdQuitter_ = new QPushButton(QStringLiteral("Quitter"), this);
  cmdQuitter_->setObjectName(QStringLiteral("CmdQuitter"));
  cmdContinuer_->setDefault(true);
  row->addWidget(cmdContinuer_);
  row->addWidget(cmdQuitter_);
  layout->addLayout(row);
  resize(520, 440);

  connect(chkResolution_, &QCheckBox::clicked, this, [this](bool ticked) {
    model_.ChkResolution_Click(ticked);
    Refresh();
  });
  connect(cmdContinuer_, &QPushButton::clicked, this, [this] {
    model_.CmdContinuer_Click();
    Refresh();
  });
  connect(cmdQuitter_, &QPushButton::clicked, this, [this] { model_.CmdQuitter_Click(); });
  Refresh();
}

void ScreenCheckWindow::Refresh() {
  const FrmEcranResol::View& v = model_.view();
  if (!v.Caption.empty()) setWindowTitle(ModelText(v.Caption));
  SetText(lblVer_, ModelText(v.LblVer));
  if (chkResolution_->isChecked() != v.ChkResolution) chkResolution_->setChecked(v.ChkResolution);
  const bool visible = v.visible && !v.unloaded;
  if (visible && !isVisible()) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    CentreOnScreen(this, ScreenCheckTop(screen.height() * kTwipsPerPixel, height() * kTwipsPerPixel) / kTwipsPerPixel);
    show();
  } else if (!visible && isVisible()) {
    hide();
  }
}

void ScreenCheckWindow::closeEvent(QCloseEvent* event) {
  // The close box ends the program, as the hidden Foc does.
  event->ignore();
  if (!model_.view().unloaded) model_.Foc_Click();
}

void ScreenCheckWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    model_.Foc_Click();
    return;
  }
  QDialog::keyPressEvent(event);
}

// ---------------------------------------------------------------- FrmPartie

GameNameWindow::GameNameWindow(FrmPartie& model) : QDialog(nullptr), model_(model) {
  setObjectName(QStringLiteral("FrmPartie"));
  setWindowTitle(QStringLiteral("Ostrane"));
  auto* layout = new QVBoxLayout(this);
  layout->setSpacing(8);

  auto* title = new QLabel(this);
  title->setPixmap(TitleTiles(QStringLiteral("ostrane")));
  title->setAlignment(Qt::AlignCenter);
  layout->addWidget(title);
  auto* explanation = new QLabel(ModelText(FrmPartie::kExplanation1) + QLatin1Char('\n') +
                                     ModelText(FrmPartie::kExplanation2),
                                 this);
  explanation->setAlignment(Qt::AlignCenter);
  explanation->setStyleSheet(QStringLiteral("color: #404040;"));
  layout->addWidget(explanation);

  auto* nameBox = new QGroupBox(this);
  auto* nameRow = new QHBoxLayout(nameBox);
  lbl0_ = new QLabel(nameBox);
  lbl0_->setObjectName(QStringLiteral("Lbl0"));
  QFont bold = lbl0_->font();
  bold.setBold(true);
  lbl0_->setFont(bold);
  txtNom_ = new QLineEdit(nameBox);
  txtNom_->setObjectName(QStringLiteral("TxtNom"));
  txtNom_->setMaxLength(FrmPartie::kMaxNameLength);
  txtNom_->setMinimumWidth(200);
  nameRow->addWidget(lbl0_);
  nameRow->addWidget(txtNom_, 1);
  layout->addWidget(nameBox);

  auto* optionsBox = new QGroupBox(QStringLiteral("Options"), this);
  auto* options = new QVBoxLayout(optionsBox);
  const char* const captions[5] = {FrmPartie::kChkMess, FrmPartie::kChkSons, FrmPartie::kChrDuree,
                                   FrmPartie::kChkDef23, FrmPartie::kChkCadre};
  const char* const names[5] = {"ChkMess", "ChkSons", "ChrDuree", "ChkDef23", "ChkCadre"};
  for (int i = 0; i < 5; ++i) {
    checks_[size_t(i)] = new QCheckBox(ModelText(captions[i]), optionsBox);
    checks_[size_t(i)]->setObjectName(QString::fromLatin1(names[i]));
    options->addWidget(checks_[size_t(i)]);
    connect(checks_[size_t(i)], &QCheckBox::clicked, this, [this, i](bool ticked) {
      model_.Check_Click(static_cast<FrmPartie::Check>(i), ticked);
      Refresh();
    });
  }
  layout->addWidget(optionsBox);

  auto* boardBox = new QGroupBox(QStringLiteral("Plateau"), this);
  auto* boards = new QHBoxLayout(boardBox);
  for (int i = 0; i < 3; ++i) {
    auto* column = new QVBoxLayout;
    auto* thumb = new QLabel(boardBox);
    const QImage& board = view::FaceSet::Shared().Plateau(i + 2);
    const int side = 96 * int(board.devicePixelRatio());
    QImage small = board.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    small.setDevicePixelRatio(board.devicePixelRatio());
    thumb->setPixmap(QPixmap::fromImage(small));
    thumb->setAlignment(Qt::AlignCenter);
    optAff_[size_t(i)] = new QRadioButton(ModelText(FrmPartie::kOptAff[i]), boardBox);
    optAff_[size_t(i)]->setObjectName(QStringLiteral("OptAff%1").arg(i + 2));
    column->addWidget(thumb);
    column->addWidget(optAff_[size_t(i)], 0, Qt::AlignHCenter);
    boards->addLayout(column);
    connect(optAff_[size_t(i)], &QRadioButton::clicked, this, [this, i] {
      model_.OptAff_Click(i + 2);
      Refresh();
    });
  }
  layout->addWidget(boardBox);

  auto* row = new QHBoxLayout;
  cmdDefaut_ = new QPushButton(QStringLiteral("Options par défaut"), this);
  cmdDefaut_->setObjectName(QStringLiteral("CmdDefaut"));
  cmdQ_ = new QPushButton(QStringLiteral("Commencer"), this);
  cmdQ_->setObjectName(QStringLiteral("CmdQ"));
  for (QPushButton* b : {cmdDefaut_, cmdQ_}) b->setAutoDefault(false);
  row->addWidget(cmdDefaut_);
  row->addStretch(1);
  row->addWidget(cmdQ_);
  layout->addLayout(row);

  connect(txtNom_, &QLineEdit::textEdited, this, [this](const QString& text) {
    model_.TxtNom_Change(text.toStdString());
    Refresh();
  });
  connect(cmdDefaut_, &QPushButton::clicked, this, [this] {
    model_.CmdDefaut_Click();
    Refresh();
  });
  connect(cmdQ_, &QPushButton::clicked, this, [this] {
    model_.CmdQ_Click();
    Refresh();
  });
  Refresh();
}

QCheckBox* GameNameWindow::Check(FrmPartie::Check box) const { return checks_[size_t(box)]; }

void GameNameWindow::Refresh() {
  const FrmPartie::View& v = model_.view();
  const QString name = ModelText(v.TxtNom);
  if (txtNom_->text() != name) {
    const int cursor = std::min(txtNom_->cursorPosition(), int(name.size()));
    txtNom_->setText(name);
    txtNom_->setCursorPosition(cursor);
  }
  SetText(lbl0_, ModelText(v.Lbl0));
  SetEnabled(cmdQ_, v.CmdQEnabled);
  const bool ticks[5] = {v.ChkMess, v.ChkSons, v.ChrDuree, v.ChkDef23, v.ChkCadre};
  for (int i = 0; i < 5; ++i)
    if (checks_[size_t(i)]->isChecked() != ticks[i]) checks_[size_t(i)]->setChecked(ticks[i]);
  for (int i = 0; i < 3; ++i) {
    QRadioButton* b = optAff_[size_t(i)];
    const bool on = v.OptAff == i + 2;
    if (b->isChecked() != on) {
      b->setAutoExclusive(false);  // lets "none selected" be shown too
      b->setChecked(on);
      b->setAutoExclusive(true);
    }
  }
  const bool visible = v.visible && !v.unloaded;
  if (visible && !isVisible()) {
    adjustSize();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    CentreOnScreen(this, (screen.height() - height()) / 2);
    show();
    raise();
    activateWindow();
  } else if (!visible && isVisible()) {
    hide();
  }
  // The focus moves when the form moves it, not at every refresh.
  if (visible && v.focus != appliedFocus_) {
    appliedFocus_ = v.focus;
    if (v.focus == FrmPartie::Focus::TxtNom) {
      txtNom_->setFocus();
      txtNom_->selectAll();
    } else if (v.focus == FrmPartie::Focus::CmdFoc) {
      setFocus();
    }
  }
}

void GameNameWindow::closeEvent(QCloseEvent* event) {
  // Closing the form is its unload: the options are taken and the game opens.
  event->ignore();
  if (!model_.view().unloaded) model_.Form_Unload();
}

void GameNameWindow::keyPressEvent(QKeyEvent* event) {
  // Enter is the hidden default button CmdFoc, wherever the focus is.
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    model_.CmdFoc_Click();
    Refresh();
    return;
  }
  if (event->key() == Qt::Key_Escape) return;  // the form has no cancel
  QDialog::keyPressEvent(event);
}

}  // namespace ostrane::gui
