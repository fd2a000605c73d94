#include <QFileInfo>

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Texto.h"
#include "remesa/TipoFichero.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/devoluciones/VentanaDevoluciones.h"
#include "ventanas/principal/Herramientas.h"
#include "ventanas/principal/TextosObservacion.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

using namespace Qt::StringLiterals;

void frmUnirQ19::abrirDevoluciones(const QStringList& rutas) {
  auto* ventana = herramientas_->unica<ventanas::VentanaDevoluciones>();
  ventana->ponerAlPresentar(
      [this](remesa::ListaRegistros nueva) { return presentarOtraVez(std::move(nueva)); });
  ventana->anadir(rutas);
}

bool frmUnirQ19::mirarDevoluciones(const QString& ruta) {
  const bool es = devoluciones::EsDeDevoluciones(comunes::ARuta(ruta));
  ponerDevueltos(es ? ruta : QString());
  return es;
}

void frmUnirQ19::ponerDevueltos(const QString& ruta) {
  devueltos_ = ruta;
  ui_->AbrirDevoluciones->setVisible(!ruta.isEmpty());
}

QString frmUnirQ19::avisoDevoluciones() const {
  if (ui_->Preview->lista().empty()) return {};
  const remesa::TipoFichero tipo = remesa::TipoDe(ui_->Preview->lista()[0]);
  if (!remesa::EsDeDevoluciones(tipo)) return {};
  const std::string_view nombre = remesa::NombreTipo(tipo);
  return u"Es %1: no se importa. Ábralo en Devoluciones."_s.arg(
      QString::fromUtf8(nombre.data(), static_cast<qsizetype>(nombre.size())));
}

bool frmUnirQ19::presentarOtraVez(remesa::ListaRegistros nueva) {
  if (!resumenAcumulado_.vacia() &&
      !comunes::Confirmar(u"En la remesa acumulada hay ya %1.;; ¿ Los quita y pone la remesa nueva ? "_s.arg(
                              TextoCuenta(resumenAcumulado_.adeudos, u"adeudo"_s, u"adeudos"_s)),
                          2))
    return false;
  comoUnPaso(u"presentar otra vez"_s, [&] {
    empezar();
    ui_->Acumulado->poner(std::move(nueva));
    mirarAcumulado();
  });
  decir(u"Remesa hecha con adeudos devueltos: revísela y guárdela."_s);
  return true;
}

}  // namespace principal
