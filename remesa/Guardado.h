#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>

#include "remesa/ListaRegistros.h"

namespace remesa {

/// Escritura de un fichero que o queda entera o no queda. Escribe en un temporal de la misma carpeta; al
/// confirmar lo vuelca al disco y lo renombra sobre el destino, que conserva sus permisos. Si se destruye sin
/// confirmar, el destino queda como estaba y no queda temporal. Todos lanzan ErrorEjecucion.
class EscrituraSegura {
 public:
  explicit EscrituraSegura(const std::filesystem::path& destino);
  ~EscrituraSegura();
  EscrituraSegura(const EscrituraSegura&) = delete;
  EscrituraSegura& operator=(const EscrituraSegura&) = delete;

  void escribir(std::string_view bytes);
  void confirmar();

 private:
  struct Interior;
  std::unique_ptr<Interior> interior_;
};

/// Recibe registros escritos y registros en total. Escritos todos, se le llama también mientras llegan al
/// disco, y ya no puede lanzar.
using AvanceGuardado = std::function<void(std::size_t escritos, std::size_t total)>;

/// Escribe cada registro cortado o completado con blancos a 600 bytes, seguido de CR LF.
void GuardarRemesa(const std::filesystem::path& destino, const ListaRegistros& lista,
                   const AvanceGuardado& avance = {});

}  // namespace remesa
