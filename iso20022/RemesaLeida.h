#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ficheros/FicheroProvisional.h"
#include "remesa/ListaRegistros.h"

namespace iso20022 {

/// Los registros de una remesa según se hacen: los adeudos, en su bloque, y al final los totales de la norma.
class RemesaLeida {
 public:
  /// En memoria o, si se da dónde, sin más memoria que la que diga en qué orden van.
  explicit RemesaLeida(std::unique_ptr<ficheros::FicheroProvisional> fichero = {})
      : fichero_(std::move(fichero)) {}

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
  /// Los mismos, de los que no están en memoria, al final de `destino`: de 600 bytes con CR LF.
  void terminar(std::string_view presentador, ficheros::FicheroProvisional& destino);

 private:
  struct Trozo {
    std::shared_ptr<char[]> datos;
    std::size_t registros = 0;
  };
  /// Registros seguidos del fichero.
  struct Racha {
    std::uint32_t primero, registros;
  };
  struct Bloque {
    std::string cabecera;
    std::vector<Trozo> trozos;
    std::size_t libres = 0;  // registros que caben aún en el último
    std::vector<Racha> rachas;
    std::uint64_t importe = 0, adeudos = 0, registros = 0;
  };
  struct Suma {
    std::uint64_t importe = 0, adeudos = 0, registros = 0;
  };
  void guardarEnFichero(Bloque& bloque, std::string_view registro);
  static void pasar(Bloque& bloque, remesa::ListaRegistros& lista);
  void pasar(const Bloque& bloque, ficheros::FicheroProvisional& destino);
  /// Da cada registro hecho aquí y, en su sitio, cada bloque de adeudos.
  template <class Registro, class Adeudos>
  void recorrer(std::string_view presentador, Registro registro, Adeudos adeudos);

  std::unique_ptr<ficheros::FicheroProvisional> fichero_;
  std::uint32_t enFichero_ = 0;  // registros
  std::vector<Bloque> bloques_;
  std::map<std::string, std::size_t> porCabecera_;
  std::uint64_t adeudos_ = 0, importe_ = 0;
};

}  // namespace iso20022
