#include <algorithm>

#include "anteriores/Claves.h"
#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Enlace.h"
#include "comunes/plataforma/Texto.h"
#include "remesa/Validez.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/Antecedentes.h"
#include "ventanas/principal/TextosObservacion.h"
#include "ventanas/principal/VentanaAnteriores.h"
#include "ventanas/principal/VentanaHallazgos.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

using namespace Qt::StringLiterals;

void frmUnirQ19::prepararAntecedentes() {
  antecedentes_ = new Antecedentes(ui_->Acumulado->modelo(), this);
  enlaceAntecedentes_ = new comunes::Enlace;
  enlaceAntecedentes_->setObjectName(u"EnlaceAntecedentes"_s);
  enlaceAntecedentes_->hide();
  ui_->Estado->addPermanentWidget(enlaceAntecedentes_);
  connect(enlaceAntecedentes_, &QPushButton::clicked, this, &frmUnirQ19::atenderAntecedentes);
  connect(antecedentes_, &Antecedentes::avanza, this, &frmUnirQ19::mostrarAntecedentes);
  connect(antecedentes_, &Antecedentes::comparado, this, [this] {
    mostrarVeredicto();
    mostrarObservaciones();
  });
  connect(antecedentes_, &Antecedentes::leido, this, [this] {
    if (comprobaciones_) comprobaciones_->caducar();
  });
  connect(ui_->mnuAnteriores, &QAction::triggered, this, &frmUnirQ19::verAnteriores);
  antecedentes_->iniciar();
}

/// En la barra de estado, mientras se leen y si algo no se ha leído.
void frmUnirQ19::mostrarAntecedentes() {
  using E = Antecedentes::Estado;
  QString texto;
  if (antecedentes_->estado() == E::Leyendo) {
    texto = antecedentes_->noContesta()
                ? u"La carpeta de lo enviado antes no contesta: dejarla"_s
                : u"Leyendo lo enviado antes, %1 %: detener"_s.arg(antecedentes_->porCiento());
  } else if (antecedentes_->estado() == E::Detenido) {
    texto = u"Lo enviado antes no se ha leído entero: leerlo"_s;
  } else if (const auto& indice = antecedentes_->indice()) {
    if (!indice->carpetasSinLeer().empty())
      texto = u"No se lee una carpeta de lo enviado antes: ver por qué"_s;
    else if (!indice->omitidos().empty())
      texto = u"De lo enviado antes, %1 sin leer: ver"_s.arg(indice->omitidos().size());
  }
  enlaceAntecedentes_->setText(texto);
  enlaceAntecedentes_->setVisible(!texto.isEmpty());
}

void frmUnirQ19::atenderAntecedentes() {
  using E = Antecedentes::Estado;
  if (antecedentes_->estado() == E::Leyendo) return antecedentes_->detener();
  if (antecedentes_->estado() == E::Detenido) return antecedentes_->refrescar();
  const auto indice = antecedentes_->indice();
  if (!indice) return;
  std::vector<QStringList> filas;
  for (const auto omitidos : {indice->carpetasSinLeer(), indice->omitidos()})
    for (const anteriores::Omitido& omitido : omitidos)
      filas.push_back({comunes::SinControles(comunes::DesdeRuta(omitido.ruta)),
                       comunes::SinControles(QString::fromStdString(omitido.causa))});
  comunes::MyVisorBox(u"De lo enviado antes no se ha leído"_s, u"Fichero o carpeta#60;Por qué#60"_s, filas,
                      comunes::kIconoAviso, u"Fichero o carpeta"_s);
  antecedentes_->refrescar();
}

QStringList frmUnirQ19::avisoGuardada() const {
  const QString guardada = antecedentes_ != nullptr ? antecedentes_->comparada().guardada : QString();
  if (guardada.isEmpty()) return {};
  return {u"Estos mismos adeudos están ya guardados en %1."_s.arg(comunes::ConMarcasEscritas(guardada))};
}

void frmUnirQ19::verAnteriores() {
  const VistaRegistros& vista = ui_->Preview == focusWidget() ? *ui_->Preview : *ui_->Acumulado;
  const remesa::ListaRegistros& lista = vista.lista();
  // El adeudo de un registro opcional es el 003 que lo precede.
  int fila = vista.actual();
  while (fila >= 0 &&
         remesa::Codigo(lista[static_cast<std::size_t>(fila)]) == remesa::CodigoRegistro::Adeudo &&
         remesa::Clase(lista[static_cast<std::size_t>(fila)]) != remesa::ClaseRegistro::Adeudo)
    --fila;
  if (fila < 0 || remesa::Clase(lista[static_cast<std::size_t>(fila)]) != remesa::ClaseRegistro::Adeudo)
    return comunes::Avisar(u"Elija antes un adeudo: se buscan los del mismo mandato o de la misma cuenta."_s);
  const auto indice = antecedentes_->indice();
  if (!indice)
    return comunes::Avisar(
        antecedentes_->estado() == Antecedentes::Estado::Apagado
            ? u"No se sabe qué se envió antes: ponga sus carpetas en la clave AnterioresQ19 de "
              "Tarvo.INI."_s
            : u"Lo enviado antes no se ha leído todavía."_s);
  std::string registro(lista[static_cast<std::size_t>(fila)]);
  remesa::AjustarLongitud(registro);
  anteriores::Filtro filtro;
  filtro.mandato = anteriores::Valor(registro, remesa::kReferenciaMandato);
  filtro.cuenta = anteriores::Valor(registro, remesa::kCuentaDeudor);
  filtro.mandatoOCuenta = true;
  while (fila > 0 &&
         remesa::Codigo(lista[static_cast<std::size_t>(fila)]) != remesa::CodigoRegistro::Acreedor)
    --fila;
  filtro.acreedor = remesa::SinSufijo(
      anteriores::Valor(lista[static_cast<std::size_t>(fila)], remesa::kIdentificadorAcreedor));
  std::vector<anteriores::FicheroHallado> ficheros;
  ficheros.reserve(indice->ficheros().size());
  for (const anteriores::FicheroAnterior& fichero : indice->ficheros())
    ficheros.push_back(fichero.hallado);
  const QString nombre =
      comunes::SinControles(comunes::DesdeWindows1252(anteriores::Valor(registro, remesa::kNombreDeudor)));
  const QString mandato = comunes::SinControles(
      comunes::DesdeWindows1252(anteriores::Valor(registro, remesa::kReferenciaMandato)));
  VentanaAnteriores ventana(u"%1, mandato %2"_s.arg(nombre, mandato), std::move(ficheros), filtro, this);
  ventana.exec();
}

}  // namespace principal
