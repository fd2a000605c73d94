#pragma once

#include <deque>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "devoluciones/Devolucion.h"
#include "remesa/Fichero.h"
#include "remesa/Repetidos.h"
#include "remesa/TipoFichero.h"

namespace devoluciones {

/// En qué forma dice el banco lo que no se cobró.
enum class Forma : std::uint8_t {
  Rechazos,      ///< Cuaderno 19.14, registros 11 a 15.
  Devoluciones,  ///< Cuaderno 19.14, registros 21 a 25.
  Pain002,       ///< Estado de una remesa en XML.
  Camt054,       ///< Anotaciones de la cuenta en XML.
};

enum class ClaseAviso : std::uint8_t {
  Cortado,             ///< No acaba en su 99 o, en un XML, en su fin: `causa`.
  SinCabecera,         ///< Adeudos sin cabecera de acreedor delante.
  Longitud,            ///< Registros que no son de 600.
  CodigoAjeno,         ///< Registros de otros códigos: no se miran.
  Mezcla,              ///< Rechazos y devoluciones en un fichero: se leen todos.
  Importe,             ///< Importes que no se entienden.
  Moneda,              ///< Importes que no son en euros: no se toman.
  TotalImportes,       ///< El fichero dice `dicho` céntimos y sus adeudos suman `debido`.
  TotalAdeudos,        ///< El fichero dice `dicho` adeudos y trae `debido`.
  TotalRegistros,      ///< El fichero dice `dicho` registros y trae `debido`.
  SinDevoluciones,     ///< No trae ninguna.
  NoRechazados,        ///< Operaciones de un pain.002 que siguen adelante.
  SinMotivo,           ///< Anotaciones de un camt.054 que no son devoluciones.
  AFavor,              ///< Anotaciones con motivo, pero a favor del acreedor.
  DeTransferencias,    ///< Un pain.002 de transferencias: no son adeudos.
  FicheroRepetido,     ///< Trae lo mismo que otro ya leído, `causa`: no se lee otra vez.
  DevolucionRepetida,  ///< Adeudos que ya estaban, iguales, en lo leído antes.
};

/// Algo que el operador debe saber de un fichero, como datos.
struct AvisoLectura {
  ClaseAviso clase{};
  std::uint64_t cuenta = 1;                ///< A cuántos afecta.
  std::uint64_t registro = 0;              ///< El primero (en un XML, la línea), desde 1; 0 si no procede.
  std::optional<std::int64_t> dicho = {};  ///< Ausente si no es un número, que está en `causa`.
  std::int64_t debido = 0;
  std::string causa = {};
};

struct FicheroLeido {
  std::filesystem::path ruta;
  Forma forma{};
  Dato identificacion = {};
  std::size_t primera = 0;  ///< Sus devoluciones en el lote, seguidas.
  std::size_t cuantas = 0;
  bool completo = true;  ///< false si no se pudo leer hasta el final.
  std::vector<AvisoLectura> avisos = {};
};

/// El fichero no es de devoluciones: qué es, en español y para seguir a «es».
struct FicheroAjeno {
  std::string queEs;
};

/// Las devoluciones de uno o varios ficheros, en su orden.
class Lote {
 public:
  Lote() = default;
  Lote(Lote&&) = default;
  Lote& operator=(Lote&&) = default;
  Lote(const Lote&) = delete;
  Lote& operator=(const Lote&) = delete;

  /// Añade lo que trae el fichero, en la forma que tenga. Lanza ErrorEjecucion si no se puede leer y
  /// FicheroAjeno si no es de devoluciones; entonces el lote queda como estaba. De un XML cortado se queda
  /// con lo que venía antes, con `completo` a false. Un fichero que trae lo mismo que otro no añade nada.
  const FicheroLeido& leer(const std::filesystem::path& ruta, const remesa::AvanceLectura& avance = {});

  std::span<const Devolucion> devoluciones() const noexcept { return devoluciones_; }
  std::span<const FicheroLeido> ficheros() const noexcept { return ficheros_; }
  /// La devolución igual que ya estaba antes que `i`, o `i` si no la hay: el mismo adeudo con los mismos
  /// motivo y fechas.
  std::size_t primeraIgual(std::size_t i) const { return iguales_[i]; }

  // Para los lectores de cada forma.

  Devolucion& anadir(std::uint64_t registro);
  void avisar(AvisoLectura aviso);
  /// Uno más de su clase en este fichero; el primero dice su registro.
  void contar(ClaseAviso clase, std::uint64_t registro);
  FicheroLeido& fichero() { return ficheros_.back(); }
  void conservar(remesa::ListaRegistros lista) { listas_.push_back(std::move(lista)); }
  Dato guardar(QStringView texto);

 private:
  void leerEnSuForma(const std::filesystem::path& ruta, const remesa::AvanceLectura& avance);
  void descartarUltimo();
  void mirarRepetidos();

  std::vector<Devolucion> devoluciones_;
  std::vector<FicheroLeido> ficheros_;
  std::vector<std::size_t> iguales_;
  std::vector<std::uint64_t> huellas_;  // de lo que trae cada fichero
  remesa::ClavesVistas vistas_;
  std::deque<remesa::ListaRegistros> listas_;
  std::deque<std::string> textos_;
};

}  // namespace devoluciones
