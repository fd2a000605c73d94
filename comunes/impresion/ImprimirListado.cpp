#include "comunes/impresion/ImprimirListado.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QPrinter>
#include <QScopeGuard>
#include <QUrl>

#include "comunes/impresion/DocumentoPdf.h"
#include "comunes/impresion/Impresora.h"
#include "comunes/impresion/Progreso.h"
#include "comunes/plataforma/Explorar.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

const QString kImprimiendo = u"Imprimiendo…"_s;

/// "Remesa Acreedor 2026-03-05.pdf", sin lo que un nombre de fichero no admite.
QString NombrePropuesto(const QString& comienzo) {
  QString nombre = comienzo.simplified();
  for (QChar& c : nombre)
    if (c < u' ' || u"<>:\"/\\|?*"_s.contains(c)) c = u'-';
  return nombre + u' ' + FechaActual().toString(Qt::ISODate) + u".pdf"_s;
}

QString ConExtensionPdf(const QString& elegido) {
  return elegido.endsWith(u".pdf"_s, Qt::CaseInsensitive) ? elegido : elegido + u".pdf"_s;
}

FinListado EnDocumento(const ListadoImprimible& listado) {
  const RotulosListado rotulos = listado.rotulos();
  const QString elegido = DialogoFichero(false, listado.padre, listado.carpeta, u"pdf"_s, false,
                                         NombrePropuesto(rotulos.fichero), ConExtensionPdf);
  if (elegido.isEmpty()) return {};
  const QString ruta = RutaAbsoluta(ConExtensionPdf(elegido));
  const bool apaisado = AjustesDeImpresora().orientacion == "Horizontal"_L1;
  DocumentoPdf documento(ARuta(ruta), apaisado, rotulos.titulo);
  Avance avance(kImprimiendo);
  const bool completo = listado.imprimir(documento.trabajo(), [&](int hechas, int total, int) {
    documento.comprobar();
    return avance.avanzar(hechas, total);
  });
  if (!completo) return {u"Impresión detenida: no se ha escrito el documento."_s, {}};
  documento.confirmar();
  return {u"Listado escrito en %1"_s.arg(QDir::toNativeSeparators(ruta)), ruta};
}

FinListado EnPapel(const ListadoImprimible& listado) {
  const std::unique_ptr<QPrinter> impresora = CrearImpresora();
  impresora->setDocName(listado.rotulos().trabajo);
  TrabajoImpresion trabajo(*impresora);
  auto abortar = qScopeGuard([&] { impresora->abort(); });
  Avance avance(kImprimiendo);
  const bool completo =
      listado.imprimir(trabajo, [&](int hechas, int total, int) { return avance.avanzar(hechas, total); });
  if (!completo) return {u"Impresión detenida."_s, {}};
  trabajo.Terminar();
  abortar.dismiss();
  return {u"Listado enviado a %1"_s.arg(impresora->printerName()), {}};
}

}  // namespace

FinListado ImprimirListado(const ListadoImprimible& listado) {
  PeticionImpresora peticion;
  peticion.padre = listado.padre;
  peticion.anchoTabla = listado.anchoTabla;
  peticion.dibujar = [&](QPrinter& impresora, int maxPaginas) {
    TrabajoImpresion trabajo(impresora);
    const bool todas = listado.imprimir(trabajo, [&](int, int, int pagina) { return pagina <= maxPaginas; });
    trabajo.Terminar();
    return todas;
  };
  if (!ActivarImpresora(true, peticion)) return {};
  return ImprimeEnDocumento() ? EnDocumento(listado) : EnPapel(listado);
}

QString AbrirDocumento(const QString& ruta) {
  if (QDesktopServices::openUrl(QUrl::fromLocalFile(ruta))) return {};
  return u"No hay ningún programa que abra %1"_s.arg(QDir::toNativeSeparators(ruta));
}

}  // namespace comunes
