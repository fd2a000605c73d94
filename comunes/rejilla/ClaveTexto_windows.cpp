#include <windows.h>

#include "comunes/rejilla/ClaveTexto.h"

namespace comunes {

// La de QCollator no vale aquí: toma los bytes de la clave por caracteres, y compara también los que quedan
// sin escribir.
ClaveTexto ClavesTexto::de(const QString& texto) const {
  const std::wstring idioma = orden_.locale().bcp47Name().toStdWString();
  const std::wstring ancho = texto.toStdWString();
  const auto escribir = [&](char* bytes, int cuantos) {
    return LCMapStringEx(idioma.c_str(), LCMAP_SORTKEY | NORM_IGNORECASE, ancho.c_str(),
                         static_cast<int>(ancho.size()), reinterpret_cast<wchar_t*>(bytes), cuantos, nullptr,
                         nullptr, 0);
  };
  QByteArray clave(escribir(nullptr, 0), '\0');
  // Un idioma que el sistema no conoce: al menos, sin distinguir mayúsculas.
  if (clave.isEmpty() || escribir(clave.data(), static_cast<int>(clave.size())) == 0)
    return texto.toCaseFolded().toUtf8();
  return clave;
}

}  // namespace comunes
