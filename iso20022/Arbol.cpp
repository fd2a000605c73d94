#include "iso20022/Arbol.h"

#include <algorithm>

namespace iso20022 {
namespace {

constexpr std::u16string_view kRepetido = u"[2]";

QStringView Vista(std::u16string_view texto) {
  return {texto.data(), static_cast<qsizetype>(texto.size())};
}

}  // namespace

const Arbol::Nodo* Arbol::Nodo::hijo(QStringView buscado) const {
  for (const Nodo* nodo : hijos)
    if (Vista(nodo->nombre) == buscado || (nodo->otroNombre == buscado && !buscado.isEmpty())) return nodo;
  return nullptr;
}

QString Arbol::Nodo::ruta() const {
  if (padre == nullptr) return {};
  const QString delante = padre->ruta();
  return delante.isEmpty() ? Vista(nombre).toString() : delante + u'/' + Vista(nombre).toString();
}

Arbol::Arbol() {
  nodos_.push_back(std::make_unique<Nodo>());
  Nodo& raiz = *nodos_.front();
  raiz.nombre = u"CstmrDrctDbtInitn";
  Nodo& bloque = abrir(raiz, u"PmtInf");
  Nodo* const deGrado[kGrados] = {&abrir(raiz, u"GrpHdr"), &bloque, &abrir(bloque, u"DrctDbtTxInf")};
  for (const Grado grado : {Grado::Mensaje, Grado::Bloque, Grado::Adeudo}) {
    Nodo& suyo = *deGrado[static_cast<std::size_t>(grado)];
    suyo.abreGrado = true;
    suyo.grado = grado;
    const auto elementos = Tabla::Unica().elementos(grado);
    for (std::size_t i = 0; i < elementos.size(); ++i)
      anadir(suyo, elementos[i], i);
  }
}

const Arbol& Arbol::Unico() {
  static const Arbol arbol;
  return arbol;
}

Arbol::Nodo& Arbol::abrir(Nodo& padre, std::u16string_view nombre) {
  for (const auto& nodo : nodos_)
    if (nodo->padre == &padre && nodo->nombre == nombre) return *nodo;
  Nodo& nuevo = *nodos_.emplace_back(std::make_unique<Nodo>());
  nuevo.nombre = nombre;
  const std::string comun(nombre.begin(), nombre.end());
  if (const std::string_view antiguo = NombreEn(Version::V02, comun); antiguo != comun)
    nuevo.otroNombre = QString::fromLatin1(antiguo.data(), static_cast<qsizetype>(antiguo.size()));
  nuevo.grado = padre.grado;
  nuevo.padre = &padre;
  padre.hijos.push_back(&nuevo);
  return nuevo;
}

void Arbol::anadir(Nodo& grado, const Elemento& elemento, std::size_t indice) {
  const std::u16string ruta(elemento.ruta.begin(), elemento.ruta.end());
  Nodo* nodo = &grado;
  for (std::size_t desde = 0; desde <= ruta.size();) {
    const std::size_t barra = std::min(ruta.find(u'/', desde), ruta.size());
    std::u16string_view nombre = std::u16string_view(ruta).substr(desde, barra - desde);
    const bool repetido = nombre.ends_with(kRepetido);
    Nodo* const padre = nodo;
    nodo = &abrir(*padre, nombre);
    if (repetido) {
      nombre.remove_suffix(kRepetido.size());
      abrir(*padre, nombre).segundo = nodo;
    }
    desde = barra + 1;
  }
  nodo->elemento = &elemento;
  nodo->indice = indice;
  deElemento_[static_cast<std::size_t>(elemento.de->grado)].push_back(nodo);
}

}  // namespace iso20022
