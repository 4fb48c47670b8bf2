// ostrane: the windowed program.
#include <QApplication>
#include <QFont>

#include "app/gui/application.h"
#include "app/gui/bind.h"
#include "app/gui/qt_host.h"
#include "app/gui/single_instance.h"
#include "board_view/faces.h"
#include "lexicon/fatal.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("ostrane"));
  QApplication::setApplicationDisplayName(QStringLiteral("Ostrane"));
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
  QApplication::setWindowIcon(QIcon(QPixmap::fromImage(ostrane::view::FaceSet::Shared().Icon())));

  ostrane::gui::QtHost host;
  host.timers.afterTick = [] { ostrane::gui::Refreshable::RefreshAll(); };
  host.boxes.beforeShow = [] { ostrane::gui::Refreshable::RefreshAll(); };
  ostrane::SetFatalHandler([&host](const std::string& text) {
    host.boxes.MsgBox(text, ostrane::BoxStyle{ostrane::Buttons::Ok, ostrane::Icon::Critical, false});
  });

  ostrane::gui::SingleInstance guard;
  const bool alone = guard.Acquire();
  ostrane::gui::Application program(host.host, {});
  QObject::connect(&guard, &ostrane::gui::SingleInstance::showRequested, &program,
                   &ostrane::gui::Application::BringToFront);
  QObject::connect(&program, &ostrane::gui::Application::ended, &app, [] { QCoreApplication::exit(0); });
  if (!program.Start(!alone)) return 0;
  return QApplication::exec();
}
