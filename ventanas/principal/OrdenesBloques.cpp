#include <QSignalBlocker>
#include <algorithm>

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "remesa/Adeudos.h"
#include "remesa/Identificacion.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/TextosObservacion.h"
#include "ventanas/principal/frmUnirQ19.h"

// Las órdenes mientras se conservan los bloques de cada acreedor y fecha. La lista nueva se hace aparte: si
// algo falla, o no se puede, la que se ve sigue como estaba.

namespace principal {

using namespace Qt::StringLiterals;

namespace {

QString TextoSinDueno(const remesa::SinDueno& cual) {
  const QString donde = cual.enPrevio ? u"El registro %1"_s : u"El registro %1 de la remesa"_s;
  return donde.arg(comunes::FormatoNumero(static_cast<double>(cual.registro), 0)) +
         u" es un adeudo que no tiene delante ninguna cabecera de acreedor (02): no se sabe de quién es.;;"_s;
}

/// Lo que cuenta la lista que se está haciendo.
struct Recuento {
  remesa::Resumidor resumidor;
  remesa::IndiceBloques indice;

  Recuento() { indice.empezarFichero(); }
  remesa::AlPasar alPasar() {
    return [this](std::string_view registro) {
      resumidor.dar(registro);
      indice.dar(registro);
    };
  }
};

/// Dónde ha quedado el registro `antes` o, si ya no está, el que le seguía; -1 si no hay nada.
int DondeQueda(const remesa::Procedencia& procedencia, std::size_t antes, std::size_t habia) {
  int mejor = static_cast<int>(procedencia.size()) - 1;
  std::size_t cual = habia;
  for (std::size_t i = 0; i < procedencia.size(); ++i)
    if (procedencia[i] >= antes && procedencia[i] < cual) {
      cual = procedencia[i];
      mejor = static_cast<int>(i);
    }
  return mejor;
}

}  // namespace

bool frmUnirQ19::conBloques() const {
  return ui_->Bloques->isChecked();
}

/// Pone la lista nueva, con lo seleccionado y la fila actual donde hayan quedado.
void frmUnirQ19::ponerConBloques(remesa::ListaRegistros lista, const remesa::Procedencia& procedencia) {
  VistaRegistros& acumulado = *ui_->Acumulado;
  const std::vector<std::size_t> antes = acumulado.seleccion();
  const int actual = acumulado.actual();
  std::vector<std::size_t> seleccion;
  int fila = -1;
  for (std::size_t i = 0; i < procedencia.size() && (!antes.empty() || actual >= 0); ++i) {
    if (std::ranges::binary_search(antes, procedencia[i])) seleccion.push_back(i);
    if (actual >= 0 && procedencia[i] == static_cast<std::size_t>(actual)) fila = static_cast<int>(i);
  }
  acumulado.cambiar([&](remesa::ListaRegistros& suya) { suya = std::move(lista); });
  acumulado.seleccionar(seleccion);
  acumulado.ponerActual(fila);
}

bool frmUnirQ19::reunir(const remesa::ListaRegistros& previo, const QString& queNo) {
  const remesa::ListaRegistros* const uno = &previo;
  return reunirVarios({&uno, 1}, queNo);
}

bool frmUnirQ19::reunirVarios(std::span<const remesa::ListaRegistros* const> previos, const QString& queNo) {
  remesa::ListaRegistros lista = ui_->Acumulado->lista();
  Recuento recuento;
  const remesa::Reunion reunion = ReunirVarios(lista, previos, recuento.alPasar());
  if (reunion.impide) {
    comunes::Avisar(TextoSinDueno(*reunion.impide) + queNo);
    return false;
  }
  ponerConBloques(std::move(lista), reunion.procedencia);
  contarBloques(recuento.resumidor.resumen(), std::move(recuento.indice));
  return true;
}

void frmUnirQ19::recalcularBloques() {
  remesa::ListaRegistros lista = ui_->Acumulado->lista();
  Recuento recuento;
  const remesa::Procedencia procedencia = RehacerTotales(lista, recuento.alPasar());
  ponerConBloques(std::move(lista), procedencia);
  contarBloques(recuento.resumidor.resumen(), std::move(recuento.indice));
}

void frmUnirQ19::contarBloques(const remesa::Resumen& resumen, remesa::IndiceBloques indice) {
  indice.terminarFichero();
  resumenAcumulado_ = resumen;
  indiceAcumulado_ = std::move(indice);
  mostrarObservaciones();
}

void frmUnirQ19::cambiarBloques(bool conservar) {
  const comunes::Reloj reloj;
  decir({});
  EstadoAcumulacion antes = fotografiar();
  antes.bloques = !conservar;
  antes.indice.reset();
  if (conservar && !ui_->Acumulado->lista().empty() &&
      !reunir({}, u"No se pueden conservar los bloques: la remesa queda como estaba."_s)) {
    const QSignalBlocker sinAvisar(ui_->Bloques);
    ui_->Bloques->setChecked(false);
  }
  mirarAcumulado();
  if (!enPaso_) apuntarPaso(u"conservar acreedores y fechas"_s, std::move(antes));
}

/// Lo que se carga se toma como está; si tiene un adeudo sin dueño, los bloques no se pueden conservar.
void frmUnirQ19::mirarDuenos() {
  if (!conBloques() || indiceAcumulado_.avisos().sinDueno == 0) return;
  comunes::Avisar(TextoSinDueno({false, indiceAcumulado_.avisos().sinDueno}) +
                  u"No se conservan los bloques."_s);
  ui_->Bloques->setChecked(false);
}

void frmUnirQ19::insertarConBloques(std::size_t i) {
  remesa::ListaRegistros lista = ui_->Acumulado->lista();
  const auto copia = InsertarCopiaTrasAdeudo(lista, i);
  if (!copia) return;
  ponerYSenalar(std::move(lista), *copia);
  const int fila = ui_->Acumulado->actual();
  ui_->Acumulado->seleccionarSolo(fila);
}

void frmUnirQ19::eliminarConBloques(const std::vector<std::size_t>& conTodo) {
  remesa::ListaRegistros lista = ui_->Acumulado->lista();
  EliminarAdeudos(lista, conTodo);
  // Con el teclado se sigue desde donde se estaba.
  const int actual = ui_->Acumulado->actual();
  std::optional<std::size_t> donde;
  if (actual >= 0) {
    const auto fila = static_cast<std::size_t>(actual);
    donde = fila - static_cast<std::size_t>(std::ranges::lower_bound(conTodo, fila) - conTodo.begin());
  }
  ponerYSenalar(std::move(lista), donde);
}

/// Pone la lista con sus totales hechos y hace actual el registro `cual` de antes de hacerlos.
void frmUnirQ19::ponerYSenalar(remesa::ListaRegistros lista, std::optional<std::size_t> cual) {
  const std::size_t habia = lista.size();
  Recuento recuento;
  const remesa::Procedencia procedencia = RehacerTotales(lista, recuento.alPasar());
  ui_->Acumulado->cambiar([&](remesa::ListaRegistros& suya) { suya = std::move(lista); });
  ui_->Acumulado->ponerActual(cual ? DondeQueda(procedencia, *cual, habia) : -1);
  contarBloques(recuento.resumidor.resumen(), std::move(recuento.indice));
}

QString frmUnirQ19::sobreOpcionales(const std::vector<std::size_t>& seleccion,
                                    const std::vector<std::size_t>& conTodo) {
  const auto cuantos = std::ranges::count_if(
      conTodo, [&](std::size_t fila) { return !std::ranges::binary_search(seleccion, fila); });
  if (cuantos == 0) return {};
  return u";;Con ellos %1 %2."_s.arg(
      cuantos == 1 ? u"se elimina"_s : u"se eliminan"_s,
      TextoCuenta(static_cast<std::size_t>(cuantos), u"registro opcional suyo"_s,
                  u"registros opcionales suyos"_s));
}

QString frmUnirQ19::textoBloques() const {
  return u"%1 de %2 · "_s.arg(TextoCuenta(resumenAcumulado_.cabeceras02, u"bloque"_s, u"bloques"_s),
                              TextoCuenta(indiceAcumulado_.acreedores(), u"acreedor"_s, u"acreedores"_s));
}

std::vector<remesa::Observacion> frmUnirQ19::observarConBloques() const {
  remesa::IndiceBloques indice = indiceAcumulado_;
  const remesa::ListaRegistros& previo = ui_->Preview->lista();
  indice.empezarFichero();
  for (std::size_t i = 0; i < previo.size(); ++i) {
    previo.anticipar(i);
    indice.dar(previo[i]);
  }
  indice.terminarFichero();
  return ObservarImportacion(resumenPreview_, indice);
}

}  // namespace principal
