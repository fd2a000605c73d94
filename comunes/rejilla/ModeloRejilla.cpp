#include "comunes/rejilla/ModeloRejilla.h"

#include <QFont>

#include "comunes/rejilla/Color.h"

namespace comunes {

namespace {

constexpr int kTwipsPixel = 15;

QVariant alineacionQt(int alineacion) {
  const Qt::Alignment horizontal = alineacion == kDerecha  ? Qt::AlignRight
                                   : alineacion == kCentro ? Qt::AlignHCenter
                                                           : Qt::AlignLeft;
  return QVariant::fromValue(horizontal | Qt::AlignVCenter);
}

}  // namespace

ModeloRejilla::ModeloRejilla(Rejilla& rejilla, QObject* padre)
    : QAbstractTableModel(padre), rejilla_(rejilla) {
  const auto medir = [this] {
    filas_ = std::max(rejilla_.Rows() - rejilla_.FixedRows(), 0);
    columnas_ = rejilla_.Cols();
  };
  medir();
  rejilla_.PonerObservador([this, medir](Rejilla::Cambio que, int fila, int columna) {
    if (que == Rejilla::Cambio::Todo) {
      beginResetModel();
      medir();
      endResetModel();
    } else if (fila < rejilla_.FixedRows()) {
      emit headerDataChanged(Qt::Horizontal, columna, columna);
    } else {
      const QModelIndex celda = index(fila - rejilla_.FixedRows(), columna);
      emit dataChanged(celda, celda);
    }
  });
}

ModeloRejilla::~ModeloRejilla() {
  rejilla_.PonerObservador({});
}

int ModeloRejilla::rowCount(const QModelIndex& padre) const {
  return padre.isValid() ? 0 : filas_;
}

int ModeloRejilla::columnCount(const QModelIndex& padre) const {
  return padre.isValid() ? 0 : columnas_;
}

QVariant ModeloRejilla::data(const QModelIndex& indice, int papel) const {
  const int fila = FilaRejilla(indice.row());
  const int columna = indice.column();
  // Con el redibujo apagado la rejilla puede haber encogido sin que la vista lo sepa todavía.
  if (!indice.isValid() || fila >= rejilla_.Rows() || columna >= rejilla_.Cols()) return {};
  if (papel == Qt::DisplayRole) return rejilla_.TextMatrix(fila, columna);
  if (papel == kElemento) return rejilla_.RowItem(fila);
  const EstiloCelda estilo = rejilla_.Estilo(fila, columna);
  switch (papel) {
    case Qt::TextAlignmentRole:
      return alineacionQt(estilo.Alineacion != 0 ? estilo.Alineacion : rejilla_.ColAlignment(columna));
    case Qt::BackgroundRole:
      return estilo.BackColor < 0 ? QVariant() : ColorDe(estilo.BackColor);
    case Qt::ForegroundRole:
      if (estilo.ForeColor >= 0) return ColorDe(estilo.ForeColor);
      // Un fondo propio pide texto propio: en un escritorio oscuro el de la paleta es blanco.
      return estilo.BackColor < 0 ? QVariant() : QColor(Qt::black);
    case Qt::FontRole:
      if (estilo.Negrita) {
        QFont fuente;
        fuente.setBold(true);
        return fuente;
      }
      return {};
    default:
      return {};
  }
}

QVariant ModeloRejilla::headerData(int seccion, Qt::Orientation orientacion, int papel) const {
  if (orientacion != Qt::Horizontal || rejilla_.FixedRows() < 1 || seccion < 0 ||
      seccion >= rejilla_.Cols()) {
    return {};
  }
  if (papel == Qt::DisplayRole) return rejilla_.TextMatrix(0, seccion);
  if (papel == Qt::TextAlignmentRole) return alineacionQt(rejilla_.FixedAlignment(seccion));
  // El negro de los títulos es "sin marcar": se deja el color del escritorio.
  const int color = rejilla_.Estilo(0, seccion).ForeColor;
  if (papel == Qt::ForegroundRole && color > 0) return ColorDe(color);
  return {};
}

int ModeloRejilla::AnchoColumna(int columna) const {
  return rejilla_.ColWidth(columna) / kTwipsPixel;
}

int ModeloRejilla::AltoFila(int fila) const {
  return rejilla_.RowHeight(FilaRejilla(fila)) / kTwipsPixel;
}

}  // namespace comunes
