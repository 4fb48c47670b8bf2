#include "app/gui/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QFrame>
#include <QGridLayout>
#include <QGuiApplication>
#include <QScreen>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QRubberBand>
#include <QScrollBar>
#include <QStyle>
#include <QTimer>
#include <QToolButton>

#include <algorithm>

#include "board_view/faces.h"
#include "game/layout.h"
#include "records/program.h"

namespace ostrane::gui {
namespace {

using namespace layout;

// The side panel, right of the separator and above the rack.
constexpr int kPanelLeft = 576;
constexpr int kPanelWidth = kFormWidth - kPanelLeft - 12;  // 258
constexpr int kButtonHeight = 25;
constexpr int kButtonPitch = 29;
constexpr int kButtonsTop = 358;
constexpr int kHalf = (kPanelWidth - 4) / 2;

// The word check under the board.
constexpr int kCheckTop = kPlateauTop + kPlateauHeight + 5;  // 562

const QColor kInk(40, 32, 20);
const QColor kPanelGround(250, 244, 228);
const QColor kBrownLine(150, 120, 80);

QFont Sized(const QFont& base, double points, bool bold = false) {
  QFont f = base;
  f.setPointSizeF(points);
  f.setBold(bold);
  return f;
}

QLabel* MakeLabel(QWidget* parent, const QRect& geometry, const QFont& font, Qt::Alignment align = Qt::AlignLeft | Qt::AlignVCenter,
                  const char* name = nullptr) {
  auto* label = new QLabel(parent);
  label->setGeometry(geometry);
  label->setFont(font);
  label->setAlignment(align);
  if (name) label->setObjectName(QString::fromLatin1(name));
  return label;
}

QPushButton* MakeButton(QWidget* parent, const QRect& geometry, const QString& caption, const char* name) {
  auto* button = new QPushButton(caption, parent);
  button->setGeometry(geometry);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoDefault(false);
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

int QtButtonNumber(Qt::MouseButton button) {
  switch (button) {
    case Qt::LeftButton: return 1;
    case Qt::RightButton: return 2;
    case Qt::MiddleButton: return 4;
    default: return 0;
  }
}

// The background of the client area: a felt ground, the frame of the board
// with its row letters and column numbers, the separator, the rack's bed.
class ClientArea : public QWidget {
 public:
  explicit ClientArea(QWidget* parent) : QWidget(parent) {
    setFixedSize(kFormWidth, kFormHeight);
    setObjectName(QStringLiteral("Client"));
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    QLinearGradient ground(0, 0, kFormWidth, kFormHeight);
    ground.setColorAt(0, QColor(238, 228, 204));
    ground.setColorAt(1, QColor(224, 210, 180));
    p.fillRect(rect(), ground);
    // The board's frame: a dark edge round Plateau1.
    const QRect board(kPlateauLeft, kPlateauTop, kPlateauWidth, kPlateauHeight);
    p.fillRect(board.adjusted(-3, -3, 3, 3), QColor(92, 64, 36));
    // Row letters on the left, column numbers on top, in the margins the
    // board leaves; the board itself does not move for them.
    QFont f = font();
    f.setPointSizeF(7);
    f.setBold(true);
    p.setFont(f);
    p.setPen(QColor(110, 84, 50));
    for (int i = 0; i < kSquares; ++i) {
      const int centre = kPitch * i + 2 + kTileWidth / 2;
      p.drawText(QRect(0, kPlateauTop + centre - 8, kPlateauLeft - 3, 16), Qt::AlignCenter, QString(QChar('A' + i)));
      p.drawText(QRect(kPlateauLeft + centre - 12, 0, 24, kPlateauTop - 3), Qt::AlignHCenter | Qt::AlignBottom,
                 QString::number(i + 1));
    }
    // The separator between the board side and the side panel.
    p.setPen(QPen(QColor(170, 145, 105), 1));
    p.drawLine(kSeparatorX, 6, kSeparatorX, kFormHeight - 6);
    p.setPen(QPen(QColor(250, 244, 230), 1));
    p.drawLine(kSeparatorX + 1, 6, kSeparatorX + 1, kFormHeight - 6);
  }
};

// Refuses the player's input to one window while it says so: presses,
// releases, moves, the wheel, keys, shortcuts, drops. It watches the whole
// application, so that nothing sent to a child of the window slips past;
// the window's timers, painting and other windows are left alone.
class InputGate : public QObject {
 public:
  InputGate(QWidget* window, std::function<bool()> refused)
      : QObject(window), window_(window), refused_(std::move(refused)) {
    QCoreApplication::instance()->installEventFilter(this);
  }
  ~InputGate() override { QCoreApplication::instance()->removeEventFilter(this); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::MouseMove:
      case QEvent::Wheel:
      case QEvent::KeyPress:
      case QEvent::KeyRelease:
      case QEvent::ShortcutOverride:
      case QEvent::Shortcut:
      case QEvent::ContextMenu:
      case QEvent::InputMethod:
      case QEvent::DragEnter:
      case QEvent::DragMove:
      case QEvent::Drop:
      case QEvent::TouchBegin:
      case QEvent::TouchUpdate:
      case QEvent::TouchEnd:
      case QEvent::TabletPress:
      case QEvent::TabletRelease:
        break;
      default:
        return false;
    }
    if (!watched->isWidgetType() || static_cast<QWidget*>(watched)->window() != window_) return false;
    return refused_();
  }

 private:
  QWidget* window_;
  std::function<bool()> refused_;
};

// The rack PicReglette: a wooden strip with its seven places.
class Reglette : public QWidget {
 public:
  explicit Reglette(QWidget* parent) : QWidget(parent) {
    setGeometry(kRegletteLeft, kRegletteTop, kRegletteWidth, kRegletteHeight);
    setObjectName(QStringLiteral("PicReglette"));
    setAccessibleName(QStringLiteral("Chevalet"));
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    QLinearGradient wood(0, 0, 0, height());
    wood.setColorAt(0, QColor(176, 124, 70));
    wood.setColorAt(1, QColor(120, 78, 40));
    p.fillRect(rect(), wood);
    p.setPen(QColor(80, 50, 24));
    p.drawRect(rect().adjusted(0, 0, -1, -1));
    p.setPen(QColor(150, 104, 58));
    for (int place = 0; place < kRackPlaces; ++place) {
      const QRect slot(kPasJeton * place + 2, 2, kTileWidth, kTileHeight);
      p.drawRect(slot.adjusted(0, 0, -1, -1));
    }
  }
};

// The card of the score, the draw number and the clock.
class Card : public QWidget {
 public:
  using QWidget::QWidget;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(kBrownLine, 1));
    p.setBrush(kPanelGround);
    p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
  }
};

}  // namespace

// ================================================================ the board

BoardWidget::BoardWidget(FrmPlateau& model, QWidget* parent)
    : QWidget(parent), model_(model) {
  // Drawn at the resolution of the faces (twice as many pixels on a
  // high-density screen), shown on the same logical pixels.
  const int scale = view::FaceSet::Shared().Scale();
  plateau1_ = QImage(kPlateauWidth * scale, kPlateauHeight * scale, QImage::Format_RGB32);
  plateau1_.setDevicePixelRatio(scale);
  setObjectName(QStringLiteral("Plateau1"));
  setAccessibleName(QStringLiteral("Plateau"));
  setGeometry(kPlateauLeft, kPlateauTop, kPlateauWidth, kPlateauHeight);
  plateau1_.fill(QColor(0, 110, 80));
  imgXY_ = new QLabel(this);
  imgXY_->setObjectName(QStringLiteral("ImgXY"));
  imgXY_->setPixmap(QPixmap::fromImage(view::FaceSet::Shared().ArrowHorizontal()));
  imgXY_->setFixedSize(kImgXYWidth, kImgXYHeight);
  imgXY_->setAttribute(Qt::WA_TransparentForMouseEvents);
  imgXY_->setAccessibleName(QStringLiteral("Première lettre, mot horizontal"));
  imgXY_->hide();
}

void BoardWidget::Render() {
  const FrmPlateau::BoardPicture& picture = model_.Plateau;
  view::DrawGrille(
      plateau1_, picture.image,
      [&picture](int column, int row) { return picture.Square(column, row); }, painters_);
  revision_ = picture.revision;
}

void BoardWidget::Refresh() {
  bool dirty = false;
  if (model_.Plateau.revision != revision_) {
    Render();
    dirty = true;
  }
  const auto sameLine = [](const Line& a, const Line& b) {
    return a.visible == b.visible && a.x1 == b.x1 && a.y1 == b.y1 && a.x2 == b.x2 && a.y2 == b.y2;
  };
  if (!sameLine(linVx_, model_.LinVx) || !sameLine(linVy_, model_.LinVy)) {
    linVx_ = model_.LinVx;
    linVy_ = model_.LinVy;
    dirty = true;
  }
  if (model_.ImgXYPicture != arrow_) {
    arrow_ = model_.ImgXYPicture;
    const view::FaceSet& faces = view::FaceSet::Shared();
    const bool down = arrow_ == FrmPlateau::Arrow::ImgClassicVer;
    imgXY_->setPixmap(QPixmap::fromImage(down ? faces.ArrowVertical() : faces.ArrowHorizontal()));
    imgXY_->setAccessibleName(down ? QStringLiteral("Première lettre, mot vertical")
                                   : QStringLiteral("Première lettre, mot horizontal"));
  }
  if (imgXY_->pos() != QPoint(model_.ImgXYLeft, model_.ImgXYTop)) imgXY_->move(model_.ImgXYLeft, model_.ImgXYTop);
  SetVisible(imgXY_, model_.ImgXY.visible);
  if (dirty) update();
}

void BoardWidget::SetGhost(std::vector<Ghost> ghost) {
  ghost_ = std::move(ghost);
  update();
}

void BoardWidget::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.drawImage(0, 0, plateau1_);
  // A play shown from the analysis: pale faces and a dashed outline.
  for (const Ghost& g : ghost_) {
    const TileFace face{g.blank ? TileFace::Picture::ImgJok : TileFace::Picture::ImgLet, g.letter - 'A',
                        g.blank ? TileFace::Tint::DarkRed : TileFace::Tint::None};
    const QRect square(layout::SquareX(g.column), layout::SquareY(g.row), kTileWidth, kTileHeight);
    p.setOpacity(0.6);
    p.drawImage(square.topLeft(), view::FaceImage(face));
    p.setOpacity(1.0);
    p.setPen(QPen(QColor(0, 54, 184), 2, Qt::DashLine));
    p.setBrush(Qt::NoBrush);
    p.drawRect(square.adjusted(1, 1, -1, -1));
  }
  // The guide lines through the first square of the proposed play.
  p.setPen(QPen(QColor(220, 0, 0, 200), 2, Qt::DashLine));
  for (const Line* line : {&linVx_, &linVy_})
    if (line->visible) p.drawLine(line->x1, line->y1, line->x2, line->y2);
}

// ================================================================ a tile

namespace {
// What a tile is called for assistive tools: "Jeton A", "Jeton joker", and
// "Jeton joker E" for a blank given its letter.
QString TileName(const std::string& tag) {
  if (tag.empty()) return QStringLiteral("Jeton");
  if (tag.size() == 1 && tag[0] >= 'a' && tag[0] <= 'z')
    return QStringLiteral("Jeton ") + QChar(tag[0] - 'a' + 'A');
  if (tag.size() == 1 && tag[0] >= 'A' && tag[0] <= 'Z') return QStringLiteral("Jeton joker ") + QChar(tag[0]);
  return QStringLiteral("Jeton joker");
}
}  // namespace

TileWidget::TileWidget(MainWindow& window, int index, QWidget* parent)
    : QWidget(parent), window_(window), index_(index) {
  setObjectName(QStringLiteral("PicGamer%1").arg(index));
  setFixedSize(kTileWidth, kTileHeight);
  setCursor(Qt::OpenHandCursor);
  hide();
}

void TileWidget::Refresh() {
  const ostrane::Tile& tile = window_.Model().PicGamer[size_t(index_)];
  if (!(tile.face == face_) || image_.isNull()) {
    face_ = tile.face;
    image_ = view::FaceImage(face_);
    update();
  }
  if (pos() != QPoint(tile.left, tile.top)) move(tile.left, tile.top);
  const QString name = TileName(tile.Tag);
  if (accessibleName() != name) setAccessibleName(name);
  SetEnabled(this, tile.enabled);
  SetVisible(this, tile.visible);
  const Qt::CursorShape shape = tile.enabled ? Qt::OpenHandCursor : Qt::ArrowCursor;
  if (cursor().shape() != shape && !window_.Drag().TimDeplaceEnabled) setCursor(shape);
}

void TileWidget::paintEvent(QPaintEvent*) {
  QPainter p(this);
  if (!image_.isNull()) p.drawImage(0, 0, image_);
}

void TileWidget::mousePressEvent(QMouseEvent* event) {
  const QPoint inWindow = mapTo(window_.Client(), event->position().toPoint());
  const QPoint inTile = event->position().toPoint();
  window_.Drag().PicGamer_MouseDown(index_, QtButtonNumber(event->button()), inTile.x(), inTile.y(), inWindow.x(),
                                    inWindow.y());
  if (window_.Drag().TimDeplaceEnabled) setCursor(Qt::ClosedHandCursor);
  window_.Refresh();
  event->accept();
}

void TileWidget::mouseMoveEvent(QMouseEvent* event) {
  TileDrag& drag = window_.Drag();
  if (!drag.TimDeplaceEnabled || drag.IntJetonTire != index_) return;
  QPoint pointer = mapTo(window_.Client(), event->position().toPoint());
  // The rack's table has seven places: a tile released with its left edge
  // 6.6 places or more from the rack's left edge would go to place 7 or 8,
  // which do not exist. The pointer is held back so that a tile never goes
  // that far right; nothing else lies in that strip of the window.
  constexpr int kFarthestLeft = kRegletteLeft + 237;  // 237 / 36 = 6.58 places: still place 6
  if (pointer.x() - drag.IntPriseX > kFarthestLeft) pointer.setX(kFarthestLeft + drag.IntPriseX);
  drag.TimDeplace_Timer(pointer.x(), pointer.y());
  Refresh();
  raise();
}

void TileWidget::mouseReleaseEvent(QMouseEvent* event) {
  const int button = QtButtonNumber(event->button());
  if (button != TileDrag::kLeftButton) return;
  setCursor(Qt::OpenHandCursor);
  window_.Forward([this] { window_.Drag().PicGamer_MouseUp(index_, TileDrag::kLeftButton); });
}

// ================================================================ tools frame

ToolsFrame::ToolsFrame(MainWindow& window, QWidget* parent) : QWidget(parent), window_(window) {
  setObjectName(QStringLiteral("FraTools"));
  setAutoFillBackground(false);
  const QFont small = Sized(font(), 7.5);
  caption_ = new QLabel(this);
  caption_->setGeometry(24, 1, kFraToolsWidth - 60, 14);
  caption_->setFont(Sized(font(), 7.5, true));
  caption_->setAttribute(Qt::WA_TransparentForMouseEvents);
  caption_->setStyleSheet(QStringLiteral("color: #f6eedc;"));

  cmdCacher_ = new QToolButton(this);
  cmdCacher_->setObjectName(QStringLiteral("CmdCacher"));
  cmdCacher_->setGeometry(1, 1, 22, 13);
  cmdCacher_->setFont(Sized(font(), 7, true));
  cmdMax_ = new QToolButton(this);
  cmdMax_->setObjectName(QStringLiteral("CmdMax"));
  cmdMax_->setGeometry(kFraToolsWidth - 34, 1, 16, 13);
  cmdMax_->setIcon(style()->standardIcon(QStyle::SP_TitleBarMaxButton));
  cmdMin_ = new QToolButton(this);
  cmdMin_->setObjectName(QStringLiteral("CmdMin"));
  cmdMin_->setGeometry(kFraToolsWidth - 17, 1, 16, 13);
  cmdMin_->setIcon(style()->standardIcon(QStyle::SP_TitleBarNormalButton));
  for (QToolButton* b : {cmdMax_, cmdMin_}) {
    b->setIconSize(QSize(10, 10));
    b->setToolButtonStyle(Qt::ToolButtonIconOnly);
  }

  const auto group = [&](const char* title, int left, int width) {
    auto* frame = new QWidget(this);
    frame->setGeometry(left, 17, width, 82);
    auto* label = new QLabel(ModelText(title), frame);
    label->setFont(Sized(font(), 7.5, true));
    label->setGeometry(4, 0, width - 4, 14);
    label->setStyleSheet(QStringLiteral("color: #1f5c44;"));
    return frame;
  };
  fra3_ = group("Pioche au départ", 3, 122);
  fra1_ = group("Jokers au 1er tirage", 126, 120);
  for (int i = 0; i < 4; ++i) {
    optPioche_[size_t(i)] = new QRadioButton(fra3_);
    optPioche_[size_t(i)]->setObjectName(QStringLiteral("OptPioche%1").arg(i));
    optPioche_[size_t(i)]->setGeometry(2, 15 + 16 * i, 120, 16);
    optPioche_[size_t(i)]->setFont(small);
    optPioche_[size_t(i)]->setProperty("fitWidth", 100);
    connect(optPioche_[size_t(i)], &QRadioButton::clicked, this,
            [this, i] { window_.Forward([this, i] { window_.Model().OptPioche_Click(i); }); });
  }
  optJok_[0] = nullptr;
  for (int i = 1; i <= 3; ++i) {
    optJok_[size_t(i)] = new QRadioButton(fra1_);
    optJok_[size_t(i)]->setObjectName(QStringLiteral("OptJok%1").arg(i));
    optJok_[size_t(i)]->setGeometry(2, 15 + 16 * (i - 1), 118, 16);
    optJok_[size_t(i)]->setFont(small);
    optJok_[size_t(i)]->setProperty("fitWidth", 98);
    connect(optJok_[size_t(i)], &QRadioButton::clicked, this,
            [this, i] { window_.Forward([this, i] { window_.Model().OptJok_Click(i); }); });
  }
  lblTpsDemarrage_ = new QLabel(this);
  lblTpsDemarrage_->setObjectName(QStringLiteral("LblTpsDemarrage"));
  lblTpsDemarrage_->setGeometry(6, kFraToolsHeight - 17, kFraToolsWidth - 12, 14);
  lblTpsDemarrage_->setFont(small);
  lblTpsDemarrage_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  lblTpsDemarrage_->setStyleSheet(QStringLiteral("color: #505050;"));
  lblTpsDemarrage_->setToolTip(QStringLiteral("Temps de chargement du dictionnaire"));

  connect(cmdCacher_, &QToolButton::clicked, this, [this] { window_.Forward([this] { window_.Model().CmdCacher_Click(); }); });
  connect(cmdMax_, &QToolButton::clicked, this, [this] { window_.Forward([this] { window_.Model().CmdMax_Click(); }); });
  connect(cmdMin_, &QToolButton::clicked, this, [this] { window_.Forward([this] { window_.Model().CmdMin_Click(); }); });
  setCursor(Qt::SizeAllCursor);
  for (QWidget* w : std::initializer_list<QWidget*>{cmdCacher_, cmdMax_, cmdMin_}) w->setCursor(Qt::ArrowCursor);
}

void ToolsFrame::Refresh() {
  FrmPlateau& m = window_.Model();
  const Frame& f = m.FraTools;
  const QRect geometry(f.left, f.top, f.width, f.height);
  if (this->geometry() != geometry) setGeometry(geometry);
  SetVisible(this, f.visible);
  SetText(caption_, ModelText(f.caption).trimmed());
  SetVisible(caption_, f.width > 60);
  Bind(cmdCacher_, m.CmdCacher);
  Bind(cmdMax_, m.CmdMax, true);
  Bind(cmdMin_, m.CmdMin, true);
  cmdMax_->setToolTip(ModelText(m.CmdMax.caption));
  cmdMin_->setToolTip(ModelText(m.CmdMin.caption));
  for (int i = 0; i < 4; ++i) {
    const OptionButton& o = m.OptPioche[size_t(i)];
    QRadioButton* b = optPioche_[size_t(i)];
    SetText(b, ModelText(o.caption));
    Bind(b, o);
    if (b->isChecked() != o.value) b->setChecked(o.value);
  }
  for (int i = 1; i <= 3; ++i) {
    const OptionButton& o = m.OptJok[size_t(i)];
    QRadioButton* b = optJok_[size_t(i)];
    SetText(b, ModelText(o.caption));
    Bind(b, o);
    if (b->isChecked() != o.value) b->setChecked(o.value);
  }
  SetText(lblTpsDemarrage_, ModelText(m.LblTpsDemarrage.text));
  // One size of type for all the options, the largest at which each fits.
  QFont font = optPioche_[0]->font();
  for (QRadioButton* b : {optPioche_[0], optPioche_[1], optPioche_[2], optPioche_[3], optJok_[1], optJok_[2], optJok_[3]}) {
    const int width = b->property("fitWidth").toInt();
    while (font.pointSizeF() > 6 && QFontMetrics(font).horizontalAdvance(b->text()) > width)
      font.setPointSizeF(font.pointSizeF() - 0.25);
  }
  for (QRadioButton* b : {optPioche_[0], optPioche_[1], optPioche_[2], optPioche_[3], optJok_[1], optJok_[2], optJok_[3]})
    if (b->font() != font) b->setFont(font);
}

void ToolsFrame::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(QPen(QColor(60, 40, 20), 1));
  p.setBrush(QColor(250, 244, 228, 238));
  p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(92, 64, 36));
  p.drawRoundedRect(QRectF(0, 0, width(), 15), 4, 4);
  p.drawRect(QRectF(0, 8, width(), 7));
}

void ToolsFrame::mousePressEvent(QMouseEvent* event) {
  // The frame is carried by a drag of its background and goes where it is
  // dropped on the board.
  if (event->button() != Qt::LeftButton) return;
  pressAt_ = event->position().toPoint();
  dragging_ = true;
  if (!outline_) outline_ = new QRubberBand(QRubberBand::Rectangle, window_.Client());
  outline_->setGeometry(geometry());
  outline_->show();
  outline_->raise();
}

void ToolsFrame::mouseMoveEvent(QMouseEvent* event) {
  if (!dragging_ || !outline_) return;
  const QPoint at = mapTo(window_.Client(), event->position().toPoint());
  outline_->move(at);
}

void ToolsFrame::mouseReleaseEvent(QMouseEvent* event) {
  if (!dragging_) return;
  dragging_ = false;
  if (outline_) outline_->hide();
  const QPoint inBoard = window_.Board()->mapFrom(window_.Client(), mapTo(window_.Client(), event->position().toPoint()));
  if (window_.Board()->rect().contains(inBoard) && (event->position().toPoint() - pressAt_).manhattanLength() > 3)
    window_.Forward([this, inBoard] { window_.Model().Plateau1_DragDrop(inBoard.x(), inBoard.y()); });
}

// ================================================================ the window

MainWindow::MainWindow(FrmPlateau& model) : QWidget(nullptr), model_(model), drag_(model) {
  setObjectName(QStringLiteral("FrmPlateau"));
  setWindowTitle(QStringLiteral("Ostrane"));
  setWindowIcon(QIcon(QPixmap::fromImage(view::FaceSet::Shared().Icon())));
  {
    // The ground right of and below the client area when the window is
    // larger (maximised).
    QPalette pal = palette();
    pal.setColor(QPalette::Window, QColor(206, 190, 156));
    setPalette(pal);
    setAutoFillBackground(true);
  }
  // The client area keeps its size and its place at the window's top-left
  // corner: nothing of the form's layout follows a maximise.
  auto* outer = new QGridLayout(this);
  outer->setContentsMargins(0, 0, 0, 0);
  client_ = new ClientArea(this);
  outer->addWidget(client_, 0, 0, Qt::AlignLeft | Qt::AlignTop);
  setMinimumSize(kFormWidth, kFormHeight);
  resize(kFormWidth, kFormHeight);

  board_ = new BoardWidget(model_, client_);
  reglette_ = new Reglette(client_);
  BuildSidePanel();
  BuildWordCheck();
  tools_ = new ToolsFrame(*this, client_);
  BuildPanels();
  for (int i = 0; i < 7; ++i) tiles_[size_t(i)] = new TileWidget(*this, i, client_);

  // While the form is disabled (a search runs) or pausing it takes no input,
  // and its controls keep their look: the gate refuses what is sent to any
  // of its widgets, the blocker keeps the pointer off them.
  blocker_ = new QWidget(client_);
  blocker_->setGeometry(client_->rect());
  blocker_->hide();
  gate_ = new InputGate(this, [this] { return InputRefused(); });

  // Foc: where the commands send the focus, out of the word box. It shows
  // nothing and Tab never lands on it.
  foc_ = new QWidget(client_);
  foc_->setObjectName(QStringLiteral("Foc"));
  foc_->setGeometry(0, 0, 0, 0);
  foc_->setFocusPolicy(Qt::NoFocus);

  model_.changed = [this] { Refresh(); };
  Refresh();
}

MainWindow::~MainWindow() { model_.changed = nullptr; }

void MainWindow::BuildSidePanel() {
  const QFont base = font();
  lblNomP_ = MakeLabel(client_, QRect(kPanelLeft, 6, kPanelWidth, 22), Sized(base, 11, true),
                       Qt::AlignLeft | Qt::AlignVCenter, "LblNomP");
  lblNomP_->setStyleSheet(QStringLiteral("color: #1f5c44;"));

  auto* card = new Card(client_);
  card->setGeometry(kPanelLeft, 31, kPanelWidth, 54);
  const QFont caption = Sized(base, 7.5);
  MakeLabel(card, QRect(10, 3, 80, 13), caption)->setText(QStringLiteral("Score"));
  lblPtsJoueur_ = MakeLabel(card, QRect(8, 15, 100, 36), Sized(base, 21, true), Qt::AlignLeft | Qt::AlignVCenter,
                            "LblPtsJoueur");
  lblPtsJoueur_->setStyleSheet(QStringLiteral("color: #940000;"));
  MakeLabel(card, QRect(112, 3, 60, 13), caption, Qt::AlignHCenter | Qt::AlignVCenter)->setText(QStringLiteral("Tirage"));
  lblTirage_ = MakeLabel(card, QRect(112, 17, 60, 30), Sized(base, 14, true), Qt::AlignCenter, "LblTirage");
  MakeLabel(card, QRect(176, 3, 76, 13), caption, Qt::AlignHCenter | Qt::AlignVCenter)->setText(QStringLiteral("Durée"));
  lblDuree_ = MakeLabel(card, QRect(176, 17, 76, 30), Sized(base, 11, true), Qt::AlignCenter, "LblDuree");
  lblDuree_->setToolTip(QStringLiteral("Durée de la partie"));

  MakeLabel(client_, QRect(kPanelLeft + 2, 88, kPanelWidth, 14), Sized(base, 7.5, true))
      ->setText(QStringLiteral("Historique"));
  txtHisto_ = new QPlainTextEdit(client_);
  txtHisto_->setObjectName(QStringLiteral("TxtHisto"));
  txtHisto_->setGeometry(kPanelLeft, 103, kPanelWidth, 98);
  txtHisto_->setReadOnly(true);
  txtHisto_->setFont(FixedFont(9));
  txtHisto_->setLineWrapMode(QPlainTextEdit::NoWrap);
  txtHisto_->setFocusPolicy(Qt::NoFocus);
  txtHisto_->setStyleSheet(QStringLiteral("QPlainTextEdit { background: #fffdf6; color: #282014; }"));

  lblIndic_ = MakeLabel(client_, QRect(kPanelLeft, 206, kPanelWidth, 58), Sized(base, 8.5, true),
                        Qt::AlignLeft | Qt::AlignVCenter, "LblIndic");
  lblIndic_->setWordWrap(true);
  lblIndic_->setMargin(5);
  lblIndic_->setFrameShape(QFrame::StyledPanel);
  lblIndic_->setAutoFillBackground(true);
  {
    QPalette pal = lblIndic_->palette();
    pal.setColor(QPalette::Window, QColor(255, 255, 214));
    lblIndic_->setPalette(pal);
  }

  lblSolution_ = MakeLabel(client_, QRect(kPanelLeft, 268, 150, 26), Sized(base, 10, true),
                           Qt::AlignLeft | Qt::AlignVCenter, "LblSolution");
  lblSolution_->setStyleSheet(QStringLiteral("color: #0036b8;"));
  lblPts_ = MakeLabel(client_, QRect(kPanelLeft + 150, 266, 70, 30), Sized(base, 16, true),
                      Qt::AlignRight | Qt::AlignVCenter, "LblPts");
  lblPts_->setStyleSheet(QStringLiteral("color: #0036b8;"));
  lblPtsBis_ = MakeLabel(client_, QRect(kPanelLeft + 224, 272, 34, 22), Sized(base, 9), Qt::AlignLeft | Qt::AlignVCenter,
                         "LblPtsBis");

  lblLTitre_ = MakeLabel(client_, QRect(kPanelLeft + 2, 298, kPanelWidth, 14), Sized(base, 7.5, true),
                         Qt::AlignLeft | Qt::AlignVCenter, "LblLTitre");
  lblLetReste_ = MakeLabel(client_, QRect(kPanelLeft, 312, kPanelWidth, 42), FixedFont(8.5),
                           Qt::AlignLeft | Qt::AlignTop, "LblLetReste");
  // What the values are, for assistive tools (their names are their texts).
  lblPtsJoueur_->setAccessibleDescription(QStringLiteral("Score"));
  lblTirage_->setAccessibleDescription(QStringLiteral("Tirage"));
  lblDuree_->setAccessibleDescription(QStringLiteral("Durée"));
  txtHisto_->setAccessibleDescription(QStringLiteral("Historique"));
  lblIndic_->setAccessibleDescription(QStringLiteral("Indications"));
  lblSolution_->setAccessibleDescription(QStringLiteral("Solution"));
  lblPts_->setAccessibleDescription(QStringLiteral("Points du coup"));
  lblLetReste_->setAccessibleDescription(QStringLiteral("Lettres qu'il reste à piocher"));
  lblLetReste_->setStyleSheet(QStringLiteral("color: #3c3020;"));

  int y = kButtonsTop;
  const int left = kPanelLeft, right = kPanelLeft + kHalf + 4;
  cmdNew_ = MakeButton(client_, QRect(left, y, kHalf, kButtonHeight), QString(), "CmdNew");
  cmdGame_ = MakeButton(client_, QRect(right, y, kHalf, kButtonHeight), QString(), "CmdGame");
  cmdArret_ = MakeButton(client_, QRect(right, y, kHalf, kButtonHeight), QString(), "CmdArret");
  y += kButtonPitch;
  cmdSolution_ = MakeButton(client_, QRect(left, y, kHalf, kButtonHeight), QStringLiteral("Solution"), "CmdSolution");
  cmdSolution_->setToolTip(QStringLiteral("Chercher la meilleure solution"));
  cmdValider_ = MakeButton(client_, QRect(right, y, kHalf, kButtonHeight), QString(), "CmdValider");
  QFont bold = cmdValider_->font();
  bold.setBold(true);
  cmdValider_->setFont(bold);
  y += kButtonPitch;
  cmdRanger_ = MakeButton(client_, QRect(left, y, kPanelWidth, kButtonHeight), QString(), "CmdRanger");
  y += kButtonPitch + 4;
  cmdMeilleur_ = MakeButton(client_, QRect(left, y, kHalf, kButtonHeight), QStringLiteral("Meilleurs scores"),
                            "CmdMeilleur");
  cmdChercheWeb_ = MakeButton(client_, QRect(right, y, kHalf, kButtonHeight), QString(), "CmdChercheWeb");
  y += kButtonPitch;
  cmdAide_ = MakeButton(client_, QRect(left, y, kHalf, kButtonHeight), QStringLiteral("Aide"), "CmdAide");
  cmdAbout_ = MakeButton(client_, QRect(right, y, kHalf, kButtonHeight), QStringLiteral("A propos"), "CmdAbout");
  y += kButtonPitch;
  cmdSon_ = MakeButton(client_, QRect(left, y, kHalf, kButtonHeight), QStringLiteral("Son"), "CmdSon");
  cmdSon_->setIconSize(QSize(20, 20));
  cmdQuitte_ = MakeButton(client_, QRect(right, y, kHalf, kButtonHeight), QStringLiteral("Quitter"), "CmdQuitte");

  lblVer_ = MakeLabel(client_, QRect(kPanelLeft, kRegletteTop + kRegletteHeight + 1, kPanelWidth - 4, 16),
                      Sized(base, 7), Qt::AlignRight | Qt::AlignVCenter, "LblVer");
  lblVer_->setStyleSheet(QStringLiteral("color: #806a4a;"));

  connect(cmdNew_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdNew_Click(); }); });
  connect(cmdGame_, &QPushButton::clicked, this, [this] { ForwardUnload([this] { return model_.CmdGame_Click(); }); });
  connect(cmdArret_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdArret_Click(); }); });
  connect(cmdSolution_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdSolution_Click(); }); });
  connect(cmdValider_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdValider_Click(); }); });
  connect(cmdRanger_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdRanger_Click(); }); });
  connect(cmdMeilleur_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdMeilleur_Click(); }); });
  connect(cmdChercheWeb_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdChercheWeb_Click(); }); });
  connect(cmdAide_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdAide_Click(); }); });
  connect(cmdAbout_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdAbout_Click(); }); });
  connect(cmdSon_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdSon_Click(); }); });
  connect(cmdQuitte_, &QPushButton::clicked, this, [this] { ForwardUnload([this] { return model_.CmdQuitte_Click(); }); });
}

void MainWindow::BuildWordCheck() {
  const QFont base = font();
  // Two rows under the board: the box, its count and its button, with the
  // tick box of the definitions below them; the answer on the right.
  auto* title = MakeLabel(client_, QRect(kPlateauLeft, kCheckTop, 94, 22), Sized(base, 8, true));
  title->setText(QStringLiteral("Vérifier un mot :"));
  FitFont(title, title->text(), 92);
  txtCtrl_ = new QLineEdit(client_);
  txtCtrl_->setObjectName(QStringLiteral("TxtCtrl"));
  txtCtrl_->setGeometry(kPlateauLeft + 96, kCheckTop, 124, 22);
  txtCtrl_->setMaxLength(int(FrmPlateau::kTxtCtrlMaxLength));
  // Only letters get in, also by a paste or a drop: what would bring
  // anything else is refused whole.
  txtCtrl_->setValidator(
      new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[A-Za-z]*")), txtCtrl_));
  txtCtrl_->installEventFilter(this);
  lblN_ = MakeLabel(client_, QRect(kPlateauLeft + 220, kCheckTop, 20, 22), Sized(base, 8), Qt::AlignCenter, "LblN");
  cmdCtrl_ = MakeButton(client_, QRect(kPlateauLeft + 240, kCheckTop, 62, 22), QStringLiteral("Vérifier"), "CmdCtrl");
  constexpr int kAnswerLeft = 306;
  lblA11_ = new QWidget(client_);
  lblA11_->setObjectName(QStringLiteral("LblA11"));
  lblA11_->setGeometry(kPlateauLeft + kAnswerLeft, kCheckTop, kPlateauWidth - kAnswerLeft, 36);
  lblA11_->setAutoFillBackground(true);
  lblA1_ = MakeLabel(lblA11_, QRect(5, 0, kPlateauWidth - kAnswerLeft - 8, 36), Sized(base, 8, true),
                     Qt::AlignLeft | Qt::AlignVCenter, "LblA1");
  lblA1_->setWordWrap(true);
  txtCtrl_->setAccessibleName(QStringLiteral("Vérifier un mot"));
  lblA1_->setAccessibleDescription(QStringLiteral("Réponse de la vérification"));

  const view::FaceSet& faces = view::FaceSet::Shared();
  imgA_ = new QLabel(client_);
  imgA_->setObjectName(QStringLiteral("ImgA"));
  imgA_->setPixmap(QPixmap::fromImage(faces.TickOff()));
  imgA_->setGeometry(kPlateauLeft + 2, kCheckTop + 25, 13, 13);
  imgA_->setCursor(Qt::PointingHandCursor);
  imgA_->installEventFilter(this);
  imgB_ = new QLabel(client_);
  imgB_->setObjectName(QStringLiteral("ImgB"));
  imgB_->setPixmap(QPixmap::fromImage(faces.TickOn()));
  imgB_->setGeometry(kPlateauLeft + 2, kCheckTop + 25, 13, 13);
  lblImgCaption_ = MakeLabel(client_, QRect(kPlateauLeft + 19, kCheckTop + 23, kAnswerLeft - 22, 17), Sized(base, 7.5));
  lblImgCaption_->setText(QStringLiteral("Ne pas afficher la définition des mots de 2 et 3 lettres"));
  FitFont(lblImgCaption_, lblImgCaption_->text(), kAnswerLeft - 24);

  connect(txtCtrl_, &QLineEdit::textChanged, this, [this](const QString& text) {
    if (ModelText(model_.TxtCtrl.text) == text) return;
    Forward([this, text] { model_.TxtCtrl_Change(text.toStdString()); });
  });
  connect(cmdCtrl_, &QPushButton::pressed, this, [this] { Forward([this] { model_.CmdCtrl_MouseDown(); }); });
  connect(cmdCtrl_, &QPushButton::clicked, this, [this] { Forward([this] { model_.CmdCtrl_Click(); }); });
}

void MainWindow::BuildPanels() {
  const QFont base = font();
  // PicDef: the definition of a checked word, over the foot of the board.
  picDef_ = new QFrame(client_);
  picDef_->setObjectName(QStringLiteral("PicDef"));
  picDef_->setGeometry(kPlateauLeft + 4, kPlateauTop + kPlateauHeight - 64, kPlateauWidth - 8, 58);
  static_cast<QFrame*>(picDef_)->setFrameShape(QFrame::Box);
  picDef_->setStyleSheet(QStringLiteral("QFrame#PicDef { background: #fffff0; border: 1px solid #8a7040; }"));
  lblDef_ = MakeLabel(picDef_, QRect(8, 4, 100, 16), Sized(base, 8, true), Qt::AlignLeft | Qt::AlignVCenter, "LblDef");
  lblShowDef_ = MakeLabel(picDef_, QRect(8, 4, kPlateauWidth - 24, 50), Sized(base, 9), Qt::AlignLeft | Qt::AlignTop,
                          "LblShowDef");
  lblShowDef_->setWordWrap(true);
  picDef_->hide();

  // PicWait: the waiting panel during the search, over the board.
  picWait_ = new QFrame(client_);
  picWait_->setObjectName(QStringLiteral("PicWait"));
  picWait_->setGeometry(kPlateauLeft + 111, kPlateauTop + 226, 320, 90);
  picWait_->setStyleSheet(QStringLiteral("QFrame#PicWait { background: #fffbe8; border: 2px solid #5c4024; border-radius: 8px; }"));
  for (int i = 1; i <= 3; ++i) {
    iabc_[size_t(i)] = new QLabel(picWait_);
    iabc_[size_t(i)]->setObjectName(QStringLiteral("Iabc%1").arg(i));
    iabc_[size_t(i)]->setPixmap(QPixmap::fromImage(view::FaceSet::Shared().Wait(i)));
    iabc_[size_t(i)]->setGeometry(14, 21, 48, 48);
  }
  lblWait_ = MakeLabel(picWait_, QRect(72, 10, 236, 70), Sized(base, 10, true), Qt::AlignLeft | Qt::AlignVCenter,
                       "LblWait");
  lblWait_->setWordWrap(true);
  lblWait_->setStyleSheet(QStringLiteral("color: #3c2c14;"));
  picWait_->hide();
}

void MainWindow::Forward(const std::function<void()>& command) {
  command();
  if (model_.ended) return;
  Refreshable::RefreshAll();
}

void MainWindow::ForwardUnload(const std::function<FrmPlateau::Unload()>& command) {
  const FrmPlateau::Unload next = command();
  if (next == FrmPlateau::Unload::Cancelled) {
    Refreshable::RefreshAll();
    return;
  }
  if (unload) unload(next);
}

void MainWindow::ApplyWindowState() {
  if (model_.WindowState == appliedWindowState_) return;
  appliedWindowState_ = model_.WindowState;
  if (appliedWindowState_ == 2)
    showMaximized();
  else
    showNormal();
}

void MainWindow::ApplyFocus() {
  // The window follows the model when a command moves the focus; the
  // player's own moves reach the model through the word box's focus events.
  if (model_.ActiveControl == appliedFocus_) return;
  appliedFocus_ = model_.ActiveControl;
  switch (appliedFocus_) {
    case FrmPlateau::Focus::Foc:
      foc_->setFocus(Qt::OtherFocusReason);
      break;
    case FrmPlateau::Focus::TxtHisto:
      txtHisto_->setFocus(Qt::OtherFocusReason);
      break;
    case FrmPlateau::Focus::TxtCtrl:
      if (!txtCtrl_->hasFocus()) txtCtrl_->setFocus(Qt::OtherFocusReason);
      break;
    case FrmPlateau::Focus::Other:
      break;
  }
}

void MainWindow::Refresh() {
  FrmPlateau& m = model_;
  const QString title = ModelText(m.caption);
  if (!title.isEmpty() && windowTitle() != title) setWindowTitle(title);
  blocker_->setVisible(InputRefused());
  if (InputRefused()) blocker_->raise();
  SetPointer(this, m.MousePointer);
  ApplyWindowState();
  ApplyFocus();

  board_->Refresh();

  const QColor ink = kInk;
  Bind(lblNomP_, m.LblNomP, QColor(31, 92, 68), QColor());
  Bind(lblVer_, m.LblVer, QColor(128, 106, 74), QColor());
  Bind(lblPtsJoueur_, m.LblPtsJoueur, QColor(148, 0, 0), QColor());
  Bind(lblTirage_, m.LblTirage, ink, QColor());
  Bind(lblDuree_, m.LblDuree, ink, QColor());
  Bind(lblIndic_, m.LblIndic, ink, QColor(255, 255, 214), /*followBold=*/true);
  lblIndic_->setVisible(m.LblIndic.visible);
  Bind(lblSolution_, m.LblSolution, QColor(0, 54, 184), QColor());
  Bind(lblPts_, m.LblPts, QColor(0, 54, 184), QColor());
  Bind(lblPtsBis_, m.LblPtsBis, ink, QColor());
  Bind(lblLTitre_, m.LblLTitre, QColor(31, 92, 68), QColor());
  Bind(lblLetReste_, m.LblLetReste, QColor(60, 48, 32), QColor());

  const QString history = ModelText(m.TxtHisto.text);
  if (txtHisto_->toPlainText() != history) {
    txtHisto_->setPlainText(history);
    txtHisto_->verticalScrollBar()->setValue(txtHisto_->verticalScrollBar()->maximum());
  }
  if (historyScroll_ != m.TxtHistoScroll) {
    historyScroll_ = m.TxtHistoScroll;
    txtHisto_->verticalScrollBar()->setValue(txtHisto_->verticalScrollBar()->maximum());
  }

  Bind(cmdNew_, m.CmdNew);
  Bind(cmdGame_, m.CmdGame);
  Bind(cmdArret_, m.CmdArret);
  Bind(cmdSolution_, m.CmdSolution);
  Bind(cmdValider_, m.CmdValider);
  Bind(cmdRanger_, m.CmdRanger);
  Bind(cmdMeilleur_, m.CmdMeilleur);
  Bind(cmdChercheWeb_, m.CmdChercheWeb);
  Bind(cmdAide_, m.CmdAide);
  Bind(cmdAbout_, m.CmdAbout);
  Bind(cmdSon_, m.CmdSon);
  Bind(cmdQuitte_, m.CmdQuitte);
  if (!sonShown_ || sonPicture_ != m.CmdSonPicture) {
    sonShown_ = true;
    sonPicture_ = m.CmdSonPicture;
    const view::FaceSet& faces = view::FaceSet::Shared();
    const bool on = sonPicture_ == FrmPlateau::SonPicture::ImgHP1;
    cmdSon_->setIcon(QIcon(QPixmap::fromImage(on ? faces.SoundOn() : faces.SoundOff())));
    cmdSon_->setToolTip(on ? QStringLiteral("Sons activés") : QStringLiteral("Sons désactivés"));
  }

  // The word check.
  const QString typed = ModelText(m.TxtCtrl.text);
  if (txtCtrl_->text() != typed) {
    const QSignalBlocker block(txtCtrl_);
    txtCtrl_->setText(typed);
  }
  {
    QPalette pal = txtCtrl_->palette();
    const QColor fore = ToQColor(m.TxtCtrl.foreColor, QColor(0, 0, 0));
    const QColor back = ToQColor(m.TxtCtrl.backColor, QColor(255, 255, 255));
    if (pal.color(QPalette::Text) != fore || pal.color(QPalette::Base) != back) {
      pal.setColor(QPalette::Text, fore);
      pal.setColor(QPalette::Base, back);
      txtCtrl_->setPalette(pal);
    }
  }
  Bind(txtCtrl_, m.TxtCtrl);
  Bind(cmdCtrl_, m.CmdCtrl, true);
  Bind(lblN_, m.LblN, QColor(64, 64, 64), QColor());
  Bind(lblA1_, m.LblA1, QColor(128, 128, 128), QColor());
  {
    QPalette pal = lblA11_->palette();
    const QColor back = ToQColor(m.LblA11.backColor, QColor(192, 192, 192));
    if (pal.color(QPalette::Window) != back) {
      pal.setColor(QPalette::Window, back);
      lblA11_->setPalette(pal);
    }
  }
  Bind(imgA_, m.ImgA);
  Bind(imgB_, m.ImgB);

  Bind(picDef_, m.PicDef);
  Bind(lblDef_, m.LblDef, QColor(148, 0, 0), QColor());
  Bind(lblShowDef_, m.LblShowDef, QColor(32, 32, 32), QColor());
  if (m.PicDef.visible) picDef_->raise();

  Bind(picWait_, m.PicWait);
  Bind(lblWait_, m.LblWait, QColor(60, 44, 20), QColor());
  for (int i = 1; i <= 3; ++i) SetVisible(iabc_[size_t(i)], m.Iabc[size_t(i)].visible);
  if (m.PicWait.visible) picWait_->raise();

  tools_->Refresh();

  // The tiles, above everything, in their drawing order.
  std::array<int, 7> order{0, 1, 2, 3, 4, 5, 6};
  std::stable_sort(order.begin(), order.end(),
                   [&m](int a, int b) { return m.PicGamer[size_t(a)].zOrder < m.PicGamer[size_t(b)].zOrder; });
  for (int i : order) {
    tiles_[size_t(i)]->Refresh();
    tiles_[size_t(i)]->raise();
  }
  if (InputRefused()) blocker_->raise();

  if (opened_ && isVisible() != m.visible) setVisible(m.visible);
}

void MainWindow::Open() {
  opened_ = true;
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  move(screen.left() + std::max(0, (screen.width() - width()) / 2),
       screen.top() + std::max(0, (screen.height() - height()) / 2));
  if (model_.visible) show();
  Refresh();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == txtCtrl_) {
    if (event->type() == QEvent::KeyPress) {
      auto* key = static_cast<QKeyEvent*>(event);
      if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        if (model_.CmdCtrl.isDefault && model_.CmdCtrl.enabled) cmdCtrl_->click();
        return true;
      }
      const QString text = key->text();
      if (text.size() == 1 && text[0].unicode() >= 32 && text[0].unicode() != 127) {
        const int code = text[0].unicode() < 128 ? text[0].unicode() : 255;
        const int answer = model_.TxtCtrl_KeyPress(code);
        Refresh();
        return answer == 0;  // refused: the box never sees the key
      }
    } else if (event->type() == QEvent::FocusIn) {
      if (model_.ActiveControl != FrmPlateau::Focus::TxtCtrl)
        Forward([this] { model_.SetFocus(FrmPlateau::Focus::TxtCtrl); });
    } else if (event->type() == QEvent::FocusOut) {
      // Another window or a box coming over this one leaves the focus where
      // it is: the box has it back when the window is active again.
      const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
      if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
          model_.ActiveControl == FrmPlateau::Focus::TxtCtrl)
        Forward([this] { model_.SetFocus(FrmPlateau::Focus::Other); });
    }
  } else if (watched == imgA_ && event->type() == QEvent::MouseButtonPress) {
    Forward([this] { model_.ImgA_Click(); });
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  // Closing asks the model; it answers what comes next. A disabled or
  // pausing form cannot be closed: nothing starts in the middle of a search.
  event->ignore();
  if (InputRefused()) return;
  ForwardUnload([this] { return model_.Form_Unload(); });
}

void MainWindow::Pause(int milliseconds, const std::function<void(int)>& wait) {
  ++pausing_;
  Refresh();
  if (wait) {
    wait(milliseconds);
  } else {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
  }
  --pausing_;
  Refresh();
}

}  // namespace ostrane::gui
