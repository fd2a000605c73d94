#include "comunes/plataforma/Sistema.h"

#include "comunes/plataforma/Texto.h"

namespace comunes {

// Un fichero no comparte números con las salidas, ni hay señales que maten al proceso.
void PrepararSalidas() {}

// El montón de Windows no devuelve por su cuenta lo que se acaba de soltar.
void ConservarMemoria() {}

QString DesdeRuta(const std::filesystem::path& ruta) {
  return QString::fromStdWString(ruta.native());
}

std::filesystem::path ARuta(const QString& ruta) {
  return ruta.toStdWString();
}

}  // namespace comunes
