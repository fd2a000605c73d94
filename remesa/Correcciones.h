#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "remesa/Comprobacion.h"
#include "remesa/Correccion.h"

namespace remesa {

struct PeticionCorreccion {
  Dia hoy{};
  /// Si se hace una corrección; sin ella, todas. De las arrastradas no se pregunta. La misma puede
  /// preguntarse varias veces.
  std::function<bool(const Correccion&)> admitir = {};
  /// Si se corrigen los totales, que siempre son los de la norma: cada bloque, los suyos.
  bool totales = true;
};

struct ResultadoCorreccion {
  /// Por qué no se puede corregir nada: el fichero no es una remesa, está en UTF-8 o sus líneas acaban en LF.
  std::optional<Hallazgo> impide;
  std::vector<Correccion> hechas;
  ResultadoComprobacion quedan;  ///< Lo que se comprueba al final. Si no está completa, nada ha cambiado.
  /// De cada registro que queda, el que era, desde 0; vacío si ninguno se ha movido ni quitado.
  std::vector<std::size_t> procedencia;
};

/// Corrige en la lista lo que tiene una sola respuesta buena, y nada más: ni importes ni nombres ni cuentas
/// se adivinan. Se comprueba y se corrige lo hallado hasta que no queda nada que corregir, así que corregir
/// dos veces es corregir una. Lo que no cambia conserva sus bytes. Lo que la comprobación diga de más tras
/// corregir estaba ya, tapado por lo corregido.
ResultadoCorreccion Corregir(ListaRegistros& lista, const PeticionCorreccion& peticion,
                             const AvanceComprobacion& avance = {});

}  // namespace remesa
