// ostrane: the windowed program.
#include <QApplication>
#include <QFont>

#include <QDir>
#include <QStandardPaths>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "app/gui/application.h"
#include "app/gui/bind.h"
#include "app/gui/data_folder.h"
#include "app/gui/french.h"
#include "app/gui/qt_host.h"
#include "app/gui/single_instance.h"
#include "board_view/faces.h"
#include "lexicon/fatal.h"

namespace {

constexpr const char* kNoDisplay =
    "Ostrane a besoin d'une session graphique : aucun affichage n'est disponible. "
    "(L'outil ostrane-cli, lui, fonctionne sans affichage.)";

[[noreturn]] void EndWithoutDisplay() {
  std::fprintf(stderr, "%s\n", kNoDisplay);
  std::fflush(stderr);
  std::_Exit(1);
}

// Before the window system is reached: with the usual platforms and no
// display named, say so in a sentence rather than let the toolkit abort.
void CheckForADisplay() {
  const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
  const bool desktop = platform.isEmpty() || platform.startsWith("xcb") || platform.startsWith("wayland");
  if (desktop && qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
    EndWithoutDisplay();
}

// A display named but out of reach ends in the toolkit's fatal message
// while the application is built: the same sentence, the same status, and
// none of the toolkit's own lines. Those are kept until it is known whether
// the connection holds, and then told as they came.
QtMessageHandler g_previousHandler = nullptr;
struct HeldMessage {
  QtMsgType type;
  QString text;
};
QList<HeldMessage> g_held;
void WhileConnecting(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtFatalMsg) EndWithoutDisplay();
  g_held.append({type, text});
}
void Connected() {
  qInstallMessageHandler(g_previousHandler);
  for (const HeldMessage& m : std::as_const(g_held)) {
    if (m.type == QtWarningMsg || m.type == QtCriticalMsg) qWarning().noquote() << m.text;
  }
  g_held.clear();
}

constexpr const char* kVersion = "Ostrane 1.23";

// The option the applications menu starts the program with.
constexpr const char* kUserFolderOption = "--dossier-utilisateur";

bool Asked(int argc, char** argv, const char* option) {
  for (int i = 1; i < argc; ++i)
    if (std::strcmp(argv[i], option) == 0) return true;
  return false;
}

void PrintHelp() {
  const QString user = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
  std::printf(
      "%s : le compagnon de jeu de Tablinor.\n"
      "\n"
      "usage : ostrane [--dossier-utilisateur]\n"
      "        ostrane --help | --version\n"
      "\n"
      "Sans option, ouvre la fenêtre du programme (une session graphique est nécessaire ;\n"
      "l'outil ostrane-cli, lui, fonctionne sans affichage).\n"
      "\n"
      "Les options, les meilleurs scores et la partie en cours sont gardés dans le dossier\n"
      "d'où le programme est lancé quand on peut y écrire ; sinon (ou avec\n"
      "--dossier-utilisateur, comme le fait le menu des applications) dans\n"
      "  %s\n"
      "\n"
      "  --dossier-utilisateur  garder les fichiers dans ce dossier de données\n"
      "  --help                 cette aide\n"
      "  --version              la version\n",
      kVersion, qPrintable(QDir::toNativeSeparators(user)));
}

}  // namespace

int main(int argc, char** argv) {
  // Answered on the terminal, without a window.
  QCoreApplication::setApplicationName(QStringLiteral("ostrane"));
  if (Asked(argc, argv, "--help") || Asked(argc, argv, "-h")) {
    PrintHelp();
    return 0;
  }
  if (Asked(argc, argv, "--version")) {
    std::printf("%s\n", kVersion);
    return 0;
  }
  CheckForADisplay();
  g_previousHandler = qInstallMessageHandler(WhileConnecting);
  QApplication app(argc, argv);
  Connected();
  ostrane::gui::SpeakFrench(app);
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
  const ostrane::gui::DataFolder folder =
      ostrane::gui::ChooseDataFolder(QDir::currentPath(), Asked(argc, argv, kUserFolderOption));
  ostrane::gui::Application::Settings settings;
  settings.startDirectory = folder.path;
  settings.whereFilesAre = folder.Sentence();
  ostrane::gui::Application program(host.host, std::move(settings));
  QObject::connect(&guard, &ostrane::gui::SingleInstance::showRequested, &program,
                   &ostrane::gui::Application::BringToFront);
  QObject::connect(&program, &ostrane::gui::Application::ended, &app, [] { QCoreApplication::exit(0); });
  if (!program.Start(!alone)) return 0;
  return QApplication::exec();
}
