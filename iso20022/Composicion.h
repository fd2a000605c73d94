#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "iso20022/Aviso.h"
#include "iso20022/Correspondencia.h"
#include "iso20022/RemesaLeida.h"

namespace iso20022 {

/// Lo leído de cada elemento de un grado, en el orden de la tabla. Bytes de Windows-1252.
class Leidos {
 public:
  explicit Leidos(Grado grado) : valores_(Tabla::Unica().elementos(grado).size()), lineas_(valores_.size()) {}
  void vaciar() { lineas_.assign(lineas_.size(), 0); }
  bool hay(std::size_t i) const { return lineas_[i] > 0; }
  /// "" si no lo hay.
  std::string_view operator[](std::size_t i) const { return hay(i) ? valores_[i] : std::string_view(); }
  std::size_t linea(std::size_t i) const { return lineas_[i]; }
  /// Donde se escribe el valor, que está en esa línea, desde 1.
  std::string& poner(std::size_t i, std::size_t linea) {
    lineas_[i] = linea;
    return valores_[i];
  }
  void quitar(std::size_t i) { lineas_[i] = 0; }

 private:
  std::vector<std::string> valores_;  // sin soltar su memoria de un adeudo a otro
  std::vector<std::size_t> lineas_;
};

/// Hace los registros de lo leído de un mensaje.
class Composicion {
 public:
  /// Recibe lo que no cabe: el elemento, por su grado y su lugar en él, lo que decía y lo que queda.
  using Receptor = std::function<void(CodigoAviso codigo, Grado grado, std::size_t elemento,
                                      std::string_view valor, std::string_view queda)>;

  explicit Composicion(Receptor avisar) : avisar_(std::move(avisar)) {}

  void empezarBloque(const Leidos& bloque);
  /// Un adeudo del bloque empezado, a `remesa`.
  void adeudo(const Leidos& adeudo, RemesaLeida& remesa);
  /// Del mandato del último adeudo se dice qué ha cambiado.
  bool hayCambio() const {
    return registros_[static_cast<std::size_t>(remesa::ClaseRegistro::Mandato)].lleno;
  }
  /// El 01. `cabecera`, la 02 del primer bloque, dice el banco que lo recibe.
  std::string presentador(const Leidos& mensaje, std::string_view cabecera);

 private:
  static constexpr std::size_t kClases = static_cast<std::size_t>(remesa::ClaseRegistro::Desconocido);
  struct Registro {
    std::string bytes;
    bool lleno = false;  // alguno de sus campos tiene algo
  };
  using Registros = std::array<Registro, kClases>;
  // Una entrada de la tabla y lo leído de ella.
  struct Paso {
    const Entrada& entrada;
    Grado grado;
    const Leidos& leidos;
    std::string_view operator[](std::size_t parte) const { return leidos[entrada.primero + parte]; }
  };
  static std::string_view de(const Paso& p) { return p[0]; }
  void pasar(Grado grado, const Leidos& leidos, bool conAcreedor = true);
  void pasar(const Paso& p);
  void direccion(const Paso& p);
  void identificacion(const Paso& p);
  void poner(const Paso& p, std::size_t parte, remesa::Posiciones donde, std::string_view valor);
  void sinSitio(const Paso& p, std::size_t parte);
  Registro& registro(remesa::ClaseRegistro clase) { return registros_[static_cast<std::size_t>(clase)]; }

  Receptor avisar_;
  Registros registros_, deBloque_;
  std::size_t bloque_ = 0;
  bool bloqueHecho_ = false;  // ya se sabe cuál es el de la cabecera del bloque empezado
};

}  // namespace iso20022
