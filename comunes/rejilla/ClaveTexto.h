#pragma once

#include <QLocale>
#include <QString>
#include <memory>

namespace comunes {

/// Las claves de muchos textos en el orden alfabético de un idioma, sin distinguir mayúsculas: compararlas
/// cuesta mucho menos que comparar los textos.
class ClavesTexto {
 public:
  explicit ClavesTexto(const QLocale& idioma);
  ~ClavesTexto();

  /// Devuelve el número de la clave, desde 0.
  std::size_t anadir(const QString& texto);
  bool menor(std::size_t una, std::size_t otra) const;

 private:
  struct Interior;
  std::unique_ptr<Interior> interior_;
};

}  // namespace comunes
