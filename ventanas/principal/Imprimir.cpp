#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QPrinter>
#include <QScopeGuard>
#include <QUrl>
#include <optional>

#include "comunes/impresion/DocumentoPdf.h"
#include "comunes/impresion/Impresora.h"
#include "comunes/impresion/Progreso.h"
#include "comunes/plataforma/Explorar.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/Informe.h"
#include "ventanas/principal/VistaRegistros.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {
namespace {

/// "Remesa Acreedor 2026-03-05.pdf", sin lo que un nombre de fichero no admite.
QString NombrePropuesto(const QString& acreedor) {
  QString nombre = QStringLiteral("Remesa ") + acreedor.simplified();
  for (QChar& c : nombre)
    if (c < QLatin1Char(' ') || QStringLiteral("<>:\"/\\|?*").contains(c)) c = QLatin1Char('-');
  return nombre + QLatin1Char(' ') + comunes::FechaActual().toString(Qt::ISODate) + QStringLiteral(".pdf");
}

QString ConExtensionPdf(const QString& elegido) {
  return elegido.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive) ? elegido
                                                                       : elegido + QStringLiteral(".pdf");
}

}  // namespace

void frmUnirQ19::imprimir() {
  const remesa::ListaRegistros& lista = ui_->Acumulado->lista();
  if (lista.empty()) return;
  decir({});
  const bool conReferencia = ui_->RefI->isChecked();
  comunes::Rejilla visor(ui_->VisorPrt->objectName());
  std::optional<Informe> informe;
  // La vista previa lo necesita antes de que se acepte; sin ella no se prepara hasta imprimir.
  const auto preparado = [&]() -> const Informe& {
    if (!informe) {
      const comunes::Reloj reloj;
      informe = PrepararInforme(visor, lista, FicheroActual, conReferencia);
    }
    return *informe;
  };
  comunes::PeticionImpresora peticion;
  peticion.padre = this;
  peticion.anchoTabla = AnchoInforme(conReferencia);
  peticion.dibujar = [&](QPrinter& impresora, int maxPaginas) {
    comunes::TrabajoImpresion trabajo(impresora);
    const bool todas = ImprimirInforme(trabajo, visor, preparado(),
                                       [&](int, int, int pagina) { return pagina <= maxPaginas; });
    trabajo.Terminar();
    return todas;
  };
  if (!comunes::ActivarImpresora(true, peticion)) return;
  if (comunes::ImprimeEnDocumento())
    imprimirDocumento(visor, preparado());
  else
    imprimirEnPapel(visor, preparado());
}

void frmUnirQ19::imprimirDocumento(comunes::Rejilla& visor, const Informe& informe) {
  const QString carpeta = comunes::ReadINI(comunes::RutaAjustes, QStringLiteral("Comunes"),
                                           QStringLiteral("DestinoQ19"), QString());
  const QString elegido = comunes::DialogoFichero(false, this, carpeta, QStringLiteral("pdf"), false,
                                                  NombrePropuesto(informe.titulo), ConExtensionPdf);
  if (elegido.isEmpty()) return;
  const QString ruta = ConExtensionPdf(elegido);
  const bool apaisado = comunes::AjustesDeImpresora().orientacion == QLatin1String("Horizontal");
  comunes::DocumentoPdf documento(comunes::ARuta(ruta), apaisado, informe.titulo);
  comunes::Avance avance(tr("Imprimiendo…"));
  const bool completo = ImprimirInforme(documento.trabajo(), visor, informe, [&](int hechas, int total, int) {
    documento.comprobar();
    return avance.avanzar(hechas, total);
  });
  if (!completo) return decir(tr("Impresión detenida: no se ha escrito el documento."));
  documento.confirmar();
  decir(tr("Listado escrito en %1").arg(QDir::toNativeSeparators(QFileInfo(ruta).absoluteFilePath())));
  listado_ = QFileInfo(ruta).absoluteFilePath();
  ui_->AbrirListado->show();
}

void frmUnirQ19::imprimirEnPapel(comunes::Rejilla& visor, const Informe& informe) {
  const std::unique_ptr<QPrinter> impresora = comunes::CrearImpresora();
  impresora->setDocName(informe.subtitulo + QStringLiteral(" - ") + informe.titulo);
  comunes::TrabajoImpresion trabajo(*impresora);
  auto abortar = qScopeGuard([&] { impresora->abort(); });
  comunes::Avance avance(tr("Imprimiendo…"));
  const bool completo = ImprimirInforme(
      trabajo, visor, informe, [&](int hechas, int total, int) { return avance.avanzar(hechas, total); });
  if (!completo) return decir(tr("Impresión detenida."));
  trabajo.Terminar();
  abortar.dismiss();
  decir(tr("Listado enviado a %1").arg(impresora->printerName()));
}

void frmUnirQ19::abrirListado() {
  if (!QDesktopServices::openUrl(QUrl::fromLocalFile(listado_)))
    decir(tr("No hay ningún programa que abra %1").arg(QDir::toNativeSeparators(listado_)));
}

}  // namespace principal
