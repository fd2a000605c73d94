#include <QApplication>
#include <QDateTime>
#include <QFileInfo>

#include "comunes/dialogos/MyBox.h"
#include "comunes/impresion/Progreso.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "ficheros/ErrorEjecucion.h"
#include "iso20022/LectorXml.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/Navegador.h"
#include "ventanas/principal/TomarRemesa.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

using namespace Qt::StringLiterals;

QString frmUnirQ19::Marca(const QString& ruta) {
  const QFileInfo informe(ruta);
  return u"%1 %2"_s.arg(informe.lastModified().toMSecsSinceEpoch()).arg(informe.size());
}

bool frmUnirQ19::EsQ19(const QString& ruta) {
  // De un XML, si es una remesa lo dice quien lo lee.
  if (iso20022::EmpiezaComoXml(comunes::ARuta(ruta))) return true;
  switch (remesa::ComprobarCabeza(comunes::ARuta(ruta))) {
    case remesa::Cabeza::Q19:
      return true;
    case remesa::Cabeza::VersionAnterior:
      comunes::Avisar(u"!!! Versión incorrecta de archivo Q19 ¡¡¡"_s);
      rechazar(ruta, u"es del Cuaderno 19 antiguo"_s);
      return false;
    case remesa::Cabeza::Desconocida:
      break;
  }
  comunes::Avisar(u"!!! El archivo no parece ser tipo Q19 ¡¡¡"_s);
  rechazar(ruta, u"no es una remesa del Cuaderno 19.14"_s);
  return false;
}

void frmUnirQ19::rechazar(const QString& ruta, const QString& porque) {
  rechazo_ = u"No se ha tomado %1: %2."_s.arg(QFileInfo(ruta).fileName(), porque);
  // Lo resaltado es lo que «Importar» tomaría.
  navegador_->resaltar(rutaPreview_);
  mostrarObservaciones();
}

bool frmUnirQ19::CargarFichero(const QString& ruta, VistaRegistros& lista) {
  // Se lee entero antes de cambiar nada: un fichero leído a medias no debe poder importarse.
  RemesaTomada leida;
  try {
    comunes::Avance avance(u"Leyendo %1…"_s.arg(QFileInfo(ruta).fileName()));
    leida = LeerRemesa(ruta, [&](std::uintmax_t leidos, std::uintmax_t total) {
      avance.avanzarODetener(static_cast<double>(leidos), static_cast<double>(total));
    });
  } catch (const comunes::TrabajoDetenido&) {
    decir(u"Lectura detenida: no se ha cargado el fichero."_s);
    rechazar(ruta, u"se detuvo la lectura"_s);
    return false;
  }
  if (!leida.rechazo.isEmpty()) {
    comunes::Avisar(EnCaja({leida.rechazo + u'.'}));
    rechazar(ruta, leida.rechazo.first(1).toLower() + leida.rechazo.sliced(1));
    return false;
  }
  ponerLeida(ruta, std::move(leida), lista);
  return true;
}

void frmUnirQ19::ponerLeida(const QString& ruta, RemesaTomada leida, VistaRegistros& lista) {
  rutaActual_ = ruta;
  FicheroActual = comunes::Mayusculas(ruta);
  ui_->Importado->setVisible(FicherosImportados.contains(u'[' + FicheroActual + u']'));
  perdidas_ = std::move(leida.perdidas);
  lista.poner(std::move(leida.lista));
}

void frmUnirQ19::cargarInicial(const QString& lineaOrdenes) {
  QString nombre = lineaOrdenes;
  nombre.remove(u'"');
  if (nombre.isEmpty()) return;
  const QString ruta = comunes::RutaAbsoluta(nombre);
  if (mirarDevoluciones(ruta)) return abrirDevoluciones({ruta});
  if (!EsQ19(ruta)) return;
  const comunes::Reloj reloj;
  comoUnPaso(u"abrir "_s + QFileInfo(ruta).fileName(), [&] {
    if (!CargarFichero(ruta, *ui_->Acumulado)) return;
    FicherosImportados = u'[' + FicheroActual + u']';
    rutasImportadas_ = {{FicheroActual, rutaActual_}};
    mirarAcumulado();
    mirarDuenos();
  });
  // Nada se previsualiza antes: se dice en cuanto está.
  if (const QStringList perdidas = std::exchange(perdidas_, {}); !perdidas.isEmpty())
    comunes::Avisar(
        u"Lo que dice %1 y no cabe en sus registros:;;"_s.arg(EnCaja({QFileInfo(ruta).fileName()})) +
        EnCaja(perdidas));
}

void frmUnirQ19::elegir(const QString& ruta) {
  if (QApplication::activeModalWidget())
    return;  // una ayuda técnica, o algo que se suelta, con una caja delante
  decir({});
  rechazo_.clear();
  const QString marca = Marca(ruta);  // antes de leerlo: si cambia mientras tanto, no será la suya
  try {
    if (mirarDevoluciones(ruta) && iso20022::EmpiezaComoXml(comunes::ARuta(ruta)))
      return rechazar(ruta, u"es un XML con lo que el banco rechaza o devuelve, que se ve en Devoluciones"_s);
    if (!EsQ19(ruta)) return;
    const comunes::Reloj reloj;
    if (!CargarFichero(ruta, *ui_->Preview)) return;
  } catch (const std::exception& error) {
    const auto* conocido = dynamic_cast<const ficheros::ErrorEjecucion*>(&error);
    rechazar(ruta,
             conocido != nullptr ? QString::fromStdString(conocido->texto()) : u"no se ha podido leer"_s);
    throw;
  }
  previsualizado(ruta, marca);
}

void frmUnirQ19::previsualizado(const QString& ruta, const QString& marca) {
  const comunes::Reloj reloj;
  rutaPreview_ = ruta;
  marcaPreview_ = marca;
  resumenPreview_ = remesa::Resumir(ui_->Preview->lista(), true);
  // Puede haberlo traído una comprobación, y no una pulsación en la lista.
  navegador_->resaltar(ruta);
  mostrarObservaciones();
}

}  // namespace principal
