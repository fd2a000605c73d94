#include <QDir>
#include <QFileInfo>

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "iso20022/LectorXml.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/Antecedentes.h"
#include "ventanas/principal/TextosComprobacion.h"
#include "ventanas/principal/VentanaHallazgos.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

// Con copias de lo que se compara: se hace en otro hilo.

Antecedentes::Cruzar CruceDe(const remesa::ListaRegistros& lista, const std::filesystem::path& ruta) {
  return [lista, ruta](const auto& indice, const auto& recibir, const auto& seguir) {
    return anteriores::CruzarLista(indice, lista, ruta, recibir, seguir);
  };
}

Antecedentes::Cruzar CruceDe(const std::filesystem::path& ruta) {
  return [ruta](const auto& indice, const auto& recibir, const auto& seguir) {
    return anteriores::CruzarFichero(indice, ruta, recibir, seguir);
  };
}

}  // namespace

// Se comprueba la lista en que se está; desde otro sitio, la acumulación, que es lo que se va a guardar, y si
// está vacía, lo previsualizado. La ventana dice cuál.
void frmUnirQ19::comprobar() {
  antecedentes_->refrescar();
  const bool hayPreview = !rutaPreview_.isEmpty();
  const bool hayAcumulado = !ui_->Acumulado->lista().empty();
  if (hayPreview && (ui_->Preview == focusWidget() || !hayAcumulado))
    comprobarPreview();
  else if (hayAcumulado)
    comprobarAcumulado();
  else
    comunes::Avisar(u"No hay ninguna remesa que comprobar: elija un fichero o importe alguno."_s);
}

void frmUnirQ19::comprobarAcumulado(bool comoGuardada) {
  const QString titulo = comoGuardada ? u"Remesa acumulada, como se guardaría"_s : u"Remesa acumulada"_s;
  mostrarComprobaciones({[titulo] { return titulo; },
                         [this, comoGuardada](const auto& recibir, const auto& avance) {
                           const remesa::ListaRegistros& lista = ui_->Acumulado->lista();
                           auto resultado =
                               remesa::ComprobarLista(lista, comunes::Hoy(), recibir, comoGuardada, avance);
                           antecedentes_->anadir(resultado, CruceDe(lista, {}), recibir, avance);
                           return resultado;
                         },
                         [this](const remesa::Hallazgo& h) {
                           if (h.fila > ui_->Acumulado->lista().size()) return false;
                           editar(static_cast<int>(h.fila) - 1, h.donde.desde);
                           if (comprobaciones_) comprobaciones_->activateWindow();
                           return true;
                         },
                         {},
                         [this](const std::vector<remesa::Hallazgo>& elegidos) { corregir(elegidos); }},
                        ui_->Acumulado);
}

// El fichero y no la lista, que ya no tiene sus fines de línea; de un XML, sus registros.
void frmUnirQ19::comprobarPreview() {
  mostrarComprobaciones(
      {[this] { return u"Previsualizado, %1"_s.arg(QFileInfo(rutaPreview_).fileName()); },
       [this](const auto& recibir, const auto& avance) {
         const std::filesystem::path ruta = comunes::ARuta(rutaPreview_);
         const auto conAntes = [&](remesa::ResultadoComprobacion resultado,
                                   const Antecedentes::Cruzar& cruzar) {
           antecedentes_->anadir(resultado, cruzar, recibir, avance);
           return resultado;
         };
         if (iso20022::EmpiezaComoXml(ruta))
           return conAntes(
               remesa::ComprobarLista(ui_->Preview->lista(), comunes::Hoy(), recibir, false, avance),
               CruceDe(ui_->Preview->lista(), ruta));
         return conAntes(remesa::ComprobarFichero(ruta, comunes::Hoy(), recibir, avance), CruceDe(ruta));
       },
       [this](const remesa::Hallazgo& h) { return irEnPreview(rutaPreview_, h); }, rutaPreview_},
      ui_->Preview);
}

void frmUnirQ19::comprobarGuardado() {
  const QString ruta = guardado_;
  mostrarComprobaciones({[ruta] { return u"Guardado, %1"_s.arg(QFileInfo(ruta).fileName()); },
                         [this, ruta](const auto& recibir, const auto& avance) {
                           auto resultado = remesa::ComprobarFichero(comunes::ARuta(ruta), comunes::Hoy(),
                                                                     recibir, avance);
                           antecedentes_->anadir(resultado, CruceDe(comunes::ARuta(ruta)), recibir, avance);
                           return resultado;
                         },
                         // La acumulación está ya vacía: se lee arriba.
                         [this, ruta](const remesa::Hallazgo& h) { return irEnPreview(ruta, h); }, ruta},
                        nullptr);
}

bool frmUnirQ19::irEnPreview(const QString& ruta, const remesa::Hallazgo& hallazgo) {
  // Puede haberlo escrito esta misma ventana, u otro programa, desde que se leyó.
  if (rutaPreview_ != ruta || marcaPreview_ != Marca(ruta)) elegir(ruta);
  if (rutaPreview_ != ruta || hallazgo.fila > ui_->Preview->lista().size()) return false;
  ui_->Preview->seleccionarSolo(static_cast<int>(hallazgo.fila) - 1);
  ui_->Preview->mostrarPosicion(hallazgo.donde.desde);
  ui_->Preview->setFocus();
  activateWindow();
  const QWidget& zona = *ui_->Preview->viewport();
  const QRect fila = ui_->Preview->visualRect(ui_->Preview->currentIndex()) & zona.rect();
  if (comprobaciones_) comprobaciones_->Apartar(fila.translated(zona.mapToGlobal(QPoint(0, 0))));
  return true;
}

/// Una sola ventana: la nueva sustituye a la que hubiera. `lista`, la que la deja anticuada al cambiar.
void frmUnirQ19::mostrarComprobaciones(OrigenHallazgos comprobada, const VistaRegistros* lista) {
  delete comprobaciones_;
  comprobada.nota = [this] { return antecedentes_->nota(); };
  auto ventana = std::make_unique<VentanaHallazgos>(std::move(comprobada), this);
  ventana->comprobar();
  if (lista != nullptr) {
    const QAbstractItemModel* modelo = lista->model();
    connect(modelo, &QAbstractItemModel::modelReset, ventana.get(), &VentanaHallazgos::caducar);
    connect(modelo, &QAbstractItemModel::dataChanged, ventana.get(), &VentanaHallazgos::caducar);
  }
  comprobaciones_ = ventana.release();
  comprobaciones_->setAttribute(Qt::WA_DeleteOnClose);
  comprobaciones_->show();
}

}  // namespace principal
