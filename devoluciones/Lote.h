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
  EnUtf8,              ///< Registros en UTF-8, leídos como tales.
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

/// El fichero no es lo que se pide.
struct FicheroAjeno {
  QString porque;  ///< En una frase sin punto ni mayúscula: "es una remesa de adeudos, no …".
};

/// De un fichero de texto que no es `esperado` ("una remesa").
FicheroAjeno AjenoDe(remesa::TipoFichero tipo, const QString& esperado);

/// Mira solo el principio del fichero. Lanza ErrorEjecucion si no se puede leer.
bool EsDeDevoluciones(const std::filesystem::path& ruta);

/// Lo que un registro de cabecera dice de las devoluciones que le siguen.
struct Cabecera {
  Dato acreedor, nombre, cuenta, ficheroOriginal;
  std::optional<remesa::Dia> fecha;  ///< De cobro en un rechazo; de devolución en una devolución.
  std::uint64_t huella = 0;          ///< La pone el lote.
};

/// Las devoluciones de uno o varios ficheros, en su orden. De las que vienen en un registro solo guarda dónde
/// está.
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

  std::size_t size() const noexcept { return entradas_.size(); }
  Devolucion operator[](std::size_t i) const;
  std::span<const FicheroLeido> ficheros() const noexcept { return ficheros_; }
  /// Ya estaba en un fichero leído antes: el mismo adeudo, con el mismo motivo y las mismas fechas.
  bool estaEnOtro(std::size_t i) const { return entradas_[iguales_[i]].fichero != entradas_[i].fichero; }

  // Para los lectores de cada forma.

  void anadir(const Devolucion& devolucion, std::uint64_t linea);
  /// Un registro de adeudo, que sigue a la última cabecera o, sin ella, a ninguna.
  void anadirRegistro(std::string_view bytes, std::uint64_t numero);
  void ponerCabecera(Cabecera cabecera);
  void quitarCabecera() { cabecera_ = kSinCabecera; }
  bool hayCabecera() const { return cabecera_ != kSinCabecera; }
  void reservar(std::size_t mas) { entradas_.reserve(entradas_.size() + mas); }
  void avisar(AvisoLectura aviso);
  /// Uno más de su clase en este fichero; el primero dice su registro.
  void contar(ClaseAviso clase, std::uint64_t registro);
  FicheroLeido& fichero() { return ficheros_.back(); }
  void conservar(remesa::ListaRegistros lista) { listas_.push_back(std::move(lista)); }
  std::string_view conservar(std::string bytes) { return textos_.emplace_back(std::move(bytes)); }
  Dato guardar(QStringView texto);

 private:
  static constexpr std::uint32_t kSinCabecera = std::numeric_limits<std::uint32_t>::max();
  struct Entrada {
    std::string_view registro;  // vacío si no vino en uno
    std::uint64_t numero;
    std::uint32_t fichero;
    std::uint32_t donde;  // su cabecera o, si no vino en un registro, la devolución
  };
  void leerEnSuForma(const std::filesystem::path& ruta, const remesa::AvanceLectura& avance);
  std::uint64_t huella(const Entrada& entrada) const;
  void mirarRepetidos();

  std::vector<Entrada> entradas_;
  std::vector<Devolucion> leidas_;  // las que no vinieron en un registro
  std::deque<Cabecera> cabeceras_;
  std::uint32_t cabecera_ = kSinCabecera;
  std::vector<FicheroLeido> ficheros_;
  std::vector<std::size_t> iguales_;    // la primera igual a cada una, quizá ella
  std::vector<std::uint64_t> huellas_;  // de lo que trae cada fichero
  remesa::ClavesVistas vistas_;
  std::deque<remesa::ListaRegistros> listas_;
  std::deque<std::string> textos_;
};

}  // namespace devoluciones
