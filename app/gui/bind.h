#pragma once
// Showing a model's control state on a Qt widget. The models hold every
// control as plain values (game/controls.h); these helpers copy them onto
// widgets, touching a widget only where something changed.

#include <QAbstractButton>
#include <QColor>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QPlainTextEdit>
#include <QString>
#include <QWidget>

#include <string>

#include "app/gui/qt_host.h"
#include "game/controls.h"
#include "records/form_link.h"

namespace ostrane::gui {

// A model colour, or `designed` when the model keeps the control's own.
QColor ToQColor(const Color& color, const QColor& designed);

void SetVisible(QWidget* widget, bool visible);
void SetEnabled(QWidget* widget, bool enabled);
void SetText(QLabel* label, const QString& text);
void SetText(QAbstractButton* button, const QString& text);

// Enabled, visible, caption (unless `keepCaption`), tip and default.
void Bind(QAbstractButton* button, const Button& state, bool keepCaption = false);
// Enabled, visible, text and colours; the weight too when `followBold` (the
// labels whose weight the form changes), else the label keeps its own.
void Bind(QLabel* label, const Label& state, const QColor& designedFore, const QColor& designedBack,
          bool followBold = false);
void Bind(QWidget* widget, const Control& state);

// A window that shows a model. Every living one is refreshed after each tick
// of a model's timer and before each modal box, so that what a timer or a
// command changed is on the screen.
class Refreshable {
 public:
  Refreshable();
  virtual ~Refreshable();
  Refreshable(const Refreshable&) = delete;
  Refreshable& operator=(const Refreshable&) = delete;
  virtual void Refresh() = 0;
  static void RefreshAll();
};

// A fixed-width font for the columns of the history and the best scores.
QFont FixedFont(double pointSize = 0);

// Makes the widget's font smaller, if need be, so that `text` fits in
// `width` pixels on one line (never below `minPoints`).
void FitFont(QWidget* widget, const QString& text, int width, double minPoints = 6.0);

// The pointer a form asks for.
void SetPointer(QWidget* widget, Pointer pointer);

}  // namespace ostrane::gui
