#pragma once
// What the widget tests put under the windows: the shared fakes (time moves
// only when the test moves it, and the windows follow each tick; a fixed
// clock; sounds, documents and yields recorded) with the real message boxes,
// answered by the test.

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QTimer>

#include "app/gui/bind.h"
#include "app/gui/qt_host.h"
#include "tests/support/fake_host.h"

namespace ostrane::test {

class RefreshingTimers : public Timers {
 public:
  std::unique_ptr<Timer> Create(std::function<void()> onTick) override {
    return manual_.Create([tick = std::move(onTick)] {
      tick();
      gui::Refreshable::RefreshAll();
    });
  }
  void Advance(int64_t milliseconds) { manual_.Advance(milliseconds); }

 private:
  ManualTimers manual_;
};

struct TestHost {
  TestHost() {
    boxes.beforeShow = [] { gui::Refreshable::RefreshAll(); };
    clock.now = DateTime{2026, 11, 23, 14, 5, 9};
  }
  gui::QtMessageBoxes boxes;
  RefreshingTimers timers;
  SetClock clock;
  RecordedSounds sounds;
  RecordedShell shell;
  CountedEvents events;
  Host host{boxes, timers, clock, sounds, shell, events};
};

// Runs `answer` on the next message box as soon as one is up, once.
inline void OnNextBox(std::function<void(QMessageBox*)> answer) {
  auto* timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, [timer, answer = std::move(answer)] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box || !box->isVisible()) return;
    timer->stop();
    timer->deleteLater();
    answer(box);
  });
  timer->start(0);
}

// Clicks the button of this caption in the next message box.
inline void AnswerNextBox(const QString& button) {
  OnNextBox([button](QMessageBox* box) {
    for (QAbstractButton* b : box->buttons())
      if (b->text() == button) b->click();
  });
}

// Where the tests leave their pictures: build/screenshots.
inline QString ScreenshotPath(const QString& name) {
  const QString dir = QStringLiteral(OSTRANE_BUILD_DIR "/screenshots");
  QDir().mkpath(dir);
  return dir + QLatin1Char('/') + name + QStringLiteral(".png");
}

}  // namespace ostrane::test
