#include "consola/LineasDevoluciones.h"

#include "comunes/plataforma/Texto.h"
#include "consola/Terminal.h"
#include "devoluciones/Textos.h"

namespace consola {

namespace {

using namespace Qt::StringLiterals;
using devoluciones::Dato;
using devoluciones::Devolucion;

QString EnJson(const Dato& dato) {
  return dato.presente() ? CadenaJson(dato.texto()) : u"null"_s;
}

QString EnJson(const QString& texto) {
  return texto.isEmpty() ? u"null"_s : CadenaJson(texto);
}

QString EnJson(const std::optional<std::int64_t>& numero) {
  return numero ? QString::number(*numero) : u"null"_s;
}

QString EnJson(const std::optional<remesa::Dia>& dia) {
  if (!dia) return u"null"_s;
  const QString fecha = QString::fromStdString(remesa::EscribirFecha(*dia));
  return u"\"%1-%2-%3\""_s.arg(fecha.first(4), fecha.sliced(4, 2), fecha.last(2));
}

QString NombreAlcance(devoluciones::Alcance alcance) {
  switch (alcance) {
    case devoluciones::Alcance::Adeudo:
      return u"adeudo"_s;
    case devoluciones::Alcance::Bloque:
      return u"bloque"_s;
    case devoluciones::Alcance::Mensaje:
      return u"remesa"_s;
  }
  return {};
}

QString NombreCotejo(const devoluciones::Cotejo* cotejo, std::size_t i) {
  if (cotejo == nullptr) return {};
  switch (cotejo->hallazgo(i).estado) {
    case devoluciones::EstadoCotejo::Hallada:
      return u"hallado"_s;
    case devoluciones::EstadoCotejo::Ambigua:
      return u"ambiguo"_s;
    case devoluciones::EstadoCotejo::NoHallada:
      break;
  }
  return u"no hallado"_s;
}

/// Lo que trae la devolución y, aparte, lo nuestro; nada de lo que la remesa diga de ella.
QString LineaJson(const devoluciones::Lote& lote, const devoluciones::Cotejo* cotejo, std::size_t i) {
  const Devolucion d = lote[i];
  const bool conocido = devoluciones::BuscarMotivo(d.motivo.bytes()) != nullptr;
  const std::pair<const char16_t*, QString> valores[] = {
      {u"acreedor", EnJson(d.acreedor)},
      {u"adeudos", EnJson(d.adeudos)},
      {u"alcance", CadenaJson(NombreAlcance(d.alcance))},
      {u"bloqueOriginal", EnJson(d.bloqueOriginal)},
      {u"concepto", EnJson(d.concepto)},
      {u"consejo", EnJson(devoluciones::TextoConsejo(d.motivo))},
      {u"cotejo", EnJson(NombreCotejo(cotejo, i))},
      {u"cuenta", EnJson(d.cuenta)},
      {u"deudor", EnJson(d.deudor)},
      {u"fechaCobro", EnJson(d.fechaCobro)},
      {u"fechaDevolucion", EnJson(d.fechaDevolucion)},
      {u"fichero", CadenaJson(comunes::DesdeRuta(lote.ficheros()[d.fichero].ruta))},
      {u"ficheroOriginal", EnJson(d.ficheroOriginal)},
      {u"importe", EnJson(d.importe)},
      {u"mandato", EnJson(d.mandato)},
      {u"motivo", EnJson(d.motivo)},
      {u"referencia", EnJson(d.referencia)},
      {u"texto", EnJson(conocido ? devoluciones::TextoMotivo(d.motivo) : QString())},
      {u"textoBanco", EnJson(d.textoBanco)}};
  QString linea;
  for (const auto& [clave, valor] : valores)
    linea += (linea.isEmpty() ? u"{\""_s : u",\""_s) + QString::fromUtf16(clave) + u"\":"_s + valor;
  return linea + u"}\n"_s;
}

QString LineasTexto(const devoluciones::Lote& lote, const devoluciones::Cotejo* cotejo, std::size_t i) {
  Devolucion d = lote[i];
  QString donde;
  if (cotejo != nullptr) {
    const auto hallazgo = cotejo->hallazgo(i);
    d = cotejo->completada(i, hallazgo);
    donde = devoluciones::TextoCotejo(*cotejo, hallazgo);
    if (hallazgo.estado == devoluciones::EstadoCotejo::Hallada) donde.prepend(u"en "_s);
  }
  const QString importe = devoluciones::TextoImporte(d.importe);
  QStringList quien{devoluciones::TextoQuien(d), importe.isEmpty() ? importe : importe + u" €"_s};
  QStringList datos{devoluciones::TextoIban(d.cuenta), d.referencia.texto()};
  const auto anadir = [&](const QString& rotulo, const QString& valor) {
    if (!valor.isEmpty()) datos += rotulo + valor;
  };
  anadir(u"mandato "_s, d.mandato.texto());
  anadir(u"cobro "_s, devoluciones::TextoDia(d.fechaCobro));
  anadir(u"devuelto "_s, devoluciones::TextoDia(d.fechaDevolucion));
  if (d.alcance == devoluciones::Alcance::Bloque) anadir(u"de la remesa "_s, d.ficheroOriginal.texto());
  datos += donde;
  quien.removeAll(QString());
  datos.removeAll(QString());
  return Mostrable(quien.join(u", "_s)) + u": "_s + Mostrable(devoluciones::TextoPorQue(d)) + u"\n    "_s +
         Mostrable(datos.join(u", "_s)) + u'\n';
}

QString CabeceraTexto(const devoluciones::FicheroLeido& fichero) {
  QString cabecera = Mostrable(fichero.ruta) + u": "_s + devoluciones::TextoForma(fichero.forma);
  if (!fichero.identificacion.vacio()) cabecera += u", "_s + Mostrable(fichero.identificacion.texto());
  return cabecera + u'\n';
}

QString ResumenTexto(const devoluciones::Lote& lote, const devoluciones::Cotejo* cotejo) {
  const devoluciones::Recuento recuento = devoluciones::Recontar(lote, cotejo);
  QString texto = u"Por motivo:\n"_s;
  for (const devoluciones::Grupo& grupo : recuento.porMotivo)
    texto += u"  "_s + Mostrable(devoluciones::TextoGrupoMotivo(grupo)) + u'\n';
  texto += u"Por acreedor:\n"_s;
  for (const devoluciones::Grupo& grupo : recuento.porAcreedor)
    texto += u"  "_s + Mostrable(devoluciones::TextoGrupoAcreedor(grupo)) + u'\n';
  return texto + u"Total: "_s + devoluciones::TextoCuenta(recuento.total) + u'\n';
}

}  // namespace

bool EscribirDevoluciones(const devoluciones::Lote& lote, const devoluciones::Cotejo* cotejo,
                          FormaLista forma) {
  // De muchas en muchas: de una en una cuesta más que leerlas.
  constexpr qsizetype kTrozoLista = qsizetype{1} << 16;
  QString pendiente =
      forma == FormaLista::Csv ? devoluciones::LineaCsv(devoluciones::TitulosColumnas()) : QString();
  for (const devoluciones::FicheroLeido& fichero : lote.ficheros()) {
    if (forma == FormaLista::Texto) pendiente += CabeceraTexto(fichero);
    for (std::size_t i = fichero.primera; i < fichero.primera + fichero.cuantas; ++i) {
      pendiente += forma == FormaLista::Json ? LineaJson(lote, cotejo, i)
                   : forma == FormaLista::Csv
                       ? devoluciones::LineaCsv(devoluciones::ValoresColumnas(lote, cotejo, i))
                       : LineasTexto(lote, cotejo, i);
      if (pendiente.size() < kTrozoLista) continue;
      if (!DecirLineas(pendiente.toStdString())) return false;
      pendiente.clear();
    }
  }
  if (forma == FormaLista::Texto && lote.size() > 0) pendiente += ResumenTexto(lote, cotejo);
  return pendiente.isEmpty() || DecirLineas(pendiente.toStdString());
}

}  // namespace consola
