#pragma once

#include <filesystem>
#include <memory>
#include <string_view>

#include "ficheros/FicheroTemporal.h"

namespace ficheros {

/// Escritura de un fichero que o queda entera o no queda. Escribe en un temporal de la misma carpeta; al
/// confirmar lo vuelca al disco y lo renombra sobre el destino, que conserva sus permisos. Si se destruye sin
/// confirmar, el destino queda como estaba y no queda temporal. Todos lanzan ErrorEjecucion.
class EscrituraSegura {
 public:
  /// `limpiar`, como en FicheroTemporal.
  explicit EscrituraSegura(const std::filesystem::path& destino, bool limpiar = true);
  ~EscrituraSegura();
  EscrituraSegura(const EscrituraSegura&) = delete;
  EscrituraSegura& operator=(const EscrituraSegura&) = delete;

  void escribir(std::string_view bytes);
  /// Lleva al disco todo lo escrito, sin ponerlo aún en su sitio. No hay más que escribir.
  void volcar();
  void confirmar(Colocacion como = {});

 private:
  struct Interior;
  std::unique_ptr<Interior> interior_;
};

}  // namespace ficheros
