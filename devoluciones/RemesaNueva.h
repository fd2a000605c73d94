#pragma once

#include "devoluciones/Cotejo.h"
#include "devoluciones/Motivos.h"
#include "remesa/Identificacion.h"
#include "remesa/ListaRegistros.h"

namespace devoluciones {

/// Si el motivo admite presentarlo otra vez; los que no están en la tabla, solo con el deudor.
Intento IntentoDe(const Devolucion& devolucion);

/// Las que se proponen: adeudos cuyo motivo permite presentarlos otra vez como están, una sola vez.
std::vector<std::size_t> Propuestas(const Lote& lote);

/// Primer día hábil que deja el día de plazo con que ha de presentarse un adeudo.
remesa::Dia FechaPropuesta(remesa::Dia hoy);

struct PeticionNueva {
  std::vector<std::size_t> elegidas;  ///< Devoluciones, en el orden del lote.
  remesa::Dia fechaCobro;
  remesa::Momento ahora;  ///< Para la identificación del fichero.
  /// Cambia todas las referencias; si no, solo las que se repetirían. Un sufijo es "-2", "-3"…, y la
  /// referencia se corta para que quepa en sus 35 posiciones.
  bool conSufijo = false;
};

enum class CausaFuera : std::uint8_t {
  NoHallada,
  Ambigua,
  Nunca,           ///< Su motivo no admite otro intento.
  YaIncluida,      ///< El mismo adeudo ha vuelto dos veces, quizá de dos remesas: basta con uno.
  SinPresentador,  ///< Su remesa no tiene 01.
};

struct Fuera {
  std::size_t devolucion;
  CausaFuera causa;
  std::size_t adeudos = 1;  ///< De un bloque entero, cuántos de los suyos.
};

struct RemesaNueva {
  remesa::ListaRegistros registros;  ///< Ninguno si no hay qué presentar.
  std::size_t adeudos = 0;
  std::int64_t importe = 0;  ///< Céntimos.
  std::size_t bloques = 0;
  std::size_t conSufijo = 0;  ///< Referencias cambiadas.
  std::vector<Fuera> fuera;   ///< Lo elegido que no se ha podido hacer, y por qué.
  std::vector<std::string>
      otrosPresentadores;  ///< Nombres de los que no son el del 01, en bytes de registro.
};

/// Hace otra remesa con los adeudos presentados de las devoluciones elegidas, enteros: el 01 de la primera
/// con otra identificación, un bloque por acreedor y cuenta con la fecha de cobro nueva, los adeudos por
/// referencia y los totales de la norma. Un adeudo no entra dos veces.
RemesaNueva HacerRemesa(const Lote& lote, const Cotejo& cotejo, const PeticionNueva& peticion);

}  // namespace devoluciones
