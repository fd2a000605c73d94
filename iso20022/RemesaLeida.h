#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "remesa/ListaRegistros.h"

namespace iso20022 {

/// Los registros de una remesa según se hacen: los adeudos, en su bloque, y al final los totales de la norma.
class RemesaLeida {
 public:
  /// El bloque de una cabecera 02; el mismo si ya la hay igual.
  std::size_t bloque(const std::string& cabecera);
  /// Un registro 003, con sus céntimos, o uno de los opcionales que le siguen, con 0.
  void anadirAdeudo(std::size_t bloque, std::string_view registro, std::uint64_t centimos);
  void anadirOpcional(std::size_t bloque, std::string_view registro);

  std::uint64_t adeudos() const noexcept { return adeudos_; }
  std::uint64_t importe() const noexcept { return importe_; }
  /// La cabecera del primer bloque; "" si no hay ninguno.
  std::string_view primeraCabecera() const;

  /// 01; por cada acreedor, en orden de aparición, sus bloques y su 05; y 99. Lo deja vacío.
  remesa::ListaRegistros terminar(std::string_view presentador);

 private:
  struct Trozo {
    std::shared_ptr<char[]> datos;
    std::size_t registros = 0;
  };
  struct Bloque {
    std::string cabecera;
    std::vector<Trozo> trozos;
    std::size_t libres = 0;  // registros que caben aún en el último
    std::uint64_t importe = 0, adeudos = 0, registros = 0;
  };
  struct Suma {
    std::uint64_t importe = 0, adeudos = 0, registros = 0;
  };
  static void pasar(Bloque& bloque, remesa::ListaRegistros& lista);

  std::vector<Bloque> bloques_;
  std::map<std::string, std::size_t> porCabecera_;
  std::uint64_t adeudos_ = 0, importe_ = 0;
};

}  // namespace iso20022
