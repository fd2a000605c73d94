#include <QFile>

#include "comunes/plataforma/Texto.h"

namespace comunes {

QString DesdeRuta(const std::filesystem::path& ruta) {
  return QFile::decodeName(QByteArray::fromStdString(ruta.native()));
}

std::filesystem::path ARuta(const QString& ruta) {
  return QFile::encodeName(ruta).toStdString();
}

}  // namespace comunes
