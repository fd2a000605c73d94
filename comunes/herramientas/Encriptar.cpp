#include "comunes/herramientas/Encriptar.h"

#include "comunes/plataforma/Texto.h"
#include "ficheros/ErrorEjecucion.h"

namespace herramientas {

QString Encriptar(const QString& Texto, const QString& Clave) {
  std::string bytes = comunes::AWindows1252(Texto);
  const std::string clave = comunes::AWindows1252(Clave);
  if (clave.empty() && !bytes.empty()) throw ficheros::ErrorEjecucion(ficheros::kDivisionPorCero);
  for (std::size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<char>(bytes[i] ^ clave[i % clave.size()]);
  return QString::fromLatin1(QByteArray::fromStdString(bytes).toHex().toUpper());
}

}  // namespace herramientas
