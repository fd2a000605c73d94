#include "devoluciones/Textos.h"

#include "comunes/plataforma/Celdas.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "remesa/Campos.h"
#include "remesa/SEPA.h"

namespace devoluciones {
namespace {

using namespace Qt::StringLiterals;

QString DesdeUtf8(std::string_view texto) {
  return QString::fromUtf8(texto.data(), static_cast<qsizetype>(texto.size()));
}

QString Numero(std::uint64_t numero) {
  return comunes::FormatoNumero(static_cast<double>(numero), 0);
}

QString Cuantos(std::uint64_t cuenta, const QString& uno, const QString& varios) {
  return Numero(cuenta) + u' ' + (cuenta == 1 ? uno : varios);
}

/// Un texto de la tabla en medio de una frase.
QString SinMayuscula(QString texto) {
  if (!texto.isEmpty()) texto.front() = texto.front().toLower();
  return texto;
}

QString Adeudos(std::uint64_t cuenta) {
  return Cuantos(cuenta, u"adeudo"_s, u"adeudos"_s);
}

QString Euros(std::int64_t centimos) {
  return comunes::FormatoCentimos(centimos) + u" €"_s;
}

/// "el registro 5" o, en un XML, "la línea 5".
QString Donde(std::uint64_t numero, Forma forma) {
  const bool plano = forma == Forma::Rechazos || forma == Forma::Devoluciones;
  return (plano ? u"el registro "_s : u"la línea "_s) + QString::number(numero);
}

QString TextoTotal(const AvisoLectura& aviso, Forma forma) {
  const auto decir = [&](const QString& que, const QString& dicho, const QString& debido) {
    return u"Los totales del fichero no cuadran: %1 dice %2 y trae %3."_s.arg(Donde(aviso.registro, forma),
                                                                              dicho + que, debido);
  };
  if (!aviso.dicho)
    return u"Un total que no es un número, en %1: «%2»."_s.arg(Donde(aviso.registro, forma),
                                                               comunes::DesdeWindows1252(aviso.causa));
  const auto numero = [](std::int64_t n) { return Numero(static_cast<std::uint64_t>(n)); };
  switch (aviso.clase) {
    case ClaseAviso::TotalImportes:
      return decir({}, Euros(*aviso.dicho), Euros(aviso.debido));
    case ClaseAviso::TotalAdeudos:
      return decir(u" adeudos"_s, numero(*aviso.dicho), numero(aviso.debido));
    default:
      return decir(u" registros"_s, numero(*aviso.dicho), numero(aviso.debido));
  }
}

QString LugarDe(const Cotejo& cotejo, std::size_t candidato) {
  const Presentado& adeudo = cotejo.presentado(candidato);
  return u"%1, registro %2"_s.arg(comunes::DesdeRuta(cotejo.remesas()[adeudo.remesa].ruta.filename()),
                                  QString::number(adeudo.registro));
}

QString NombreFichero(const std::filesystem::path& ruta) {
  return comunes::DesdeRuta(ruta.filename());
}

}  // namespace

QString TextoForma(Forma forma) {
  switch (forma) {
    case Forma::Rechazos:
      return u"adeudos rechazados (Cuaderno 19.14)"_s;
    case Forma::Devoluciones:
      return u"adeudos devueltos (Cuaderno 19.14)"_s;
    case Forma::Pain002:
      return u"rechazos y devoluciones en XML (pain.002)"_s;
    case Forma::Camt054:
      return u"devoluciones en las anotaciones de la cuenta (camt.054)"_s;
  }
  return {};
}

QString TextoMotivo(const Dato& motivo) {
  if (motivo.vacio()) return u"sin motivo"_s;
  const Motivo* hallado = BuscarMotivo(motivo.bytes());
  return hallado != nullptr ? DesdeUtf8(hallado->texto) : motivo.texto();
}

QString TextoConsejo(const Dato& motivo) {
  const Motivo* hallado = BuscarMotivo(motivo.bytes());
  return hallado != nullptr ? DesdeUtf8(hallado->consejo) : QString();
}

QString TextoQuien(const Devolucion& devolucion) {
  const bool bloque = devolucion.alcance == Alcance::Bloque;
  if (!bloque && devolucion.alcance == Alcance::Adeudo) return devolucion.deudor.texto();
  QString quien = (bloque ? u"Bloque entero "_s + devolucion.bloqueOriginal.texto()
                          : u"Remesa entera "_s + devolucion.ficheroOriginal.texto())
                      .trimmed();
  if (devolucion.adeudos) quien += u" (%1)"_s.arg(Adeudos(static_cast<std::uint64_t>(*devolucion.adeudos)));
  return quien;
}

QString TextoPorQue(const Devolucion& devolucion) {
  const QString motivo = TextoMotivo(devolucion.motivo);
  const bool conocido = BuscarMotivo(devolucion.motivo.bytes()) != nullptr;
  QString texto = conocido ? devolucion.motivo.texto() + u", "_s + SinMayuscula(motivo) : motivo;
  if (!devolucion.textoBanco.vacio()) texto += u" («%1»)"_s.arg(devolucion.textoBanco.texto());
  texto += u'.';
  return conocido ? texto + u' ' + TextoConsejo(devolucion.motivo) : texto;
}

QString TextoIban(const Dato& cuenta) {
  return cuenta.vacio() ? QString()
                        : comunes::DesdeWindows1252(remesa::FormatoIBAN(cuenta.enRegistro(), true));
}

QString TextoDia(const std::optional<remesa::Dia>& dia) {
  return dia ? QString::fromStdString(remesa::FechaQ19(remesa::EscribirFecha(*dia))) : QString();
}

QString TextoImporte(const std::optional<std::int64_t>& importe) {
  return importe ? comunes::FormatoCentimos(*importe) : QString();
}

QString TextoAviso(const AvisoLectura& aviso, Forma forma) {
  const QString primero =
      (aviso.cuenta == 1 ? u" (en %1)"_s : u" (el primero, en %1)"_s).arg(Donde(aviso.registro, forma));
  const QString adeudos = Adeudos(aviso.cuenta);
  const QString n = aviso.cuenta == 1 ? QString() : u"n"_s;
  switch (aviso.clase) {
    case ClaseAviso::Cortado:
      if (!aviso.causa.empty())
        return u"El fichero está cortado o dañado: %1. Se enseña lo que venía antes."_s.arg(
            DesdeUtf8(aviso.causa));
      return u"El fichero no acaba en su registro 99: puede estar cortado. Pídalo otra vez."_s;
    case ClaseAviso::SinCabecera:
      return u"%1 sin cabecera de acreedor delante%2: no se sabe de quién ni de qué fecha."_s.arg(adeudos,
                                                                                                  primero);
    case ClaseAviso::Longitud:
      return Cuantos(aviso.cuenta, u"registro no es"_s, u"registros no son"_s) +
             u" de 600 posiciones%1: puede faltarle%2 algo."_s.arg(primero,
                                                                   aviso.cuenta == 1 ? QString() : u"s"_s);
    case ClaseAviso::EnUtf8:
      return Cuantos(aviso.cuenta, u"registro está"_s, u"registros están"_s) +
             u" en UTF-8, y no en Windows-1252%1. Se han leído así."_s.arg(primero);
    case ClaseAviso::CodigoAjeno:
      return Cuantos(aviso.cuenta, u"registro no es de este fichero, o está"_s,
                     u"registros no son de este fichero, o están"_s) +
             u" detrás de su 99%1."_s.arg(primero);
    case ClaseAviso::Mezcla:
      return u"Lleva mezclados rechazos y devoluciones, desde %1. Se han leído todos."_s.arg(
          Donde(aviso.registro, forma));
    case ClaseAviso::Importe:
      return u"%1 con un importe que no se entiende%2."_s.arg(adeudos, primero);
    case ClaseAviso::Moneda:
      return Cuantos(aviso.cuenta, u"importe no es"_s, u"importes no son"_s) +
             u" en euros%1: no se toma%2."_s.arg(primero, n);
    case ClaseAviso::TotalImportes:
    case ClaseAviso::TotalAdeudos:
    case ClaseAviso::TotalRegistros:
      return TextoTotal(aviso, forma);
    case ClaseAviso::SinDevoluciones:
      return u"No trae ninguna devolución."_s;
    case ClaseAviso::NoRechazados:
      return Cuantos(aviso.cuenta, u"operación sigue"_s, u"operaciones siguen"_s) +
             u" adelante: no se enseña%1."_s.arg(n);
    case ClaseAviso::SinMotivo:
      return Cuantos(aviso.cuenta, u"anotación que no es una devolución"_s,
                     u"anotaciones que no son devoluciones"_s) +
             u": no se enseña%1."_s.arg(n);
    case ClaseAviso::AFavor:
      return u"%1 con motivo de devolución, pero a favor, que no es la de un adeudo: no se enseña%2."_s.arg(
          Cuantos(aviso.cuenta, u"anotación"_s, u"anotaciones"_s), n);
    case ClaseAviso::DeTransferencias:
      return u"%1 de transferencias, que no son adeudos: no se enseña%2."_s.arg(
          Cuantos(aviso.cuenta, u"rechazo"_s, u"rechazos"_s), n);
    case ClaseAviso::FicheroRepetido:
      return u"Trae lo mismo que %1, ya leído: se omite."_s.arg(DesdeUtf8(aviso.causa));
    case ClaseAviso::DevolucionRepetida:
      return u"%1 ya estaba%2, con el mismo motivo y las mismas fechas%3."_s.arg(adeudos, n, primero);
  }
  return {};
}

QString TextoCotejo(const Cotejo& cotejo, const Cotejo::Hallazgo& hallazgo) {
  const auto& adeudos = hallazgo.adeudos;
  const auto lugar = [&](std::size_t i) { return LugarDe(cotejo, adeudos[i]); };
  switch (hallazgo.estado) {
    case EstadoCotejo::Hallada:
      if (adeudos.size() == 1) return lugar(0);
      return u"%1: %2"_s.arg(NombreFichero(cotejo.remesas()[cotejo.presentado(adeudos[0]).remesa].ruta),
                             Adeudos(adeudos.size()));
    case EstadoCotejo::Ambigua:
      return u"Puede ser más de un adeudo: %1 y %2"_s.arg(lugar(0),
                                                          adeudos.size() > 1 ? lugar(1) : u"otros"_s) +
             (adeudos.size() > 2 ? u"…"_s : QString());
    case EstadoCotejo::NoHallada:
      break;
  }
  return u"No está en las remesas buscadas"_s;
}

QString TextoFuera(const Fuera& fuera) {
  switch (fuera.causa) {
    case CausaFuera::NoHallada:
      return u"No está en las remesas buscadas, y sin su registro entero no se puede presentar."_s;
    case CausaFuera::Ambigua:
      return u"Puede ser más de un adeudo de las remesas buscadas, y no se sabe cuál."_s;
    case CausaFuera::Nunca:
      return u"Su motivo no admite otro intento."_s;
    case CausaFuera::YaIncluida:
      return fuera.adeudos == 1 ? u"Ya va en la remesa: el mismo adeudo ha vuelto más de una vez."_s
                                : u"%1 de los suyos ya van en la remesa."_s.arg(Numero(fuera.adeudos));
    case CausaFuera::SinPresentador:
      return u"La remesa en que se presentó no tiene cabecera 01."_s;
  }
  return {};
}

QString TextoCuenta(const Cuenta& cuenta) {
  QStringList partes;
  if (cuenta.adeudos > 0 || cuenta.bloques == 0)
    partes += Adeudos(static_cast<std::uint64_t>(cuenta.adeudos));
  if (cuenta.bloques > 0)
    partes += Cuantos(static_cast<std::uint64_t>(cuenta.bloques), u"bloque entero"_s, u"bloques enteros"_s);
  partes += Euros(cuenta.importe);
  if (cuenta.sinImporte > 0)
    partes += u"%1 sin importe"_s.arg(Numero(static_cast<std::uint64_t>(cuenta.sinImporte)));
  return partes.join(u", "_s);
}

QString TextoGrupoMotivo(const Grupo& grupo) {
  const bool conocido = BuscarMotivo(grupo.clave.bytes()) != nullptr;
  return (conocido ? grupo.clave.texto() + u' ' : QString()) + TextoMotivo(grupo.clave) + u": "_s +
         TextoCuenta(grupo.cuenta);
}

QString TextoGrupoAcreedor(const Grupo& grupo) {
  QStringList partes;
  for (const Dato* dato : {&grupo.clave, &grupo.nombre})
    if (!dato->vacio()) partes += dato->texto();
  return (partes.isEmpty() ? u"sin acreedor"_s : partes.join(u' ')) + u": "_s + TextoCuenta(grupo.cuenta);
}

QStringList TitulosColumnas() {
  return {u"Nombre"_s,   u"Importe"_s,         u"Cuenta"_s,           u"Referencia"_s,
          u"Mandato"_s,  u"Código"_s,          u"Motivo"_s,           u"Consejo"_s,
          u"Cobro"_s,    u"Devolución"_s,      u"En la remesa"_s,     u"Concepto"_s,
          u"Acreedor"_s, u"Texto del banco"_s, u"Fichero original"_s, u"Fichero"_s};
}

QStringList ValoresColumnas(const Lote& lote, const Cotejo* cotejo, std::size_t devolucion) {
  Devolucion d = lote[devolucion];
  QString donde;
  if (cotejo != nullptr) {
    const Cotejo::Hallazgo hallazgo = cotejo->hallazgo(devolucion);
    d = cotejo->completada(devolucion, hallazgo);
    donde = TextoCotejo(*cotejo, hallazgo);
  }
  return {TextoQuien(d),
          TextoImporte(d.importe),
          TextoIban(d.cuenta),
          d.referencia.texto(),
          d.mandato.texto(),
          d.motivo.texto(),
          TextoMotivo(d.motivo),
          TextoConsejo(d.motivo),
          TextoDia(d.fechaCobro),
          TextoDia(d.fechaDevolucion),
          donde,
          d.concepto.texto(),
          d.acreedor.texto(),
          d.textoBanco.texto(),
          d.ficheroOriginal.texto(),
          NombreFichero(lote.ficheros()[d.fichero].ruta)};
}

QString LineaCsv(const QStringList& valores) {
  QStringList escritos;
  for (const QString& suyo : valores) {
    QString valor = comunes::SinFormula(suyo);
    if (valor.contains(u';') || valor.contains(u'"') || valor.contains(u'\n') || valor.contains(u'\r'))
      valor = u'"' + valor.replace(u"\""_s, u"\"\""_s) + u'"';
    escritos += valor;
  }
  return escritos.join(u';') + u"\r\n"_s;
}

}  // namespace devoluciones
