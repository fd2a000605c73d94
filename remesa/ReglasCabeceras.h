#pragma once

#include <optional>
#include <string>

#include "remesa/Anotador.h"
#include "remesa/Calendario.h"
#include "remesa/Repetidos.h"

namespace remesa {

/// Lo que la última cabecera 02 dice, recortado.
struct CabeceraVista {
  bool abierto = false;  ///< Aún no lo ha cerrado un 05.
  std::string acreedor, fechaCobro, nombre, cuenta;
  std::optional<Dia> cobro;  ///< Si existe y no es de otro siglo.
};

/// Las cabeceras del presentador y de los acreedores, y lo que los totales repiten de ellas.
class ReglasCabeceras {
 public:
  ReglasCabeceras(Anotador& anotador, Dia hoy) : anotador_(anotador), hoy_(hoy) {}

  /// El registro en que está el anotador es un 01, un 02…
  void presentador();
  void abrirBloque();  ///< Antes de mirar sus campos.
  void acreedor();     ///< Después.
  void totalesFecha();
  void totalesAcreedor();
  /// No hay más: la entidad receptora ha de ser la de alguna cuenta de acreedor.
  void terminar();

  const CabeceraVista& bloque() const noexcept { return bloque_; }

 private:
  void mirarCreacion();
  void mirarFechaCobro();
  void mirarRepetido();
  void mirarBanco();
  void compararAcreedor(Posiciones donde);
  void comparar(Posiciones donde, std::string_view deCabecera);
  void anotar(CodigoHallazgo codigo, Posiciones donde, std::string esperado = {}, std::uint64_t otro = 0);

  Anotador& anotador_;
  Dia hoy_;
  CabeceraVista bloque_;
  bool conCabecera_ = false;  // el bloque que cerrará el 04 que venga tiene su 02
  ClavesVistas bloques_;
  std::optional<Hallazgo> receptora_;  // la del 01, por si ninguna cuenta es suya
  bool esDeAlguna_ = false;
};

}  // namespace remesa
