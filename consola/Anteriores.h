#pragma once

#include <memory>
#include <string>
#include <vector>

#include "anteriores/Cruce.h"

namespace CLI {
class App;
}

namespace consola {

/// Lo que se envió antes, para compararlo con lo que se comprueba.
class EnviadoAntes {
 public:
  /// Lee las carpetas; las que no se pueden leer quedan dichas. `meses`, como en OpcionesAnteriores.
  EnviadoAntes(const std::vector<std::string>& carpetas, const std::vector<std::string>& meses,
               remesa::Dia hoy);

  /// Se leyeron todas las carpetas.
  bool todas() const { return indice_->carpetasSinLeer().empty(); }
  /// Comparan una remesa, y añaden lo hallado al resultado. Lanzan ErrorEjecucion.
  void comparar(const std::filesystem::path& ruta, remesa::ResultadoComprobacion& resultado,
                const remesa::ReceptorHallazgos& recibir, const anteriores::Seguir& seguir) const;
  void comparar(const remesa::ListaRegistros& lista, const std::filesystem::path& ruta,
                remesa::ResultadoComprobacion& resultado, const remesa::ReceptorHallazgos& recibir,
                const anteriores::Seguir& seguir) const;
  /// Los ficheros que no se han tomado, uno por línea.
  void decirOmitidos() const;

 private:
  std::shared_ptr<const anteriores::Indice> indice_;
};

/// --anteriores y --meses; esta deja un número o, si se da sin él, ninguno o uno vacío.
void OpcionesAnteriores(CLI::App& orden, std::vector<std::string>& carpetas, std::vector<std::string>& meses);

}  // namespace consola
