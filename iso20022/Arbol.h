#pragma once

#include <QString>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "iso20022/Correspondencia.h"

namespace iso20022 {

/// Los elementos de la tabla como un árbol, para saber qué es cada uno según se leen.
class Arbol {
 public:
  struct Nodo {
    std::u16string nombre;  // de la .08
    QString otroNombre;     // de la .02, si es otro
    Grado grado = Grado::Mensaje;
    const Elemento* elemento = nullptr;  // nullptr en los que contienen otros
    std::size_t indice = 0;              // el suyo en los de su grado
    bool abreGrado = false;              // GrpHdr, PmtInf y DrctDbtTxInf
    const Nodo* padre = nullptr;
    const Nodo* segundo = nullptr;  // donde va su repetición
    std::vector<const Nodo*> hijos;

    /// El de ese nombre, que puede ser el de cualquiera de las dos versiones; nullptr si no está en la tabla.
    const Nodo* hijo(QStringView buscado) const;
    /// "PmtInf/DrctDbtTxInf/PmtId"
    QString ruta() const;
  };

  static const Arbol& Unico();
  /// CstmrDrctDbtInitn.
  const Nodo& raiz() const { return *nodos_.front(); }
  /// El de un elemento de la tabla, por su lugar en los de su grado.
  const Nodo& de(Grado grado, std::size_t indice) const {
    return *deElemento_[static_cast<std::size_t>(grado)][indice];
  }

 private:
  Arbol();
  Nodo& abrir(Nodo& padre, std::u16string_view nombre);
  void anadir(Nodo& grado, const Elemento& elemento, std::size_t indice);

  std::vector<std::unique_ptr<Nodo>> nodos_;
  std::vector<const Nodo*> deElemento_[kGrados];
};

}  // namespace iso20022
