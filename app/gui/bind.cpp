#include "app/gui/bind.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QPushButton>

#include <algorithm>
#include <vector>

namespace ostrane::gui {

QColor ToQColor(const Color& color, const QColor& designed) {
  switch (color.kind) {
    case Color::Kind::Designed: return designed;
    case Color::Kind::Rgb: return QColor(color.r, color.g, color.b);
    case Color::Kind::ButtonText: return QPalette().color(QPalette::ButtonText);
  }
  return designed;
}

void SetVisible(QWidget* widget, bool visible) {
  if (widget->isHidden() == visible) widget->setVisible(visible);
}

void SetEnabled(QWidget* widget, bool enabled) {
  if (widget->testAttribute(Qt::WA_ForceDisabled) == enabled) widget->setEnabled(enabled);
}

void SetText(QLabel* label, const QString& text) {
  if (label->text() != text) label->setText(text);
}

void SetText(QAbstractButton* button, const QString& text) {
  if (button->text() != text) button->setText(text);
}

void Bind(QAbstractButton* button, const Button& state, bool keepCaption) {
  SetEnabled(button, state.enabled);
  SetVisible(button, state.visible);
  if (!keepCaption && !state.caption.empty()) SetText(button, ModelText(state.caption));
  const QString tip = ModelText(state.tip);
  if (button->toolTip() != tip) button->setToolTip(tip);
  if (auto* push = qobject_cast<QPushButton*>(button)) {
    if (push->isDefault() != state.isDefault) push->setDefault(state.isDefault);
  }
}

void Bind(QLabel* label, const Label& state, const QColor& designedFore, const QColor& designedBack,
          bool followBold) {
  SetEnabled(label, state.enabled);
  SetVisible(label, state.visible);
  SetText(label, ModelText(state.text));
  const QColor fore = ToQColor(state.foreColor, designedFore);
  const QColor back = ToQColor(state.backColor, designedBack);
  QPalette palette = label->palette();
  if (palette.color(QPalette::WindowText) != fore || (back.isValid() && palette.color(QPalette::Window) != back)) {
    palette.setColor(QPalette::WindowText, fore);
    if (back.isValid()) palette.setColor(QPalette::Window, back);
    label->setPalette(palette);
    label->setAutoFillBackground(back.isValid());
  }
  if (followBold && label->font().bold() != state.bold) {
    QFont font = label->font();
    font.setBold(state.bold);
    label->setFont(font);
  }
}

void Bind(QWidget* widget, const Control& state) {
  SetEnabled(widget, state.enabled);
  SetVisible(widget, state.visible);
}

namespace {
std::vector<Refreshable*>& Living() {
  static std::vector<Refreshable*> living;
  return living;
}
}  // namespace

Refreshable::Refreshable() { Living().push_back(this); }

Refreshable::~Refreshable() {
  auto& living = Living();
  living.erase(std::remove(living.begin(), living.end(), this), living.end());
}

void Refreshable::RefreshAll() {
  // A refresh may close a window and so drop it from the list: walk a copy
  // and skip the ones gone meanwhile.
  const std::vector<Refreshable*> now = Living();
  for (Refreshable* r : now) {
    const auto& living = Living();
    if (std::find(living.begin(), living.end(), r) != living.end()) r->Refresh();
  }
}

QFont FixedFont(double pointSize) {
  QFont font(QStringLiteral("Courier New"));
  font.setStyleHint(QFont::TypeWriter);
  if (!QFontInfo(font).fixedPitch()) font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  if (pointSize > 0) font.setPointSizeF(pointSize);
  return font;
}

void FitFont(QWidget* widget, const QString& text, int width, double minPoints) {
  QFont font = widget->font();
  while (font.pointSizeF() > minPoints && QFontMetrics(font).horizontalAdvance(text) > width)
    font.setPointSizeF(font.pointSizeF() - 0.25);
  if (font != widget->font()) widget->setFont(font);
}

void SetPointer(QWidget* widget, Pointer pointer) {
  const Qt::CursorShape shape = pointer == Pointer::Hourglass ? Qt::WaitCursor : Qt::ArrowCursor;
  if (widget->cursor().shape() != shape) widget->setCursor(shape);
}

}  // namespace ostrane::gui
