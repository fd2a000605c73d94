#include "consola/LineasXml.h"

#include <initializer_list>
#include <utility>

#include "comunes/plataforma/Texto.h"
#include "consola/Terminal.h"
#include "iso20022/Textos.h"

namespace consola {

namespace {

using namespace Qt::StringLiterals;
using iso20022::AvisoLectura;
using iso20022::Nota;

QString Latino(std::string_view texto) {
  return QString::fromUtf8(texto.data(), static_cast<qsizetype>(texto.size()));
}

QString NombreCampo(const Nota& nota) {
  return nota.campo == nullptr ? QString() : Latino(nota.campo->nombre);
}

/// " (Ana Peña, REF1)"
QString Dueno(const QString& deudor, const QString& referencia) {
  if (deudor.isEmpty() && referencia.isEmpty()) return {};
  return u" (%1)"_s.arg(deudor + (deudor.isEmpty() || referencia.isEmpty() ? u""_s : u", "_s) + referencia);
}

QString Componer(const QString& fichero, const QString& lugar, const QString& nivel, std::string_view codigo,
                 const QString& mensaje) {
  const QString donde = lugar.isEmpty() ? QString() : u" %1:"_s.arg(lugar.trimmed());
  return Mostrable(u"%1:%2 %3 %4: %5"_s.arg(fichero, donde, nivel, Latino(codigo), mensaje));
}

/// Un objeto de valores ya escritos, en orden alfabético de sus claves, como los de `comprobar`.
QString EnJson(std::initializer_list<std::pair<QLatin1String, QString>> pares) {
  QString objeto;
  for (const auto& [clave, valor] : pares)
    objeto += (objeto.isEmpty() ? u'{' : u',') + u"\"%1\":"_s.arg(clave) + valor;
  return objeto + u'}';
}

}  // namespace

QString EnLinea(const QString& fichero, const Nota& nota) {
  QString lugar;
  if (nota.registro > 0) lugar += u"registro %1"_s.arg(nota.registro);
  if (nota.donde.desde > 0) lugar += u", %1-%2"_s.arg(nota.donde.desde).arg(nota.donde.hasta);
  if (nota.campo != nullptr) lugar += u' ' + NombreCampo(nota);
  lugar += Dueno(comunes::DesdeWindows1252(nota.deudor), comunes::DesdeWindows1252(nota.referencia));
  return Componer(fichero, lugar, iso20022::TextoNivel(nota.codigo), iso20022::TextoCodigo(nota.codigo),
                  iso20022::TextoNota(nota));
}

QString EnLinea(const QString& fichero, const AvisoLectura& aviso) {
  const QString lugar = u"línea %1, %2"_s.arg(aviso.linea).arg(aviso.elemento) + Dueno({}, aviso.referencia);
  return Componer(fichero, lugar, u"aviso"_s, iso20022::TextoCodigo(aviso.codigo),
                  iso20022::TextoAviso(aviso));
}

QString EnLineaJson(const QString& fichero, const Nota& nota) {
  return EnJson({{QLatin1String("campo"), CadenaJson(NombreCampo(nota))},
                 {QLatin1String("codigo"), CadenaJson(Latino(iso20022::TextoCodigo(nota.codigo)))},
                 {QLatin1String("desde"), QString::number(nota.donde.desde)},
                 {QLatin1String("deudor"), CadenaJson(comunes::DesdeWindows1252(nota.deudor))},
                 {QLatin1String("esperado"), CadenaJson(iso20022::TextoCambio(nota))},
                 {QLatin1String("fichero"), CadenaJson(fichero)},
                 {QLatin1String("hasta"), QString::number(nota.donde.hasta)},
                 {QLatin1String("mensaje"), CadenaJson(iso20022::TextoNota(nota))},
                 {QLatin1String("nivel"), CadenaJson(iso20022::TextoNivel(nota.codigo))},
                 {QLatin1String("referencia"), CadenaJson(comunes::DesdeWindows1252(nota.referencia))},
                 {QLatin1String("registro"), QString::number(nota.registro)},
                 {QLatin1String("valor"), CadenaJson(iso20022::TextoValor(nota))}});
}

QString EnLineaJson(const QString& fichero, const AvisoLectura& aviso) {
  return EnJson({{QLatin1String("campo"), CadenaJson(aviso.elemento)},
                 {QLatin1String("codigo"), CadenaJson(Latino(iso20022::TextoCodigo(aviso.codigo)))},
                 {QLatin1String("desde"), u"0"_s},
                 {QLatin1String("deudor"), CadenaJson({})},
                 {QLatin1String("esperado"), CadenaJson(aviso.cambio)},
                 {QLatin1String("fichero"), CadenaJson(fichero)},
                 {QLatin1String("hasta"), u"0"_s},
                 {QLatin1String("linea"), QString::number(aviso.linea)},
                 {QLatin1String("mensaje"), CadenaJson(iso20022::TextoAviso(aviso))},
                 {QLatin1String("nivel"), CadenaJson(u"aviso"_s)},
                 {QLatin1String("referencia"), CadenaJson(aviso.referencia)},
                 {QLatin1String("registro"), u"0"_s},
                 {QLatin1String("valor"), CadenaJson(aviso.valor)}});
}

}  // namespace consola
