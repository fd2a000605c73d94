#pragma once

#include <QString>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "comunes/plataforma/Texto.h"
#include "ficheros/ErrorEjecucion.h"
#include "remesa/Fichero.h"

namespace consola {

/// Una línea en la salida, o en la de errores con "q19: " delante; en UTF-8. false si no se pudo escribir: el
/// disco se llenó, o quien la leía se fue.
bool Decir(const QString& linea);
/// Líneas en UTF-8, ya con sus finales.
bool DecirLineas(std::string_view utf8);
void Avisar(const QString& linea);

/// Señal de vida de un trabajo largo, si la salida de errores es una terminal: una línea "título: 45 %" que
/// se rehace cada medio segundo y desaparece con lo que se diga después o con el objeto.
class Avance {
 public:
  /// `verbo` y el nombre de `fichero`: "Uniendo enero.Q19".
  Avance(const QString& verbo, const std::filesystem::path& fichero);
  ~Avance();
  Avance(const Avance&) = delete;
  Avance& operator=(const Avance&) = delete;

  /// `hecho` de `total`, en la unidad que sea. Con el total a 0 sale enseguida, sin tanto por ciento.
  void poner(std::uintmax_t hecho, std::uintmax_t total);

 private:
  QString titulo_;
  bool visible_;
  std::chrono::steady_clock::time_point ultima_ = std::chrono::steady_clock::now();
};

/// La ruta de un argumento, tal como la dio el sistema (aunque no sea UTF-8).
std::filesystem::path RutaDe(const std::string& argumento);

/// Ruta o texto ajenos, para mostrarlos en una línea: los caracteres de control pasan a U+FFFD y
/// las marcas de sentido van escritas.
QString Mostrable(const std::filesystem::path& ruta);
QString Mostrable(QString texto);

using comunes::CadenaJson;

/// Un texto ajeno dentro de una cadena de JSON, sin las comillas, o en una línea.
QString TextoAjeno(const QString& texto, bool json);

/// "ruta: texto (error N)"; `fichero` es el que se nombra si el error no trae el suyo.
QString Explicar(const ficheros::ErrorEjecucion& error, const std::filesystem::path& fichero);

/// Por qué no se admite un fichero con esa cabeza; vacío si se admite.
QString ProblemaCabeza(remesa::Cabeza cabeza);

}  // namespace consola
