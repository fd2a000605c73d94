#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "consola/LectorRegistros.h"
#include "ficheros/EscrituraSegura.h"
#include "remesa/Fichero.h"
#include "remesa/Fusion.h"
#include "remesa/Identificacion.h"
#include "remesa/Observaciones.h"

namespace consola {

/// Une ficheros sobre un flujo, con las reglas de la importación y sin tener ninguno en memoria: lee por un
/// búfer que se reutiliza y escribe desde él, sin copiarlos, los tramos de registros que no cambian. Los
/// bytes y los errores son los de importar uno a uno en listas, recalcular tras cada uno y guardar.
class UnionFlujo {
 public:
  explicit UnionFlujo(ficheros::EscrituraSegura& salida, std::size_t bufer = LectorRegistros::kBufer);

  /// El primer "01" que se escriba llevará la fecha y una identificación nuevas.
  void renovar(remesa::Momento ahora) { renovar_ = ahora; }
  /// Se pidió, y no ha habido ninguno.
  bool faltaRenovar() const noexcept { return renovar_.has_value(); }

  /// Importa un fichero; `ultimo` si ningún otro le sigue. Lanza ErrorEjecucion: con fichero si falló leer o
  /// escribir, sin él si lo que falla es el recálculo en el registro `registroActual()`.
  void unir(const std::filesystem::path& fichero, bool ultimo, const remesa::AvanceLectura& avance = {});
  /// Lo mismo con unos registros que ya se tienen.
  void unir(const remesa::ListaRegistros& lista, bool ultimo);

  const remesa::Totales& totales() const noexcept { return reglas_.totales(); }
  /// Número, desde 1, del último registro visto del fichero.
  std::size_t registroActual() const noexcept { return registro_; }
  /// Lo que hay en el último fichero.
  const remesa::Resumen& resumen() const noexcept { return resumen_; }
  /// Lo que importar el último fichero perdió o cambió.
  const std::vector<remesa::Observacion>& observaciones() const noexcept { return observaciones_; }
  /// Lo que hay que saber de la remesa unida.
  std::vector<remesa::Observacion> observacionesFinales() const;

 private:
  void empezar(bool ultimo);
  void acabar(const remesa::Resumidor& resumidor);
  void tratar(std::string_view registro, std::string_view conFin, remesa::Resumidor& resumidor);
  void anadirTramo(std::string_view bytes);
  void anadirSuelto(std::string_view registro, std::span<const remesa::Cambio> cambios);
  void volcarTramo();

  ficheros::EscrituraSegura& salida_;
  LectorRegistros lector_;
  std::string rehecho_;     // el registro que se rehace
  std::string_view tramo_;  // bytes seguidos del búfer que van tal cual
  remesa::ReglasImportacion reglas_;
  remesa::Resumen acumulado_;
  remesa::Resumen resumen_;
  std::vector<remesa::Observacion> observaciones_;
  std::size_t registro_ = 0;
  std::optional<remesa::Momento> renovar_;
};

}  // namespace consola
