#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <list>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "consola/LectorRegistros.h"
#include "ficheros/FicheroProvisional.h"
#include "ficheros/Lectura.h"
#include "remesa/EscrituraBloques.h"
#include "remesa/Fichero.h"
#include "remesa/ObservacionesBloques.h"

namespace consola {

/// Ficheros que se leen dos veces sin tener ninguno en memoria: una de principio a fin y otra por los
/// registros que se pidan, cada uno una vez. Si uno ha cambiado entre las dos, o mientras, es un error. Todo
/// lanza ErrorEjecucion.
class FuenteFicheros : public remesa::FuenteRegistros {
 public:
  /// El registro y dónde empieza: los bytes de los ficheros, uno tras otro.
  using Registros = std::function<void(std::string_view registro, std::uint64_t posicion)>;

  explicit FuenteFicheros(std::size_t bufer = LectorRegistros::kBufer) : lector_(bufer) {}

  /// La primera lectura.
  void leer(const std::filesystem::path& fichero, const Registros& recibir,
            const remesa::AvanceLectura& avance = {});
  /// La de uno que nadie más tiene; ha de vivir mientras esto.
  void leer(ficheros::FicheroProvisional& fichero, const Registros& recibir);
  /// Bytes de los leídos hasta ahora, que es donde empieza el siguiente.
  std::uint64_t posicion() const noexcept { return posicion_; }

  // La segunda.
  std::string_view registro(std::uint64_t posicion) override;
  void adeudo(const remesa::RepartoBloques::Adeudo& adeudo, const Receptor& recibir) override;
  /// Al acabar: los que siguen abiertos no han cambiado.
  void terminar() const;

 private:
  struct Leido {
    std::uint64_t inicio, tamano;
    std::filesystem::path ruta;
    ficheros::LecturaFichero::Marca marca;
    ficheros::FicheroProvisional* provisional = nullptr;  // y entonces, ni ruta ni marca
  };
  /// Un fichero abierto con lo último que se leyó de él.
  struct Abierto {
    /// Lanza también si ya no es el que se leyó.
    Abierto(std::size_t cual, const Leido& suyo);
    void leerEn(std::uint64_t donde, std::span<char> destino);
    void comprobarMarca() const;

    std::size_t fichero;
    const Leido& leido;
    std::optional<ficheros::LecturaFichero> lectura;
    std::vector<char> bytes;
    std::uint64_t desde = 0;    // del fichero, el primero de `bytes`
    std::uint64_t seguido = 0;  // donde acabó lo último que se pidió
    std::size_t adelanto = 0;   // lo que se lee de más mientras se pida seguido
  };

  template <class Leer>
  void recorrerEntero(Leer leer, const Registros& recibir);
  Abierto& abrir(std::uint64_t posicion);
  std::string_view ver(remesa::RepartoBloques::Tramo tramo);
  /// Da los "03" del tramo.
  template <class Recibir>
  void recorrer(remesa::RepartoBloques::Tramo tramo, Recibir recibir);
  void comprobar(const remesa::RepartoBloques::Adeudo& adeudo, std::string_view primero) const;

  LectorRegistros lector_;
  std::deque<Leido> leidos_;
  std::list<Abierto> abiertos_;  // el último usado, delante
  std::uint64_t posicion_ = 0;
};

/// La primera lectura de unos ficheros que se van a reunir, o a separar, por bloques.
class UnionBloques {
 public:
  explicit UnionBloques(std::size_t bufer = LectorRegistros::kBufer) : ficheros_(bufer) {}

  /// Lanza ErrorEjecucion si no se puede leer o son demasiados adeudos.
  void leer(const std::filesystem::path& fichero, const remesa::AvanceLectura& avance = {});
  /// Unos registros hechos ya; han de vivir mientras esto.
  void leer(ficheros::FicheroProvisional& fichero);
  /// Lo que hay en el último leído.
  const remesa::Resumen& resumen() const noexcept { return resumen_; }
  /// Lo que hay que saber de él; si es que no se puede reunir, solo eso.
  const std::vector<remesa::Observacion>& observaciones() const noexcept { return observaciones_; }

  // Para la segunda lectura, leídos todos:
  remesa::RepartoBloques& reparto() noexcept { return reparto_; }
  remesa::FuenteRegistros& fuente() noexcept { return ficheros_; }
  /// Bytes leídos.
  std::uint64_t bytes() const noexcept { return ficheros_.posicion(); }
  /// Al acabar: lo leído no ha cambiado.
  void terminar() const { ficheros_.terminar(); }

 private:
  template <class Leer>
  void leerCon(Leer leer);

  remesa::RepartoBloques reparto_;
  FuenteFicheros ficheros_;
  remesa::Resumen resumen_;
  std::vector<remesa::Observacion> observaciones_;
};

}  // namespace consola
