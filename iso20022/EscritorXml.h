#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "iso20022/Correspondencia.h"

namespace iso20022 {

/// Compone los bytes de un pain.008. Las etiquetas están hechas de antemano y los valores pasan carácter a
/// carácter por EquivalenteSEPA: ninguno del juego hay que escaparlo dentro de un elemento.
class EscritorXml {
 public:
  /// `compacto`, sin líneas ni sangría.
  EscritorXml(Version version, bool compacto);

  /// Lo compuesto desde la última vez que se vació.
  std::string_view bytes() const noexcept { return bytes_; }
  void vaciar() { bytes_.clear(); }

  void abrirMensaje();
  void cerrarMensaje();
  void abrirBloque();
  void cerrarBloque();
  /// Los elementos con valor, uno por cada uno de la tabla, en su orden; GrpHdr y DrctDbtTxInf, abiertos y
  /// cerrados.
  void escribir(Grado grado, std::span<const std::string_view> valores);

 private:
  struct Marco {  // de un grado: sus etiquetas, y lo que va entre dos de sus valores
    std::string abre, cierra;
    std::size_t elementos = 0;
    /// Entre el valor `a` y el `b`, desde 1; el 0 es el principio, y el final.
    std::vector<std::string> entre;
    const std::string& de(std::size_t a, std::size_t b) const { return entre[a * (elementos + 1) + b]; }
  };
  void preparar(Grado grado, Version version);
  std::string sangria(std::size_t nivel) const;
  void anadirValor(std::string_view valor);

  bool compacto_;
  std::string cabeza_, pie_;
  Marco marcos_[kGrados];
  std::string bytes_;
};

}  // namespace iso20022
