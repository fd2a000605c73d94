#pragma once

#include "devoluciones/Cotejo.h"

namespace devoluciones {

/// Cuántos adeudos y cuánto suman.
struct Cuenta {
  std::int64_t adeudos = 0;
  std::int64_t importe = 0;     ///< Céntimos de los que lo dicen.
  std::int64_t sinImporte = 0;  ///< Adeudos, o bloques enteros, que no lo dicen.
  std::int64_t bloques = 0;     ///< Bloques y mensajes enteros: sus adeudos cuentan si se sabe cuántos son.
  void sumar(const Devolucion& devolucion);
};

struct Grupo {
  Dato clave;   ///< El código, o el identificador del acreedor. Ausente si no se dice.
  Dato nombre;  ///< Del acreedor.
  Cuenta cuenta;
};

/// Lo que suman las devoluciones de un lote. Las que ya estaban, iguales, en otro fichero no se suman otra
/// vez.
struct Recuento {
  Cuenta total;
  std::vector<Grupo> porMotivo;    ///< De más adeudos a menos.
  std::vector<Grupo> porAcreedor;  ///< Por orden de aparición.
};

/// `cotejo`, si no es nulo, dice lo que las devoluciones no traen.
Recuento Recontar(const Lote& lote, const Cotejo* cotejo = nullptr);

}  // namespace devoluciones
