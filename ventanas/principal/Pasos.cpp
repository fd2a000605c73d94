#include <QAction>
#include <QApplication>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <utility>

#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/frmUnirQ19.h"

// Los pasos de la acumulación: cada orden que la cambia se puede deshacer y rehacer.

namespace principal {

using namespace Qt::StringLiterals;

namespace {

QString Titulo(const QString& rotulo, const QString& que) {
  return que.isEmpty() ? rotulo : rotulo + u' ' + comunes::SinMnemonico(que);
}

/// Quita lo que costaría más guardar que volver a contar.
void Podar(EstadoAcumulacion& estado) {
  // Con un bloque para cada pocos adeudos, el índice ocuparía más que la lista.
  constexpr std::size_t kRegistrosPorBloque = 100;
  if (!estado.bloques || estado.indice->bloques().size() * kRegistrosPorBloque > estado.lista.size())
    estado.indice.reset();
  estado.lista.ajustarMemoria();
}

}  // namespace

void frmUnirQ19::prepararPasos() {
  historia_ = new Historia([this](EstadoAcumulacion& estado) { intercambiar(estado); }, this);
  const auto nombrar = [this] {
    ui_->mnuDeshacer->setText(Titulo(u"&Deshacer"_s, historia_->porDeshacer()));
    ui_->mnuRehacer->setText(Titulo(u"Re&hacer"_s, historia_->porRehacer()));
  };
  connect(historia_, &Historia::cambio, this, nombrar);
  connect(ui_->mnuDeshacer, &QAction::triggered, this, &frmUnirQ19::deshacer);
  ui_->mnuRehacer->setShortcuts({Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z});
  connect(ui_->mnuRehacer, &QAction::triggered, this, &frmUnirQ19::rehacer);
  connect(ui_->Deshacer, &QPushButton::clicked, this, &frmUnirQ19::deshacer);
}

EstadoAcumulacion frmUnirQ19::fotografiar() const {
  const VistaRegistros& acumulado = *ui_->Acumulado;
  EstadoAcumulacion estado;
  estado.lista = acumulado.lista();
  estado.importados = FicherosImportados;
  estado.rutas = rutasImportadas_;
  estado.tramos = acumulado.tramosSeleccionados();
  estado.actual = acumulado.actual();
  estado.bloques = conBloques();
  estado.resumen = resumenAcumulado_;
  estado.indice = indiceAcumulado_;
  Podar(estado);
  return estado;
}

// Cada cosa se cambia por la suya de una vez: si algo falla en medio no se pierde ninguna.
void frmUnirQ19::intercambiar(EstadoAcumulacion& estado) {
  VistaRegistros& acumulado = *ui_->Acumulado;
  const bool bloques = estado.bloques;
  const bool contada = estado.resumen && (!bloques || estado.indice);
  const int actual = std::exchange(estado.actual, acumulado.actual());
  const auto tramos = std::exchange(estado.tramos, acumulado.tramosSeleccionados());
  acumulado.cambiar([&](remesa::ListaRegistros& lista) { std::swap(lista, estado.lista); });
  std::swap(FicherosImportados, estado.importados);
  std::swap(rutasImportadas_, estado.rutas);
  estado.resumen = std::exchange(resumenAcumulado_, std::move(estado.resumen).value_or(remesa::Resumen()));
  estado.bloques = conBloques();
  estado.indice = std::exchange(indiceAcumulado_, std::move(estado.indice).value_or(remesa::IndiceBloques()));
  Podar(estado);
  {
    const QSignalBlocker sinAvisar(ui_->Bloques);
    ui_->Bloques->setChecked(bloques);
  }
  acumulado.seleccionarTramos(tramos);
  acumulado.ponerActual(actual);
  // Sin nada previsualizado no hay de qué decirlo: el último fichero puede ser el que se cargó al arrancar.
  ui_->Importado->setVisible(!rutaPreview_.isEmpty() &&
                             FicherosImportados.contains(u'[' + FicheroActual + u']'));
  contada ? mostrarObservaciones() : mirarAcumulado();
}

bool frmUnirQ19::comoUnPaso(const QString& que, const std::function<void()>& orden) {
  if (!enPaso_) return pasoDesde(fotografiar(), que, orden);
  orden();
  return false;
}

bool frmUnirQ19::pasoDesde(EstadoAcumulacion antes, const QString& que, const std::function<void()>& orden) {
  try {
    const QScopedValueRollback dentro(enPaso_, true);
    orden();
  } catch (...) {
    apuntarPaso(que, std::move(antes));
    throw;
  }
  return apuntarPaso(que, std::move(antes));
}

bool frmUnirQ19::apuntarPaso(const QString& que, EstadoAcumulacion antes) {
  if (antes.importados == FicherosImportados && antes.lista == ui_->Acumulado->lista()) return false;
  const remesa::ListaRegistros* const previo[] = {&ui_->Preview->lista()};
  // Un salto de línea, en un nombre de fichero, partiría el rótulo.
  const QString nombre = comunes::ConMarcasEscritas(que).replace(u'\n', u' ');
  historia_->apuntar(nombre, std::move(antes), ui_->Acumulado->lista(), previo);
  return true;
}

// Con una caja o el editor delante, o a mitad de una orden, la acumulación es suya: no se oye.
void frmUnirQ19::deshacer() {
  if (enPaso_ || QApplication::activeModalWidget() != nullptr) return;
  const QString que = historia_->porDeshacer();
  const comunes::Reloj reloj;
  historia_->deshacer();
  decir(que.isEmpty() ? u"No hay nada que deshacer."_s : u"Deshecho: %1."_s.arg(que));
}

void frmUnirQ19::rehacer() {
  if (enPaso_ || QApplication::activeModalWidget() != nullptr) return;
  const QString que = historia_->porRehacer();
  const comunes::Reloj reloj;
  historia_->rehacer();
  decir(que.isEmpty() ? u"No hay nada que rehacer."_s : u"Rehecho: %1."_s.arg(que));
}

void frmUnirQ19::decirConDeshacer(const QString& texto) {
  decir(texto);
  ui_->Deshacer->show();
}

}  // namespace principal
