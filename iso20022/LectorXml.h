#pragma once

#include <QString>
#include <QXmlStreamReader>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "ficheros/Lectura.h"
#include "iso20022/ConversorXml.h"
#include "iso20022/GuardaXml.h"

namespace iso20022 {

/// Mira el principio: una marca de orden de bytes si la hay, blancos si los hay, y "<". Lanza ErrorEjecucion
/// si no se puede leer.
bool EmpiezaComoXml(const std::filesystem::path& ruta);

/// Lee un XML de una persona o de un banco, elemento a elemento y sin tenerlo en memoria. Todos lanzan
/// ErrorEjecucion: 321, con la ruta y la línea, si no está bien formado o pasa de los límites de GuardaXml.
class LectorXml {
 public:
  enum class Suceso : std::uint8_t { Abre, Cierra, Fin };

  explicit LectorXml(const std::filesystem::path& ruta);
  LectorXml(const LectorXml&) = delete;
  LectorXml& operator=(const LectorXml&) = delete;

  Suceso siguiente();

  /// Nombre, sin prefijo, del elemento que se abre o se cierra. Vale hasta el suceso siguiente.
  QStringView nombre() const noexcept { return nombre_; }
  /// El de fuera es 1.
  int profundidad() const noexcept { return profundidad_; }
  /// Lo escrito desde el suceso anterior, con los blancos de dentro y los de detrás: al cerrarse un elemento
  /// sin otros dentro, todo lo suyo. Comentarios e instrucciones no cuentan.
  const QString& texto() const noexcept { return texto_; }
  /// Valor de un atributo del elemento que se abre, por su nombre sin prefijo; vacío si no lo tiene.
  QString atributo(QStringView nombre) const;
  /// Del elemento de fuera, ya abierto.
  const QString& raiz() const noexcept { return raiz_; }
  const QString& espacio() const noexcept { return espacio_; }

  /// Desde 1.
  std::size_t linea() const { return static_cast<std::size_t>(xml_.lineNumber()); }
  /// El error 321 en la línea en que está; `causa`, en minúscula y sin punto.
  [[noreturn]] void fallar(const std::string& causa) const;

  /// Bytes leídos y bytes del fichero.
  std::uintmax_t leidos() const noexcept { return leidos_; }
  std::uintmax_t tamano() const noexcept { return lectura_.tamano(); }

 private:
  QXmlStreamReader::TokenType avanzar();
  void alimentar();
  QByteArray convertir(std::string_view bytes);
  void abrirRaiz();

  std::filesystem::path ruta_;
  ficheros::LecturaFichero lectura_;
  std::vector<char> bufer_;
  std::optional<ConversorXml> conversor_;  // hasta ver el principio no se sabe
  GuardaXml guarda_;
  QXmlStreamReader xml_;
  std::uintmax_t leidos_ = 0;
  bool leidoTodo_ = false;
  QStringView nombre_;
  QString texto_;
  QString raiz_, espacio_;
  int profundidad_ = 0;
  bool cerrado_ = false;  // el último suceso cerró un elemento
};

}  // namespace iso20022
