#include "ventanas/principal/ModeloRegistros.h"

#include <QScopeGuard>
#include <limits>

#include "comunes/plataforma/Texto.h"
#include "ventanas/principal/Columnas.h"

namespace principal {

bool EsVisible(unsigned char byte) {
  switch (byte) {
    case 0x7F:
    case 0x81:
    case 0x8D:
    case 0x8F:
    case 0x90:
    case 0x9D:
    case 0xAD:
      return false;
    default:
      return byte >= 0x20;
  }
}

void ModeloRegistros::avisarCambio(int fila) {
  const QModelIndex indice = index(fila);
  if (indice.isValid()) emit dataChanged(indice, indice);
}

void ModeloRegistros::cambiar(const Cambio& cambio) {
  beginResetModel();
  const auto alSalir = qScopeGuard([this] { endResetModel(); });
  cambio(lista_);
}

void ModeloRegistros::reescribir(const Cambio& cambio) {
  const auto alSalir = qScopeGuard([this] {
    if (!lista_.empty()) emit dataChanged(index(0), index(rowCount() - 1));
  });
  cambio(lista_);
}

int ModeloRegistros::rowCount(const QModelIndex& padre) const {
  if (padre.isValid()) return 0;
  return static_cast<int>(std::min<std::size_t>(lista_.size(), std::numeric_limits<int>::max()));
}

QVariant ModeloRegistros::data(const QModelIndex& indice, int papel) const {
  if (!indice.isValid() || papel != Qt::DisplayRole) return {};
  const std::string_view registro =
      lista_[static_cast<std::size_t>(indice.row())].substr(0, Columnas::kMaxima);
  QString texto = comunes::DesdeWindows1252(registro);
  for (qsizetype i = 0; i < texto.size(); ++i) {
    const auto byte = static_cast<unsigned char>(registro[static_cast<std::size_t>(i)]);
    if (EsVisible(byte)) continue;
    texto[i] = byte < 0x20 ? QChar(0x2400 + byte) : byte == 0x7F ? QChar(0x2421) : QChar(0xFFFD);
  }
  return texto;
}

}  // namespace principal
