#pragma once

#include <optional>
#include <string>

#include "remesa/Anotador.h"
#include "remesa/Calendario.h"
#include "remesa/OrdenRegistros.h"
#include "remesa/ReglasCampos.h"
#include "remesa/Repetidos.h"
#include "remesa/TotalesNorma.h"

namespace remesa {

/// Comprueba una remesa con la norma, registro a registro y sin guardarlos: de los ya vistos solo recuerda
/// las huellas que hacen falta para ver repetidos. No cambia nada ni falla con ningunos bytes.
class ReglasComprobacion {
 public:
  /// `hoy`, con lo que se comparan las fechas de cobro.
  ReglasComprobacion(Dia hoy, ReceptorHallazgos recibir);
  ReglasComprobacion(const ReglasComprobacion&) = delete;
  ReglasComprobacion& operator=(const ReglasComprobacion&) = delete;

  /// `longitud` es la del registro, aunque de los más largos que la norma `bytes` no lo traiga entero;
  /// `fila`, el número de registro del programa en que está.
  void dar(std::string_view bytes, std::uint64_t longitud, std::uint64_t fila);
  /// Después del último.
  void terminar();

  /// El primer registro no es del Cuaderno 19.14: lo que siga no se mira.
  bool ajeno() const noexcept { return ajeno_; }
  Anotador& anotador() noexcept { return anotador_; }

 private:
  bool mirarForma(std::string_view bytes, std::uint64_t longitud);
  void abrirBloque();
  void mirarFechaCobro();
  void mirarAdeudo();
  void mirarRepetidos(std::string_view referencia);
  void mirarOpcional();
  DatosCabecera repetidoDeCabecera() const;
  void mirarCabecera(Posiciones acreedor);
  void mirarTotales();
  const Campo& campoDe(Posiciones donde) const;

  Anotador anotador_;
  OrdenRegistros orden_{anotador_};
  TotalesNorma totales_;
  Repetidos repetidos_;
  Dia hoy_;
  bool ajeno_ = false;
  bool hayCabecera_ = false;
  bool hayAdeudo_ = false;
  bool desordenado_ = false;  // ya se dijo de este bloque
  std::string acreedor_;
  std::string fechaCobro_;
  std::optional<Dia> cobro_;
  std::string referencias_;  // las del último adeudo
};

}  // namespace remesa
