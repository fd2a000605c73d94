#include <QHeaderView>
#include <QPushButton>
#include <algorithm>

#include "comunes/dialogos/CajaPropia.h"
#include "comunes/dialogos/VistaRejilla.h"
#include "comunes/rejilla/MiVisor.h"
#include "comunes/rejilla/ModeloRejilla.h"
#include "ui_MyBox.h"

namespace comunes {

using namespace Qt::StringLiterals;

void MyBox::PonerRejilla(const QString& columnas, const std::vector<QStringList>& datos) {
  ui_->MarcoMensaje->hide();
  if (accessibleName().isEmpty()) setAccessibleName(u"Elija una fila"_s);
  rejilla_ = std::make_unique<Rejilla>(ui_->VisorMini->objectName());
  PrepararRejilla(*rejilla_, columnas);
  {
    const SinRedibujo quieta(*rejilla_);
    for (std::size_t fila = 0; fila < datos.size(); ++fila) {
      for (int columna = 0; columna < rejilla_->Cols(); ++columna) {
        PonerCelda(*rejilla_, static_cast<int>(fila) + 1, columna, datos[fila].value(columna));
      }
    }
  }
  modelo_ = std::make_unique<ModeloRejilla>(*rejilla_);
  QTableView* visor = ui_->VisorMini;
  const int ancho = PrepararVistaRejilla(*visor, *modelo_) +
                    visor->style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * visor->frameWidth() + 4;
  const int altoFila = visor->verticalHeader()->defaultSectionSize();
  const int filas = std::clamp(rejilla_->Rows() - rejilla_->FixedRows(), 4, 15);
  visor->setMinimumSize(std::max(ancho, 240), altoFila * (filas + 1) + 2 * visor->frameWidth() + 8);
  visor->show();
  visor->installEventFilter(this);
  connect(visor->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& actual) { ElegirFila(actual); });
  // Las ayudas técnicas seleccionan sin mover la fila actual.
  connect(visor->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    const QModelIndexList elegidas = ui_->VisorMini->selectionModel()->selectedRows();
    if (!elegidas.isEmpty()) ElegirFila(elegidas.constFirst());
  });
  connect(visor, &QTableView::doubleClicked, this, [this](const QModelIndex& fila) { AceptarFila(fila); });
}

void MyBox::PonerColumna(const QString& titulo) {
  columna_ = BuscarColumna(*rejilla_, titulo);
}

void MyBox::ElegirFila(const QModelIndex& fila) {
  if (!fila.isValid()) return;
  // Al llegar con el teclado la vista hace actual una fila sin seleccionarla: lo elegido ha de verse.
  if (!ui_->VisorMini->selectionModel()->isSelected(fila)) ui_->VisorMini->selectRow(fila.row());
  rejilla_->PonerRow(modelo_->FilaRejilla(fila.row()));
  texto_ = rejilla_->TextMatrix(rejilla_->Row(), columna_);
}

void MyBox::AceptarFila(const QModelIndex& fila) {
  if (!fila.isValid()) return;
  ElegirFila(fila);
  BotonesVisibles().front()->click();
}

QString MyVisorBox(const QString& Titulo, const QString& Columnas, const std::vector<QStringList>& Datos,
                   int Icono, const QString& Columna, float Top, float Left, QWidget* Sobre) {
  CajaPropia caja(Sobre);
  caja->PonerTitulo(Titulo, Icono);
  caja->PonerRejilla(Columnas, Datos);
  if (Columna.isEmpty()) {
    caja->PonerBotones(1, 1);
  } else {
    caja->PonerBotones(2, 2);
    caja->PonerColumna(Columna);
  }
  caja->Colocar(Top, Left, Sobre);
  return caja.Preguntar() == kAceptar ? caja->Texto() : QString();
}

}  // namespace comunes
