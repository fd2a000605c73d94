#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "iso20022/Correspondencia.h"
#include "iso20022/Nota.h"

namespace iso20022 {

enum class Direcciones : std::uint8_t {
  Necesarias,  ///< Las de deudores con la cuenta fuera del Espacio Económico Europeo.
  Todas,
  Ninguna,
};

struct OpcionesExportacion {
  Version version = Version::V08;
  Direcciones direcciones = Direcciones::Necesarias;
  bool omitir = false;     ///< Deja fuera los adeudos con error y escribe los demás.
  bool compacto = false;   ///< Sin sangrar.
  bool detalle = false;    ///< Una nota por cada carácter cambiado y por cada dirección no escrita.
  std::uint64_t cada = 0;  ///< Adeudos de cada mensaje a lo más; 0, todos en uno.
  /// BIC del banco del acreedor, por las cuatro cifras que lo dicen en su cuenta; "" si no se sabe.
  std::function<std::string(std::string_view entidad)> bicDe;
};

/// Un registro con su número, desde 1; con 0, no lo hay.
struct RegistroLeido {
  std::string bytes;
  std::uint64_t numero = 0;
  std::uint64_t fila = 0;
};

/// Un adeudo y los registros opcionales que le siguen.
class AdeudoLeido {
 public:
  RegistroLeido& de(remesa::ClaseRegistro clase) { return registros_[Indice(clase)]; }
  const RegistroLeido& de(remesa::ClaseRegistro clase) const { return registros_[Indice(clase)]; }
  bool hay(remesa::ClaseRegistro clase) const { return de(clase).numero > 0; }
  void vaciar() {
    for (RegistroLeido& registro : registros_)
      registro.numero = 0;
  }

 private:
  static std::size_t Indice(remesa::ClaseRegistro clase) {
    return static_cast<std::size_t>(clase) - static_cast<std::size_t>(remesa::ClaseRegistro::Adeudo);
  }
  std::array<RegistroLeido, 4> registros_;  // 003, 004, 005 y 006
};

/// Lo que se anota una vez por remesa.
struct Resumidas {
  std::uint64_t caracteres = 0;                               ///< Campos con alguno cambiado.
  std::vector<std::pair<std::string, std::string>> ejemplos;  ///< Antes y después.
  std::uint64_t direcciones = 0;
};

/// Pasa los campos de un registro a los valores de sus elementos y anota lo que no puede pasar o cambia. Los
/// valores son bytes de Windows-1252 cuyo EquivalenteSEPA es lo que se escribe; vacío, no se escribe. Valen
/// hasta el registro siguiente de su grado, y mientras vivan los bytes de este.
class Traduccion {
 public:
  /// Sin `recibir` no se anota nada, y los registros han de ser de los que pasaron sin error.
  Traduccion(const OpcionesExportacion& opciones, ReceptorNotas recibir, std::size_t fuente = 0);

  // false si el registro tiene un error: no se puede cobrar.
  bool presentador(const RegistroLeido& registro);
  bool cabecera(const RegistroLeido& registro);
  bool adeudo(const AdeudoLeido& adeudo);

  std::span<const std::string_view> valores(Grado grado) const {
    return datos_[static_cast<std::size_t>(grado)].valores;
  }
  /// El del primer elemento de esa forma.
  std::string_view valor(Grado grado, Forma forma) const;
  void poner(Grado grado, Forma forma, std::string_view valor);

  void ponerFuente(std::size_t fuente) { fuente_ = fuente; }
  const Resumidas& resumidas() const noexcept { return resumidas_; }

  /// Una nota de un campo de un registro, o de todo él con `donde` a 0.
  void anotar(CodigoNota codigo, const RegistroLeido& registro, remesa::Posiciones donde,
              std::string_view valor, std::string cambio = {}, std::uint64_t cuenta = 0);
  /// El adeudo del que son los registros que sigan, para decirlo; nullptr, ninguno.
  void ponerDueno(const RegistroLeido* adeudo) { dueno_ = adeudo; }

 private:
  struct Datos {
    std::vector<std::string_view> valores;
    std::string deposito;  // lo que no está en el registro
  };
  // Lo que se mira: los campos de una correspondencia en su registro.
  struct Mirada {
    const Correspondencia& de;
    const Entrada& entrada;
    const RegistroLeido& registro;
  };

  void empezar(Grado grado);
  void pasar(Grado grado, remesa::ClaseRegistro clase, const RegistroLeido& registro);
  void fijos();
  void pasar(const Mirada& m);
  void texto(const Mirada& m);
  void referencia(const Mirada& m, std::string_view valor);
  void codigo(const Mirada& m);
  void tipo(const Mirada& m);
  void fecha(const Mirada& m);
  void fechaHora(const Mirada& m);
  void importe(const Mirada& m);
  void cuenta(const Mirada& m);
  void cuentaNacional(const Mirada& m, std::string_view ccc);
  void entidadOriginal(const Mirada& m);
  void presentador(const Mirada& m);
  void acreedor(const Mirada& m);
  void identificacion(const Mirada& m);
  void direccion(const Mirada& m);
  void partirDireccion(const Mirada& m);
  void banco(const Mirada& m);
  void bancoAcreedor(const RegistroLeido& cabecera);
  void mirarLibre(const RegistroLeido& registro, remesa::ClaseRegistro clase);
  void mirarVersion(const RegistroLeido& registro);
  void mirarCaracteres(const Mirada& m, remesa::Posiciones donde, std::string_view valor);
  bool identificador(const Mirada& m, std::string_view valor);

  std::string_view valorDe(const Mirada& m) const;
  template <class Parte>
  void poner(const Mirada& m, Parte parte, std::string_view valor) {
    sitios(m.de.grado)[m.entrada.primero + static_cast<std::size_t>(parte)] = valor;
  }
  void poner(const Mirada& m, std::string_view valor) { poner(m, 0, valor); }
  std::span<std::string_view> sitios(Grado grado) { return datos_[static_cast<std::size_t>(grado)].valores; }
  bool examina() const { return static_cast<bool>(recibir_); }
  std::string_view guardar(Grado grado, std::string_view texto);
  void anotarCampo(CodigoNota codigo, const Mirada& m, std::string_view valor, std::string cambio = {});

  const OpcionesExportacion& opciones_;
  ReceptorNotas recibir_;
  std::size_t fuente_;
  Datos datos_[kGrados];
  Resumidas resumidas_;
  const RegistroLeido* dueno_ = nullptr;
  bool malo_ = false;
  bool fueraDelEEE_ = false;  // la cuenta del deudor
};

}  // namespace iso20022
