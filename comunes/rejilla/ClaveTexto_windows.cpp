#include "comunes/rejilla/ClaveTexto.h"

#include <windows.h>

#include <QByteArray>
#include <string>
#include <vector>

namespace comunes {

// La de QCollator no vale aquí: toma los bytes de la clave por caracteres, y compara también los que quedan
// sin escribir.
struct ClavesTexto::Interior {
  std::wstring idioma;
  std::vector<QByteArray> claves;
};

ClavesTexto::ClavesTexto(const QLocale& idioma)
    : interior_(new Interior{idioma.bcp47Name().toStdWString(), {}}) {}

ClavesTexto::~ClavesTexto() = default;

std::size_t ClavesTexto::anadir(const QString& texto) {
  const std::wstring ancho = texto.toStdWString();
  const auto escribir = [&](char* bytes, int cuantos) {
    return LCMapStringEx(interior_->idioma.c_str(), LCMAP_SORTKEY | NORM_IGNORECASE, ancho.c_str(),
                         static_cast<int>(ancho.size()), reinterpret_cast<wchar_t*>(bytes), cuantos, nullptr,
                         nullptr, 0);
  };
  QByteArray clave(escribir(nullptr, 0), '\0');
  // Un idioma que el sistema no conoce: al menos, sin distinguir mayúsculas.
  if (clave.isEmpty() || escribir(clave.data(), static_cast<int>(clave.size())) == 0)
    clave = texto.toCaseFolded().toUtf8();
  interior_->claves.push_back(clave);
  return interior_->claves.size() - 1;
}

bool ClavesTexto::menor(std::size_t una, std::size_t otra) const {
  return interior_->claves[una] < interior_->claves[otra];
}

}  // namespace comunes
