#pragma once

#include "comunes/plataforma/Formatos.h"

namespace pruebas {

/// Mientras vive, los números y las fechas son los de España, y hoy, ese día.
struct EnEspana {
  explicit EnEspana(QDate hoy = {2026, 3, 5}) {
    comunes::PonerLocaleUsuario(QLocale(QLocale::Spanish, QLocale::Spain));
    comunes::PonerFechaActual(hoy);
  }
  ~EnEspana() {
    comunes::PonerLocaleUsuario({});
    comunes::PonerFechaActual({});
  }
};

}  // namespace pruebas
