#include <QApplication>
#include <QScopeGuard>
#include <algorithm>

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Ventanas.h"
#include "remesa/Adeudos.h"
#include "remesa/Campos.h"
#include "remesa/Fusion.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/editor/EditarSEPA.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

constexpr int kCuaderno19 = 19;  // tipo de fichero para el editor

/// Selección y fila actual cuando se hayan quitado los registros de totales; los que siguen conservan su
/// orden.
struct Senalado {
  std::vector<std::size_t> seleccion;
  int actual = -1;
};

Senalado SinTotales(const VistaRegistros& vista) {
  const std::vector<std::size_t> seleccion = vista.seleccion();
  Senalado tras;
  if (seleccion.empty() && vista.actual() < 0) return tras;
  auto siguiente = seleccion.begin();
  std::size_t nuevo = 0;
  for (std::size_t i = 0; i < vista.lista().size(); ++i) {
    const bool seleccionado = siguiente != seleccion.end() && *siguiente == i;
    if (seleccionado) ++siguiente;
    if (remesa::EsDeTotales(remesa::Codigo(vista.lista()[i]))) continue;
    if (seleccionado) tras.seleccion.push_back(nuevo);
    if (vista.actual() == static_cast<int>(i)) tras.actual = static_cast<int>(nuevo);
    ++nuevo;
  }
  return tras;
}

}  // namespace

bool frmUnirQ19::juntar(const remesa::ListaRegistros& previo) {
  if (conBloques()) return reunir(previo, u"No se ha importado nada."_s);
  VistaRegistros& acumulado = *ui_->Acumulado;
  const Senalado senalado = SinTotales(acumulado);
  acumulado.cambiar([&](remesa::ListaRegistros& lista) { remesa::Importar(lista, previo); });
  acumulado.seleccionar(senalado.seleccion);
  acumulado.ponerActual(senalado.actual);
  return true;
}

void frmUnirQ19::importar() {
  if (importadoVisible()) return;
  const comunes::Reloj reloj;
  const QString mezcla = loQueMezcla();
  if (!juntar(ui_->Preview->lista())) return;
  FicherosImportados += u'[' + FicheroActual + u']';
  mezclas_.insert(FicherosImportados, mezcla);
  if (!FicheroActual.isEmpty()) rutasImportadas_.insert(FicheroActual, rutaActual_);
  ui_->Importado->show();
  rechazo_.clear();
  decir({});
  if (conBloques())
    mostrarObservaciones();
  else
    RecalcularTotales();
}

void frmUnirQ19::RecalcularTotales() {
  if (conBloques()) return recalcularBloques();
  // También si falla: lo reescrito hasta entonces se conserva, y hay que contarlo.
  const auto alSalir = qScopeGuard([this] { mostrarObservaciones(); });
  ui_->Acumulado->modelo().reescribir(
      [this](remesa::ListaRegistros& lista) { remesa::RecalcularYResumir(lista, resumenAcumulado_); });
}

void frmUnirQ19::comoUnPaso(const QString&, const std::function<void()>& orden) {
  orden();
}

void frmUnirQ19::empezar() {
  FicherosImportados.clear();
  rutasImportadas_.clear();
  ui_->Acumulado->poner({});
  ui_->Importado->hide();
  decir({});
  mirarAcumulado();
}

void frmUnirQ19::insertar() {
  VistaRegistros& acumulado = *ui_->Acumulado;
  const int actual = acumulado.actual();
  if (actual < 0) return;
  const auto i = static_cast<std::size_t>(actual);
  if (!remesa::EsDuplicable(acumulado.lista()[i])) return;
  const comunes::Reloj reloj;
  if (conBloques()) {
    decir({});
    return insertarConBloques(i);
  }
  acumulado.cambiar([i](remesa::ListaRegistros& lista) { remesa::InsertarCopia(lista, i); });
  // La copia es lo que se va a corregir: lo que estuviese seleccionado se tomaría por ella.
  acumulado.seleccionarSolo(actual + 1);
  decir({});
  RecalcularTotales();
}

void frmUnirQ19::eliminar() {
  VistaRegistros& acumulado = *ui_->Acumulado;
  std::vector<std::size_t> seleccion = acumulado.seleccion();
  QString pregunta = u" ¿ Confirma que desea eliminar deudor(es) seleccionados ? "_s;
  if (conBloques()) {
    const auto conTodo = remesa::ConSusOpcionales(acumulado.lista(), seleccion);
    pregunta += sobreOpcionales(seleccion, conTodo);
    seleccion = conTodo;
  }
  if (!remesa::PuedeEliminar(acumulado.lista(), seleccion)) {
    comunes::Avisar(u" ¿ No se pueden suprimir todos los registros de deudores ? "_s);
    return;
  }
  if (!comunes::Confirmar(pregunta, 1)) return;
  const comunes::Reloj reloj;
  if (conBloques()) {
    decir({});
    return eliminarConBloques(seleccion);
  }
  // Con el teclado se sigue desde donde se estaba.
  const int actual = acumulado.actual();
  const auto quitados =
      std::count_if(seleccion.begin(), seleccion.end(), [&, &lista = acumulado.lista()](std::size_t fila) {
        return static_cast<int>(fila) < actual &&
               remesa::Codigo(lista[fila]) == remesa::CodigoRegistro::Adeudo;
      });
  acumulado.cambiar([&](remesa::ListaRegistros& lista) { remesa::EliminarAdeudos(lista, seleccion); });
  acumulado.ponerActual(
      std::min(actual - static_cast<int>(quitados), static_cast<int>(acumulado.lista().size()) - 1));
  decir({});
  RecalcularTotales();
}

void frmUnirQ19::editar(int fila, int posicion) {
  if (QApplication::activeModalWidget()) return;  // una ayuda técnica pulsa la fila también entonces
  const QWidgetList ventanas = QApplication::topLevelWidgets();
  for (const QWidget* ventana : ventanas)
    if (ventana->isVisible() && ventana->objectName().compare("EdiTarvo"_L1, Qt::CaseInsensitive) == 0)
      return;
  VistaRegistros& acumulado = *ui_->Acumulado;
  acumulado.seleccionarSolo(fila);
  decir({});
  // Los totales no se recalculan aquí: un importe cambiado llega a ellos en la orden siguiente. Los de los
  // bloques dicen lo de su cabecera.
  bool cabecera = false;
  editor::ListaAcumulado lista{
      .registros = acumulado.modelo().editable(),
      .actual = fila,
      .cambiado =
          [&](int cual) {
            acumulado.modelo().avisarCambio(cual);
            cabecera = remesa::Codigo(acumulado.lista()[static_cast<std::size_t>(cual)]) ==
                       remesa::CodigoRegistro::Acreedor;
          },
      .movido = [&](int cual) { acumulado.seleccionarSolo(cual); },
      .aviso = [this](const QString& texto) { decir(texto); },
      .posicion = posicion,
  };
  if (!editor::EditarSEPA(lista, kCuaderno19, this)) return;
  if (cabecera && conBloques())
    RecalcularTotales();
  else
    mirarAcumulado();
}

}  // namespace principal
