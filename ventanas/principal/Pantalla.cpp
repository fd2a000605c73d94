#include <QLayout>
#include <QScreen>
#include <utility>

#include "ui_frmUnirQ19.h"
#include "ventanas/principal/BarraBuscar.h"
#include "ventanas/principal/LecturaRegistros.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

namespace {

// Píxeles.
constexpr int kMargenes = 40;         // los de la ventana y su marco
constexpr int kJunto = 3;             // entre unos controles y otros cuando falta sitio
constexpr int kAltoMinimoLista = 58;  // la regla, un registro y la barra de desplazamiento
constexpr int kAltoSinPlegar = 560;   // de la ventana: en una más baja no cabe todo con holgura
constexpr int kAnchoMaximo = 1600;    // el que toma de partida, si lo hay
constexpr int kAltoDePartida = 900;
constexpr int kAnchoArchivos = 160;  // de las listas de carpetas y ficheros, donde falta sitio

}  // namespace

void frmUnirQ19::ajustarAPantalla() {
  const QSize pantalla = screen()->availableGeometry().size();
  const bool estrecha = ui_->disposicionOrdenes->minimumSize().width() + kMargenes > pantalla.width();
  if (estrecha) {
    ui_->disposicionOrdenes->setDirection(QBoxLayout::TopToBottom);
    buscar_->estrechar();
  }
  if (!estrecha && pantalla.height() - kMargenes >= kAltoSinPlegar) return;
  for (QBoxLayout* fila : {ui_->disposicionInfoPreview, ui_->disposicionInfoAcumulado})
    fila->setSpacing(kJunto);
  for (QWidget* lista : {static_cast<QWidget*>(ui_->Preview), static_cast<QWidget*>(ui_->Acumulado),
                         static_cast<QWidget*>(ui_->Carpetas), static_cast<QWidget*>(ui_->Ficheros)})
    lista->setMinimumHeight(kAltoMinimoLista);
  for (QPushButton* boton : ui_->Central->findChildren<QPushButton*>())
    boton->setMinimumHeight(0);
  for (QSplitter* divisor : {ui_->DivisorListas, ui_->DivisorCarpetas})
    divisor->setHandleWidth(2 * kJunto);
  for (QBoxLayout* panel : std::initializer_list<QBoxLayout*>{
           ui_->disposicionPreview, ui_->disposicionAcumulado, ui_->disposicionCentral,
           ui_->disposicionFicheros, ui_->disposicionCarpetas, ui_->disposicionOrdenes})
    panel->setSpacing(kJunto);
  ui_->disposicionCentral->setContentsMargins(6, kJunto, 6, 0);
  ui_->DivisorArchivos->setSizes({kAnchoArchivos, kAnchoMaximo});
}

void frmUnirQ19::tomarTamano() {
  // Los registros, como texto o en columnas, piden siempre más: cuanto más ancho, menos hay que desplazarlos.
  resize(kAnchoMaximo, kAltoDePartida);
  // Antes de medir lo mínimo que ocupa.
  plegada_ = screen()->availableGeometry().height() - kMargenes < kAltoSinPlegar;
  if (plegada_) plegar(true);
  // Antes de mostrarse, lo que cambia dentro de un divisor, o de una disposición dentro de otra, no llega a
  // quien lo contiene, que seguiría midiendo lo de antes.
  const auto controles = findChildren<QWidget*>();
  for (QWidget* control : controles)
    control->updateGeometry();
  const auto disposiciones = findChildren<QLayout*>();
  for (QLayout* disposicion : disposiciones)
    disposicion->invalidate();
}

void frmUnirQ19::plegar(bool plegada) {
  for (ZonaAvisos* avisos : {ui_->AvisoPreview, ui_->AvisoAcumulado})
    avisos->ponerLineas(plegada ? 1 : 2);
  ui_->InfoAcumulado->plegar(plegada);
  lectura_->plegar(plegada);
}

void frmUnirQ19::resizeEvent(QResizeEvent* evento) {
  QMainWindow::resizeEvent(evento);
  const bool plegada = height() < kAltoSinPlegar;
  if (plegada != std::exchange(plegada_, plegada)) plegar(plegada);
}

}  // namespace principal
