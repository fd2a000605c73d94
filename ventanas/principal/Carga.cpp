#include <QDir>
#include <QFileInfo>

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "remesa/Fichero.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

bool frmUnirQ19::EsQ19(const QString& ruta) {
  switch (remesa::ComprobarCabeza(comunes::ARuta(ruta))) {
    case remesa::Cabeza::Q19:
      return true;
    case remesa::Cabeza::VersionAnterior:
      comunes::MyMsgBox(tr("!!! Versión incorrecta de archivo Q19 ¡¡¡"), {}, 1, 1, 1);
      return false;
    case remesa::Cabeza::Desconocida:
      break;
  }
  comunes::MyMsgBox(tr("!!! El archivo no parece ser tipo Q19 ¡¡¡"), {}, 1, 1, 1);
  return false;
}

void frmUnirQ19::CargarFichero(const QString& ruta, VistaRegistros& lista) {
  // Se lee entero antes de cambiar nada: un fichero leído a medias no debe poder importarse.
  remesa::ListaRegistros leida = remesa::LeerFichero(comunes::ARuta(ruta));
  rutaActual_ = ruta;
  FicheroActual = ruta.toUpper();
  ui_->Importado->setVisible(
      FicherosImportados.contains(QLatin1Char('[') + FicheroActual + QLatin1Char(']')));
  lista.poner(std::move(leida));
}

void frmUnirQ19::cargarInicial(const QString& lineaOrdenes) {
  QString nombre = lineaOrdenes;
  nombre.remove(QLatin1Char('"'));
  if (nombre.isEmpty()) return;
  const QString ruta = QDir::toNativeSeparators(QFileInfo(nombre).absoluteFilePath());
  if (!EsQ19(ruta)) return;
  const comunes::Reloj reloj;
  CargarFichero(ruta, *ui_->Acumulado);
  FicherosImportados = QLatin1Char('[') + FicheroActual + QLatin1Char(']');
  rutasImportadas_ = {{FicheroActual, rutaActual_}};
  mirarAcumulado();
}

void frmUnirQ19::elegir(const QString& ruta) {
  decir({});
  if (!EsQ19(ruta)) return;
  const comunes::Reloj reloj;
  CargarFichero(ruta, *ui_->Preview);
  rutaPreview_ = ruta;
  resumenPreview_ = remesa::Resumir(ui_->Preview->lista(), true);
  mostrarObservaciones();
}

}  // namespace principal
