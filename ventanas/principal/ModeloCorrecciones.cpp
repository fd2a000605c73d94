#include "ventanas/principal/ModeloCorrecciones.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

#include "comunes/plataforma/Texto.h"
#include "ventanas/principal/TextosCorreccion.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

QString Celda(const remesa::Correccion& c, int columna) {
  switch (columna) {
    case ModeloCorrecciones::kCodigo:
      return QString::fromUtf8(remesa::TextoCodigo(c.codigo).data());
    case ModeloCorrecciones::kRegistro:
      return QString::number(c.registro);
    case ModeloCorrecciones::kQue:
      return TextoCorreccion(c) + (c.arrastrada ? u", por otra corrección"_s : QString());
    case ModeloCorrecciones::kCampo:
      return c.campo == nullptr ? QString()
                                : QString::fromUtf8(c.campo->nombre.data(), std::ssize(c.campo->nombre));
    case ModeloCorrecciones::kAntes:
      return comunes::SinControles(TextoAntes(c));
    case ModeloCorrecciones::kDespues:
      return comunes::SinControles(TextoDespues(c));
    case ModeloCorrecciones::kDeudor:
      return comunes::SinControles(comunes::DesdeWindows1252(c.deudor));
    default:
      return comunes::SinControles(comunes::DesdeWindows1252(c.referencia));
  }
}

}  // namespace

void ModeloCorrecciones::poner(std::vector<remesa::Correccion> correcciones) {
  beginResetModel();
  correcciones_ = std::move(correcciones);
  marcadas_.assign(correcciones_.size(), true);
  visibles_.resize(correcciones_.size());
  std::iota(visibles_.begin(), visibles_.end(), std::size_t{0});
  endResetModel();
}

void ModeloCorrecciones::ver(std::optional<remesa::CodigoHallazgo> codigo) {
  beginResetModel();
  visibles_.clear();
  for (std::size_t i = 0; i < correcciones_.size(); ++i)
    if (!codigo || correcciones_[i].codigo == *codigo) visibles_.push_back(i);
  endResetModel();
}

const remesa::Correccion& ModeloCorrecciones::enFila(int fila) const {
  return correcciones_[visibles_[static_cast<std::size_t>(fila)]];
}

std::size_t ModeloCorrecciones::marcadas() const {
  return static_cast<std::size_t>(std::ranges::count(marcadas_, true));
}

void ModeloCorrecciones::marcar(int desde, int hasta, bool si) {
  if (hasta < desde) return;
  for (int fila = desde; fila <= hasta; ++fila)
    if (!enFila(fila).arrastrada) marcadas_[visibles_[static_cast<std::size_t>(fila)]] = si;
  emit dataChanged(index(desde, kCodigo), index(hasta, kCodigo), {Qt::CheckStateRole});
}

int ModeloCorrecciones::rowCount(const QModelIndex& padre) const {
  return padre.isValid() ? 0 : static_cast<int>(visibles_.size());
}

int ModeloCorrecciones::columnCount(const QModelIndex& padre) const {
  return padre.isValid() ? 0 : kColumnas;
}

QVariant ModeloCorrecciones::data(const QModelIndex& indice, int papel) const {
  if (!indice.isValid()) return {};
  const remesa::Correccion& c = enFila(indice.row());
  if (papel == Qt::DisplayRole) return Celda(c, indice.column());
  if (papel == Qt::CheckStateRole && indice.column() == kCodigo && !c.arrastrada)
    return marcadaEnFila(indice.row()) ? Qt::Checked : Qt::Unchecked;
  if (papel == Qt::TextAlignmentRole && indice.column() == kRegistro)
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  return {};
}

QVariant ModeloCorrecciones::headerData(int seccion, Qt::Orientation orientacion, int papel) const {
  static const QStringList titulos{u"Código"_s, u"Registro"_s, u"Qué se corrige"_s, u"Campo"_s,
                                   u"Había"_s,  u"Queda"_s,    u"Deudor"_s,         u"Referencia"_s};
  if (orientacion != Qt::Horizontal || papel != Qt::DisplayRole) return {};
  return titulos.value(seccion);
}

bool ModeloCorrecciones::setData(const QModelIndex& indice, const QVariant& valor, int papel) {
  if (papel != Qt::CheckStateRole || !(flags(indice) & Qt::ItemIsUserCheckable)) return false;
  marcar(indice.row(), indice.row(), valor.toInt() == Qt::Checked);
  return true;
}

Qt::ItemFlags ModeloCorrecciones::flags(const QModelIndex& indice) const {
  Qt::ItemFlags marcas = QAbstractTableModel::flags(indice);
  if (indice.isValid() && indice.column() == kCodigo && !enFila(indice.row()).arrastrada)
    marcas |= Qt::ItemIsUserCheckable;
  return marcas;
}

}  // namespace principal
