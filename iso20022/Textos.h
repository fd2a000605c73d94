#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "iso20022/Aviso.h"
#include "iso20022/Nota.h"

// Lo que se dice al operador de un paso a XML o de XML, para la consola y para la ventana. Frases con su
// punto y sin ";", que en una caja de mensajes sería un salto de línea; los datos van tal como vienen.

namespace iso20022 {

/// Qué pasa y qué se hace.
QString TextoNota(const Nota& nota);
QString TextoAviso(const AvisoLectura& aviso);

/// Lo que dice la remesa, y lo que se escribe en su lugar o se esperaba; el de un resumen, su primer ejemplo.
QString TextoValor(const Nota& nota);
QString TextoCambio(const Nota& nota);

/// "error" o "aviso".
QString TextoNivel(CodigoNota codigo);

/// Los avisos de un mensaje, para quien no va a verlos uno a uno: de los que dicen lo mismo de un mismo
/// elemento, los primeros y cuántos más hay.
class ResumenAvisos {
 public:
  void dar(const AvisoLectura& aviso);
  QStringList lineas() const;

 private:
  static constexpr std::uint64_t kPrimeros = 3;
  std::map<std::pair<QString, CodigoAviso>, std::uint64_t> cuantos_;
  QStringList primeros_;
};

QStringList ResumirAvisos(const std::vector<AvisoLectura>& avisos);

}  // namespace iso20022
