#include "comunes/rejilla/Rejilla.h"

#include <algorithm>

#include "ficheros/ErrorEjecucion.h"

namespace comunes {

namespace {

template <class Vector>
auto& elemento(Vector& vector, int indice) {
  if (indice < 0 || static_cast<std::size_t>(indice) >= vector.size()) {
    throw ficheros::ErrorEjecucion(ficheros::kFueraDeIntervalo);
  }
  return vector[static_cast<std::size_t>(indice)];
}

void exigir(bool dentro) {
  if (!dentro) throw ficheros::ErrorEjecucion(ficheros::kFueraDeIntervalo);
}

}  // namespace

Rejilla::Rejilla(QString nombre) : nombre_(std::move(nombre)) {}

const Rejilla::Columna& Rejilla::col(int columna) const {
  return elemento(columnas_, columna);
}
Rejilla::Columna& Rejilla::col(int columna) {
  return elemento(columnas_, columna);
}
const Rejilla::Fila& Rejilla::fil(int fila) const {
  return elemento(filas_, fila);
}
Rejilla::Fila& Rejilla::fil(int fila) {
  return elemento(filas_, fila);
}

void Rejilla::cambio(Cambio que, int fila, int columna) {
  if (!redibuja_ || !visible_) {
    pendiente_ = true;
  } else if (observador_) {
    observador_(que, fila, columna);
  }
}

void Rejilla::PonerRedraw(bool redibuja) {
  redibuja_ = redibuja;
  if (redibuja_ && visible_ && std::exchange(pendiente_, false)) cambio();
}

void Rejilla::PonerVisible(bool visible) {
  visible_ = visible;
  if (redibuja_ && visible_ && std::exchange(pendiente_, false)) cambio();
}

void Rejilla::ajustarActual() {
  const int ultimaFila = std::max(Rows() - 1, 0);
  const int ultimaColumna = std::max(Cols() - 1, 0);
  fila_ = std::min(fila_, ultimaFila);
  filaSel_ = std::min(filaSel_, ultimaFila);
  columna_ = std::min(columna_, ultimaColumna);
  columnaSel_ = std::min(columnaSel_, ultimaColumna);
}

void Rejilla::PonerRows(int filas) {
  exigir(filas >= fijas_);
  filas_.resize(static_cast<std::size_t>(filas));
  ajustarActual();
  cambio();
}

void Rejilla::PonerCols(int columnas) {
  exigir(columnas >= 0);
  const auto total = static_cast<std::size_t>(columnas);
  if (total < columnas_.size()) {
    for (Fila& fila : filas_) {
      if (fila.textos.size() > total) fila.textos.resize(total);
      if (fila.estilos.size() > total) fila.estilos.resize(total);
    }
  }
  columnas_.resize(total);
  ajustarActual();
  cambio();
}

void Rejilla::PonerFixedRows(int fijas) {
  exigir(fijas >= 0 && fijas <= Rows());
  fijas_ = fijas;
  cambio();
}

const QString& Rejilla::TextMatrix(int fila, int columna) const {
  static const QString vacio;
  const auto& textos = fil(fila).textos;
  col(columna);
  const auto c = static_cast<std::size_t>(columna);
  return c < textos.size() ? textos[c] : vacio;
}

void Rejilla::PonerTextMatrix(int fila, int columna, const QString& texto) {
  auto& textos = fil(fila).textos;
  col(columna);
  const auto c = static_cast<std::size_t>(columna);
  if (c >= textos.size()) {
    if (texto.isEmpty()) return;
    // De una vez: las filas se llenan de izquierda a derecha.
    textos.reserve(columnas_.size());
    textos.resize(c + 1);
  }
  textos[c] = texto;
  cambio(Cambio::Celda, fila, columna);
}

EstiloCelda Rejilla::Estilo(int fila, int columna) const {
  const auto& estilos = fil(fila).estilos;
  col(columna);
  const auto c = static_cast<std::size_t>(columna);
  return c < estilos.size() ? estilos[c] : EstiloCelda{};
}

void Rejilla::PonerEstilo(int fila, int columna, const EstiloCelda& estilo) {
  auto& estilos = fil(fila).estilos;
  col(columna);
  const auto c = static_cast<std::size_t>(columna);
  if (c >= estilos.size()) estilos.resize(c + 1);
  estilos[c] = estilo;
  cambio(Cambio::Celda, fila, columna);
}

void Rejilla::PonerColWidth(int columna, int twips) {
  col(columna).ancho = twips;
  cambio();
}
void Rejilla::PonerColData(int columna, int twips) {
  col(columna).dato = twips;
}
void Rejilla::PonerColAlignment(int columna, int alineacion) {
  col(columna).alineacion = alineacion;
  cambio();
}
void Rejilla::PonerFixedAlignment(int columna, int alineacion) {
  col(columna).alineacionTitulo = alineacion;
  cambio();
}
void Rejilla::PonerRowData(int fila, int dato) {
  fil(fila).dato = dato;
}
void Rejilla::PonerRowItem(int fila, int elemento) {
  fil(fila).elemento = elemento;
}
void Rejilla::PonerRowHeight(int fila, int twips) {
  fil(fila).alto = twips == -1 ? kAltoFila : twips;
  cambio();
}
void Rejilla::PonerBackColor(int color) {
  fondo_ = color;
  cambio();
}

void Rejilla::PonerRow(int fila) {
  fil(fila);
  fila_ = filaSel_ = fila;
  columnaSel_ = columna_;
}
void Rejilla::PonerCol(int columna) {
  col(columna);
  columna_ = columnaSel_ = columna;
  filaSel_ = fila_;
}
void Rejilla::PonerRowSel(int fila) {
  fil(fila);
  filaSel_ = fila;
}
void Rejilla::PonerColSel(int columna) {
  col(columna);
  columnaSel_ = columna;
}

void Rejilla::Clear() {
  for (Fila& fila : filas_) {
    fila.textos.clear();
    fila.estilos.clear();
  }
  cambio();
}

void Rejilla::AddItem(int indice) {
  exigir(indice >= fijas_ && indice <= Rows());
  filas_.emplace(filas_.begin() + indice);
  cambio();
}

void Rejilla::RemoveItem(int fila) {
  exigir(fila >= fijas_ && fila < Rows());
  filas_.erase(filas_.begin() + fila);
  ajustarActual();
  cambio();
}

void Rejilla::InsertarPares(const std::vector<int>& antesDe) {
  exigir(std::is_sorted(antesDe.begin(), antesDe.end()) &&
         (antesDe.empty() || (antesDe.front() >= fijas_ && antesDe.back() <= Rows())));
  std::vector<Fila> nuevas;
  nuevas.reserve(filas_.size() + 2 * antesDe.size());
  auto siguiente = antesDe.begin();
  for (int f = 0; f <= Rows(); ++f) {
    for (; siguiente != antesDe.end() && *siguiente == f; ++siguiente)
      nuevas.resize(nuevas.size() + 2);
    if (f < Rows()) nuevas.push_back(std::move(fil(f)));
  }
  filas_ = std::move(nuevas);
  cambio();
}

void Rejilla::QuitarMarcadas() {
  const auto final =
      std::remove_if(filas_.begin() + fijas_, filas_.end(), [](const Fila& fila) { return fila.dato >= 1; });
  if (final == filas_.end()) return;
  filas_.erase(final, filas_.end());
  ajustarActual();
  cambio();
}

void Rejilla::Reordenar(const std::vector<int>& orden) {
  exigir(orden.size() + static_cast<std::size_t>(fijas_) == filas_.size());
  std::vector<Fila> nuevas;
  nuevas.reserve(filas_.size());
  std::move(filas_.begin(), filas_.begin() + fijas_, std::back_inserter(nuevas));
  for (const int antes : orden)
    nuevas.push_back(std::move(fil(antes)));
  filas_ = std::move(nuevas);
  cambio();
}

}  // namespace comunes
