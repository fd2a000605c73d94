#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "remesa/Hallazgo.h"

namespace remesa {

/// Apunta lo que se encuentra en el registro que se mira: añade su número y, en un adeudo, de quién es.
class Anotador {
 public:
  explicit Anotador(ReceptorHallazgos recibir) : recibir_(std::move(recibir)) {}

  /// Pasa al registro siguiente. `bytes` ha de vivir mientras se mire.
  void pasarA(std::string_view bytes, std::uint64_t fila);
  /// Adeudo al que pertenecen los registros opcionales que sigan; "", ninguno.
  void ponerAdeudo(std::string_view bytes);

  /// De un campo del registro; el valor es el suyo.
  void campo(CodigoHallazgo codigo, const Campo& campo, std::string esperado = {}, std::uint64_t otro = 0);
  /// De unas posiciones del registro.
  void posiciones(CodigoHallazgo codigo, Posiciones donde, std::string valor, std::string esperado = {});
  /// De unas posiciones de un campo; el valor es el que se da.
  void parte(CodigoHallazgo codigo, const Campo& campo, Posiciones donde, std::string valor);
  /// Del fichero entero.
  void fichero(CodigoHallazgo codigo, std::string valor = {}, std::string esperado = {},
               std::uint64_t otro = 0);

  /// El de un campo, sin darlo: depende de lo que venga después.
  Hallazgo preparar(CodigoHallazgo codigo, const Campo& campo, std::string esperado = {},
                    std::uint64_t otro = 0) const;
  void dar(Hallazgo&& hallazgo);

  std::string_view registro() const noexcept { return bytes_; }
  ClaseRegistro clase() const noexcept { return clase_; }
  /// Desde 1; 0 si aún no hay ninguno.
  std::uint64_t numero() const noexcept { return numero_; }
  std::uint64_t errores() const noexcept { return errores_; }
  std::uint64_t avisos() const noexcept { return avisos_; }

 private:
  void situar(Hallazgo& hallazgo) const;

  ReceptorHallazgos recibir_;
  std::string_view bytes_;
  ClaseRegistro clase_ = ClaseRegistro::Desconocido;
  std::string deudor_;
  std::uint64_t numero_ = 0;
  std::uint64_t fila_ = 0;
  std::uint64_t errores_ = 0;
  std::uint64_t avisos_ = 0;
};

}  // namespace remesa
