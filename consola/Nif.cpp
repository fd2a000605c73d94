#include <CLI/CLI.hpp>
#include <QStringList>
#include <algorithm>
#include <memory>

#include "comunes/campos/Identificadores.h"
#include "consola/Ordenes.h"
#include "consola/Terminal.h"
#include "remesa/NumeroFiscal.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

bool EsCifra(QChar c) {
  return c >= u'0' && c <= u'9';
}

/// En mayúsculas y sin los blancos y signos con que se separan sus partes.
QString SinSignos(const QString& texto) {
  QString limpio = texto.toUpper();
  return limpio.removeIf([](QChar c) { return c.isSpace() || c == u'.' || c == u'-'; });
}

/// Los controles que valen tras los ocho primeros caracteres.
QString Control(const QString& ocho) {
  return QString::fromStdString(remesa::ControlFiscal(ocho.toLatin1().toStdString()));
}

bool SoloCifras(const QString& texto) {
  return std::all_of(texto.begin(), texto.end(), EsCifra);
}

Salida Negar(const QString& texto, const QString& porque) {
  Avisar(u"%1: %2"_s.arg(Mostrable(texto), porque));
  return Salida::Fallo;
}

/// Un número sin letra, con ella. El número se suele escribir en grupos, y la letra es la de todo él.
Salida Completar(const QString& dado) {
  QString nif = dado;
  nif.removeIf([](QChar c) { return c.isSpace() || c == u'.'; });
  if (nif.endsWith(u'?')) nif.chop(1);
  if (SoloCifras(nif)) comunes::NifLetter(nif += u'?');
  if (!Decir(Mostrable(nif))) return Salida::Fallo;
  if (!nif.isEmpty() && nif.back().isLetter()) return Salida::Hecho;
  return Negar(dado, u"no tiene número del que sacar la letra"_s);
}

/// El control que falta o, si lo trae, si es el suyo.
Salida Mirar(const QString& dado) {
  constexpr qsizetype kSinControl = 8;
  QString limpio = SinSignos(dado);
  const bool pide = limpio.endsWith(u'?');
  if (pide) limpio.chop(1);
  if (SoloCifras(limpio)) return Completar(dado);
  if (const QString control = Control(limpio); !control.isEmpty())
    return Decir(limpio + control.front()) ? Salida::Hecho : Salida::Fallo;
  // El de una persona se escribe también sin sus ceros.
  const QString entero = limpio.rightJustified(kSinControl + 1, u'0');
  const QString control = Control(entero.first(kSinControl));
  const bool tieneForma = !pide && entero.size() == kSinControl + 1 && !control.isEmpty();
  const bool vale = tieneForma && control.contains(entero.back());
  if (!Decir(Mostrable(dado))) return Salida::Fallo;
  if (vale) return Salida::Hecho;
  if (!tieneForma) return Negar(dado, u"no tiene la forma de un NIF"_s);
  return Negar(dado, u"el control no es el suyo: sería %1"_s.arg(
                         control.split(QString(), Qt::SkipEmptyParts).join(u" o "_s)));
}

}  // namespace

void OrdenNif(CLI::App& q19, Accion& accion) {
  CLI::App* orden = q19.add_subcommand(
      "nif", "Pone su letra o control a números de NIF, NIE y CIF, o mira si el suyo es bueno");
  auto textos = std::make_shared<std::vector<std::string>>();
  orden->add_option("TEXTO", *textos, "Números, con o sin su control, o con «?» en su lugar")->required();
  orden->footer("Sale con 1 si alguno no tiene número o su control no es bueno.");
  orden->callback([textos, &accion] {
    accion = [textos] {
      Salida salida = Salida::Hecho;
      for (const std::string& texto : *textos)
        if (Mirar(QString::fromStdString(texto).trimmed()) != Salida::Hecho) salida = Salida::Fallo;
      return salida;
    };
  });
}

}  // namespace consola
