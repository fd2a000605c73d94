#include <QApplication>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <algorithm>
#include <optional>
#include <utility>

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Ventanas.h"
#include "remesa/Adeudos.h"
#include "remesa/Campos.h"
#include "remesa/Fusion.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/editor/EditarSEPA.h"
#include "ventanas/principal/EnFondo.h"
#include "ventanas/principal/TextosComprobacion.h"
#include "ventanas/principal/TextosObservacion.h"
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

/// De los registros de esas filas, los "03".
remesa::Resumen LosAdeudos(const remesa::ListaRegistros& lista, const std::vector<std::size_t>& filas) {
  remesa::Resumidor resumidor(false, false);
  for (const std::size_t fila : filas)
    if (remesa::Codigo(lista[fila]) == remesa::CodigoRegistro::Adeudo) resumidor.dar(lista[fila]);
  return resumidor.resumen();
}

/// Lo que se dice de un registro, campo a campo, al lado de cada uno.
std::vector<editor::HallazgoCampo> HallazgosDeCampos(const std::vector<remesa::Hallazgo>& hallazgos) {
  std::vector<editor::HallazgoCampo> suyos;
  suyos.reserve(hallazgos.size());
  for (const remesa::Hallazgo& h : hallazgos) {
    const bool error = remesa::EsError(h.codigo);
    suyos.push_back(
        {h.donde.desde, h.donde.hasta, error,
         u"%1 %2: %3"_s.arg(error ? u"Error"_s : u"Aviso"_s,
                            QString::fromUtf8(remesa::TextoCodigo(h.codigo).data()), TextoHallazgo(h))});
  }
  return suyos;
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

void frmUnirQ19::empezar() {
  const QString habia = loQueHay();
  const bool vaciada = comoUnPaso(u"empezar"_s, [this] {
    FicherosImportados.clear();
    rutasImportadas_.clear();
    ui_->Acumulado->poner({});
    ui_->Importado->hide();
    decir({});
    mirarAcumulado();
  });
  if (vaciada && !habia.isEmpty()) decirConDeshacer(u"Remesa vaciada: %1."_s.arg(habia));
}

void frmUnirQ19::insertar() {
  VistaRegistros& acumulado = *ui_->Acumulado;
  const int actual = acumulado.actual();
  if (actual < 0) return;
  const auto i = static_cast<std::size_t>(actual);
  if (!remesa::EsDuplicable(acumulado.lista()[i])) return;
  const comunes::Reloj reloj;
  decir({});
  comoUnPaso(u"insertar un adeudo"_s, [&] {
    if (conBloques()) return insertarConBloques(i);
    acumulado.cambiar([i](remesa::ListaRegistros& lista) { remesa::InsertarCopia(lista, i); });
    // La copia es lo que se va a corregir: lo que estuviese seleccionado se tomaría por ella.
    acumulado.seleccionarSolo(actual + 1);
    RecalcularTotales();
  });
}

void frmUnirQ19::eliminar() {
  const VistaRegistros& acumulado = *ui_->Acumulado;
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
  decir({});
  const remesa::Resumen fuera = LosAdeudos(acumulado.lista(), seleccion);
  if (fuera.registros == 0) {
    comoUnPaso(u"recalcular los totales"_s, [&] { quitar(seleccion); });
    return;
  }
  const QString cuantos = fuera.adeudos > 0 ? TextoCuenta(fuera.adeudos, u"adeudo"_s, u"adeudos"_s)
                                            : TextoCuenta(fuera.registros, u"registro"_s, u"registros"_s);
  comoUnPaso(u"eliminar "_s + cuantos, [&] { quitar(seleccion); });
  QString dicho = (fuera.registros == 1 ? u"Se ha eliminado %1"_s : u"Se han eliminado %1"_s).arg(cuantos);
  if (fuera.adeudos > 0) {
    dicho += u" (%1)"_s.arg(TextoEuros(fuera.importe));
    if (const std::size_t sobran = fuera.registros - fuera.adeudos; sobran > 0)
      dicho += u" y "_s + TextoCuenta(sobran, u"registro opcional"_s, u"registros opcionales"_s);
  }
  decirConDeshacer(dicho + u'.');
}

void frmUnirQ19::quitar(const std::vector<std::size_t>& seleccion) {
  if (conBloques()) return eliminarConBloques(seleccion);
  VistaRegistros& acumulado = *ui_->Acumulado;
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
  std::optional<EstadoAcumulacion> antes;
  const QScopedValueRollback pasoAbierto(enPaso_);
  const auto nombre = [](int cual) {
    return u"cambiar el registro "_s + comunes::FormatoNumero(cual + 1, 0);
  };
  EnFondo fondo(acumulado.modelo());
  editor::ListaAcumulado lista{
      .registros = acumulado.modelo().editable(),
      .actual = fila,
      .cambiado =
          [&](int cual) {
            acumulado.modelo().avisarCambio(cual);
            const bool cabecera = remesa::Codigo(acumulado.lista()[static_cast<std::size_t>(cual)]) ==
                                  remesa::CodigoRegistro::Acreedor;
            // Ya, sin esperar a que el editor vuelva: entretanto puede darse otra orden. Los bloques sí han
            // de esperarlo, porque rehacen la lista: lo que se ordene hasta entonces es del mismo paso.
            if (cabecera && conBloques())
              enPaso_ = true;
            else
              pasoDesde(*std::exchange(antes, std::nullopt), nombre(cual), [this] { mirarAcumulado(); });
          },
      .movido = [&](int cual) { acumulado.seleccionarSolo(cual); },
      .aviso = [this](const QString& texto) { decir(texto); },
      .cambiando =
          [&] {
            if (!antes) antes = fotografiar();
          },
      .posicion = posicion,
      .hallazgos =
          [&](int cual, editor::ListaAcumulado::Contestar contestar) {
            fondo.pedir(static_cast<std::uint64_t>(cual) + 1,
                        [contestar = std::move(contestar)](const Veredicto& veredicto) {
                          contestar(HallazgosDeCampos(veredicto.hallazgos()));
                        });
          },
  };
  if (editor::EditarSEPA(lista, kCuaderno19, this) && antes)
    pasoDesde(*std::move(antes), nombre(lista.actual), [this] { RecalcularTotales(); });
}

}  // namespace principal
