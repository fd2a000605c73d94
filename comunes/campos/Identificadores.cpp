#include "comunes/campos/Identificadores.h"

#include <cmath>

#include "comunes/campos/Blancos.h"
#include "comunes/plataforma/Formatos.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kCifrasCuenta = 8;

}  // namespace

void NifLetter(QString& texto) {
  if (!texto.endsWith(u'?') || texto.endsWith("(?"_L1)) return;
  // Clave de dos cifras, las dos primeras decimales del número entre 23, y su letra.
  const QString tabla =
      u"00T 04R 08W 13A 17G 21M 26Y 30F 34P 39D 43X 47B "
      u"52N 56J 60Z 65S 69Q 73V 78H 82L 86C 91K 95E"_s;
  const double cociente = Val(texto) / 23;
  if (!std::isfinite(cociente)) return;
  const int clave = static_cast<int>((cociente - std::trunc(cociente)) * 100);
  const qsizetype lugar = tabla.indexOf(u"%1"_s.arg(clave, 2, 10, QChar(u'0')));
  const QChar letra = lugar < 0 ? u'?' : tabla[lugar + 2];
  texto.chop(1);
  if (Val(texto) > 0) texto += letra;
}

void LedgerAccount(QString& texto) {
  const QString cuenta = SinBlancos(texto);
  if (cuenta.isEmpty()) return;
  qsizetype separador = cuenta.indexOf(u'.');
  if (separador < 0) separador = cuenta.indexOf(u',');
  if (separador > kCifrasCuenta || (separador < 0 && cuenta.size() > kCifrasCuenta)) return;

  const auto ceros = [](qsizetype n) { return QString(n, u'0'); };
  if (separador >= 0) {
    const QString detras = cuenta.mid(separador + 1);
    texto = cuenta.left(separador) + (ceros(kCifrasCuenta) + detras).right(kCifrasCuenta - separador);
  } else if (cuenta.size() >= 3) {
    // Proveedores, acreedores, clientes y deudores llevan dos cifras de cuenta; las demás, tres.
    const QString grupo = cuenta.left(2);
    const bool dos = grupo == "40"_L1 || grupo == "41"_L1 || grupo == "43"_L1 || grupo == "44"_L1;
    const qsizetype prefijo = dos ? 2 : 3;
    texto = cuenta.left(prefijo) + ceros(kCifrasCuenta - cuenta.size()) + cuenta.mid(prefijo);
  } else {
    texto = cuenta + ceros(kCifrasCuenta - cuenta.size());
  }
}

}  // namespace comunes
