#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "remesa/Identificacion.h"
#include "remesa/ListaRegistros.h"
#include "remesa/RepartoBloques.h"
#include "remesa/TotalesNorma.h"

namespace remesa {

/// De dónde salen otra vez los registros que un reparto sitúa.
class FuenteRegistros {
 public:
  /// El registro vale hasta que vuelve.
  using Receptor = std::function<void(std::string_view registro)>;

  virtual ~FuenteRegistros() = default;
  /// El que empieza en `posicion`; puede venir cortado a 600. Vale hasta la llamada siguiente.
  virtual std::string_view registro(std::uint64_t posicion) = 0;
  /// Los "03" del adeudo, en el orden en que se escriben.
  virtual void adeudo(const RepartoBloques::Adeudo& adeudo, const Receptor& recibir) = 0;
};

/// Los de una lista, que se repartió con los índices por posiciones.
class FuenteLista : public FuenteRegistros {
 public:
  explicit FuenteLista(const ListaRegistros& lista) : lista_(lista) {}
  std::string_view registro(std::uint64_t posicion) override { return lista_[posicion]; }
  void adeudo(const RepartoBloques::Adeudo& adeudo, const Receptor& recibir) override;
  /// Los índices de los registros del adeudo, en su orden.
  const std::vector<std::size_t>& indices(const RepartoBloques::Adeudo& adeudo);

 private:
  const ListaRegistros& lista_;
  std::vector<std::size_t> indices_;
};

/// Adeudos [desde, hasta) de un bloque del reparto.
struct Rebanada {
  std::size_t bloque = 0;
  std::size_t desde = 0;
  std::size_t hasta = 0;
};

/// El reparto entero.
std::vector<Rebanada> Enteros(const RepartoBloques& reparto);

/// La identificación nueva que lleva la cabecera del presentador.
struct Renovacion {
  Momento ahora;
  int parte = 0;
};

/// Escribe una remesa entera con esas rebanadas, con el "01" si lo hay y sus totales: registros de 600 con CR
/// LF. Da lo que suma, en céntimos. Lanza ErrorEjecucion: 6 si un total no cabe, y lo que lance la fuente.
SumaNorma EscribirBloques(const RepartoBloques& reparto, std::span<const Rebanada> rebanadas,
                          FuenteRegistros& fuente, const std::optional<Renovacion>& renovacion,
                          const std::function<void(std::string_view bytes)>& escribir);

}  // namespace remesa
