#include "comunes/plataforma/Texto.h"

namespace comunes {

QString DesdeRuta(const std::filesystem::path& ruta) {
  return QString::fromStdWString(ruta.native());
}

std::filesystem::path ARuta(const QString& ruta) {
  return ruta.toStdWString();
}

}  // namespace comunes
