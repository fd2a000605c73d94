#include "consola/LineasXml.h"

#include <QJsonDocument>
#include <QJsonObject>

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

QString EnJson(const QJsonObject& objeto) {
  return QString::fromUtf8(QJsonDocument(objeto).toJson(QJsonDocument::Compact));
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
  return EnJson({{u"campo"_s, NombreCampo(nota)},
                 {u"codigo"_s, Latino(iso20022::TextoCodigo(nota.codigo))},
                 {u"desde"_s, nota.donde.desde},
                 {u"deudor"_s, comunes::DesdeWindows1252(nota.deudor)},
                 {u"esperado"_s, iso20022::TextoCambio(nota)},
                 {u"fichero"_s, fichero},
                 {u"hasta"_s, nota.donde.hasta},
                 {u"mensaje"_s, iso20022::TextoNota(nota)},
                 {u"nivel"_s, iso20022::TextoNivel(nota.codigo)},
                 {u"referencia"_s, comunes::DesdeWindows1252(nota.referencia)},
                 {u"registro"_s, static_cast<qint64>(nota.registro)},
                 {u"valor"_s, iso20022::TextoValor(nota)}});
}

QString EnLineaJson(const QString& fichero, const AvisoLectura& aviso) {
  return EnJson({{u"campo"_s, aviso.elemento},
                 {u"codigo"_s, Latino(iso20022::TextoCodigo(aviso.codigo))},
                 {u"desde"_s, 0},
                 {u"deudor"_s, QString()},
                 {u"esperado"_s, aviso.cambio},
                 {u"fichero"_s, fichero},
                 {u"hasta"_s, 0},
                 {u"linea"_s, static_cast<qint64>(aviso.linea)},
                 {u"mensaje"_s, iso20022::TextoAviso(aviso)},
                 {u"nivel"_s, u"aviso"_s},
                 {u"referencia"_s, aviso.referencia},
                 {u"registro"_s, 0},
                 {u"valor"_s, aviso.valor}});
}

}  // namespace consola
