#include "devoluciones/Devolucion.h"

#include "comunes/plataforma/Texto.h"

namespace devoluciones {

QString Dato::texto() const {
  if (utf8_) return QString::fromUtf8(bytes_.data(), static_cast<qsizetype>(bytes_.size()));
  return comunes::DesdeWindows1252(bytes_);
}

std::string Dato::enRegistro() const {
  return utf8_ ? comunes::AWindows1252(texto()) : std::string(bytes_);
}

}  // namespace devoluciones
