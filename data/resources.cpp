#include "data/resources.h"

#include <QFile>
#include <QString>

namespace ostrane {

std::string ReadResource(std::string_view name) {
  QFile file(QStringLiteral(":/") + QString::fromUtf8(name.data(), qsizetype(name.size())));
  if (!file.open(QIODevice::ReadOnly)) return {};
  const QByteArray bytes = file.readAll();
  return std::string(bytes.constData(), size_t(bytes.size()));
}

}  // namespace ostrane
