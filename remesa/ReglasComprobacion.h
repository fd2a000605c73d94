#pragma once

#include <string>
#include <vector>

#include "remesa/Anotador.h"
#include "remesa/OrdenRegistros.h"
#include "remesa/ReglasAdeudo.h"
#include "remesa/ReglasCabeceras.h"
#include "remesa/ReglasCampos.h"
#include "remesa/TotalesNorma.h"
#include "remesa/Utf8.h"
#include "remesa/VersionesFichero.h"

namespace remesa {

/// Comprueba una remesa con la norma, registro a registro y sin guardarlos: de los ya vistos solo recuerda
/// las huellas que hacen falta para ver repetidos. No cambia nada ni falla con ningunos bytes.
class ReglasComprobacion {
 public:
  /// `hoy`, con lo que se comparan las fechas.
  ReglasComprobacion(Dia hoy, ReceptorHallazgos recibir);
  ReglasComprobacion(const ReglasComprobacion&) = delete;
  ReglasComprobacion& operator=(const ReglasComprobacion&) = delete;

  /// La marca de orden de bytes con que empieza el fichero, que no se da con el primer registro. Con una de
  /// UTF-16, el fichero es ajeno.
  void marca(std::string_view marca);
  /// `longitud` es la del registro en bytes; de los más largos basta con que `bytes` traiga los kRegistroUtf8
  /// primeros. `fila`, el número de registro del programa en que está.
  void dar(std::string_view bytes, std::uint64_t longitud, std::uint64_t fila);
  /// Después del último.
  void terminar();

  /// El primer registro no es de una remesa del Cuaderno 19.14: lo que siga no se mira.
  bool ajeno() const noexcept { return ajeno_; }
  Anotador& anotador() noexcept { return anotador_; }

 private:
  /// Si de una suma se entienden todos los importes, y se sabe cuántos adeudos tiene.
  struct Sabido {
    bool importes = true, adeudos = true;
  };
  struct Blanco {
    std::string bytes;
    std::uint64_t longitud, fila;
  };

  void reconocer(std::string_view bytes);
  void rechazar(CodigoHallazgo codigo, std::string valor, std::string esperado = {});
  void mirarBlancos();
  void mirar(std::string_view bytes, std::uint64_t longitud, std::uint64_t fila);
  bool mirarForma(std::string_view bytes, std::uint64_t longitud);
  void mirarRegistro();
  ContextoCampos contexto() const;
  Sabido sumaSabida();
  void mirarTotales();

  Anotador anotador_;
  OrdenRegistros orden_{anotador_};
  TotalesNorma totales_;
  VersionesFichero versiones_{anotador_};
  ReglasCabeceras cabeceras_;
  ReglasAdeudo adeudo_;
  Sabido bloque_, acreedor_, fichero_;
  bool ajeno_ = false;
  bool reconocido_ = false;
  std::vector<Blanco> blancos_;  // las líneas en blanco de delante, hasta saber de qué es el fichero
  std::string marca_;
  RegistroUtf8 leido_;
  bool esUtf8_ = false;     // el registro en que se está
  bool dichoUtf8_ = false;  // alguno lo era
};

}  // namespace remesa
