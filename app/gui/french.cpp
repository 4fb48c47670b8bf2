#include "app/gui/french.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace ostrane::gui {

bool SpeakFrench(QCoreApplication& application) {
  const QLocale french(QLocale::French, QLocale::France);
  QLocale::setDefault(french);
  auto* translator = new QTranslator(&application);
  if (!translator->load(french, QStringLiteral("qtbase"), QStringLiteral("_"),
                        QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    delete translator;
    return false;
  }
  QCoreApplication::installTranslator(translator);
  return true;
}

}  // namespace ostrane::gui
