#pragma once

#include <optional>
#include <string>

#include "remesa/ReglasCabeceras.h"

namespace remesa {

/// Un adeudo con los demás del fichero, con su bloque y con sus registros opcionales. Lo que un opcional
/// puede explicar espera a que no le queden.
class ReglasAdeudo {
 public:
  ReglasAdeudo(Anotador& anotador, const CabeceraVista& bloque, Dia hoy)
      : anotador_(anotador), bloque_(bloque), hoy_(hoy) {}

  void abrirBloque();
  /// El registro en que está el anotador es un adeudo que se va a dar.
  void anticipar();
  /// El registro en que está el anotador es un adeudo (003).
  void adeudo();
  /// Es uno opcional (004, 005 o 006).
  void opcional();
  /// No se sabe qué es: puede ser otro adeudo, o el opcional que explica algo del último.
  void dudoso();
  /// El adeudo no tiene más registros.
  void cerrar();
  /// El bloque se ha cerrado: un opcional que venga después no es de nadie.
  void cerrarBloque() { hayAdeudo_ = false; }

 private:
  std::uint64_t suya(std::string_view clave) const;
  void mirarOrden();
  void mirarRepetidos();
  void mirarFirma();
  void mirarReferencias();
  void mirarUltimos();
  void mirarMandato();
  void mirarCuentaOriginal();
  void anotar(CodigoHallazgo codigo, Posiciones donde, std::string esperado = {}, std::uint64_t otro = 0);
  std::string_view dice(Posiciones donde) const;
  std::string_view elAdeudo(Posiciones donde) const;

  Anotador& anotador_;
  const CabeceraVista& bloque_;
  Dia hoy_;
  ClavesVistas referencias_;
  Repetidos repetidos_;
  bool hayAdeudo_ = false;
  bool desordenado_ = false;                             // ya se dijo de este bloque
  std::string adeudo_;                                   // el último 003
  std::uint64_t acreedor_ = 0, fecha_ = 0, cuenta_ = 0;  // huellas de lo del bloque
  AdeudoVisto visto_;                                    // el que se anticipó
  std::optional<Hallazgo> frst_, otraCuenta_;
  bool conSmnda_ = false, conOriginal_ = false;
};

}  // namespace remesa
